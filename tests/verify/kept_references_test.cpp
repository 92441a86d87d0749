// Splits of an input that refers to other files: names that lead elsewhere are found.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "kessel/errors.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "support/folder_tree.h"
#include "support/referring_input.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// The reference of the definition #`definition` to the file `name` in the folder `folder`, as some
/// systems write it, numbered from `number` on.
std::string reference_by_folder(int number, const std::string& folder, const std::string& name,
                                int definition) {
  const auto at = [&](int i) { return "#" + std::to_string(number + i); };
  return at(0) + "=DOCUMENT_FILE('" + name + "','','',$,'',$);\n" + at(1) +
         "=EXTERNAL_SOURCE(IDENTIFIER('" + folder + "'));\n" + at(2) +
         "=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('" + name + "',$," + at(1) + ",(" + at(0) +
         "));\n" + at(3) + "=APPLIED_DOCUMENT_REFERENCE(" + at(0) + ",'',(#" +
         std::to_string(definition) + "));\n";
}

/// Puts `by` in place of every `piece` of the text.
std::string with_all(std::string text, const std::string& piece, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(piece, at)) != std::string::npos; at += by.size()) {
    text.replace(at, piece.size(), by);
  }
  return text;
}

/// A whole of parts in other files, named in all ways: "lid.stp", "far/hinge.stp", "knob.stp" of
/// the folder "more", and the style at the anchor "x" of "far/styles.stp". The file of the lid
/// refers to that of the hinge.
class VerifiedReferences : public testing::TestWithParam<AssemblyStyle> {
 protected:
  VerifiedReferences() {
    fs::create_directories("in/far");
    fs::create_directories("in/more");
    folder_.write("in/lid.stp",
                  exchange_file(SHARED_RECORDS + product_records(10, "lid", "#3") +
                                product_records(20, "hinge", "#3") + usage_record(60, 10, 20) +
                                reference(70, "far/hinge.stp", 20)));
    folder_.write("in/far/hinge.stp", part_in_a_file("hinge"));
    folder_.write("in/more/knob.stp", part_in_a_file("knob"));
    folder_.write("in/far/styles.stp",
                  "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nANCHOR;\n"
                  "<x>=#1;\nENDSEC;\nDATA;\n#1=PRESENTATION_STYLE_ASSIGNMENT(());\nENDSEC;\n"
                  "END-ISO-10303-21;\n");
    std::string text = exchange_file(
        SHARED_RECORDS + product_records(10, "whole", "#3") + product_records(20, "own", "#3,#50") +
        solid_records(50) + product_records(30, "lid", "#3") + product_records(40, "hinge", "#3") +
        product_records(150, "knob", "#3") + usage_record(160, 10, 20) + usage_record(161, 10, 30) +
        usage_record(162, 10, 40) + usage_record(163, 10, 150) + reference(170, "lid.stp", 30) +
        reference(180, "far/hinge.stp", 40) + reference_by_folder(190, "more", "knob.stp", 150) +
        "#199=STYLED_ITEM('',(#200),#50);\n");
    const std::string section = "REFERENCE;\n#200=<far/styles.stp#x>;\nENDSEC;\n";
    folder_.write("in/in.stp", text.insert(text.find("DATA;"), section));
  }

  void split_in(bool copying) {
    Options options;
    options.assemblies = GetParam();
    options.copy_references = copying;
    split("in/in.stp", "out", options);
    fs::rename("roots.txt", "out/roots.txt");
  }

  static std::vector<std::string> findings() {
    std::vector<std::string> found;
    for (const Finding& finding : verify("in/in.stp", "out").findings) {
      found.push_back(finding.file + ": " + std::string(name_of(finding.kind)) + ": " +
                      finding.sentence);
    }
    return found;
  }

  /// Whether something is wrong beside the hash in the list of the split, which tells any change.
  static bool finds_more_than_the_list() {
    const auto found = verify("in/in.stp", "out").findings;
    return std::any_of(found.begin(), found.end(), [](const Finding& finding) {
      return finding.kind != FindingKind::changed_listed_file;
    });
  }

  static void write(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
  }

  /// Puts each of `others` in place of each occurrence of each of `names`, one after the other, and
  /// expects that this is found. Returns how many there were.
  static int expect_all_found(const std::vector<std::string>& names,
                              const std::vector<std::string>& others) {
    int count = 0;
    for (const std::string& file : names_in("out")) {
      const fs::path path = fs::path("out") / file;
      const std::string text = read_file(path);
      for (const std::string& name : names) {
        for (std::size_t at = text.find(name); at != std::string::npos;
             at = text.find(name, at + 1)) {
          for (const std::string& other : others) {
            // No header and no name of something else.
            if (other == name || at < text.find("ENDSEC;")) continue;
            write(path, std::string(text).replace(at, name.size(), other));
            EXPECT_TRUE(finds_more_than_the_list())
                << file << ": " << other << " in place of " << name << " at " << at;
            ++count;
          }
        }
      }
      write(path, text);
    }
    return count;
  }

  ScratchFolder folder_;
};

TEST_P(VerifiedReferences, NamesThatAreRightAreNoFinding) {
  split_in(false);
  EXPECT_THAT(findings(), testing::IsEmpty());
}

TEST_P(VerifiedReferences, CopiesThatAreRightAreNoFinding) {
  split_in(true);
  EXPECT_THAT(findings(), testing::IsEmpty());
  // Some are called in another way there.
  fs::remove_all("out");
  fs::create_directory("in/far/lid");
  fs::rename("in/more/knob.stp", "in/more/hinge.stp");
  std::string text = read_file("in/in.stp");
  for (std::size_t at; (at = text.find("knob.stp")) != std::string::npos;) {
    text.replace(at, 8, "hinge.stp");
  }
  write("in/in.stp", text);
  split_in(true);
  EXPECT_TRUE(fs::exists("out/hinge (2).stp"));
  EXPECT_THAT(findings(), testing::IsEmpty());
}

TEST_P(VerifiedReferences, OddNamesThatAreRightAreNoFinding) {
  const std::string plain = read_file("in/in.stp");
  for (const char* const name : {"./lid.stp",
                                 "far/../lid.stp",
                                 "no/../lid.stp",
                                 "no//where.stp",
                                 "lid.stp/",
                                 ".",
                                 "..",
                                 "/",
                                 "./",
                                 "../",
                                 "../in/lid.stp",
                                 "../../x.stp",
                                 "/no/where.stp",
                                 "C:\\\\x.stp",
                                 "\\\\\\\\host\\\\x.stp",
                                 "http://example.org/x.stp",
                                 "file:///x.stp",
                                 "%6Cid.stp",
                                 "a b.stp",
                                 "''.stp",
                                 "#1.stp",
                                 "x",
                                 "far",
                                 "in.stp",
                                 "out/x.stp",
                                 "../out/lid.stp",
                                 "~/x.stp",
                                 "lid.STP",
                                 "T\\X2\\00FC\\X0\\r.stp"}) {
    for (const bool is_resource : {false, true}) {
      const std::string odd(name);
      if (is_resource && odd.find_first_of("\\ #") != std::string::npos) continue;
      const std::string known = is_resource ? "far/styles.stp" : "lid.stp";
      std::string text = plain;
      for (std::size_t at = 0; (at = text.find(known, at)) != std::string::npos; at += odd.size()) {
        text.replace(at, known.size(), odd);
      }
      write("in/in.stp", text);
      for (const bool copying : {false, true}) {
        try {
          split_in(copying);
        } catch (const InputError&) {
          continue;  // It leads out of the folder, or to no exchange file.
        }
        EXPECT_THAT(findings(), testing::IsEmpty()) << name << copying << is_resource;
        fs::remove_all("out");
      }
    }
  }
}

TEST_P(VerifiedReferences, OneFileInSeveralWordingsIsNoFinding) {
  fs::create_symlink("../lid.stp", "in/far/linked.stp");
  fs::create_hard_link("in/lid.stp", "in/hard.stp");
  fs::copy_file("in/lid.stp", "in/more/lid.stp");  // says the same
  const std::string plain = read_file("in/in.stp");
  const std::string here = fs::absolute("in").string();
  const std::string hinge = "'far/hinge.stp'";
  const std::string document = "DOCUMENT_FILE('lid.stp'";
  const std::string style = "#199=";
  const std::string line = "#200=<far/styles.stp#x>;\n";
  const auto styles = [](int count) {
    std::string records;
    for (int i = 1; i <= count; ++i) {
      const std::string number = std::to_string(200 + i);
      records += "#4" + number + "=STYLED_ITEM('" + number + "',(#" + number + "),#50);\n";
    }
    return records;
  };
  using Changes = std::vector<std::pair<std::string, std::string>>;
  const Changes wordings[] = {
      {{hinge, "'./lid.stp'"}},
      {{hinge, "'far/../lid.stp'"}},
      {{hinge, "'.//lid.stp'"}},
      {{hinge, "'../in/lid.stp'"}},
      {{hinge, "'" + here + "/lid.stp'"}},
      {{hinge, "'.\\\\lid.stp'"}},
      {{hinge, "'far\\\\..\\\\lid.stp'"}},
      {{hinge, "'file://" + here + "/%6Cid.stp'"}},
      {{hinge, "'far/linked.stp'"}},
      {{hinge, "'hard.stp'"}},
      {{hinge, "'more/lid.stp'"}},
      {{document, "DOCUMENT_FILE('./lid.stp'"}},
      {{document, "DOCUMENT_FILE('hard.stp'"}},
      {{document, "DOCUMENT_FILE('no.stp'"}},
      {{document, "DOCUMENT_FILE('.\\\\lid.stp'"}},
      {{style, reference_by_folder(300, ".\\\\more", "lid.stp", 40) + style}},
      {{style, reference_by_folder(300, "more", "lid.stp", 40) +
                   reference_by_folder(310, "./more/", "knob.stp", 20) + style}},
      // The folder #191 of two names, which stand in files of their own.
      {{style,
        "#320=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
        "#321=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('lid.stp',$,#191,(#320));\n"
        "#322=APPLIED_DOCUMENT_REFERENCE(#320,'',(#30));\n" +
            style}},
      {{line, line + "#201=<./far/styles.stp#x>;\n#202=<far/%73tyles.stp#x>;\n"},
       {style, styles(2) + style}},
      {{line, line + "#201=<file://" + here + "/far/styles.stp#x>;\n"}, {style, styles(1) + style}},
  };
  for (const Changes& changes : wordings) {
    std::string text = plain;
    for (const auto& [piece, by] : changes) {
      ASSERT_NE(text.find(piece), std::string::npos) << piece;
      text = with_all(text, piece, by);
    }
    write("in/in.stp", text);
    for (const bool copying : {false, true}) {
      split_in(copying);
      EXPECT_THAT(findings(), testing::IsEmpty()) << changes.front().second << copying;
      fs::remove_all("out");
    }
  }
}

TEST_P(VerifiedReferences, NamesThatLeadElsewhereAreFound) {
  split_in(false);
  const int count =
      expect_all_found({"'../in/lid.stp'", "'../in/far/hinge.stp'"},
                       {"'lid.stp'", "'../lid.stp'", "'../in/../lid.stp'", "'../in/far/lid.stp'",
                        "'../in/Lid.stp'", "'far/hinge.stp'", "'../in/hinge.stp'",
                        "'../in/more/knob.stp'", "'../in/lid.stp'", "'../in/far/hinge.stp'", "''"});
  EXPECT_GE(count, 40);
  EXPECT_GE(expect_all_found({"'../in/more'"}, {"'more'", "''", "'../in'", "'../in/far'"}), 4);
  EXPECT_GE(expect_all_found({"<../in/far/styles.stp#x>"},
                             {"<far/styles.stp#x>", "<../in/styles.stp#x>", "<../in/lid.stp#x>",
                              "<../in/far/styles.stp#y>"}),
            4);
  EXPECT_THAT(findings(), testing::IsEmpty());
}

TEST_P(VerifiedReferences, AnotherWordingOfTheSamePathIsTheSame) {
  split_in(false);
  for (const std::string& file : names_in("out")) {
    std::string text = read_file(fs::path("out") / file);
    for (std::size_t at = 0; (at = text.find("'../in/lid.stp'", at)) != std::string::npos; ++at) {
      text.replace(at, 15, "'.././in/../in/lid.stp'");
    }
    write(fs::path("out") / file, text);
  }
  EXPECT_FALSE(finds_more_than_the_list());
}

TEST_P(VerifiedReferences, CopiesThatSaySomethingElseAreFound) {
  split_in(true);
  const auto expect_found = [&](const std::string& file, const std::string& text) {
    const std::string before = read_file("out/" + file);
    ASSERT_NE(before, text);
    write("out/" + file, text);
    EXPECT_TRUE(finds_more_than_the_list()) << file << "\n" << text;
    write("out/" + file, before);
  };
  const auto with = [](std::string text, const std::string& piece, const std::string& by) {
    return text.replace(text.find(piece), piece.size(), by);
  };
  const std::string lid = read_file("out/lid.stp");
  const std::string hinge = read_file("out/hinge.stp");
  expect_found("hinge.stp", with(hinge, "'hinge'", "'Hinge'"));
  expect_found("hinge.stp", lid);
  expect_found("hinge.stp", read_file("out/knob.stp"));
  expect_found("hinge.stp", "");
  expect_found("hinge.stp", with(hinge, "AUTOMOTIVE_DESIGN", "CONFIG_CONTROL_DESIGN"));
  expect_found("lid.stp", with(lid, "'hinge.stp'", "'knob.stp'"));
  expect_found("lid.stp", with(lid, "'hinge.stp'", "'far/hinge.stp'"));
  expect_found("styles.stp", with(read_file("out/styles.stp"), "<x>", "<y>"));
  fs::remove("out/hinge.stp");
  EXPECT_TRUE(finds_more_than_the_list());
  write("out/hinge.stp", hinge);
  EXPECT_THAT(findings(), testing::IsEmpty());
}

TEST_P(VerifiedReferences, NamesOfOtherCopiesAreFound) {
  split_in(true);
  EXPECT_GE(expect_all_found({"'lid.stp'", "'hinge.stp'", "'knob.stp'"},
                             {"'lid.stp'", "'hinge.stp'", "'knob.stp'", "'styles.stp'", "'no.stp'",
                              "'../in/no.stp'"}),
            30);
}

INSTANTIATE_TEST_SUITE_P(Styles, VerifiedReferences,
                         testing::Values(AssemblyStyle::lean, AssemblyStyle::nested),
                         [](const auto& test) {
                           return test.param == AssemblyStyle::lean ? "lean" : "nested";
                         });

}  // namespace
}  // namespace Kessel::test
