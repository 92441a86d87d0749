// What commands that look at one input have in common: errors in one line, exit codes.
#include "run/with_input.h"

#include <iostream>
#include <new>
#include <optional>
#include <system_error>

#include "kessel/errors.h"
#include "run/exit_codes.h"
#include "system/input.h"
#include "system/interruption.h"
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
     "an assembly's file would lack the definition or shape of a component to which it must refer"},
};

}  // namespace

int fail(std::string_view name, std::string_view reason) {
  std::cerr << "velkstep: " << printable(name) << ": " << reason << '\n';
  return EXIT_FAILED;
}

std::string place_in(const std::string& name, const Kessel::Finding& finding) {
  if (finding.line == 0) return name;
  return name + ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column);
}

int fail_at(const std::string& name, const Kessel::Finding& finding) {
  return fail(place_in(name, finding), finding.sentence);
}

int fail_to_write(const Kessel::OutputError& error) {
  if (error.reason() == std::errc::file_exists) {
    return fail(error.path().string(),
                "is there already; --force replaces it, unless it is an input");
  }
  return fail(error.path().string(), "cannot be written: " + error.reason().message());
}

std::string reason_of(const std::exception& error) {
  const auto* of_system = dynamic_cast<const std::system_error*>(&error);
  if (of_system != nullptr && of_system->code() == std::errc::not_enough_memory) {
    return "not enough memory";
  }
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return "not enough memory";
  const std::string_view text = error.what();
  for (const Translation& translation : TRANSLATIONS) {
    if (text == translation.text) return std::string(translation.meaning);
  }
  return std::string(text);
}

std::string shown_name(const std::string& argument) {
  return argument == "-" ? "standard input" : argument;
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
    return fail_at(shown_name(argument), error.finding());
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
  std::cout << text << std::flush;
  if (!std::cout) return fail("standard output", "cannot be written");
  return EXIT_DONE;
}

}  // namespace Velkstep
