#include "exchange/reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "exchange/event_log.h"

namespace Kessel::Exchange {
namespace {

using test::event_log;
using test::told;
using testing::ElementsAre;

const std::string BEGIN = "ISO-10303-21;HEADER;ENDSEC;";
const std::string END = "END-ISO-10303-21;";

/// What is told of a data section that holds `text`.
std::vector<std::string> told_of_data(const std::string& text) {
  std::vector<std::string> lines = told(BEGIN + "DATA;" + text + "ENDSEC;" + END);
  EXPECT_EQ(lines.front(), "DATA");
  lines.erase(lines.begin());
  if (lines.back() == "end") lines.pop_back();
  return lines;
}

TEST(ReadExchangeFile, TellsWhatAFileHolds) {
  EXPECT_THAT(told("ISO-10303-21;\nHEADER;\nFILE_NAME('a;b');\n!MINE(1);\nENDSEC;\n"
                   "DATA;\n#1=A(#2,'#3');\n#02 = (B()C(*)) ;\nENDSEC;\nEND-ISO-10303-21;\n"),
              ElementsAre("header FILE_NAME('a;b')", "header !MINE(1)", "DATA",
                          "#1 A(#2,'#3') -> 2", "#2 (B()C(*))", "end"));
}

TEST(ReadExchangeFile, TellsPlacesAndTexts) {
  EXPECT_THAT(event_log("\xEF\xBB\xBFISO-10303-21;HEADER;A();ENDSEC;DATA;\n"
                        "/*7*/ #007 /*a*/ = /*b*/ X_1 /*c*/ (#2) /*d*/ ;ENDSEC;END-ISO-10303-21;"),
              ElementsAre("begin HEADER ", "header @23 |A()", "end HEADER @34 ", "begin DATA ",
                          "record @46 7|\n/*7*/ |#007 /*a*/ = /*b*/ X_1 /*c*/ (#2) /*d*/|"
                          "X_1 /*c*/ (#2) /*d*/| 2",
                          "keyword X_1", "end DATA @94 "));
}

TEST(ReadExchangeFile, ReadsAFileOnOneLineWithCommentsEverywhere) {
  EXPECT_THAT(told("/**/ISO-10303-21/*;*/;/*HEADER;*/HEADER\n;/*'*/A()/*'*/;ENDSEC /*x*/;/*DATA;*/"
                   "DATA/*(*/;/*#9=Z();*/#1=A();/*it's*/;;ENDSEC\\N\\;/*E*/END-ISO-10303-21;/*;*/"),
              ElementsAre("header A()/*'*/", "DATA", "#1 A()", "warning empty_statement",
                          "warning empty_statement", "end"));
}

TEST(ReadExchangeFile, ReadsSeveralDataSections) {
  EXPECT_THAT(
      told(BEGIN + "DATA('a',('S'));#1=A();ENDSEC;DATA /*x*/ ('b;',('T')) ;#2=B();ENDSEC;" + END),
      ElementsAre("DATA('a',('S'))", "#1 A()", "end", "DATA('b;',('T'))", "#2 B()", "end"));
  EXPECT_THAT(told(BEGIN + "DATA;ENDSEC;" + END), ElementsAre("DATA", "end"));
  EXPECT_THAT(told(BEGIN + END), ElementsAre());
}

TEST(ReadExchangeFile, ReadsAnchorsAndReferences) {
  EXPECT_THAT(told(BEGIN +
                   "ANCHOR;<a;'/*>=#1{t:'x;'};<b>=(#2,<c#3>);ENDSEC;"
                   "REFERENCE;#3=<http://x/y;z='w'/*#1>;@4=<u>;ENDSEC;DATA;#1=A(#3);ENDSEC;" +
                   END),
              ElementsAre("ANCHOR", "<a;'/*>=#1{t:'x;'} -> 1", "<b>=(#2,<c#3>) -> 2", "end",
                          "REFERENCE", "#3=<http://x/y;z='w'/*#1> -> 3", "@4=<u>", "end", "DATA",
                          "#1 A(#3) -> 3", "end"));
}

TEST(ReadExchangeFile, KnowsResourcesInTheirSectionsOnly) {
  EXPECT_THAT(
      told(BEGIN + "ANCHOR;ENDSEC;DATA;#1=A('<');#2=B(#1);#3=C('>');ENDSEC;" + END),
      ElementsAre("ANCHOR", "end", "DATA", "#1 A('<')", "#2 B(#1) -> 1", "#3 C('>')", "end"));
}

/// Reads `text` and returns how that ended.
Ending ending_of(const std::string& text, const Limits& limits = {}) {
  std::istringstream in(text);
  in.seekg(3);
  Listener nobody;
  return read_exchange_file(in, limits, nobody);
}

TEST(ReadExchangeFile, WarnsOfTextBehindTheEnd) {
  EXPECT_THAT(told(BEGIN + END + " \n/* x */\n"), ElementsAre());
  EXPECT_THAT(told(BEGIN + END + "x"), ElementsAre("warning text_after_end"));
  EXPECT_THAT(told(BEGIN + END + "#1=A();"), ElementsAre("warning text_after_end"));
  EXPECT_THAT(told(BEGIN + END + "\nSIGNATURE abc== ENDSEC;"),
              ElementsAre("warning signature_dropped"));
  EXPECT_THAT(event_log(BEGIN + END + "\n x").back(), "warning text_after_end @46 #0");
}

TEST(ReadExchangeFile, LooksBehindTheEndHoweverFar) {
  for (const std::size_t size : {std::size_t{5000}, 2 * StatementCutter::BLOCK_SIZE}) {
    const std::string blanks(size, '\n');
    const std::string comment = "/*" + std::string(size, ';') + "*/";
    for (const std::string& front : {blanks, comment, blanks + comment + blanks}) {
      const std::string file = BEGIN + END + front;
      const std::string place = " @" + std::to_string(file.size()) + " #0";
      EXPECT_THAT(told(file), ElementsAre());
      EXPECT_EQ(event_log(file + "x").back(), "warning text_after_end" + place);
      EXPECT_EQ(event_log(file + "\\").back(), "warning text_after_end" + place);
      EXPECT_EQ(event_log(file + "SIGNATURE" + blanks + "a==;ENDSEC;").back(),
                "warning signature_dropped" + place);
      EXPECT_EQ(ending_of(file + "x").bytes, (BEGIN + END).size());
    }
  }
}

TEST(ReadExchangeFile, ForgivesAMissingEnd) {
  for (const char* end : {"", " ", "END-ISO-10303-21", "END-ISO", "E"}) {
    EXPECT_THAT(told(BEGIN + "DATA;#1=A();ENDSEC;" + end),
                ElementsAre("DATA", "#1 A()", "end", "warning missing_end"))
        << end;
  }
  EXPECT_EQ(event_log(BEGIN + "\nEND-I").back(), "warning missing_end @28 #0");
  EXPECT_EQ(event_log(BEGIN + "\n").back(), "warning missing_end @28 #0");
}

TEST(ReadExchangeFile, WarnsOfWhatIsUnusual) {
  EXPECT_THAT(told_of_data(";#1=A();;FOO(1);"),
              ElementsAre("warning empty_statement", "#1 A()", "warning empty_statement",
                          "warning skipped_text"));
  EXPECT_THAT(told_of_data("#0=A();"), ElementsAre("warning unusual_record", "#0 A()"));
  EXPECT_THAT(told_of_data("#1=A());"), ElementsAre("warning unusual_record", "#1 A())"));
  EXPECT_THAT(told_of_data("#1 A();"), ElementsAre("warning unusual_record", "#1 A()"));
  EXPECT_THAT(told_of_data("#1/*=*/A();"), ElementsAre("warning unusual_record", "#1 A()"));
  EXPECT_THAT(told_of_data("#1=$;"), ElementsAre("warning unusual_record", "#1 $"));
  EXPECT_THAT(told_of_data("#1;"),
              ElementsAre("warning unusual_record", "warning unusual_record", "#1 "));
  EXPECT_THAT(told_of_data("#PI=A();#=B();"),
              ElementsAre("warning skipped_text", "warning skipped_text"));
  EXPECT_THAT(told_of_data("#1=A('C:\\x');"),
              ElementsAre("warning lone_backslash", "#1 A('C:\\x')"));
  EXPECT_THAT(told_of_data("#1=A('\xE4');"), ElementsAre("warning not_utf8", "#1 A('\xE4')"));
  EXPECT_THAT(told_of_data("#1=A('\\S\\'                     \xE4');"),
              ElementsAre("warning not_utf8", "#1 A('\\S\\'                     \xE4')"));
  EXPECT_THAT(told_of_data("#1=A('\u00E4\\X\\E4\\\\');"), ElementsAre("#1 A('\u00E4\\X\\E4\\\\')"));
}

TEST(ReadExchangeFile, WarnsOfBytesInOtherSections) {
  EXPECT_THAT(
      told("ISO-10303-21;HEADER;FILE_NAME('\\x\xE4');;?;ENDSEC;ANCHOR;<a>='\\';ENDSEC;" + END),
      ElementsAre("warning lone_backslash", "warning not_utf8", "header FILE_NAME('\\x\xE4')",
                  "warning empty_statement", "warning skipped_text", "ANCHOR",
                  "warning lone_backslash", "<a>='\\'", "end"));
}

TEST(ReadExchangeFile, TellsThePlacesOfWarnings) {
  EXPECT_THAT(event_log(BEGIN + "DATA;\n#4294967296=A());\n #12=A());ENDSEC;" + END)[3],
              "warning unusual_record @33 #4294967296");
}

TEST(ReadExchangeFile, EndsAtWhatHidesARecord) {
  EXPECT_THAT(told_of_data("#1=A()#2=B();"), ElementsAre("error unclosed_record"));
  EXPECT_THAT(told_of_data("#1=A())#2=B();"), ElementsAre("error unclosed_record"));
  EXPECT_THAT(told_of_data("#1=A();x #2=B();"), ElementsAre("#1 A()", "error unclosed_record"));
  EXPECT_THAT(told_of_data("#=A()#2=B();"), ElementsAre("error unclosed_record"));
  EXPECT_THAT(told(BEGIN + "DATA #1=A();ENDSEC;"), ElementsAre("error unclosed_text"));
  EXPECT_THAT(told(BEGIN + "DATA('a',('S'))#1=A();ENDSEC;"), ElementsAre("error unclosed_record"));
  EXPECT_THAT(told(BEGIN + "#1=A();" + END), ElementsAre("error skipped_text"));
  EXPECT_THAT(told(BEGIN + "x#1=A();" + END), ElementsAre("error skipped_text"));
  EXPECT_THAT(told(BEGIN + "ANCHOR;<a>=#1 <b>=#2;ENDSEC;"),
              ElementsAre("ANCHOR", "error unclosed_record"));
  EXPECT_THAT(told(BEGIN + "REFERENCE;#1=<a> #2=<b>;ENDSEC;"),
              ElementsAre("REFERENCE", "error unclosed_record"));
}

TEST(ReadExchangeFile, EndsAtWhatIsNotClosed) {
  EXPECT_THAT(told_of_data("#1=A((#2);"), ElementsAre("error unclosed_list"));
  EXPECT_THAT(told(BEGIN + "DATA;#1=A('"), ElementsAre("DATA", "error unclosed_string"));
  EXPECT_THAT(told(BEGIN + "DATA;#1=A(/*;"), ElementsAre("DATA", "error unclosed_comment"));
  EXPECT_THAT(told(BEGIN + "DATA;/*;"), ElementsAre("DATA", "error unclosed_comment"));
  EXPECT_THAT(told(BEGIN + "DATA;#1=A()"), ElementsAre("DATA", "error unclosed_record"));
  EXPECT_THAT(told(BEGIN + "DATA;x"), ElementsAre("DATA", "error unclosed_text"));
  EXPECT_THAT(told(BEGIN + "DATA"), ElementsAre("error unclosed_text"));
}

TEST(ReadExchangeFile, EndsAtSectionsWithoutEnd) {
  EXPECT_THAT(told(BEGIN + "DATA;#1=A();"),
              ElementsAre("DATA", "#1 A()", "error unclosed_section"));
  for (const char* next : {"END-ISO-10303-21;", "DATA;", "ENDSEC DATA;", "HEADER;", "ANCHOR;",
                           "REFERENCE ;", "ENDSEC#1=A();"}) {
    EXPECT_THAT(told(BEGIN + "DATA;" + next), ElementsAre("DATA", "error unclosed_section"))
        << next;
    EXPECT_THAT(told(BEGIN + "ANCHOR;" + next), ElementsAre("ANCHOR", "error unclosed_section"))
        << next;
    EXPECT_THAT(told(std::string("ISO-10303-21;HEADER;") + next),
                ElementsAre("error unclosed_section"))
        << next;
  }
  EXPECT_THAT(told("ISO-10303-21;HEADER;#1=A();"), ElementsAre("error unclosed_section"));
}

TEST(ReadExchangeFile, EndsAtWhatIsNotSupported) {
  EXPECT_THAT(told_of_data("#1=&SCOPE #2=A();ENDSCOPE B(#2);"),
              ElementsAre("error unsupported_scope"));
  EXPECT_THAT(told_of_data("#1=A(#18446744073709551616);"),
              ElementsAre("error record_number_too_large"));
  EXPECT_THAT(told_of_data("#18446744073709551616=A();"),
              ElementsAre("error record_number_too_large"));
  EXPECT_THAT(told(BEGIN + "ANCHOR;<a>=#18446744073709551616;ENDSEC;"),
              ElementsAre("ANCHOR", "error record_number_too_large"));
  EXPECT_THAT(
      told_of_data("#18446744073709551615=A(#18446744073709551614);"),
      ElementsAre("#18446744073709551615 A(#18446744073709551614) -> 18446744073709551614"));
}

TEST(ReadExchangeFile, EndsWhereNoHeaderBegins) {
  EXPECT_THAT(told(""), ElementsAre("error empty_file"));
  EXPECT_THAT(told("\x1F\x8B"), ElementsAre("error compressed"));
  EXPECT_THAT(told("hello"), ElementsAre("error not_an_exchange_file"));
  EXPECT_THAT(told("ISO-10303-21"), ElementsAre("error unclosed_text"));
  EXPECT_THAT(told("ISO-10303-21X;HEADER;"), ElementsAre("error missing_header"));
  EXPECT_THAT(told("ISO-10303-21;"), ElementsAre("error missing_header"));
  EXPECT_THAT(told("ISO-10303-21;DATA;"), ElementsAre("error missing_header"));
  EXPECT_THAT(told("/*" + std::string(5000, ' ') + "*/"), ElementsAre("error missing_header"));
  EXPECT_THAT(told("/*" + std::string(5000, ' ') + "*/" + BEGIN + END), ElementsAre());
}

TEST(ReadExchangeFile, TellsThePlacesOfErrors) {
  EXPECT_EQ(event_log(BEGIN + "DATA;\n#1=A(').").back(), "error unclosed_string @33 ");
  EXPECT_EQ(event_log(BEGIN + "DATA; \n").back(), "error unclosed_section @34 ");
  EXPECT_EQ(event_log(BEGIN + "DATA; /* a */ /* b").back(), "error unclosed_comment @41 ");
}

TEST(ReadExchangeFile, SaysHowFarItCame) {
  EXPECT_EQ(ending_of(BEGIN + END + "x").bytes, 44u);
  EXPECT_FALSE(ending_of(BEGIN + END).error);
}

TEST(ReadExchangeFile, HoldsNoMoreThanItMay) {
  Limits limits;
  limits.statement = 100;
  limits.block_size = 64;
  const std::string begin = "ISO-10303-21;HEADER;A('";
  EXPECT_FALSE(ending_of(begin + std::string(90, 'x') + "');ENDSEC;" + END, limits).error);
  const auto error = ending_of(begin + std::string(100, 'x') + "');ENDSEC;" + END, limits).error;
  ASSERT_TRUE(error);
  EXPECT_EQ(error->kind, FindingKind::memory_limit);
  EXPECT_EQ(error->offset, 20u);
}

TEST(ReadExchangeFile, WithoutScrutinySaysTheSameButNoWarningsAndKeywords) {
  const std::string file = BEGIN + "DATA;;#1=A('\\');#2=B(#1));?;ENDSEC;x;" + END + "x";
  EXPECT_THAT(event_log(file, 7, Scrutiny::none),
              ElementsAre("begin HEADER ", "end HEADER @27 ", "begin DATA ",
                          "record @33 1||#1=A('\\')|A('\\')|", "record @43 2||#2=B(#1))|B(#1))| 1",
                          "end DATA @62 "));
}

TEST(ReadExchangeFile, LetsThroughWhatAListenerThrows) {
  class Thrower final : public Listener {
    void record(const Record& record) override {
      throw std::runtime_error(std::to_string(record.number));
    }
  };
  std::istringstream in(BEGIN + "DATA;#7=A();ENDSEC;" + END);
  Thrower thrower;
  EXPECT_THROW(read_exchange_file(in, {}, thrower), std::runtime_error);
}

TEST(ReadRecordsAt, ReadsSoManyFromTheOneThatItIsTold) {
  class Numbers final : public Listener {
   public:
    void record(const Record& record) override { told.push_back(std::to_string(record.number)); }
    void entry(Section, const Statement& entry, std::span<const Mention>) override {
      told.emplace_back(entry.text);
    }
    std::vector<std::string> told;
  };
  const std::string file = BEGIN +
                           "ANCHOR;<a;>=#1;<b>=#2;ENDSEC;REFERENCE;#9=<c;>;ENDSEC;DATA;#1=A();;"
                           "? ;#2=B();ENDSEC;DATA;#3=C();ENDSEC;" +
                           END;
  const auto from = [&](const char* where, Section section, std::uint64_t count) {
    std::istringstream in(file);
    Numbers numbers;
    read_records_at(in, file.find(where), section, count, numbers);
    return numbers.told;
  };
  EXPECT_THAT(from("#1=A", Section::data, 1), ElementsAre("1"));
  EXPECT_THAT(from("#1=A", Section::data, 3), ElementsAre("1", "2", "3"));
  EXPECT_THAT(from("#1=A", Section::data, 99), ElementsAre("1", "2", "3"));
  EXPECT_THAT(from("<a;", Section::anchor, 4), ElementsAre("<a;>=#1", "<b>=#2", "#9=<c;>", "1"));
  EXPECT_THAT(from("<b", Section::anchor, 1), ElementsAre("<b>=#2"));
  EXPECT_THAT(from("#9", Section::reference, 2), ElementsAre("#9=<c;>", "1"));
  EXPECT_THAT(from("#9", Section::reference, 0), ElementsAre());
}

TEST(RecordOf, FindsTheBodyBehindTheEqualSign) {
  const auto body = [](const std::string& text) {
    std::istringstream in(text);
    StatementCutter cutter(in);
    Statement statement;
    EXPECT_EQ(cutter.next(statement), Cut::statement);
    return std::string(record_of(statement, cutter.mentions()).body);
  };
  EXPECT_EQ(body("#1=A(1);"), "A(1)");
  EXPECT_EQ(body("#1 /*=*/ = \\N\\ A (1);"), "A (1)");
  EXPECT_EQ(body("#1=\n!A1_B(1);"), "!A1_B(1)");
  EXPECT_EQ(body("#1=(A()B());"), "(A()B())");
  EXPECT_EQ(body("#1 A();"), "A()");
  EXPECT_EQ(body("#1=;"), "");
  EXPECT_EQ(body("#1;"), "");
}

}  // namespace
}  // namespace Kessel::Exchange
