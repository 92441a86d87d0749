// A slow, plain second implementation of the splitter that works in memory. Tests compare it with
// the library on generated inputs, so it shares no code with the library.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace naive {

/// Everything that one run leaves behind.
struct Outcome {
  /// What `Run` returns, the root's file first; lexically normal paths. Empty when an exception
  /// ended the run.
  std::vector<std::string> result;
  /// The whole text written to each file, by the path it is opened under (folder joined with name).
  std::map<std::string, std::string> files;
  /// Everything printed on standard error, in order.
  std::string messages;
  /// The exception that ended the run, such as "out_of_range: invalid vector subscript"; empty
  /// when none did.
  std::string exception;
  /// The text of "roots.txt", when the run writes that file.
  std::optional<std::string> roots_txt;
};

/// Splits `input` (the bytes of an exchange file) as a run into the empty folder `outdir` does, and
/// touches no file. Every output file can be opened, except the one of a part without a name in an
/// input of several parts. `now` stands where the run puts its time stamp. Starts with no file name
/// taken, as the first run of a process does.
///
/// Throws std::logic_error "endless" when the run would not return, and std::logic_error "store too
/// large" when an instance number makes the store of instances exceed 2^30 slots (which take 8 GiB
/// in the library, and nothing here).
Outcome split(std::string_view input, const std::string& outdir, const std::string& now);

}  // namespace naive
