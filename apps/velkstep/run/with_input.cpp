// What commands that look at one input have in common: errors in one line, exit codes.
#include "run/with_input.h"

#include <cerrno>
#include <iostream>
#include <new>
#include <optional>
#include <system_error>

#include "kessel/errors.h"
#include "run/advice.h"
#include "run/exit_codes.h"
#include "system/input.h"
#include "system/interruption.h"
#include "system/staged_output.h"
#include "system/write_advice.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

/// What the library says for hosts that compare it, and what it means.
struct Translation {
  std::string_view text;
  std::string_view meaning;
};
constexpr Translation TRANSLATIONS[] = {
    {"invalid vector subscript",
     "a record refers to an instance far beyond the highest number; velkstep check finds it"},
    {"invalid map<K, T> key",
     "an assembly's file would lack the definition or shape of a component to which it must refer; "
     "without --classic it is split"},
};

}  // namespace

int fail(std::string_view name, std::string_view reason) {
  std::cerr << "velkstep: " << (name.empty() ? "''" : printable(name)) << ": " << reason << '\n';
  return EXIT_FAILED;
}

std::string place_in(const std::string& name, const Kessel::Finding& finding) {
  if (finding.line == 0) return name;
  return name + ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column);
}

int fail_at(const std::string& name, const Kessel::Finding& finding) {
  return fail(place_in(name, finding), sentence_with_advice(finding, name));
}

int fail_to_write(const Kessel::OutputError& error, bool force) {
  const std::string name = error.path().string();
  if (error.reason() != std::errc::file_exists) {
    return fail(name, "cannot be written: " + reason_with_advice(error.reason()));
  }
  // Nothing else is refused where replacing was asked for.
  return fail(name, force ? "is the input, or a file that it refers to; name another"
                          : "is there already; --force replaces it");
}

int fail_to_print(std::error_code reason) {
  return fail("standard output", "cannot be written: " + reason_with_advice(reason));
}

std::string reason_of(const std::exception& error) {
  if (const auto* of_file = dynamic_cast<const std::filesystem::filesystem_error*>(&error)) {
    const std::string path = of_file->path1().string();
    if (path.empty())
      return "the working directory: " + of_file->code().message() + "; go to another";
    return path + ": " + reason_with_advice(of_file->code());
  }
  const auto* of_system = dynamic_cast<const std::system_error*>(&error);
  const bool is_memory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr ||
                         (of_system && of_system->code() == std::errc::not_enough_memory);
  if (is_memory) return "not enough memory; close other programs, or give -j 1";
  const std::string_view text = error.what();
  for (const Translation& translation : TRANSLATIONS) {
    if (text == translation.text) return std::string(translation.meaning);
  }
  return std::string(text);
}

std::string shown_name(const std::string& argument) {
  return argument == "-" ? "standard input" : argument;
}

std::string name_of_file(const std::string& argument, const Kessel::Finding& finding) {
  if (finding.file.empty()) return shown_name(argument);
  const std::filesystem::path folder =
      argument == "-" ? "" : std::filesystem::path(argument).parent_path();
  return (folder / finding.file).string();
}

std::string in_command(const std::string& argument) {
  return printable(argument.find(' ') == std::string::npos ? argument : "'" + argument + "'");
}

int fail_to_find(const std::string& argument, const Kessel::PartError& error) {
  return fail(shown_name(argument), printable(error.sentence()) + " velkstep extract " +
                                        in_command(argument) + " --list lists all.");
}

std::filesystem::path folder_of_input(const std::string& argument) {
  if (argument == "-") return std::filesystem::current_path();
  return std::filesystem::absolute(argument).parent_path();
}

namespace {

/// What `run` returns; its exceptions are printed as by fail().
template <class Run>
int with_reasons(const std::string& argument, Run run) {
  try {
    return run();
  } catch (const Interrupted&) {
    throw;
  } catch (const Kessel::InputError& error) {
    return fail_at(name_of_file(argument, error.finding()), error.finding());
  } catch (const Kessel::PartError& error) {
    return fail_to_find(argument, error);
  } catch (const UnusableOutput& error) {
    return fail(error.path().string(), error.what());
  } catch (const Kessel::OutputError& error) {  // Of what is read together.
    return fail(shown_name(argument), "no temporary file in " + error.path().string() + ": " +
                                          error.reason().message() +
                                          "; TMPDIR names another folder for it");
  } catch (const std::exception& error) {
    return fail(shown_name(argument), reason_of(error));
  }
}

}  // namespace

int with_input(const std::string& argument,
               const std::function<int(const std::filesystem::path&)>& look) {
  return with_reasons(argument, [&] {
    const Input input(argument);
    return look(input.path());
  });
}

int with_path(const std::string& argument,
              const std::function<int(const std::filesystem::path&)>& look,
              const std::function<int(const Kessel::Finding&)>& refused) {
  return with_reasons(argument, [&] {
    if (!needs_a_copy(argument)) return look(argument);
    std::optional<Input> input;
    try {
      input.emplace(argument);
    } catch (const Kessel::InputError& error) {
      return refused(error.finding());
    }
    return look(input->path());
  });
}

int print(std::string_view text) {
  errno = 0;
  std::cout << text << std::flush;
  if (std::cout) return EXIT_DONE;
  return fail_to_print({errno != 0 ? errno : EIO, std::generic_category()});
}

void mention_no_part(const std::string& argument) {
  std::cerr << "velkstep: " << printable(shown_name(argument))
            << ": holds no part: no product definition has a shape or a component; velkstep info "
               "says what it holds\n";
}

}  // namespace Velkstep
