// What commands that look at one input have in common: errors in one line, exit codes.
#include "with_input.h"

#include <exception>
#include <iostream>
#include <new>

#include "exit_codes.h"
#include "input.h"
#include "terminal.h"

namespace Velkstep {

int fail(std::string_view name, std::string_view reason) {
  std::cerr << "velkstep: " << printable(name) << ": " << reason << '\n';
  return EXIT_FAILED;
}

std::string shown_name(const std::string& argument) {
  return argument == "-" ? "standard input" : argument;
}

int with_input(const std::string& argument,
               const std::function<int(const std::filesystem::path&)>& look) {
  try {
    const Input input(argument);
    return look(input.path());
  } catch (const std::bad_alloc&) {
    return fail(shown_name(argument), "not enough memory");
  } catch (const std::exception& error) {
    return fail(shown_name(argument), error.what());
  }
}

int print(std::string_view text) {
  std::cout << text << std::flush;
  if (!std::cout) return fail("standard output", "cannot be written");
  return EXIT_DONE;
}

}  // namespace Velkstep
