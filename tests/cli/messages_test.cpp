// What commands say when something is wrong: each message names its file, and says what to do next.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "kessel/finding.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const std::string BARE_HEADER = "ISO-10303-21;\nHEADER;\nENDSEC;\n";
const std::string END_OF_FILE = "ENDSEC;\nEND-ISO-10303-21;\n";

/// A box whose lid is in another file, or in several.
std::string box_that_refers_to(const std::vector<std::string>& files) {
  std::string records(BOX_WITH_LID);
  int number = 20;
  for (const std::string& file : files) {
    const std::string document = "#" + std::to_string(number);
    records += document + "=DOCUMENT_FILE('" + file + "','','',$,'',$);\n#" +
               std::to_string(number + 1) + "=APPLIED_DOCUMENT_REFERENCE(" + document +
               ",'',(#6));\n";
    number += 2;
  }
  return exchange_file(records);
}

/// An input that no command reads, and what all of them say about it.
struct BadInput {
  FindingKind kind;
  std::string name;
  std::string text;
  std::string place;  ///< behind the name
  std::string what;
  std::string next;  ///< what to do
};

const std::string CUT = "The file may be cut off or damaged: copy or export it again.";
const std::string NO_STEP = "Export it from the CAD system as STEP (.stp, .step).";

const std::vector<BadInput>& bad_inputs() {
  using enum FindingKind;
  static const std::vector<BadInput> INPUTS = {
      {empty_file, "in.stp", "", "", "The file is empty.", "Copy or export it again."},
      {compressed, "in.stp.gz", "\x1F\x8B\b\0"s, "", "The file is compressed (gzip);",
       "unpack it first."},
      {compressed, "in.stp.gz", "\x1F\x8B\b\0\0\0\0\0\0\x03\xCBH"s, "",
       "The archive cannot be unpacked: truncated gzip input.",
       "Copy it again, or unpack it by other means."},
      {other_encoding, "in.stp", "\xFF\xFEI\0S\0O\0"s, "",
       "The file is text in UTF-16, which is not read;", "save it as UTF-8."},
      {binary, "in.stp", "solid\0\x01\x02"s, "", "The file is no exchange file: it is binary data.",
       NO_STEP},
      {not_an_exchange_file, "in.stp", "hello\n", "",
       "The file is no exchange file: it does not begin with \"ISO-10303-21\".", NO_STEP},
      {missing_header, "in.stp", "ISO-10303-21;\n", ":2:1",
       "The header section, \"HEADER;\", should begin here.", CUT},
      {unclosed_section, "in.stp", "ISO-10303-21;\nHEADER;\n", ":3:1",
       "The HEADER section is not closed by \"ENDSEC;\".", CUT},
      {unclosed_section, "in.stp", BARE_HEADER + "DATA;\n#1=A();\n", ":6:1",
       "The DATA section is not closed by \"ENDSEC;\".", CUT},
      {unclosed_record, "in.stp", BARE_HEADER + "DATA;\n#1=A(", ":5:1",
       "No \";\" closes this record up to the end of the file.", CUT},
      {unclosed_record, "in.stp", BARE_HEADER + "DATA;\n#1=A()\n#2=B();\n" + END_OF_FILE, ":5:1",
       "A record begins in this statement; a \";\" is missing in front of it.", CUT},
      {unclosed_text, "in.stp", BARE_HEADER + "DATA;\nabc", ":5:1",
       "No \";\" closes this text up to the end of the file.", CUT},
      {unclosed_string, "in.stp", BARE_HEADER + "DATA;\n#1=A('b;\n", ":5:1",
       "A string in this statement is not closed up to the end of the file.", CUT},
      {unclosed_comment, "in.stp", BARE_HEADER + "DATA;\n#1=A();/* b;\n", ":5:8",
       "A comment here or in this statement is not closed up to the end of the file.", CUT},
      {unclosed_list, "in.stp", BARE_HEADER + "DATA;\n#1=A((;\n" + END_OF_FILE, ":5:1",
       "A \"(\" in this record is not closed.", "Export it again, or close it with an editor."},
      {skipped_text, "in.stp", BARE_HEADER + "#1=A();\n" + END_OF_FILE, ":4:1",
       "A record stands here, outside of the data section; \"DATA;\" may be missing.",
       "Put \"DATA;\" in front of it, or export it again."},
      {record_number_too_large, "in.stp",
       BARE_HEADER + "DATA;\n#18446744073709551616=A();\n" + END_OF_FILE, ":5:1",
       "An instance number here is above 18446744073709551615.",
       "Export it again with smaller numbers."},
      {unsupported_scope, "in.stp",
       BARE_HEADER + "DATA;\n#1=&SCOPE #2=A(); ENDSCOPE A();\n" + END_OF_FILE, ":5:1",
       "This record has a scope (\"&SCOPE\"), which is not supported.",
       "Export it again in another edition of the schema."},
      {two_texts_of_a_number, "in.stp", BARE_HEADER + "DATA;\n#1=A();\n#1=B();\n" + END_OF_FILE,
       ":6:1", "#1 has stood for another record already.",
       "Export it again: nobody can tell which of them is meant."},
  };
  return INPUTS;
}

class Messages : public testing::Test {
 protected:
  Messages() {
    folder_.write("good.stp", exchange_file(BOX_WITH_LID));
    EXPECT_EQ(run_velkstep({"split", "-q", "good.stp", "-o", "parts"}).exit_code, 0);
  }

  /// Expects that a command prints just this on standard error, and leaves nothing behind.
  static void expect_line(const std::vector<std::string>& arguments, int exit_code,
                          const std::string& line, const ProcessSetting& setting = {}) {
    SCOPED_TRACE(arguments.front());
    const ProcessRun run = run_velkstep(arguments, setting);
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, "velkstep: " + line + "\n");
    EXPECT_FALSE(fs::exists("new"));
  }

  /// Expects the same of all commands that read `in`.
  static void expect_of_all(const std::string& in, const std::string& place,
                            const std::string& sentence) {
    const std::string line = in + place + ": " + sentence;
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"split", in, "-o", "new"},
             {"report", in, "-o", "new"},
             {"tree", in},
             {"tree", "--bom", "--sizes", in},
             {"info", in},
             {"shrink", in, "-o", "new"},
             {"join", in, "-o", "new"},
             {"extract", in, "--list"},
             {"extract", in, "--part", "lid", "-o", "new"},
             {"picture", in, "-o", "new"},
         }) {
      expect_line(arguments, 1, line);
    }
    expect_line({"diff", in, "good.stp"}, 2, line);
    expect_line({"diff", "good.stp", in}, 2, line);
    const std::string finding = in + place + ": error: " + sentence + "\n";
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"check", in}, {"verify", in, "parts"}}) {
      SCOPED_TRACE(arguments.front());
      const ProcessRun run = run_velkstep(arguments);
      EXPECT_EQ(run.exit_code, 1);
      EXPECT_EQ(run.out, finding);
      EXPECT_EQ(run.errors, "");
    }
  }

  ScratchFolder folder_;
};

TEST_F(Messages, InputsThatAreNotReadAreCalledTheSameByAllCommands) {
  for (const BadInput& bad : bad_inputs()) {
    SCOPED_TRACE(name_of(bad.kind));
    ASSERT_FALSE(bad.next.empty());
    folder_.write(bad.name, bad.text);
    expect_of_all(bad.name, bad.place, bad.what + " " + bad.next);
    fs::remove(bad.name);
  }
}

TEST_F(Messages, WhatCannotBeOpenedIsCalledTheSameByAllCommands) {
  const std::string missing = "The file cannot be opened: No such file or directory. ";
  expect_of_all("lost.stp", "", missing + "Check its name.");
  expect_of_all("nowhere/lost.stp", "", missing + "Check its name.");
  for (const char* meant : {"god.stp", "good.step", "GOOD.STP", "good"}) {
    expect_of_all(meant, "", missing + "Did you mean good.stp?");
  }
  expect_of_all("good.stp/lost.stp", "",
                "The file cannot be opened: Not a directory. Check its name.");
}

TEST_F(Messages, FoldersSayWhatToNameInThem) {
  for (const char* name : {"models", "empty"}) fs::create_directory(name);
  folder_.write("models/notes.txt", "");
  folder_.write("models/LAMP.STEP", "");
  folder_.write("empty/notes.txt", "");
  const std::vector<std::pair<std::string, std::string>> FOLDERS = {
      {"parts", "ame the file of its root, parts/box.stp"},
      {"models", "ame files in it, such as models/*.STEP"},
      {"empty", ""},
  };
  for (const auto& [name, what] : FOLDERS) {
    const std::string is_folder =
        "The file is a folder. " + (what.empty() ? "It holds no STEP file: name one" : "N" + what);
    for (const char* command : {"tree", "info"})
      expect_line({command, name}, 1, name + ": " + is_folder + ".");
    EXPECT_EQ(run_velkstep({"check", name}).out, name + ": error: " + is_folder + ".\n");
    EXPECT_EQ(run_velkstep({"split", name}).errors,
              "velkstep split: " + name + " is a folder; " +
                  (what.empty() ? "it holds no STEP file: name one" : "n" + what) +
                  ", or the folder for the result by -o " + name +
                  "\nvelkstep split --help says how to use it.\n");
  }
}

TEST_F(Messages, VerifyKnowsWhoseFolderItIs) {
  folder_.write("lid.stp", exchange_file(LID_WITH_SHAPE));
  EXPECT_EQ(run_velkstep({"verify", "lid.stp", "parts"}).errors,
            "velkstep: parts: is the split of good.stp\n");
  fs::copy_file("good.stp", "renamed.stp");
  EXPECT_EQ(run_velkstep({"verify", "renamed.stp", "parts"}).errors, "");
}

TEST_F(Messages, VerifyAdvisesToSplitAgain) {
  folder_.write("parts/lid.stp", "");
  EXPECT_THAT(run_velkstep({"verify", "good.stp", "parts"}).out,
              testing::HasSubstr("parts/lid.stp: error: The file is empty. Split again.\n"));
  fs::remove("parts/lid.stp");
  EXPECT_THAT(run_velkstep({"verify", "good.stp", "parts"}).out,
              testing::HasSubstr("are missing: \"lid.stp\". Put them there, or split again.\n"));
}

TEST_F(Messages, HelpIsThereHoweverItIsAskedFor) {
  const ProcessRun of_split = run_velkstep({"split", "--help"});
  const ProcessRun of_all = run_velkstep({"--help"});
  for (const char* word : {"help", "-h", "--help"}) {
    EXPECT_EQ(run_velkstep({word, "split"}).out, of_split.out);
    EXPECT_EQ(run_velkstep({word, "split", "in.stp"}).out, of_split.out);
    const ProcessRun all = run_velkstep({word});
    EXPECT_EQ(all.out, of_all.out);
    EXPECT_EQ(all.exit_code, 0);
  }
}

/// Kinds that no table here holds, and why.
const std::set<FindingKind> NOT_REFUSED = {
    // a split works, and one line counts them; or check lists them
    FindingKind::first_line, FindingKind::text_after_end, FindingKind::missing_end,
    FindingKind::not_utf8, FindingKind::same_text_twice, FindingKind::empty_statement,
    FindingKind::signature_dropped, FindingKind::unusual_record, FindingKind::lone_backslash,
    FindingKind::missing_instance, FindingKind::reference_cycle, FindingKind::unused_usage,
    FindingKind::usage_cycle, FindingKind::part_without_name, FindingKind::foreign_shape,
    FindingKind::occurrence_style, FindingKind::unfollowed_file, FindingKind::instance_beyond_store,
    FindingKind::no_part, FindingKind::one_part,
    // what verify finds is its result
    FindingKind::wrong_header, FindingKind::missing_record, FindingKind::foreign_record,
    FindingKind::changed_record, FindingKind::unresolved_reference, FindingKind::undecided,
    FindingKind::missing_root_list, FindingKind::wrong_root_list, FindingKind::foreign_file,
    FindingKind::missing_listed_file, FindingKind::changed_listed_file,
    // it takes somebody who writes while the file is read
    FindingKind::changed_while_read};

/// Kinds of which the tests below have messages.
const std::set<FindingKind> OF_OTHER_TESTS = {FindingKind::unreadable,
                                              FindingKind::memory_limit,
                                              FindingKind::header_without_end,
                                              FindingKind::nothing_after_header,
                                              FindingKind::header_is_read_as_data,
                                              FindingKind::missing_file,
                                              FindingKind::wrong_split_list,
                                              FindingKind::missing_target,
                                              FindingKind::target_outside,
                                              FindingKind::file_cycle,
                                              FindingKind::mixed_schemas,
                                              FindingKind::unknown_component,
                                              FindingKind::copies_differ,
                                              FindingKind::stand_in_left};

TEST_F(Messages, NoKindOfFindingIsForgotten) {
  std::set<FindingKind> known = NOT_REFUSED;
  known.insert(OF_OTHER_TESTS.begin(), OF_OTHER_TESTS.end());
  for (const BadInput& bad : bad_inputs()) known.insert(bad.kind);
  for (int i = 0; i <= static_cast<int>(FindingKind::stand_in_left); ++i) {
    EXPECT_TRUE(known.contains(static_cast<FindingKind>(i)))
        << name_of(static_cast<FindingKind>(i));
  }
}

/// Files to write, a command, and what it says in one line.
struct Message {
  std::vector<std::pair<std::string, std::string>> files;
  std::vector<std::string> arguments;
  int exit_code;
  std::string file;  ///< what the message is about, with line and column
  std::string what;
  std::string next;  ///< what to do
};

void PrintTo(const Message& message, std::ostream* out) {
  *out << message.arguments.front() << ": " << message.what;
}

class EachMessage : public Messages, public testing::WithParamInterface<Message> {};

TEST_P(EachMessage, NamesItsFileAndSaysWhatToDo) {
  const Message& message = GetParam();
  ASSERT_FALSE(message.file.empty() || message.next.empty());
  for (const auto& [name, text] : message.files) {
    fs::create_directories(fs::absolute(name).parent_path());
    folder_.write(name, text);
  }
  expect_line(message.arguments, message.exit_code,
              message.file + ": " + message.what + message.next);
}

const std::string LID =
    "#1=PRODUCT('lid','lid','',());\n#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('d','',#2,$);\n#4=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n#6=SHAPE_REPRESENTATION('lid',(),$);\n";

std::string with_schema(std::string text, const std::string& schema) {
  return text.replace(text.find("AUTOMOTIVE_DESIGN"), 17, schema);
}

INSTANTIATE_TEST_SUITE_P(
    FilesThatReferToOthers, EachMessage,
    testing::Values(
        Message{{{"in/a.stp", box_that_refers_to({"b.stp", "c.stp"})}},
                {"join", "in/a.stp", "-o", "new"},
                1,
                "in/a.stp",
                "Files that are referred to are missing: \"b.stp\", \"c.stp\".",
                " --allow-missing keeps what refers to them."},
        Message{{{"in/a.stp", box_that_refers_to({"b.stp"})}},
                {"split", "--follow", "in/a.stp", "-o", "new"},
                1,
                "in/a.stp",
                "Files that are referred to are missing: \"b.stp\".",
                " Put them there, or do not follow them."},
        Message{{{"in/a.stp", box_that_refers_to({"b.stp"})}},
                {"extract", "--follow", "in/a.stp", "--part", "lid", "-o", "new"},
                1,
                "in/a.stp",
                "Files that are referred to are missing: \"b.stp\".",
                " Put them there, or do not follow them."},
        Message{{{"in/a.stp", box_that_refers_to({"../b.stp"})}, {"b.stp", exchange_file(LID)}},
                {"join", "in/a.stp", "-o", "new"},
                1,
                "in/a.stp",
                "References lead out of the folder of the file: \"../b.stp\".",
                " --follow-outside reads them."},
        Message{{{"in/a.stp", box_that_refers_to({"../b.stp"})}, {"b.stp", exchange_file(LID)}},
                {"split", "--copy-references", "in/a.stp", "-o", "new"},
                1,
                "in/a.stp",
                "References lead out of the folder of the file: \"../b.stp\".",
                " --follow-outside reads them."},
        Message{{{"in/a.stp", box_that_refers_to({"b.stp"})},
                 {"in/b.stp", box_that_refers_to({"a.stp"})}},
                {"join", "in/a.stp", "-o", "new"},
                1,
                "in/a.stp",
                "Files refer to each other in a circle: \"a.stp\", \"b.stp\".",
                " Change one of these references first."},
        Message{{{"in/a.stp", box_that_refers_to({"b.stp"})},
                 {"in/b.stp", with_schema(exchange_file(LID), "OTHER")}},
                {"join", "in/a.stp", "-o", "new"},
                1,
                "in/b.stp",
                "The file obeys the schema \"OTHER\", the root \"AUTOMOTIVE_DESIGN\".",
                " --allow-mixed-schemas takes them."},
        Message{{{"in/a.stp", box_that_refers_to({"b.stp"})},
                 {"in/b.stp", with_schema(exchange_file(LID), "OTHER")}},
                {"split", "--follow", "in/a.stp", "-o", "new"},
                1,
                "in/b.stp",
                "The file obeys the schema \"OTHER\", the root \"AUTOMOTIVE_DESIGN\".",
                " Export them with one schema."},
        Message{
            {{"in/a.stp", box_that_refers_to({"b.stp"})}, {"in/b.stp", exchange_file("#1=A();\n")}},
            {"join", "in/a.stp", "-o", "new"},
            1,
            "in/b.stp",
            "The file holds no product, and another refers to it as a component's.",
            " Export that file again, with the component at its top."},
        Message{{{"in/a.stp", box_that_refers_to({"b.stp"})},
                 {"in/b.stp", BARE_HEADER + "DATA;\n#1=A("}},
                {"join", "in/a.stp", "-o", "new"},
                1,
                "in/b.stp:5:1",
                "No \";\" closes this record up to the end of the file. ",
                CUT},
        Message{{{"in/a.stp", box_that_refers_to({"b.stp"})},
                 {"in/b.stp", BARE_HEADER + "DATA;\n#1=A("}},
                {"split", "--follow", "in/a.stp", "-o", "new"},
                1,
                "in/b.stp:5:1",
                "No \";\" closes this record up to the end of the file. ",
                CUT},
        Message{{{"in/notes.txt", ""}},
                {"join", "in", "-o", "new"},
                1,
                "in",
                "The folder holds no split: neither a list of one nor a \"roots.txt\" names a file "
                "in it.",
                " Name a folder that a split wrote, or the file that refers to the others."},
        Message{{},
                {"join", "parts/roots.txt", "-o", "new"},
                1,
                "parts/roots.txt",
                "The file is no exchange file: it does not begin with \"ISO-10303-21\".",
                " Name the folder that it is in, or its root's file."},
        Message{{},
                {"join", "parts/velkstep-split.json", "-o", "new"},
                1,
                "parts/velkstep-split.json",
                "The file is no exchange file: it does not begin with \"ISO-10303-21\".",
                " Name the folder that it is in, or its root's file."},
        Message{{{"parts/velkstep-split.json", "{"}},
                {"join", "parts", "-o", "new"},
                1,
                "parts/velkstep-split.json",
                "The list of the split is no JSON.",
                " Name the root's file in place of the folder."}));

INSTANTIATE_TEST_SUITE_P(
    ClassicSplits, EachMessage,
    testing::Values(
        Message{{{"in.stp", "ISO-10303-21;\nHEADER;\n"}},
                {"split", "--classic", "in.stp", "-o", "new"},
                1,
                "in.stp:3:1",
                "No line ends the header with \"ENDSEC;\". ",
                CUT},
        Message{{{"in.stp", "ISO-10303-21;\nHEADER;\n#x;\nENDSEC;\nDATA;\n" + END_OF_FILE}},
                {"split", "--classic", "in.stp", "-o", "new"},
                1,
                "in.stp:4:1",
                "The header, which this line ends, holds a \";\" in front of a \"#\" or of another "
                "\";\"; when the file is read again, data seems to begin or to end there.",
                " Without --classic it is read."},
        Message{{{"in.stp", "ISO-10303-21;\nHEADER;\nENDSEC;"}},
                {"split", "--classic", "in.stp", "-o", "new"},
                1,
                "in.stp:3:8",
                "The file ends with its header. ",
                CUT},
        Message{{{"in.stp", BARE_HEADER + "DATA;\n#1=A("}},
                {"split", "--classic", "in.stp", "-o", "new"},
                1,
                "in.stp:5:1",
                "No \")\" and \";\" close this record up to the end of the file. ",
                CUT},
        Message{{{"in.stp", exchange_file("#3=PRODUCT_DEFINITION('d','',#2000000,$);\n")}},
                {"split", "--classic", "in.stp", "-o", "new"},
                1,
                "in.stp",
                "a record refers to an instance far beyond the highest number; ",
                "velkstep check finds it"}));

INSTANTIATE_TEST_SUITE_P(
    Parts, EachMessage,
    testing::Values(Message{{},
                            {"extract", "good.stp", "--part", "wheel", "-o", "new"},
                            1,
                            "good.stp",
                            "There is no part called \"wheel\".",
                            " velkstep extract good.stp --list lists all."},
                    Message{{{"my box.stp", exchange_file(BOX_WITH_LID)}},
                            {"picture", "my box.stp", "--part", "wheel", "-o", "new"},
                            1,
                            "my box.stp",
                            "There is no part called \"wheel\".",
                            " velkstep extract 'my box.stp' --list lists all."},
                    Message{{},
                            {"split", "good.stp", "--part", "wheel", "-o", "new"},
                            1,
                            "good.stp",
                            "There is no part called \"wheel\".",
                            " velkstep extract good.stp --list lists all."},
                    Message{{},
                            {"extract", "good.stp", "--part", "lit", "-o", "new"},
                            1,
                            "good.stp",
                            "There is no part called \"lit\"; similar is #6 (box/lid).",
                            " velkstep extract good.stp --list lists all."},
                    Message{{},
                            {"extract", "good.stp", "--part", "6", "-o", "new"},
                            1,
                            "good.stp",
                            "There is no part called \"6\"; similar is #6 (box/lid).",
                            " velkstep extract good.stp --list lists all."},
                    Message{{},
                            {"extract", "good.stp", "--bodies", "--part", "box", "-o", "new"},
                            1,
                            "good.stp",
                            "The part #3 (box) has no bodies of its own.",
                            " velkstep extract good.stp --list lists all."}));

INSTANTIATE_TEST_SUITE_P(
    Outputs, EachMessage,
    testing::Values(Message{{{"there", ""}},
                            {"shrink", "good.stp", "-o", "there"},
                            1,
                            "there",
                            "is there already; ",
                            "--force replaces it"},
                    Message{{{"there", ""}},
                            {"join", "good.stp", "-o", "there"},
                            1,
                            "there",
                            "is there already; ",
                            "--force replaces it"},
                    Message{{{"there", ""}},
                            {"extract", "good.stp", "--part", "lid", "-o", "there"},
                            1,
                            "there",
                            "is there already; ",
                            "--force replaces it"},
                    Message{{{"there.svg", ""}},
                            {"picture", "good.stp", "-o", "there.svg"},
                            1,
                            "there.svg",
                            "is there already; ",
                            "--force replaces it"},
                    Message{{},
                            {"split", "good.stp", "-o", "parts"},
                            1,
                            "parts/roots.txt",
                            "is there already; ",
                            "--force replaces it"},
                    Message{{},
                            {"shrink", "good.stp", "-fo", "good.stp"},
                            1,
                            "good.stp",
                            "is the input; ",
                            "choose another name"},
                    Message{{},
                            {"join", "good.stp", "-o", "good.stp"},
                            1,
                            "good.stp",
                            "is the input; ",
                            "choose another name"},
                    Message{{},
                            {"extract", "good.stp", "--part", "lid", "-fo", "good.stp"},
                            1,
                            "good.stp",
                            "is the input; ",
                            "choose another name"},
                    Message{{{"good", exchange_file(BOX_WITH_LID)}},
                            {"picture", "good", "-fo", "good"},
                            1,
                            "good",
                            "is the input; ",
                            "choose another name"},
                    Message{{{"in/a.stp", box_that_refers_to({"b.stp"})},
                             {"in/b.stp", exchange_file(LID)}},
                            {"join", "in/a.stp", "-fo", "in/b.stp"},
                            1,
                            "in/b.stp",
                            "is the input, or a file that it refers to; ",
                            "name another"},
                    Message{{},
                            {"split", "parts/lid.stp", "-fo", "parts"},
                            1,
                            "parts/lid.stp",
                            "is the input; ",
                            "choose another folder"},
                    Message{{},
                            {"shrink", "good.stp", "-o", "no/new"},
                            1,
                            "no/new",
                            "cannot be written: No such file or directory; ",
                            "make its folder first, or name another"},
                    Message{{},
                            {"shrink", "good.stp", "-o", "parts"},
                            1,
                            "parts",
                            "cannot be written: Is a directory; ",
                            "name a file"},
                    Message{{},
                            {"split", "good.stp", "-o", "good.stp/new"},
                            1,
                            "good.stp/new",
                            "cannot be created: Not a directory; ",
                            "name another place"},
                    Message{{{"there/lid.stp/a", ""}},
                            {"split", "good.stp", "-fo", "there"},
                            1,
                            "there/lid.stp",
                            "is a folder; ",
                            "remove it, or name another place"}));

TEST_F(Messages, StandardStreamsAndTemporaryFiles) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const std::string full =
      "standard output: cannot be written: No space left on device; make room, or name a place on "
      "another disk";
  for (const char* command : {"split", "tree", "info", "report"}) {
    expect_line({command, "good.stp"}, 1, full, {.standard_output = "/dev/full"});
  }
  const std::vector<std::vector<std::string>> told = {
      {"--help"}, {"--version"}, {"help"}, {"split", "--help"}};
  for (const auto& arguments : told) {
    expect_line(arguments, 1, full, {.standard_output = "/dev/full"});
  }
  expect_line({"diff", "-", "-"}, 2, "standard input: cannot be both files; name one of them");
  expect_line({"tree", "-"}, 1, "standard input: The file is empty. Copy or export it again.");
  const ProcessSetting no_folder = {.standard_input = "good.stp",
                                    .environment = {{"TMPDIR", "missing"}}};
  const std::string no_file =
      ": no temporary file in missing: No such file or directory; TMPDIR names another folder for "
      "it";
  expect_line({"tree", "-"}, 1, "standard input" + no_file, no_folder);
  expect_line({"split", "-n", "good.stp"}, 1, "good.stp" + no_file, no_folder);
}

TEST_F(Messages, LimitsOfTheSystem) {
  if (fs::exists("/dev/full")) {
    expect_line({"tree", "good.stp", "good.stp"}, 1,
                "standard output: cannot be written: No space left on device; make room, or name a "
                "place on another disk",
                {.standard_output = "/dev/full"});
  }
  expect_line({"tree", "-"}, 1,
              "standard input: the temporary file cannot be written: File too large; TMPDIR names "
              "another folder for it",
              {.standard_input = "good.stp", .most_file_bytes = 300});
  expect_line(
      {"report", "good.stp", "-o", "new"}, 1,
      "new/report.html: cannot be written: File too large; raise the limit of sizes (ulimit "
      "-f), or name another disk",
      {.most_file_bytes = 20'000});
  expect_line(
      {"check", "good.stp", "parts/lid.stp"}, 1,
      "good.stp: no process can be started for it: Too many open files; -j 1 starts fewer at "
      "once",
      {.most_files = 4});
}

TEST_F(Messages, MemoryLimits) {
  const std::string next = " With a larger --memory-limit, or without, it is read\\.\n";
  for (const char* command : {"split", "report", "join", "shrink", "picture"}) {
    const ProcessRun run = run_velkstep({command, "--memory-limit=300", "good.stp", "-o", "new"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_THAT(run.errors, testing::MatchesRegex(
                                "velkstep: good.stp: The records need at least [0-9]+ bytes of "
                                "memory, and the limit is 300\\." +
                                next));
  }
  // Somewhere there is room for the records, but not for their geometry.
  std::set<std::string> said;
  for (int limit = 600; limit < 20'000; limit += 100) {
    const std::string size = std::to_string(limit);
    const ProcessRun run =
        run_velkstep({"picture", "--memory-limit", size, "good.stp", "-o", "new"});
    if (run.exit_code == 0) break;
    said.insert(std::regex_replace(run.errors, std::regex("[0-9,]+ bytes"), "N bytes"));
  }
  EXPECT_TRUE(said.contains(
      "velkstep: good.stp: The records and their geometry need more memory than the limit of N "
      "bytes. With a larger --memory-limit, or without, it is read.\n"))
      << testing::PrintToString(said);
}

TEST_F(Messages, FileThatMayNotBeRead) {
  fs::permissions("good.stp", fs::perms::none);
  for (const char* command : {"tree", "info"}) {
    expect_line(
        {command, "good.stp"}, 1,
        "good.stp: The file cannot be opened: Permission denied. Check who may read it, and "
        "the disk that it is on.",
        {.minds_permissions = true});
  }
}

TEST_F(Messages, WorkingDirectoryThatIsGone) {
  const ShellRun run = run_in_shell("mkdir gone && cd gone && rmdir ../gone && '" VELKSTEP_COMMAND
                                    "' tree - < ../good.stp 2>&1");
  EXPECT_EQ(run.out,
            "velkstep: standard input: the working directory: No such file or directory; go to "
            "another\n");
}

TEST_F(Messages, FolderInWhichAnotherProcessPublishes) {
  const int folder = ::open("parts", O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(::flock(folder, LOCK_EX), 0);
  expect_line({"split", "good.stp", "-fo", "parts"}, 1,
              "parts: another process is writing into it; wait, or name another folder");
  ::close(folder);
}

TEST_F(Messages, ClassicSplitOfOnePart) {
  folder_.write("lid.stp", exchange_file(LID));
  const ProcessRun run = run_velkstep({"split", "--classic", "lid.stp", "-o", "new"});
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_TRUE(run.errors.ends_with(
      "velkstep: lid.stp: holds one part or none, of which a classic split makes nothing; without "
      "--classic it is copied\n"))
      << run.errors;
}

/// What a command that did what it was asked mentions besides.
struct Notice {
  std::vector<std::pair<std::string, std::string>> files;
  std::vector<std::string> arguments;
  std::string line;
};

TEST_F(Messages, NoticesNameTheirFile) {
  const std::string warned = exchange_file(std::string(BOX_WITH_LID) + "#90=A(#99);\n");
  const std::string missing =
      "velkstep: in/a.stp:20:1: The file \"b.stp\" that is referred to is not there. Put it "
      "there, or what is in it is missing.";
  const std::string none =
      "velkstep: none.stp: holds no part: no product definition has a shape or a component; "
      "velkstep info says what it holds";
  const std::vector<Notice> NOTICES = {
      {{{"warned.stp", warned}},
       {"split", "warned.stp", "-o", "1"},
       "velkstep: warned.stp: 1 warning; velkstep check warned.stp lists it"},
      {{},
       {"tree", "warned.stp"},
       "velkstep: warned.stp: 1 warning; velkstep check warned.stp lists it"},
      {{},
       {"info", "warned.stp"},
       "velkstep: warned.stp: 1 warning; velkstep check warned.stp lists it"},
      {{},
       {"shrink", "warned.stp", "-o", "2"},
       "velkstep: warned.stp: 1 warning; velkstep check warned.stp lists it"},
      {{{"a.stp", exchange_file(LID)}, {"b.stp", exchange_file(LID) + "stray"}},
       {"diff", "a.stp", "b.stp"},
       "velkstep: b.stp:16:1: Text stands behind \"END-ISO-10303-21;\"; it is left out."},
      {{{"my box.stp", exchange_file("#90=A(#99);\n#91=A(#98);\n" + std::string(BOX_WITH_LID))}},
       {"split", "my box.stp", "-o", "12"},
       "velkstep: my box.stp: 2 warnings; velkstep check 'my box.stp' lists them"},
      {{{"behind.stp", exchange_file(BOX_WITH_LID) + "stray"}},
       {"split", "behind.stp", "-o", "13"},
       "velkstep: behind.stp:22:1: Text stands behind \"END-ISO-10303-21;\"; it is left out."},
      {{{"far/a.stp", box_that_refers_to({"b.stp"})}, {"far/b.stp", exchange_file(LID) + "stray"}},
       {"join", "far/a.stp", "-o", "20"},
       "far/b.stp:16:1: warning: Text stands behind \"END-ISO-10303-21;\"; it is left out."},
      {{{"in/a.stp", box_that_refers_to({"b.stp"})}}, {"split", "in/a.stp", "-o", "3"}, missing},
      {{},
       {"join", "--allow-missing", "in/a.stp", "-o", "4"},
       "in/a.stp:20:1: warning: The file \"b.stp\" that is referred to is not there. Put it there, "
       "and join again, to have it in the result."},
      {{{"in/b.stp", with_schema(exchange_file(LID), "OTHER")}},
       {"join", "--allow-mixed-schemas", "in/a.stp", "-qo", "10"},
       ""},
      {{},
       {"join", "--allow-mixed-schemas", "in/a.stp", "-o", "11"},
       "in/b.stp: warning: The file obeys the schema \"OTHER\", the root \"AUTOMOTIVE_DESIGN\". "
       "Try "
       "the result in the program that is to read it."},
      {{},
       {"join", "parts/lid.stp", "-o", "16"},
       "velkstep: parts/lid.stp: refers to no other file, so 16 holds nothing else; velkstep join "
       "parts joins the whole split"},
      {{},
       {"join", "good.stp", "-o", "17"},
       "velkstep: good.stp: refers to no other file, so 17 holds nothing else; name the file that "
       "refers to the others"},
      {{}, {"join", "parts/lid.stp", "-qo", "18"}, ""},
      {{}, {"join", "parts/box.stp", "-o", "19"}, ""},
      {{{"lid.stp", exchange_file(LID)}},
       {"split", "lid.stp", "-o", "5"},
       "velkstep: lid.stp: holds one part only; 5/lid.stp is a copy of it"},
      {{{"none.stp", exchange_file("#1=A();\n")}},
       {"split", "none.stp", "-o", "6"},
       "velkstep: none.stp: holds no part; 6/none.stp is a copy of it"},
      {{{"refers.stp", box_that_refers_to({"lid.stp", "good.stp"})}},
       {"extract", "refers.stp", "--part=lid", "-o", "14"},
       "velkstep: refers.stp:20:1: A shape is in the file \"lid.stp\", which is only referred to. "
       "1 "
       "more like it. --follow reads them, too."},
      {{}, {"extract", "refers.stp", "--part=lid", "-qo", "15"}, ""},
      {{}, {"tree", "none.stp"}, none},
      {{}, {"extract", "none.stp", "--list"}, none},
      {{},
       {"picture", "none.stp", "-o", "7"},
       "velkstep: none.stp: holds nothing to draw there, so 7 is empty; velkstep info says what it "
       "holds"},
      {{{"parts/lid.stp", "mine"}},
       {"split", "--names=record", "good.stp", "-fo", "parts"},
       "velkstep: parts: 1 file of an earlier split changed since, and stays; remove it where not "
       "needed: lid.stp"},
      {{{"parts/velkstep-split.json", "{"}},
       {"split", "--names=record", "good.stp", "-fo", "parts"},
       "velkstep: parts: The list of the split is no JSON. What an earlier split left stays; "
       "remove "
       "by hand what is not needed."},
      {{},
       {"split", "good.stp", "--part", "lid", "--part", "box", "-o", "8"},
       "velkstep: 2 parts: 2 done"},
      {{}, {"split", "good.stp", "--part", "lid", "-o", "21"}, ""},
      {{}, {"split", "good.stp", "none.stp", "-qo", "9"}, ""},
      {{}, {"split", "good.stp", "-o", "other.step"}, ""},
      {{}, {"check", "good.stp", "lid.stp"}, "velkstep: 2 inputs: 2 done"},
  };
  for (const Notice& notice : NOTICES) {
    SCOPED_TRACE(notice.arguments.front() + ": " + notice.line);
    for (const auto& [name, text] : notice.files) {
      fs::create_directories(fs::absolute(name).parent_path());
      folder_.write(name, text);
    }
    const ProcessRun run = run_velkstep(notice.arguments);
    EXPECT_EQ(run.exit_code, 0);
    // A line about the parts comes before the summary.
    EXPECT_EQ(run.errors.substr(run.errors.find("velkstep: 2 parts") == std::string::npos
                                    ? 0
                                    : run.errors.find("velkstep: 2 parts")),
              notice.line + (notice.line.empty() ? "" : "\n"));
  }
}

/// Arguments that make no sense, and what is said about them in front of where help is.
TEST_F(Messages, WrongUsageSaysWhereHelpIs) {
  folder_.write("lid", "");
  folder_.write("-x.step", "");
  const struct {
    std::vector<std::string> arguments;
    const char* line;
  } CASES[] = {
      {{}, ": a command is required"},
      {{"splt", "in.stp", "out"}, ": splt: did you mean split?"},
      {{"good.stp"}, ": good.stp: no such command; velkstep split good.stp splits that file"},
      {{"help", "splt"}, ": splt: did you mean split?"},
      {{"version"}, ": version: did you mean --version?"},
      {{"-v"}, ": -v: did you mean --version?"},
      {{"tree", "--bom", "--sort", "size", "good.stp"},
       " tree: --sort: size: none of file, name, quantity"},
      {{"split"}, " split: IN is required; - reads standard input"},
      {{"split", "--forse", "good.stp"}, " split: --forse: did you mean --force?"},
      {{"split", "--names=other", "good.stp"},
       " split: --names: other: none of record, product, product-unicode"},
      {{"split", "lid"},
       " split: lid: its name does not end in .step or the like, which would tell what to call its "
       "folder; -o OUTDIR names one"},
      {{"split", "parts"},
       " split: parts is a folder; name the file of its root, parts/box.stp, or the folder for the "
       "result by -o parts"},
      {{"split", "good.stp", "a.stp", "parts"},
       " split: parts is a folder; name the file of its root, parts/box.stp, or the folder for the "
       "result by -o parts"},
      {{"split", "good.stp", "-"},
       " split: standard input has no name for a folder; -o OUTDIR names one for it alone"},
      {{"split", "good.stp", ""}, " split: OUTDIR is empty; name a folder"},
      {{"split", "good.stp", "none.step"},
       " split: none.step is not there; check its name, or name the folder for the result by -o "
       "none.step"},
      {{"report", "-q", "good.stp", "goad.stp.gz"},
       " report: goad.stp.gz is not there; check its name, or name the folder for the result by -o "
       "goad.stp.gz"},
      {{"split", "-", "goad.stp"},
       " split: goad.stp is not there; did you mean good.stp? Or name the folder for the result by "
       "-o goad.stp"},
      {{"split", "good.stp", "a.stp", "new/"},
       " split: new/ is not there; the folder for the results is named by -o new/"},
      {{"report", "good.stp", "-o", "page.HTML"},
       " report: --output: page.HTML: is to be a folder, in which report.html is written; name it "
       "page"},
      {{"split", "a/b.stp", "b.step", "-oout"},
       " split: a/b.stp and b.step would both go into out/b; split them one by one, each with its "
       "own -o OUTDIR"},
      {{"split", "good.stp", "--part", "box/lid", "--part", "lid", "-onew"},
       " split: --part box/lid and --part lid would both go into new/lid; split them one by one, "
       "each "
       "with its own -o OUTDIR"},
      {{"split", "good.stp", "--part", "lid", "--part", "a/..", "-onew"},
       " split: --part a/.. does not tell what to call its folder; say it by name"},
      {{"split", "--classic", "--shrink", "good.stp"},
       " split: --shrink: needs --assemblies=lean or nested"},
      {{"split", "--reading=classic", "good.stp"},
       " split: --reading=classic: needs --assemblies=classic"},
      {{"split", "--classic", "--follow", "good.stp"},
       " split: --follow: does not go with --assemblies=classic"},
      {{"check", "-", "-"},
       " check: standard input can be read only once; name files for the others"},
      {{"check", "-j"}, " check: --jobs wants a value: N"},
      {{"check", "-j2", "-j3", "good.stp"}, " check: --jobs is there more than once; give it once"},
      {{"picture", "good.stp", "--part", "a", "--part", "b", "-o", "new"},
       " picture: --part is there more than once; give it once"},
      {{"check", "--json=x", "good.stp"}, " check: --json takes no value"},
      {{"check", "--memory-limit"}, " check: --memory-limit wants a value: SIZE"},
      {{"check", "-j", "many", "good.stp"}, " check: --jobs: many is not a number of 0 or more"},
      {{"check", "--memory-limit", "10Q", "good.stp"},
       " check: --memory-limit: 10Q is no size; bytes are, or 500MB, or 2GiB"},
      {{"check", "--memory-limit=-1", "good.stp"},
       " check: --memory-limit: -1 is no size; bytes are, or 500MB, or 2GiB"},
      {{"tree", "--depth=-1", "good.stp"}, " tree: --depth: -1 is not a number of 0 or more"},
      {{"tree", "--csv", "good.stp"}, " tree: --csv requires --bom"},
      {{"tree", "--json", "--dot", "good.stp"}, " tree: --json excludes --dot"},
      {{"verify", "good.stp"}, " verify: OUTDIR is required"},
      {{"verify", "good.stp", "out", "more"},
       " verify: more is one too many; it takes IN and OUTDIR only"},
      {{"verify", "good.stp", ""}, " verify: OUTDIR: its name is empty; give it one"},
      {{"join", "parts/box.stp", "parts/lid.stp", "-o", "new"},
       " join: parts/lid.stp is one too many; velkstep join parts joins that split"},
      {{"join", "good.stp", "lid", "-o", "new"},
       " join: lid is one too many; name only the file that refers to the others, or the folder of "
       "a "
       "split"},
      {{"diff", "good.stp"}, " diff: B is required; - reads standard input"},
      {{"extract", "good.stp", "-o", "new"}, " extract: --part is required; --part WHAT names it"},
      {{"extract", "good.stp", "--part", "lid"}, " extract: --output is required; -o OUT names it"},
      {{"extract", "good.stp", "--part", "lid", "--part", "box", "-o", "new.stp"},
       " extract: --output: new.stp: is to be a folder, since several files may come of this; name "
       "one"},
      {{"extract", "good.stp", "--part", "lid", "--bodies", "-o", "lid"},
       " extract: --output: lid: is to be a folder, since several files may come of this; name "
       "one"},
      {{"shrink", "good.stp"}, " shrink: --output is required; -o OUT names it"},
      {{"shrink", "good.stp", "new.stp"},
       " shrink: --output is required; did you mean -o new.stp?"},
      {{"extract", "good.stp", "--part", "lid", "new.stp"},
       " extract: --output is required; did you mean -o new.stp?"},
      {{"split", "-x.step"}, " split: -x.step: no such option; ./-x.step names the file"},
      {{"shrink", "good.stp", "-o", ""}, " shrink: --output: its name is empty; give it one"},
      {{"shrink", "good.stp", "-o", "-"},
       " shrink: --output: nothing is written to standard output; name a file, even if it is ./-"},
      {{"shrink", "good.stp", "-o", "new.step.gz"},
       " shrink: --output: new.step.gz: what is written is not compressed; name it new.step"},
      {{"join", "good.stp", "-o", "new.zip"},
       " join: --output: new.zip: what is written is not compressed; name it new.stp"},
      {{"extract", "good.stp", "--part", "lid", "-o", "new.stpz"},
       " extract: --output: new.stpz: what is written is not compressed; name it new.stp"},
      {{"extract", "good.stp", "--part", "lid", "-o", "new.PNG"},
       " extract: --output: new.PNG: what is written is an exchange file; name it new.stp"},
      {{"picture", "good.stp", "-o", "a/new.png"},
       " picture: --output: a/new.png: pictures are SVG; name it a/new.svg"},
      {{"split", "good.stp", "-o", ""}, " split: --output: its name is empty; give it one"},
      {{"split", "good.stp", "-o", "-"},
       " split: --output: nothing is written to standard output; name a file, even if it is ./-"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.line);
    const ProcessRun run = run_velkstep(row.arguments);
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_EQ(run.out, "");
    const std::string line = row.line;
    const std::string command = "velkstep" + line.substr(0, line.find(':'));
    EXPECT_EQ(run.errors, "velkstep" + line + "\n" + command + " --help says how to use it.\n");
    EXPECT_FALSE(fs::exists("new"));
  }
}

}  // namespace
}  // namespace Kessel::test
