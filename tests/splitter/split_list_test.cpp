// The list that a split leaves of its files: its hash, its form, and who reads it.
#include "kessel/split_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "split_list/json_text.h"
#include "split_list/xxh64.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

std::uint64_t hash_of(std::string_view text) {
  Xxh64 hash;
  hash.add(text);
  return hash.value();
}

TEST(Xxh64, GivesWhatOthersGive) {
  EXPECT_EQ(hash_of(""), 0xef46'db37'51d8'e999);
  EXPECT_EQ(hash_of("a"), 0xd24e'c4f1'a98c'6e5b);
  EXPECT_EQ(hash_of("abc"), 0x44bc'2cf5'ad77'0999);
  EXPECT_EQ(hash_of("The quick brown fox jumps over the lazy dog"), 0x0b24'2d36'1fda'71bc);
}

TEST(Xxh64, DoesNotDependOnThePieces) {
  std::string text;
  for (int i = 0; i < 200; ++i) text += static_cast<char>(i * 7);
  for (std::size_t size = 0; size <= text.size(); ++size) {
    const std::string_view part = std::string_view(text).substr(0, size);
    for (const std::size_t piece : {1U, 3U, 31U, 32U, 33U, 64U}) {
      Xxh64 hash;
      for (std::size_t at = 0; at < size; at += piece) hash.add(part.substr(at, piece));
      ASSERT_EQ(hash.value(), hash_of(part)) << size << " in pieces of " << piece;
    }
  }
}

TEST(JsonText, StringsComeBack) {
  std::string text;
  for (char c = 1; c < 0x7F; ++c) text += c;
  text += "\x7F\u00e9\u652f\U0001F600";
  const auto value = read_json(json_string(text));
  ASSERT_TRUE(value.has_value());
  EXPECT_EQ(value->text, text);
  EXPECT_EQ(json_string("a\"\\\n\xFC"), "\"a\\\"\\\\\\u000a\u00fc\"");
}

TEST(JsonText, ReadsWhatIsJson) {
  const auto value = read_json(
      " {\"a\" : [1, -2.5e3, true, null, \"\\u00fc\\ud83d\\ude00\\n\"], \"b\": {}, \"c\": []}\n");
  ASSERT_TRUE(value.has_value());
  const JsonValue* const list = value->find("a");
  ASSERT_NE(list, nullptr);
  ASSERT_EQ(list->items.size(), 5u);
  EXPECT_EQ(list->items[0].whole_number(), 1u);
  EXPECT_EQ(list->items[1].whole_number(), std::nullopt);
  EXPECT_EQ(list->items[3].kind, JsonValue::Kind::other);
  EXPECT_EQ(list->items[4].text, "\u00fc\U0001F600\n");
  EXPECT_EQ(value->find("d"), nullptr);
  EXPECT_EQ(read_json("18446744073709551615")->whole_number(), UINT64_MAX);
  EXPECT_EQ(read_json("18446744073709551616")->whole_number(), std::nullopt);
}

TEST(JsonText, RefusesWhatIsNot) {
  for (const char* text : {"",
                           " ",
                           "{",
                           "[",
                           "[1,",
                           "[1 2]",
                           "[1,]",
                           "{\"a\"}",
                           "{\"a\":1,}",
                           "{a:1}",
                           "\"",
                           "\"a",
                           "\"\\",
                           "\"\\x\"",
                           "\"\\u12\"",
                           "\"\\ud800\"",
                           "\"\\ud800\\u0041\"",
                           "\"\\udc00\"",
                           "nul",
                           "1 2",
                           "-",
                           "tru",
                           "{} {}",
                           "]"}) {
    EXPECT_EQ(read_json(text), std::nullopt) << text;
  }
  EXPECT_TRUE(read_json(std::string(30, '[') + std::string(30, ']')).has_value());
  EXPECT_FALSE(read_json(std::string(100'000, '[')).has_value());
}

/// The box with its lid, split into "out".
class SplitListTest : public testing::Test {
 protected:
  SplitListTest() {
    in_ = folder_.write("in.stp", exchange_file(BOX_WITH_LID));
    split(in_, "out");
  }

  static void write(const std::string& name, const std::string& text) {
    std::ofstream("out/" + name, std::ios::binary) << text;
  }

  /// What `verify` finds, a line each.
  std::vector<std::string> found() const {
    std::vector<std::string> lines;
    for (const Finding& finding : verify(in_, "out").findings) {
      lines.push_back(finding.file + ": " +
                      (finding.severity == Severity::error ? "error " : "warning ") +
                      std::string(name_of(finding.kind)) + ": " + finding.sentence);
    }
    return lines;
  }

  ScratchFolder folder_;
  fs::path in_;
};

TEST_F(SplitListTest, NamesWhatWasWritten) {
  const auto hash = [](const char* file) {
    std::string text(16, '0');
    std::snprintf(text.data(), 17, "%016llx",
                  static_cast<unsigned long long>(hash_of(read_file(file))));
    return text;
  };
  const auto bytes = [](const char* file) { return std::to_string(fs::file_size(file)); };
  EXPECT_EQ(read_file("out/velkstep-split.json"),
            "{\n"
            " \"format\": 1,\n"
            " \"program\": \"velkstep " VELKSTEP_VERSION
            "\",\n"
            " \"options\": {\"assemblies\": \"nested\", \"names\": \"product\", \"reading\": "
            "\"standard\"},\n"
            " \"input\": {\"name\": \"in.stp\", \"bytes\": " +
                bytes("in.stp") +
                "},\n"
                " \"root\": \"box.stp\",\n"
                " \"hash\": \"XXH64\",\n"
                " \"files\": [\n"
                "  {\"file\": \"box.stp\", \"record\": 3, \"id\": \"box\", \"name\": \"box\", "
                "\"bytes\": " +
                bytes("out/box.stp") + ", \"hash\": \"" + hash("out/box.stp") +
                "\"},\n"
                "  {\"file\": \"lid.stp\", \"record\": 6, \"id\": \"lid\", \"name\": \"lid\", "
                "\"bytes\": " +
                bytes("out/lid.stp") + ", \"hash\": \"" + hash("out/lid.stp") +
                "\"}\n"
                " ]\n"
                "}\n");
  EXPECT_FALSE(fs::exists("velkstep-split.json"));
}

TEST_F(SplitListTest, IsReadBackAndWrittenAgain) {
  const std::string text = read_file("out/velkstep-split.json");
  const auto list = read_split_list("out");
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->root, "box.stp");
  EXPECT_EQ(list->input, "in.stp");
  ASSERT_EQ(list->files.size(), 2u);
  EXPECT_EQ(list->files[1].name, "lid.stp");
  EXPECT_EQ(list->files[1].record, 6u);
  write_split_list(*list, "out");
  EXPECT_EQ(read_file("out/velkstep-split.json"), text);
  EXPECT_EQ(read_split_list("."), std::nullopt);
}

TEST_F(SplitListTest, SaysTheChoicesAndTheInputsName) {
  split(in_, "other",
        {.assemblies = AssemblyStyle::lean,
         .names = NameStyle::record,
         .input_name = "Gr\u00fc\xFF\u00dfe.step"});
  const auto list = read_split_list("other");
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->assemblies, "lean");
  EXPECT_EQ(list->names, "record");
  EXPECT_EQ(list->input, "Gr\u00fc\u00ff\u00dfe.step");
  EXPECT_EQ(list->input_bytes, fs::file_size(in_));
  EXPECT_EQ(list->files[0].name, "#1_part.stp");
}

TEST_F(SplitListTest, InputMayHaveAnyName) {
  fs::copy(in_, "b\xFCx.stp");
  EXPECT_EQ(split("b\xFCx.stp", "other").size(), 2u);
  EXPECT_EQ(read_split_list("other")->input, "b\u00fcx.stp");
}

TEST_F(SplitListTest, ClassicSplitsHaveNone) {
  split(in_, "classic", Options::classic());
  EXPECT_EQ(names_in("classic"), (std::set<std::string>{"#1_part.stp", "#4_part.stp"}));
  split(in_, "product", {.assemblies = AssemblyStyle::classic});
  EXPECT_EQ(names_in("product"), (std::set<std::string>{"box.stp", "lid.stp"}));
}

TEST_F(SplitListTest, ThatIsThereAlreadyIsNotReplaced) {
  fs::create_directory("mine");
  folder_.write("mine/velkstep-split.json", "mine");
  fs::remove("roots.txt");
  try {
    split(in_, "mine");
    ADD_FAILURE() << "no exception";
  } catch (const OutputError& error) {
    EXPECT_EQ(error.path(), "mine/velkstep-split.json");
    EXPECT_EQ(error.reason(), std::errc::file_exists);
  }
  EXPECT_EQ(names_in("mine"), std::set<std::string>{"velkstep-split.json"});
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(SplitListTest, StatesOfFiles) {
  const auto list = read_split_list("out");
  ASSERT_TRUE(list.has_value());
  const ListedFile& lid = list->files[1];
  EXPECT_EQ(state_of(lid, "out"), ListedState::unchanged);
  std::string text = read_file("out/lid.stp");
  text[text.size() - 5] ^= 1;
  write("lid.stp", text);
  EXPECT_EQ(state_of(lid, "out"), ListedState::changed) << "of the same size";
  write("lid.stp", text + "x");
  EXPECT_EQ(state_of(lid, "out"), ListedState::changed);
  fs::rename("out/lid.stp", "out/elsewhere");
  EXPECT_EQ(state_of(lid, "out"), ListedState::missing);
  fs::create_symlink("elsewhere", "out/lid.stp");
  EXPECT_EQ(state_of(lid, "out"), ListedState::changed) << "a link";
  fs::remove("out/lid.stp");
  fs::create_directory("out/lid.stp");
  EXPECT_EQ(state_of(lid, "out"), ListedState::changed) << "a folder";
}

TEST_F(SplitListTest, OfNoUseIsRefused) {
  const std::string text = read_file("out/velkstep-split.json");
  const struct {
    const char* from;
    const char* to;
    const char* sentence;
  } CASES[] = {
      {"{", "", "The list of the split is no JSON."},
      {"\"format\": 1", "\"format\": 2",
       "The list of the split is of another version than this program knows."},
      {"XXH64", "MD5", "The list of the split is of another version than this program knows."},
      {"\"format\": 1", "\"format\": -1",
       "The list of the split has no whole number in \"format\"."},
      {"\"program\"", "\"prog\"", "The list of the split has no member \"program\" as it should."},
      {"\"root\": \"box.stp\"", "\"root\": 7",
       "The list of the split has no member \"root\" as it should."},
      {"\"root\": \"box.stp\"", "\"root\": \"\"",
       "The list of the split names something that is no file in its folder."},
      {"\"file\": \"lid.stp\"", "\"file\": \"../in.stp\"",
       "The list of the split names something that is no file in its folder."},
      {"\"file\": \"lid.stp\"", "\"file\": \"..\"",
       "The list of the split names something that is no file in its folder."},
      {"\"file\": \"lid.stp\"", "\"file\": \"a\\\\b\"",
       "The list of the split names something that is no file in its folder."},
      {"\"file\": \"lid.stp\"", "\"file\": \"a\\u0000\"",
       "The list of the split names something that is no file in its folder."},
      {"\"hash\": \"", "\"hash\": \"x",
       "The list of the split is of another version than this program knows."},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.to);
    std::string changed = text;
    changed.replace(changed.find(row.from), std::string_view(row.from).size(), row.to);
    write("velkstep-split.json", changed);
    try {
      read_split_list("out");
      ADD_FAILURE() << "no exception";
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().kind, FindingKind::wrong_split_list);
      EXPECT_EQ(error.finding().file, "velkstep-split.json");
      EXPECT_EQ(error.path(), "out/velkstep-split.json");
      EXPECT_EQ(error.what(), std::string("out/velkstep-split.json: ") + row.sentence);
    }
  }
  fs::remove("out/velkstep-split.json");
  fs::create_symlink("../in.stp", "out/velkstep-split.json");
  EXPECT_THROW(read_split_list("out"), InputError);
}

TEST_F(SplitListTest, VerifySaysWhatIsMissingOrChanged) {
  fs::rename("roots.txt", "out/roots.txt");
  EXPECT_THAT(found(), ElementsAre());
  const std::string lid = read_file("out/lid.stp");
  write("lid.stp", lid + "\n");
  EXPECT_THAT(found(), ElementsAre("lid.stp: warning changed_listed_file: The file has changed "
                                   "since the split wrote it."));
  fs::remove("out/lid.stp");
  EXPECT_THAT(found(), ElementsAre("lid.stp: warning missing_listed_file: The split wrote this "
                                   "file, and it is not there.",
                                   HasSubstr("error missing_target")));
  write("lid.stp", lid);
  EXPECT_THAT(found(), ElementsAre());
}

TEST_F(SplitListTest, VerifyFindsTheRootInIt) {
  EXPECT_THAT(found(), ElementsAre()) << "without roots.txt";
  write("roots.txt", "lid.stp\n");
  EXPECT_THAT(found(), ElementsAre("roots.txt: error wrong_root_list: It does not name the "
                                   "root's file as the list of the split does."));
  write("velkstep-split.json", "{");
  write("roots.txt", "box.stp\n");
  EXPECT_THAT(found(), ElementsAre("velkstep-split.json: warning wrong_split_list: The list of the "
                                   "split is no JSON."));
}

TEST_F(SplitListTest, JoinTakesTheFolder) {
  join("out", "one.stp");
  EXPECT_TRUE(diff(in_, "one.stp").is_same);

  // Without a list, what "roots.txt" says.
  fs::remove("out/velkstep-split.json");
  const auto refusal = [] {
    try {
      join("out", "two.stp");
    } catch (const InputError& error) {
      return error.finding().sentence;
    }
    return std::string("joined");
  };
  const std::string NO_SPLIT =
      "The folder holds no split: neither a list of one nor a \"roots.txt\" names a file in it.";
  EXPECT_EQ(refusal(), NO_SPLIT);
  for (const char* wrong : {"", "../in.stp", "hat.stp", "."}) {
    write("roots.txt", wrong);
    EXPECT_EQ(refusal(), NO_SPLIT) << wrong;
  }
  write("roots.txt", "box.stp\n");
  EXPECT_EQ(refusal(), "joined");
  EXPECT_TRUE(diff(in_, "two.stp").is_same);
}

}  // namespace
}  // namespace Kessel::test
