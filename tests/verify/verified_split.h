// Small splits to verify, whole or damaged.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "check/check_text.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {

/// A split of "in.stp" into the folder "out", with "roots.txt" in it, in a scratch folder.
class VerifiedSplit : public testing::Test {
 protected:
  /// Splits an exchange file of these records.
  void split_records(std::string_view records, const Options& options = {}) {
    folder_.write("in.stp", exchange_file(records));
    split_input(options);
  }

  /// Splits "in.stp".
  void split_input(const Options& options = {}) {
    options_ = options;
    printed_by([&] { split_paths("in.stp", "out", options); });
    if (std::filesystem::exists("roots.txt")) {
      std::filesystem::rename("roots.txt", "out/roots.txt");
    }
  }

  /// Puts `by` in the place of `piece`, which stands in the file `name` of "out" once.
  static void replace(const std::string& name, std::string_view piece, std::string_view by) {
    std::string text = read_file("out/" + name);
    const std::size_t at = text.find(piece);
    ASSERT_NE(at, std::string::npos) << piece << " is not in\n" << text;
    ASSERT_EQ(text.find(piece, at + 1), std::string::npos) << piece << " is there twice";
    write(name, text.replace(at, piece.size(), by));
  }

  static void write(const std::string& name, std::string_view text) {
    std::ofstream out("out/" + name, std::ios::binary);
    out << text;
  }

  /// The line of `piece` in the file `name` of "out", as describe() puts it.
  static std::string at(const std::string& name, std::string_view piece) {
    return name + ":" + place_of(piece, read_file("out/" + name));
  }

  /// What is found, a line each: the file, ":", and what describe() gives.
  Lines found() const {
    Lines lines;
    for (const Finding& finding : verify("in.stp", "out", options_).findings) {
      lines.push_back(finding.file + ":" + describe(finding));
    }
    return lines;
  }

  ScratchFolder folder_;
  Options options_;
};

}  // namespace Kessel::test
