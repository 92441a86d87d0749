// Runs the whole splitter on a text and collects everything that it leaves behind.
#pragma once

#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/splitter.h"

namespace Kessel::test {

/// Everything that one run leaves behind. Time stamps are replaced by "<time>".
struct SplitRun {
  std::vector<std::string> result;           ///< what Run returned
  std::map<std::string, std::string> files;  ///< text by path relative to the working directory
  std::string messages;                      ///< what was printed on standard error
  std::string exception;                     ///< "kind: text", or empty
  std::optional<std::string> roots_txt;      ///< the text of "roots.txt"
};

/// Splits `input` into the folder `outdir`, in a scratch folder of its own, and clears the statics.
SplitRun split_text(std::string_view input, const std::string& outdir = "out");

/// The checked form, and of what it returns the paths.
inline std::vector<std::filesystem::path> split_paths(const std::filesystem::path& in,
                                                      const std::filesystem::path& outdir,
                                                      const Options& options = {}) {
  std::vector<std::filesystem::path> paths;
  for (const WrittenFile& file : split(in, outdir, options)) paths.push_back(file.path);
  return paths;
}

/// Redirects std::cerr while it lives.
class CapturedErrors {
 public:
  CapturedErrors() : before_(std::cerr.rdbuf(captured_.rdbuf())) {}
  CapturedErrors(const CapturedErrors&) = delete;
  CapturedErrors& operator=(const CapturedErrors&) = delete;
  ~CapturedErrors() { std::cerr.rdbuf(before_); }
  std::string text() const { return captured_.str(); }

 private:
  std::ostringstream captured_;
  std::streambuf* before_;
};

/// What `action` prints on std::cerr.
template <class Action>
std::string printed_by(Action action) {
  const CapturedErrors captured;
  action();
  return captured.text();
}

}  // namespace Kessel::test
