// What commands that look at one input have in common: errors in one line, exit codes.
#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include "kessel/errors.h"
#include "kessel/extract.h"
#include "kessel/finding.h"

namespace Velkstep {

/// Prints "velkstep: NAME: REASON" on standard error and returns EXIT_FAILED. What NAME holds that
/// is not for terminals is replaced.
int fail(std::string_view name, std::string_view reason);

/// The same for what was found in the input NAME, with its place: "NAME:12:5: REASON".
int fail_at(const std::string& name, const Kessel::Finding& finding);

/// "NAME:12:5", with line and column where the finding has them.
std::string place_in(const std::string& name, const Kessel::Finding& finding);

/// As fail() for an output that was to appear as a whole; `force` says whether what is there was to
/// be replaced.
int fail_to_write(const Kessel::OutputError& error, bool force);

/// As fail() for standard output.
int fail_to_print(std::error_code reason);

/// As fail() for a part that the input `argument` does not have, or not alone.
int fail_to_find(const std::string& argument, const Kessel::PartError& error);

/// Why something failed, in the words of fail().
std::string reason_of(const std::exception& error);

/// What an input is called in messages: its path, or "standard input".
std::string shown_name(const std::string& argument);

/// How an argument is written in a command that a message proposes.
std::string in_command(const std::string& argument);

/// What the file that a finding on the input `argument` names is called: the input, or one that is
/// seen from its folder.
std::string name_of_file(const std::string& argument, const Kessel::Finding& finding);

/// The absolute path of the folder from which an input's names of other files are seen: the one
/// that it lies in, or the working directory for standard input.
std::filesystem::path folder_of_input(const std::string& argument);

/// Calls `look(path)` with a path where the input `argument` ("-" for standard input) can be read
/// and returns what it returns. Its exceptions, and those of an input that cannot be read, are
/// printed as by fail(); Interrupted passes.
int with_input(const std::string& argument,
               const std::function<int(const std::filesystem::path&)>& look);

/// The same for commands to which a file that cannot be read is a finding: only what can be read
/// just once, or is compressed, is looked at first. All else is called with the path as it is.
/// Where it is an archive that cannot be unpacked, `refused` is called in place of `look`.
int with_path(const std::string& argument,
              const std::function<int(const std::filesystem::path&)>& look,
              const std::function<int(const Kessel::Finding&)>& refused);

/// Prints `text` on standard output. Returns EXIT_DONE, or fails when it cannot be written.
int print(std::string_view text);

/// Says on standard error that an input holds no part.
void mention_no_part(const std::string& argument);

}  // namespace Velkstep
