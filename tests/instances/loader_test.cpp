#include "instances/loader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "instances/loaded_text.h"
#include "kessel/errors.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What refuses `file`.
Finding refusal_of(const std::string& file, const Options& options = {}) {
  try {
    load_file(file, options);
  } catch (const InputError& error) {
    return error.finding();
  }
  ADD_FAILURE() << "nothing is refused";
  return {};
}

TEST(Loader, EntersRecordsInTheOrderOfTheFile) {
  const LoadedText loaded = load("#3=A(#1,'#9',#3);\n#1=B();\n#7=(A()C(#1,#1));\n");
  const Instances& all = loaded.instances;
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(all.number(0), 3u);
  EXPECT_EQ(all.types().name(all.type(2)), "A C");
  EXPECT_TRUE(all.is(2, "C"));
  EXPECT_FALSE(all.is(0, "C"));
  EXPECT_THAT(references_of(all, 0), ElementsAre("#1", "#3"));
  EXPECT_THAT(references_of(all, 1), IsEmpty());
  EXPECT_THAT(references_of(all, 2), ElementsAre("#1", "#1"));
  EXPECT_EQ(all.find(7), 2u);
  EXPECT_EQ(all.find(2), NO_RECORD);
  EXPECT_EQ(all.reference_count(), 4u);
  EXPECT_EQ(all.missing_references(), 0u);
  EXPECT_THAT(loaded.warnings, IsEmpty());
}

TEST(Loader, TakesAFileWithoutRecords) {
  const LoadedText loaded = load("");
  EXPECT_EQ(loaded.instances.size(), 0u);
  EXPECT_EQ(loaded.instances.find(0), NO_RECORD);
  EXPECT_THAT(loaded.instances.header(), ElementsAre("FILE_SCHEMA(('S'))"));
}

TEST(Loader, HoldsManyRecords) {
  std::string data;
  for (int i = 1; i <= 1000; ++i) {
    data += "#" + std::to_string(i) + "=A(";
    for (int k = 0; k < i % 5; ++k)
      data += (k > 0 ? ",#" : "#") + std::to_string(1 + (i * 7 + k) % 1000);
    data += ");\n";
  }
  const LoadedText loaded = load(data);
  ASSERT_EQ(loaded.instances.size(), 1000u);
  for (Index record = 0; record < 1000; ++record) {
    const unsigned i = record + 1;
    std::vector<std::string> expected;
    for (unsigned k = 0; k < i % 5; ++k)
      expected.push_back("#" + std::to_string(1 + (i * 7 + k) % 1000));
    ASSERT_EQ(references_of(loaded.instances, record), expected);
  }
}

TEST(Loader, MarksWhatCollectorsList) {
  const LoadedText loaded = load(
      "#1=SHAPE_REPRESENTATION('#2',(#3,/*#4*/#5),#6);\n"
      "#3=SHAPE_DEFINITION_REPRESENTATION(#5,#6);\n"
      "#5=PRESENTATION_LAYER_ASSIGNMENT('','',((#1),#3));\n"
      "#6=APPLIED_APPROVAL_ASSIGNMENT(#1,(#3,#1));\n"
      "#7=(A((#1))REPRESENTATION('',(#3),#6)SHAPE_REPRESENTATION()B((#5)));\n"
      "#8=INVISIBILITY((#1));\n"
      "#9=A((#1));\n");
  const Instances& all = loaded.instances;
  EXPECT_THAT(references_of(all, 0), ElementsAre("#3!", "#5!", "#6"));
  EXPECT_THAT(references_of(all, 1), ElementsAre("#5", "#6"));
  EXPECT_THAT(references_of(all, 2), ElementsAre("#1", "#3!"));
  EXPECT_THAT(references_of(all, 3), ElementsAre("#1", "#3!", "#1!"));
  EXPECT_THAT(references_of(all, 4), ElementsAre("#1", "#3!", "#6", "#5"));
  EXPECT_THAT(references_of(all, 5), ElementsAre("#1!"));
  EXPECT_THAT(references_of(all, 6), ElementsAre("#1"));
}

/// What is more than a reference cannot be left out by who shares out the list.
TEST(Loader, MarksOnlyWhatIsAnItemByItself) {
  for (const auto& [items, references] :
       std::vector<std::pair<std::string, std::string>>{{"#1,#2", "#1!,#2!"},
                                                        {" #1 ,\n#2\t", "#1!,#2!"},
                                                        {"/*#1,*/#1/*,*/,#2", "#1!,#2!"},
                                                        {"(#1),#2", "#1,#2!"},
                                                        {"(#1,#1),#2", "#1,#1,#2!"},
                                                        {"#1,((#1),#2),#2", "#1!,#1,#2,#2!"},
                                                        {"A(#1),#2", "#1,#2!"},
                                                        {"A(#1,#2)", "#1,#2"},
                                                        {"'#1',#2,$", "#2!"},
                                                        {"A#1,#2", "#1,#2!"},
                                                        {"#1#2", "#1,#2"},
                                                        {"#1,,#2", "#1!,#2!"}}) {
    const LoadedText loaded = load("#1=INVISIBILITY((" + items + "));#2=A();");
    std::string found;
    for (const std::string& one : references_of(loaded.instances, 0)) {
      found += (found.empty() ? "" : ",") + one;
    }
    EXPECT_EQ(found, references) << items;
  }
}

TEST(Loader, MarksMissingInstancesInLists) {
  const LoadedText loaded = load("#1=INVISIBILITY((#2,#1));");
  EXPECT_THAT(references_of(loaded.instances, 0), ElementsAre("?!", "#1!"));
  EXPECT_THAT(lines_of(loaded.warnings), ElementsAre("missing_instance 2 #1"));
}

TEST(Loader, KeepsTheTextsOfTheProductStructure) {
  const LoadedText loaded = load(
      "#1=PRODUCT('a;b','',$,(#2));\n#2 = /*x*/ (GEOMETRIC_REPRESENTATION_CONTEXT(3)A()) ;\n"
      "#3=CARTESIAN_POINT('',(1.));\n#4=NEXT_ASSEMBLY_USAGE_OCCURRENCE(#1);\n#5=MAPPED_ITEM();\n");
  const Instances& all = loaded.instances;
  EXPECT_THAT(all.kept(), ElementsAre(0, 1, 3, 4));
  EXPECT_EQ(all.kept_body(0), "PRODUCT('a;b','',$,(#2))");
  EXPECT_EQ(all.kept_body(1), "(GEOMETRIC_REPRESENTATION_CONTEXT(3)A())");
  EXPECT_EQ(all.kept_body(2), "");
  EXPECT_THAT(all.kept_with("A"), ElementsAre(1));
  EXPECT_THAT(all.kept_with("PRODUCT"), ElementsAre(0));
  EXPECT_THAT(all.kept_with("CARTESIAN_POINT"), IsEmpty());
}

TEST(Loader, KnowsLargeNumbers) {
  const LoadedText loaded = load(
      "#4294967295=A(#4294967296,#18446744073709551615);\n#4294967296=A(#4294967295,#0);\n"
      "#18446744073709551615=A(#4294967294);\n");
  const Instances& all = loaded.instances;
  EXPECT_EQ(all.number(0), 4294967295u);
  EXPECT_EQ(all.number(1), 4294967296u);
  EXPECT_EQ(all.number(2), 18446744073709551615u);
  EXPECT_EQ(all.find(18446744073709551615u), 2u);
  EXPECT_THAT(references_of(all, 0), ElementsAre("#4294967296", "#18446744073709551615"));
  EXPECT_THAT(references_of(all, 1), ElementsAre("#4294967295", "?"));
  EXPECT_THAT(references_of(all, 2), ElementsAre("?"));
}

TEST(Loader, TakesLargeNumbersForNoOthers) {
  // 2^32+1 and 1 have the same last 32 bits.
  const LoadedText loaded = load("#1=A(#4294967297);\n#2=INVISIBILITY((#4294967298,#2));\n");
  EXPECT_THAT(references_of(loaded.instances, 0), ElementsAre("?"));
  EXPECT_THAT(references_of(loaded.instances, 1), ElementsAre("?!", "#2!"));
}

TEST(Loader, TakesTheNumber0AsItIs) {
  const LoadedText loaded = load("#0=A();\n#1=A(#0,#2);\n");
  EXPECT_EQ(loaded.instances.find(0), 0u);
  EXPECT_THAT(references_of(loaded.instances, 1), ElementsAre("#0", "?"));
  EXPECT_THAT(lines_of(loaded.warnings),
              ElementsAre("unusual_record 2 #0", "missing_instance 3 #1"));
  EXPECT_THAT(references_of(load("#1=A(#0);").instances, 0), ElementsAre("?"));
}

TEST(Loader, RefusesNumbersThatNobodyHolds) {
  const Finding finding = refusal_of(file_with("#1=A();\n#2=A(#18446744073709551616);"));
  EXPECT_EQ(finding.kind, FindingKind::record_number_too_large);
  EXPECT_EQ(finding.line, 3u);
}

TEST(Loader, TakesARecordOnceThatIsThereTwice) {
  const LoadedText loaded = load("#1=A(#2,#9);\n#2=A(#1);\n#1 = A(#2,#9) ;\n#1=A(#2,#9);\n");
  const Instances& all = loaded.instances;
  ASSERT_EQ(all.size(), 4u);
  EXPECT_EQ(all.find(1), 0u);
  EXPECT_EQ(all.type(2), TypeTable::REPEATED);
  EXPECT_EQ(all.type(3), TypeTable::REPEATED);
  EXPECT_EQ(all.number(2), 1u);
  EXPECT_THAT(references_of(all, 0), ElementsAre("#2", "?"));
  EXPECT_THAT(references_of(all, 1), ElementsAre("#1"));
  EXPECT_THAT(references_of(all, 2), ElementsAre("?", "?"));
  EXPECT_EQ(all.missing_references(), 1u);
  EXPECT_THAT(lines_of(loaded.warnings),
              ElementsAre("missing_instance 2 #1", "same_text_twice 4 #1", "same_text_twice 5 #1"));
}

TEST(Loader, TakesAScatteredRecordOnceThatIsThereTwice) {
  const LoadedText loaded =
      load("#18446744073709551615=A();\n#1=A();\n#18446744073709551615=A();\n");
  EXPECT_EQ(loaded.instances.find(18446744073709551615u), 0u);
  EXPECT_EQ(loaded.instances.type(2), TypeTable::REPEATED);
  EXPECT_THAT(lines_of(loaded.warnings), ElementsAre("same_text_twice 4 #18446744073709551615"));
}

TEST(Loader, TakesALineOfAnAnchorOrReferenceSectionOnceThatIsThereTwice) {
  const LoadedText loaded = load_file(
      "ISO-10303-21;HEADER;ENDSEC;ANCHOR;\n<x>=#1;\n<y>=#1;\n<x> =/**/ #01 ;\n<x>=#9;\nENDSEC;\n"
      "REFERENCE;\n@5=<a.stp#x>;\n@5=<a.stp#x>;\nENDSEC;DATA;#1=A();ENDSEC;END-ISO-10303-21;\n");
  const Instances& all = loaded.instances;
  ASSERT_EQ(all.size(), 7u);
  std::vector<Index> repeated;
  for (Index record = 0; record < all.size(); ++record) {
    if (all.type(record) == TypeTable::REPEATED) repeated.push_back(record);
  }
  EXPECT_THAT(repeated, ElementsAre(2, 5));
  EXPECT_THAT(references_of(all, 2), ElementsAre("?"));
  EXPECT_THAT(lines_of(loaded.warnings),
              ElementsAre("same_text_twice 4 #0", "missing_instance 5 #0", "same_text_twice 9 #0"));
}

TEST(Loader, RefusesOneNumberWithTwoTexts) {
  const Finding finding = refusal_of(file_with("#1=A();\n#2=A();\n#1=A( );\n#2=B();"));
  EXPECT_EQ(finding.kind, FindingKind::two_texts_of_a_number);
  EXPECT_EQ(finding.sentence, "#1 has stood for another record already.");
  EXPECT_EQ(finding.line, 4u);
  EXPECT_EQ(finding.instance, 1u);
}

TEST(Loader, ComparesRepeatedRecordsInEverySection) {
  const std::string begin =
      "ISO-10303-21;HEADER;ENDSEC;REFERENCE;#1=<a;b>;@2=<c>;#0=<d>;@3=<e>;ENDSEC;";
  EXPECT_EQ(refusal_of(begin + "DATA;#1=A();ENDSEC;END-ISO-10303-21;").kind,
            FindingKind::two_texts_of_a_number);
  const LoadedText loaded =
      load_file(begin + "REFERENCE;#1=<a;b>;ENDSEC;DATA;#4=A(#1);ENDSEC;END-ISO-10303-21;");
  EXPECT_EQ(loaded.instances.type(4), TypeTable::REPEATED);
  EXPECT_THAT(references_of(loaded.instances, 5), ElementsAre("#1"));
}

TEST(Loader, ComparesManyRepeatedRecordsInOneReading) {
  std::string data;
  for (int i = 0; i < 40000; ++i) data += "#" + std::to_string(1 + i % 20000) + "=A();\n";
  const LoadedText loaded = load(data);
  EXPECT_EQ(loaded.instances.type(20000), TypeTable::REPEATED);
  ASSERT_EQ(loaded.warnings.size(), 21u);
  EXPECT_EQ(loaded.warnings.back().count, 19980u);
}

TEST(Loader, NamesTheFirstMissingInstancesAndCountsTheOthers) {
  std::string data;
  for (int i = 1; i <= 30; ++i) data += "#" + std::to_string(i) + "=A(#100,#200);\n";
  const LoadedText loaded = load(data);
  EXPECT_EQ(loaded.instances.missing_references(), 60u);
  ASSERT_EQ(loaded.warnings.size(), 21u);
  EXPECT_EQ(loaded.warnings[19].line, 21u);
  EXPECT_EQ(loaded.warnings[19].count, 1u);
  EXPECT_EQ(loaded.warnings[20].count, 10u);
  EXPECT_EQ(loaded.warnings[20].sentence,
            "And 10 more like the 20 that are listed: #21 refers to #100 and #200, which are not "
            "there.");
  for (const Finding& warning : loaded.warnings) EXPECT_EQ(warning.severity, Severity::warning);
}

TEST(Loader, EntersAnchorsAndReferences) {
  const LoadedText loaded = load_file(
      "ISO-10303-21;HEADER;ENDSEC;ANCHOR;<a;>=(#1,#2);<b>='#1';ENDSEC;"
      "REFERENCE;#2=<c;#3>;@4=<d>;ENDSEC;DATA('x',('S'));#1=A(#2);ENDSEC;DATA;#3=A();ENDSEC;"
      "END-ISO-10303-21;");
  const Instances& all = loaded.instances;
  ASSERT_EQ(all.size(), 6u);
  EXPECT_EQ(all.type(0), TypeTable::ANCHOR_ENTRY);
  EXPECT_EQ(all.type(2), TypeTable::REFERENCE_ENTRY);
  EXPECT_EQ(all.number(0), 0u);
  EXPECT_EQ(all.number(2), 2u);
  EXPECT_THAT(references_of(all, 0), ElementsAre("#1", "#2"));
  EXPECT_THAT(references_of(all, 1), IsEmpty());
  EXPECT_THAT(references_of(all, 2), IsEmpty());
  EXPECT_THAT(references_of(all, 4), ElementsAre("#2"));
  EXPECT_EQ(all.find(0), NO_RECORD);
  EXPECT_EQ(all.kept_body(0), "<a;>=(#1,#2)");
  EXPECT_EQ(all.kept_body(2), "#2=<c;#3>");
  ASSERT_EQ(all.data_sections().size(), 2u);
  EXPECT_EQ(all.data_sections()[0].first, 4u);
  EXPECT_EQ(all.data_sections()[0].parameters, "('x',('S'))");
  EXPECT_EQ(all.data_sections()[1].first, 5u);
  EXPECT_EQ(all.data_sections()[1].parameters, "");
  EXPECT_EQ(all.section(1), Exchange::Section::anchor);
  EXPECT_EQ(all.section(3), Exchange::Section::reference);
  EXPECT_EQ(all.section(5), Exchange::Section::data);
}

TEST(Loader, TakesNoOtherNameForThatOfAnEntry) {
  const LoadedText loaded = load_file(
      "ISO-10303-21;HEADER;ENDSEC;REFERENCE;#PI=#1;ENDSEC;DATA;#1=A();ENDSEC;END-ISO-10303-21;");
  EXPECT_EQ(loaded.instances.number(0), 0u);
  EXPECT_EQ(loaded.instances.find(1), 1u);
  EXPECT_THAT(references_of(loaded.instances, 0), ElementsAre("#1"));
}

TEST(Loader, SaysWhereErrorsAre) {
  const Finding finding = refusal_of(file_with("#1=A();\n#2=A((;\n"));
  EXPECT_EQ(finding.kind, FindingKind::unclosed_list);
  EXPECT_EQ(finding.line, 3u);
  EXPECT_EQ(finding.instance, 2u);
  EXPECT_EQ(refusal_of("").line, 0u);
  EXPECT_EQ(refusal_of("PK\x03\x04").line, 0u);
  EXPECT_EQ(refusal_of("ISO-10303-21").line, 1u);
}

TEST(Loader, SaysThatAFolderCannotBeRead) {
  std::ifstream in(std::filesystem::temp_directory_path());
  Instances instances;
  try {
    load_instances(in, instances);
    FAIL();
  } catch (const InputError& error) {
    EXPECT_EQ(error.finding().kind, FindingKind::unreadable);
  }
}

TEST(Loader, OverridesSeeEveryRecord) {
  class Texts final : public InstanceLoader {
   public:
    using InstanceLoader::InstanceLoader;
    void added(Index index, const Exchange::Record& record) override {
      texts.push_back(std::to_string(index) + ' ' + std::string(record.text));
    }
    std::vector<std::string> texts;
  };
  std::istringstream in(file_with("#1=A();/*x*/#2=B();"));
  Instances instances;
  const Options options;
  Texts loader(instances, options);
  load_with(in, loader, options);
  EXPECT_THAT(loader.texts, ElementsAre("0 #1=A()", "1 #2=B()"));
}

TEST(Loader, ReportsProgress) {
  std::vector<std::uint64_t> done;
  Options options;
  options.progress = [&](const Progress& progress) {
    EXPECT_EQ(progress.stage, Stage::reading);
    done.push_back(progress.done);
  };
  std::string data;
  for (int i = 1; i < 100000; ++i) data += "#" + std::to_string(i) + "=A('abcdefghijklm');\n";
  const std::string file = file_with(data);
  load_file(file, options);
  ASSERT_GE(done.size(), 4u);
  EXPECT_EQ(done.front(), 0u);
  EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
  EXPECT_EQ(done.back(), file.size());
}

/// The least limit under which `file` is loaded.
std::uint64_t least_limit(const std::string& file) {
  std::uint64_t low = 0;
  std::uint64_t high = std::uint64_t{1} << 32;
  while (low + 1 < high) {
    Options options;
    options.memory_limit = low + (high - low) / 2;
    try {
      load_file(file, options);
      high = options.memory_limit;
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().kind, FindingKind::memory_limit);
      low = options.memory_limit;
    }
  }
  return high;
}

TEST(Loader, KeepsTheMemoryLimit) {
  // Each kind of thing that a file can make the loader hold, many times.
  const auto many = [](auto make) {
    std::string text;
    for (std::uint64_t i = 1; i <= 3000; ++i) text += make(std::to_string(i), i) + "\n";
    return text;
  };
  using Number = std::uint64_t;
  const std::string records = many([](const std::string& n, Number) { return "#" + n + "=A();"; });
  const std::string scattered = many(
      [](const std::string&, Number i) { return "#" + std::to_string(i * 1'000'003) + "=A();"; });
  const std::string large = many([](const std::string& n, Number i) {
    return "#" + n + "=A(#" + std::to_string((i << 40) + 1) + ");";
  });
  const std::string kept =
      many([](const std::string& n, Number) { return "#" + n + "=PRODUCT('xxxxxxxxxxxx');"; });
  const std::string types =
      many([](const std::string& n, Number) { return "#" + n + "=T" + n + "();"; });
  const std::string listed =
      many([](const std::string& n, Number) { return "#" + n + "=INVISIBILITY((#1));"; });
  for (const auto& [data, bytes] :
       {std::pair(records, 16u), std::pair(scattered, 28u), std::pair(large, 36u),
        std::pair(kept, 130u), std::pair(types, 200u), std::pair(listed, 28u)}) {
    EXPECT_GT(least_limit(file_with(data)), bytes * 3000u) << data.substr(0, 40);
    EXPECT_LT(least_limit(file_with(data)), bytes * 3000u * 3 + 10000) << data.substr(0, 40);
  }
  const std::string header = many([](const std::string& n, Number) { return "A('" + n + "');"; });
  const std::string sections =
      many([](const std::string& n, Number) { return "DATA('" + n + "');ENDSEC;"; });
  EXPECT_GT(least_limit("ISO-10303-21;HEADER;" + header + "ENDSEC;END-ISO-10303-21;"), 90000u);
  EXPECT_GT(least_limit("ISO-10303-21;HEADER;ENDSEC;" + sections + "END-ISO-10303-21;"), 90000u);
  const std::string text(50000, 'x');
  EXPECT_GT(least_limit(file_with("#1=A('" + text + "');#1=A('" + text + "');")), 50000u);
}

}  // namespace
}  // namespace Kessel::test
