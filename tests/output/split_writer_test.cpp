// Every file of a split, read back and compared with the input, record by record.
#include "output/split_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "exchange/parameters.h"
#include "instances/collectors.h"
#include "instances/layout_loader.h"
#include "interop/assemblies.h"
#include "support/loaded_text.h"
#include "support/product_records.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// The records of a file, as they stand.
struct ReadRecords : Exchange::Listener {
  struct Record {
    std::string lead;
    std::string body;
    std::uint64_t number;
  };
  void record(const Exchange::Record& record) override {
    const std::string_view lead = record.lead;
    const std::size_t mark = lead.rfind("/*");
    records.push_back(
        {std::string(mark == std::string_view::npos || !lead.ends_with("*/") ? ""
                                                                             : lead.substr(mark)),
         std::string(record.body), record.number});
  }
  void entry(Exchange::Section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention>) override {
    entries.emplace_back(entry.text);
  }
  std::vector<Record> records;
  std::vector<std::string> entries;
};

ReadRecords read(std::istream& in) {
  ReadRecords records;
  const Exchange::Ending ending = Exchange::read_exchange_file(in, {}, records);
  EXPECT_FALSE(ending.error.has_value());
  return records;
}

void load(std::istream& in, Instances& instances, TextLayout& layout) {
  const Options options;  // The loader keeps a reference.
  LayoutLoader loader(instances, layout, options);
  load_with(in, loader, options);
}

/// A file of the split, and the input's record that each of its numbers stands for.
class WrittenCheck {
 public:
  WrittenCheck(std::istream& in, const Instances& instances, const TextLayout& layout,
               const Products& products, const Placement& placement, const fs::path& folder)
      : instances_(instances), placement_(placement), input_(read(in)) {
    SplitToWrite split{instances, layout, products, placement, 0x0123456789abcdef, {}, {}};
    for (FileId file = 0; file < placement.files.size(); ++file) {
      split.paths.push_back(folder / ("f" + std::to_string(file) + ".stp"));
      split.names.push_back("f");
    }
    figures_ = write_split(in, split, {});
    for (FileId file = 0; file < placement.files.size(); ++file) check(file, split.paths[file]);
  }

 private:
  void check(FileId file, const fs::path& path) {
    SCOPED_TRACE(path.filename());
    std::ifstream in(path, std::ios::binary);
    ReadRecords written = read(in);
    // Some definitions stand behind all others.
    std::sort(written.records.begin(), written.records.end(),
              [](const auto& a, const auto& b) { return a.number < b.number; });
    EXPECT_EQ(fs::file_size(path), figures_[file].bytes);
    EXPECT_EQ(written.records.size(), figures_[file].records);
    std::vector<Index> expected;
    for (Index record = 0; record < instances_.size(); ++record) {
      if (placement_.stands.has(record, file)) expected.push_back(record);
    }
    ASSERT_GE(written.records.size(), expected.size());
    for (std::size_t i = 0; i < written.records.size(); ++i) {
      ASSERT_EQ(written.records[i].number, i + 1);
      if (i >= expected.size()) {
        EXPECT_EQ(written.records[i].lead, "/*~*/");
      } else {
        check_record(file, expected[i], written.records[i], expected);
      }
    }
  }

  void check_record(FileId file, Index record, const ReadRecords::Record& written,
                    const std::vector<Index>& records) {
    const std::string number = std::to_string(instances_.number(record));
    if (written.lead.starts_with("/*~")) {
      EXPECT_EQ(written.lead, "/*~" + number + "*/");
      EXPECT_GT(placement_.stands.of(record).size(), 1u);
      return;  // worded anew
    }
    EXPECT_NE(placement_.stands.find(record, file)->role(), Role::stand_in);
    const bool is_shared = placement_.stands.of(record).size() > 1;
    EXPECT_EQ(written.lead, is_shared ? "/*" + number + "*/" : "");
    std::string expected = input_.records[record].body;
    const std::string actual = in_input_numbers(written.body, records);
    if (actual == expected) return;
    EXPECT_TRUE(instances_.types().collects(instances_.type(record))) << number;
    EXPECT_EQ(actual, shortened(expected, file));
  }

  /// The text with the input's numbers.
  std::string in_input_numbers(const std::string& body, const std::vector<Index>& records) const {
    return with_names(body, [&](std::uint64_t number) {
      return number <= records.size() ? instances_.number(records[number - 1]) : number;
    });
  }

  /// Without the items of lists that do not stand in the file, and lists without blanks.
  std::string shortened(const std::string& body, FileId file) const {
    std::string text = body;
    for (const std::string_view list : collected_lists(body)) {
      std::string kept;
      for (const std::string_view item : Exchange::items_of(list)) {
        const Index index = instances_.find(Exchange::instance_of(item));
        if (index != NO_RECORD && !placement_.stands.has(index, file)) continue;
        kept.append(kept.empty() ? "" : ",").append(item);
      }
      EXPECT_NE(kept, "");
      text.replace(text.find(list), list.size(), "(" + kept + ")");
    }
    return text;
  }

  template <class Change>
  static std::string with_names(const std::string& body, Change change) {
    std::string text;
    for (std::size_t i = 0; i < body.size(); ++i) {
      text += body[i];
      if (body[i] == '\'') {
        const std::size_t end = body.find('\'', i + 1);
        text += body.substr(i + 1, end - i);
        i = end;
      } else if (body[i] == '#') {
        std::size_t end = i + 1;
        while (end < body.size() && std::isdigit(static_cast<unsigned char>(body[end])) != 0) ++end;
        text += std::to_string(change(std::stoull(body.substr(i + 1, end - i - 1))));
        i = end - 1;
      }
    }
    return text;
  }

  const Instances& instances_;
  const Placement& placement_;
  ReadRecords input_;
  std::vector<FileFigures> figures_;
};

class SplitWriting : public testing::TestWithParam<AssemblySource> {};

TEST_P(SplitWriting, EachFileHasItsRecordsAsTheyAreInTheInput) {
  const ScratchFolder folder;
  const fs::path path = file_of(GetParam(), folder);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
    std::ifstream in(path, std::ios::binary);
    Instances instances;
    TextLayout layout;
    load(in, instances, layout);
    const Products products = find_products(instances);
    const Placement placement = place_records(instances, products, style);
    const fs::path out = folder / (style == AssemblyStyle::lean ? "lean" : "nested");
    fs::create_directory(out);
    const WrittenCheck check(in, instances, layout, products, placement, out);
  }
}

INSTANTIATE_TEST_SUITE_P(Assemblies, SplitWriting, testing::ValuesIn(every_assembly()),
                         [](const auto& test) { return test_name(test.param); });

std::string written(const std::string& text, const ScratchFolder& folder, FileId wanted) {
  std::istringstream in(text);
  Instances instances;
  TextLayout layout;
  load(in, instances, layout);
  const Products products = find_products(instances);
  const Placement placement = place_records(instances, products, AssemblyStyle::nested);
  SplitToWrite split{instances, layout, products, placement, 0x0123456789abcdef, {}, {}};
  for (FileId file = 0; file < placement.files.size(); ++file) {
    split.paths.push_back(folder / ("f" + std::to_string(file) + ".stp"));
    split.names.push_back("f");
  }
  write_split(in, split, {});
  std::ifstream out(split.paths.at(wanted), std::ios::binary);
  std::ostringstream all;
  all << out.rdbuf();
  return all.str().substr(all.str().find("ENDSEC;\n") + 8);
}

const std::string TWO = SHARED_RECORDS + product_records(10, "car", "#3") +
                        product_records(20, "wheel", "#3,#40") + solid_records(40) +
                        usage_record(60, 10, 20);

TEST(SplitWriter, AnchorsAndReferencesGoWithTheirInstances) {
  const ScratchFolder folder;
  const std::string text =
      "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\n"
      "ANCHOR;\n<solid>=#40;\n<car>=#10;\nENDSEC;\nREFERENCE;\n#900=<other.stp#x>;\nENDSEC;\n"
      "DATA;\n" +
      TWO + "#90=STYLED_ITEM('',(#900),#41);\nENDSEC;\nEND-ISO-10303-21;\n";
  const std::string wheel = written(text, folder, 1);
  EXPECT_EQ(wheel.substr(0, wheel.find("DATA;")),
            "ANCHOR;\n<solid>=#12;\nENDSEC;\nREFERENCE;\n#1=<other.stp#x>;\nENDSEC;\n");
  EXPECT_THAT(wheel, testing::HasSubstr("=STYLED_ITEM('',(#1),#13);\n"));
  const std::string car = written(text, ScratchFolder(), 0);
  EXPECT_EQ(car.substr(0, car.find("DATA;")), "ANCHOR;\n<car>=#5;\nENDSEC;\n");
}

TEST(SplitWriter, LinesOfReferencesThatStandInSeveralFilesHaveMarks) {
  const ScratchFolder folder;
  const std::string text =
      "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nREFERENCE;\n"
      "#900=<other.stp#x>;\n#901=<other.stp#x>;\nENDSEC;\nDATA;\n" +
      TWO +
      "#90=STYLED_ITEM('',(#900,#901),#41);\n#91=PROPERTY_DEFINITION('','',#10);\n"
      "#92=GENERAL_PROPERTY_ASSOCIATION('','',#901,#91);\nENDSEC;\nEND-ISO-10303-21;\n";
  const std::string wheel = written(text, folder, 1);
  EXPECT_EQ(wheel.substr(0, wheel.find("DATA;")),
            "REFERENCE;\n#1=<other.stp#x>;\n/*901*/#2=<other.stp#x>;\nENDSEC;\n");
  const std::string car = written(text, folder, 0);
  EXPECT_EQ(car.substr(0, car.find("DATA;")), "REFERENCE;\n/*901*/#1=<other.stp#x>;\nENDSEC;\n");
}

std::string data_of(const std::string& records, const ScratchFolder& folder, FileId wanted) {
  const std::string all = written(exchange_file(records), folder, wanted);
  return all.substr(all.find('\n', all.find("/* velkstep")) + 1);
}

TEST(SplitWriter, AnAxisOffTheOriginIsForPlacingAComponentInItsFile) {
  const auto wheel_at = [](const std::string& point, const std::string& directions) {
    const ScratchFolder folder;
    return data_of(SHARED_RECORDS + product_records(10, "car", "#3") +
                       product_records(20, "wheel", "#50,#40") + solid_records(40) +
                       "#50=AXIS2_PLACEMENT_3D('',#51," + directions +
                       ");\n#51=CARTESIAN_POINT('',(" + point +
                       "));\n#52=DIRECTION('',(0.,0.,2.));\n#53=DIRECTION('',(1.,0.,0.));\n" +
                       placed_usage_records(60, 10, 20),
                   folder, 1);
  };
  const std::string made = "=ITEM_DEFINED_TRANSFORMATION('','',#11,#11);\n";
  using testing::HasSubstr;
  EXPECT_THAT(wheel_at("0.,0.,0.", "#52,#53"), testing::Not(HasSubstr("ITEM_DEFINED")));
  EXPECT_THAT(wheel_at("0.,-0.,0.E5", "$,$"), testing::Not(HasSubstr("ITEM_DEFINED")));
  EXPECT_THAT(wheel_at("0.,0.,1.E-9", "#52,#53"), HasSubstr("/*~*/#15" + made));
  EXPECT_THAT(wheel_at("0.,0.,0.", "#53,#52"), HasSubstr("/*~*/#15" + made));
  EXPECT_THAT(wheel_at("0.,0.", "$,$"), HasSubstr("/*~*/#13" + made));
}

TEST(SplitWriter, TheProductOfAFileIsTheFirst) {
  const ScratchFolder folder;
  const std::string part =
      data_of(SHARED_RECORDS + product_records(10, "piece", "#3,#40") + solid_records(40) +
                  product_records(20, "part", "#3,#50") +
                  "#50=MAPPED_ITEM('',#51,#3);\n"
                  "#51=REPRESENTATION_MAP(#3,#15);\n" +
                  product_records(30, "car", "#3") + placed_usage_records(60, 30, 20),
              folder, 1);
  EXPECT_LT(part.find("#13=PRODUCT_DEFINITION("), part.find("#5=PRODUCT_DEFINITION("));
  EXPECT_THAT(part, testing::EndsWith("#5=PRODUCT_DEFINITION('design','',#7,#1);\n"
                                      "ENDSEC;\nEND-ISO-10303-21;\n"));
}

TEST(SplitWriter, SectionsOfSeveralSchemasStay) {
  const ScratchFolder folder;
  const std::string wheel =
      written("ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('A','B'));\nENDSEC;\nDATA('a',('A'));\n" + TWO +
                  "ENDSEC;\nDATA('b',('B'));\n#90=STYLED_ITEM('',(),#41);\nENDSEC;\n"
                  "END-ISO-10303-21;\n",
              folder, 1);
  EXPECT_TRUE(wheel.starts_with("DATA('a',('A'));\n/* velkstep split 0123456789abcdef:")) << wheel;
  EXPECT_TRUE(
      wheel.ends_with("ENDSEC;\nDATA('b',('B'));\n#13=STYLED_ITEM('',(),#12);\nENDSEC;\n"
                      "END-ISO-10303-21;\n"))
      << wheel;
}

}  // namespace
}  // namespace Kessel::test
