// A small split to verify, whole or damaged.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "join/marked_split.h"
#include "kessel/verify.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

/// "in.stp" and its split in the folder "out".
class VerifiedSplit : public testing::Test {
 protected:
  VerifiedSplit() {
    folder_.write("in.stp", whole_file(INPUT));
    std::filesystem::create_directory("out");
    write("root.stp", whole_file(MARKED_ROOT));
    write("part.stp", whole_file(MARKED_PART));
    write("roots.txt", "root.stp\n");
  }

  static void write(const std::string& name, std::string_view text) {
    std::ofstream out("out/" + name, std::ios::binary);
    out << text;
  }

  /// Puts `by` in the place of `piece`, which stands in the file `name` of "out" once.
  static void replace(const std::string& name, std::string_view piece, std::string_view by) {
    std::string text = read_file("out/" + name);
    const std::size_t at = text.find(piece);
    ASSERT_NE(at, std::string::npos) << piece << " is not in\n" << text;
    ASSERT_EQ(text.find(piece, at + 1), std::string::npos) << piece << " is there twice";
    write(name, text.replace(at, piece.size(), by));
  }

  /// What is found, a line each: the file, line, severity, kind and sentence.
  static std::vector<std::string> found() {
    std::vector<std::string> lines;
    for (const Finding& finding : verify("in.stp", "out").findings) {
      lines.push_back(finding.file + ":" + std::to_string(finding.line) + ": " +
                      (finding.severity == Severity::error ? "error " : "warning ") +
                      std::string(name_of(finding.kind)) + ": " + finding.sentence);
    }
    return lines;
  }

  ScratchFolder folder_;
};

using FoundLines = std::vector<std::string>;

}  // namespace Kessel::test
