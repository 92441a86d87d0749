// What commands that look at one input have in common: errors in one line, exit codes.
#include "with_input.h"

#include <iostream>
#include <new>
#include <system_error>

#include "exit_codes.h"
#include "input.h"
#include "terminal.h"

namespace Velkstep {

int fail(std::string_view name, std::string_view reason) {
  std::cerr << "velkstep: " << printable(name) << ": " << reason << '\n';
  return EXIT_FAILED;
}

std::string reason_of(const std::exception& error) {
  const auto* of_system = dynamic_cast<const std::system_error*>(&error);
  if (of_system != nullptr && of_system->code() == std::errc::not_enough_memory) {
    return "not enough memory";
  }
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) return "not enough memory";
  return error.what();
}

std::string shown_name(const std::string& argument) {
  return argument == "-" ? "standard input" : argument;
}

int with_input(const std::string& argument,
               const std::function<int(const std::filesystem::path&)>& look) {
  try {
    const Input input(argument);
    return look(input.path());
  } catch (const std::exception& error) {
    return fail(shown_name(argument), reason_of(error));
  }
}

int print(std::string_view text) {
  std::cout << text << std::flush;
  if (!std::cout) return fail("standard output", "cannot be written");
  return EXIT_DONE;
}

}  // namespace Velkstep
