// velkstep split IN OUTDIR
#include "split_command.h"

#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "ended_input.h"
#include "exit_codes.h"
#include "kessel/splitter.h"

namespace Velkstep {

namespace {

/// Makes sure that the library can read `in` to its end.
void check_input(const std::filesystem::path& in) {
  using std::filesystem::file_type;
  std::error_code error;
  const file_type type = std::filesystem::status(in, error).type();
  if (type == file_type::none || type == file_type::not_found) {
    throw std::runtime_error(error.message());
  }
  if (type == file_type::directory) throw std::runtime_error("is a folder");
  if (type != file_type::regular) {
    throw std::runtime_error("is not a regular file, and the input is read twice");
  }
  if (const std::string reason = why_reading_would_not_end(in); !reason.empty()) {
    throw std::runtime_error(reason);
  }
}

int fail(const std::filesystem::path& path, std::string_view reason) {
  std::cerr << "velkstep: " << path.string() << ": " << reason << '\n';
  return EXIT_FAILED;
}

}  // namespace

int split(const std::filesystem::path& in, const std::filesystem::path& outdir,
          const Kessel::Options& options) {
  std::vector<std::filesystem::path> files;
  try {
    check_input(in);
    files = Kessel::Run(in, outdir, options);
  } catch (const std::filesystem::filesystem_error& error) {
    return fail(error.path1(), "cannot be created: " + error.code().message());
  } catch (const std::bad_alloc&) {
    return fail(in, "not enough memory");
  } catch (const std::exception& error) {
    return fail(in, error.what());
  }
  if (files.empty()) return EXIT_NOTHING_TO_SPLIT;  // The library has said why.
  for (const std::filesystem::path& file : files) {
    // The library has said which files it could not open.
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return fail(file, "was not written");
  }
  for (const std::filesystem::path& file : files) std::cout << file.string() << '\n';
  std::cout.flush();
  if (!std::cout) return fail("standard output", "cannot be written");
  return EXIT_DONE;
}

}  // namespace Velkstep
