// Files that no command reads: all of them refuse those with the same sentence and place.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "inspection/products.h"
#include "kessel/assembly.h"
#include "kessel/check.h"
#include "kessel/diff.h"
#include "kessel/drawing.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "kessel/join.h"
#include "kessel/overview.h"
#include "kessel/picture.h"
#include "kessel/shrink.h"
#include "kessel/splitter.h"
#include "kessel/summary.h"
#include "kessel/verify.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

const std::string HEADER = "ISO-10303-21;\nHEADER;\nENDSEC;\n";

/// A finding as "LINE:COLUMN KIND: SENTENCE", with 0 for a finding on the whole file.
std::string text_of(const Finding& finding) {
  std::string place = std::to_string(finding.line);
  if (finding.line != 0) place += ":" + std::to_string(finding.column);
  return place + " " + std::string(name_of(finding.kind)) + ": " + finding.sentence;
}

/// For which error `read` refuses `in`; empty where it does not. Expects that the exception names
/// the file, with the place where it has one.
template <class Read>
std::string refusal_of(const fs::path& in, Read read) {
  try {
    read();
  } catch (const InputError& error) {
    const Finding& finding = error.finding();
    std::string place = in.string();
    if (finding.line != 0) {
      place += ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column);
    }
    EXPECT_EQ(error.path(), in);
    EXPECT_EQ(error.what(), place + ": " + finding.sentence);
    return text_of(finding);
  } catch (const PartError& error) {  // The file was read.
    EXPECT_EQ(error.path(), in);
    EXPECT_EQ(error.what(), in.string() + ": " + error.sentence());
    return "";
  }
  return "";
}

void split_in_style(const fs::path& in, AssemblyStyle assemblies) {
  Options options;
  options.assemblies = assemblies;
  split(in, "out", options);
}

/// Verifies a folder with a file that can be read.
void verify_as_split(const fs::path& in) {
  fs::create_directory("out");
  std::ofstream("out/whole.stp") << exchange_file("#1=A();\n");
  std::ofstream("out/roots.txt") << "whole.stp\n";
  const std::vector<Finding> findings = verify(in, "out").findings;
  fs::remove_all("out");
  for (const Finding& finding : findings) {
    if (finding.severity == Severity::error && finding.file.empty()) {
      throw InputError(finding, in);
    }
  }
}

/// All else that reads a file, and leaves at most "out".
struct Reader {
  const char* name;
  void (*read)(const fs::path& in);
};
const Reader READERS[] = {
    {"classic", [](const fs::path& in) { split_in_style(in, AssemblyStyle::classic); }},
    {"lean", [](const fs::path& in) { split_in_style(in, AssemblyStyle::lean); }},
    {"nested", [](const fs::path& in) { split_in_style(in, AssemblyStyle::nested); }},
    {"extract", [](const fs::path& in) { extract(in, "#1", "out"); }},
    {"parts", [](const fs::path& in) { read_parts(in); }},
    {"shrink", [](const fs::path& in) { shrink(in, "out"); }},
    {"join", [](const fs::path& in) { join(in, "out"); }},
    {"diff", [](const fs::path& in) { diff(in, in); }},
    {"drawing", [](const fs::path& in) { read_drawing(in); }},
    {"overview", [](const fs::path& in) { read_overview(in, DrawingOptions()); }},
    {"picture", [](const fs::path& in) { draw_picture(in, "out"); }},
    {"verify", verify_as_split},
};

/// For which error check, read_assembly and read_summary refuse the file, all three alike.
std::string refusal_of_file(const fs::path& in, const Options& options = {}) {
  std::string found;
  for (const Finding& finding : check(in, options)) {
    if (finding.severity == Severity::error) found += text_of(finding);
  }
  EXPECT_EQ(refusal_of(in, [&] { read_assembly(in, options); }), found);
  EXPECT_EQ(refusal_of(in, [&] { read_summary(in, options); }), found);
  return found;
}

/// For which error all functions refuse the file alike.
std::string refusal_by_all(const fs::path& in) {
  const std::string found = refusal_of_file(in);
  for (const Reader& reader : READERS) {
    EXPECT_EQ(refusal_of(in, [&] { reader.read(in); }), found) << reader.name;
    EXPECT_TRUE(found.empty() || !fs::exists("out")) << reader.name;
    fs::remove_all("out");
    fs::remove("roots.txt");
  }
  return found;
}

std::string refusal_of_text(const std::string& text, const Options& options) {
  const ScratchFolder folder;
  return refusal_of_file(folder.write("in.stp", text), options);
}

std::string refusal_of_text(const std::string& text) {
  const ScratchFolder folder;
  return refusal_by_all(folder.write("in.stp", text));
}

TEST(RefusedInput, FilesThatAreNoExchangeFiles) {
  using namespace std::string_literals;
  EXPECT_EQ(refusal_of_text(""), "0 empty_file: The file is empty.");
  EXPECT_EQ(refusal_of_text("\x1F\x8B\b\0\0\0\0\0"s),
            "0 compressed: The file is compressed (gzip); unpack it first.");
  EXPECT_EQ(refusal_of_text("PK\x03\x04\x14\0"s),
            "0 compressed: The file is compressed (zip); unpack it first.");
  EXPECT_EQ(refusal_of_text("\xFF\xFEI\0S\0O\0"s),
            "0 other_encoding: The file is text in UTF-16, which is not read; save it as UTF-8.");
  EXPECT_EQ(refusal_of_text("I\0S\0O\0-\0"s),
            "0 other_encoding: The file is text in UTF-16, which is not read; save it as UTF-8.");
  EXPECT_EQ(refusal_of_text("solid\0\x01\x02"s),
            "0 binary: The file is no exchange file: it is binary data.");
  EXPECT_EQ(refusal_of_text("hello\n"),
            "0 not_an_exchange_file: The file is no exchange file: it does not begin with "
            "\"ISO-10303-21\".");
}

TEST(RefusedInput, WhatIsNoFile) {
  const ScratchFolder folder;
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  EXPECT_EQ(refusal_of_file("."), "0 unreadable: The file is a folder.");
  EXPECT_EQ(refusal_of_file("pipe"),
            "0 unreadable: The file is not a regular file, and the input is read twice.");
  EXPECT_EQ(refusal_by_all("missing.stp"),
            "0 unreadable: The file cannot be opened: No such file or directory.");
}

TEST(RefusedInput, FilesThatBreakOff) {
  EXPECT_EQ(refusal_of_text("ISO-10303-21;\n"),
            "2:1 missing_header: The header section, \"HEADER;\", should begin here.");
  EXPECT_EQ(refusal_of_text("ISO-10303-21;\nHEADER;\n"),
            "3:1 unclosed_section: The HEADER section is not closed by \"ENDSEC;\".");
  EXPECT_EQ(refusal_of_text(HEADER + "DATA;\n#1=A();\n"),
            "6:1 unclosed_section: The DATA section is not closed by \"ENDSEC;\".");
  EXPECT_EQ(refusal_of_text(HEADER + "DATA;\n#1=A("),
            "5:1 unclosed_record: No \";\" closes this record up to the end of the file.");
  EXPECT_EQ(refusal_of_text(HEADER + "DATA;\n#1=A('b;\n#2=C();\nENDSEC;\n"),
            "5:1 unclosed_string: A string in this statement is not closed up to the end of the "
            "file.");
}

TEST(RefusedInput, OneNumberWithTwoTexts) {
  EXPECT_EQ(refusal_of_text(exchange_file("#1=A();\n#1=B();\n")),
            "9:1 two_texts_of_a_number: #1 has stood for another record already.");
}

TEST(RefusedInput, MoreRecordsThanTheMemoryLimitHolds) {
  std::string records;
  for (int i = 1; i <= 20'000; ++i) records += record(i, "A(#1,#2,#3)");
  const std::string found = refusal_of_text(exchange_file(records), {.memory_limit = 500'000});
  EXPECT_TRUE(found.starts_with("0 memory_limit: The first ")) << found;
  EXPECT_NE(found.find(" bytes of memory, and the limit is 500,000; all may take about "),
            std::string::npos)
      << found;
  EXPECT_EQ(refusal_of_text(exchange_file(records), {.memory_limit = 5'000'000}), "");
  EXPECT_EQ(
      refusal_of_text(exchange_file("#1=A('" + std::string(3'000'000, 'x') + "');\n"),
                      {.memory_limit = 2'000'000}),
      "8:1 memory_limit: What stands here in front of the next \";\" is longer than the memory "
      "limit allows.");
}

// Only what makes it doubtful where records begin and end is refused.
TEST(RefusedInput, AllElseIsRead) {
  const std::string END = "ENDSEC;\nEND-ISO-10303-21;\n";
  for (const std::string& text : {
           HEADER,
           HEADER + "DATA;\n" + END,
           HEADER + "DATA;\n#1=A();;\nstray text;\n" + END,
           HEADER + "DATA;\n#1=A(#2);\n" + END + "more",
           HEADER + "DATA;\n#1=A('\xE9\\');\n#0=A();\nENDSEC;\nEND-ISO-10303-21",
           "\xEF\xBB\xBFISO-10303-21; HEADER; ENDSEC; DATA; /* ; */ " + END,
           "ISO-10303-21;\rHEADER;\rENDSEC;\rDATA;\r" + END,
       }) {
    EXPECT_EQ(refusal_of_text(text, {}), "") << text;
  }
}

}  // namespace
}  // namespace Kessel::test
