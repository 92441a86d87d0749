// Record texts turned into records of the store.
#include "reader/record_loader.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/errors.h"
#include "model/store.h"
#include "reader/stored_records.h"

namespace Kessel::test {
namespace {

using Lines = std::vector<std::string>;

/// What the records leave in a new store.
Lines stored(const std::vector<std::string_view>& records) {
  Store file("");
  RecordLoader loader(file);
  for (const std::string_view record : records) loader.add(record);
  return stored_records(file);
}

struct Row {
  std::string_view record;
  std::string line;  ///< what is stored, empty for nothing
};

void expect_stored(const std::vector<Row>& rows) {
  for (const auto& [record, line] : rows) {
    SCOPED_TRACE(record);
    EXPECT_EQ(stored({record}), line.empty() ? Lines() : Lines{line});
  }
}

TEST(RecordLoader, RecordsKeepWhatTheirTypesAreKeptWith) {
  expect_stored(
      {{"#5=PRODUCT('id','name','',(#6))", "#5 named [PRODUCT] [id]: 6"},
       {"#5=MAPPED_ITEM('',#6,#7)", "#5 named [MAPPED_ITEM] []: 6 7"},
       {"#5=STYLED_ITEM('color',(#6),#7)", "#5 typed [STYLED_ITEM]: 6 7"},
       {"#5=MY_SHAPE_REPRESENTATION('x',(#6),#7)", "#5 typed [MY_SHAPE_REPRESENTATION]: 6 7"},
       {"#5=CARTESIAN_POINT('x',(0.,0.))", "#5 plain:"},
       {"#5=(A(#6) B(#7))", "#5 plain: 6 7"},
       {"#5=(LENGTH_UNIT() CONVERSION_BASED_UNIT('INCH',#6))",
        "#5 typed [LENGTH_UNIT() CONVERSION_BASED_UNIT('INCH',#6)]: 6"}});
}

TEST(RecordLoader, NumberIsReadFromTheFirstNumberSignOutsideLiterals) {
  expect_stored({{"#5=A(#6)", "#5 plain: 6"},
                 {"#007=A(#6)", "#7 plain: 6"},
                 {"#4294967295=A(#6)", "#4294967295 plain: 6"},
                 {"note #5=A(#6)", "#5 plain: 6"},
                 {"'#4' #5=A(#6)", "#5 plain: 6"},
                 {"#5x=A(#6)", "#5 plain: 6"}});
}

TEST(RecordLoader, RecordWithoutAGoodNumberIsDropped) {
  expect_stored({{"A", ""},
                 {"PRODUCT('x')", ""},
                 {"PRODUCT('#5=A()')", ""},
                 {"#=A(#6)", ""},
                 {"# 5=A(#6)", ""},
                 {"#-5=A(#6)", ""},
                 {"#0=PRODUCT('x','x','',(#1))", ""},
                 {"#000=A(#6)", ""},
                 {"#4294967296=PRODUCT('x','x','',(#1))", ""},
                 {"#18446744073709551621=A(#6)", ""},
                 {"it's #5=A(#6)", ""}});
}

TEST(RecordLoader, RecordWithoutATypeIsDropped) {
  expect_stored(
      {{"#5", ""}, {"#5 A(#6)", ""}, {"#5=", ""}, {"#5=A", ""}, {"#5=()", ""}, {"#5=( )", ""}});
}

TEST(RecordLoader, DroppedRecordLeavesTheStoreAsItWas) {
  Store file("");
  RecordLoader loader(file);
  loader.add("#2000000=PRODUCT");
  loader.add("#4294967296=PRODUCT('x')");
  loader.add("#0=PRODUCT('x')");
  EXPECT_EQ(file.entities.size(), 1'048'576u);
  EXPECT_EQ(file.types, std::set<std::string>());
}

TEST(RecordLoader, ReferencesComeInOrderWithDuplicates) {
  expect_stored({{"#9=A('',(#10,#11,#10),#12)", "#9 plain: 10 11 10 12"},
                 {"#9=A(#9)", "#9 plain: 9"},
                 {"#9=A(#010,\n\t#11 , #4294967295)", "#9 plain: 10 11 4294967295"},
                 {"#9=A()", "#9 plain:"}});
}

TEST(RecordLoader, ReferencesAreCollectedFromBehindTheNumber) {
  expect_stored({{"#9 #8=A(#7)", "#9 plain: 8 7"}, {"#9=#8 A(#7)", "#9 plain: 8 7"}});
}

TEST(RecordLoader, ReferencesInsideLiteralsAreNone) {
  expect_stored({{"#9=A('#4',(#5),'it''s #6',#7)", "#9 plain: 5 7"}, {"#9=A('#4')", "#9 plain:"}});
}

TEST(RecordLoader, ReferencesEndAtTheFirstBadOne) {
  expect_stored({{"#9=A('#4',(#5),#0,#6)", "#9 plain: 5"},
                 {"#9=A(#5,#,#6)", "#9 plain: 5"},
                 {"#9=A(#5,#x6,#7)", "#9 plain: 5"},
                 {"#9=A(#5,#4294967296,#6)", "#9 plain: 5"},
                 {"#9=A(#0,#6)", "#9 plain:"}});
}

TEST(RecordLoader, ReferencesEndAtAnUnclosedLiteral) {
  expect_stored({{"#9=A(#5,'x,#6)", "#9 plain: 5"}, {"#9=A('x',#5,'y''z,#6)", "#9 plain: 5"}});
}

TEST(RecordLoader, ReferencesHaveNoSpareCapacity) {
  Store file("");
  RecordLoader(file).add("#9=A(#1,#2,#3,#4,#5)");
  RecordLoader(file).add("#10=A()");
  EXPECT_EQ(file.at(9)->get_references().capacity(), 5u);
  EXPECT_EQ(file.at(10)->get_references().capacity(), 0u);
}

TEST(RecordLoader, NumberBeyondTheStoreGrowsIt) {
  Store file("");
  RecordLoader loader(file);
  loader.add("#5000000=A(#1)");
  EXPECT_EQ(file.entities.size(), 5'242'880u);
  EXPECT_EQ(stored_records(file), (Lines{"#5000000 plain: 1"}));
}

TEST(RecordLoader, SecondRecordOfANumberReplacesTheFirst) {
  Store file("");
  RecordLoader loader(file);
  loader.add("#5=PRODUCT('older','','',(#1))");
  loader.add("#5=STYLED_ITEM('newer',(#2),#3)");
  EXPECT_EQ(stored_records(file), (Lines{"#5 typed [STYLED_ITEM]: 2 3"}));
  EXPECT_EQ(file.get("PRODUCT"), (std::vector<Entity*>{file.at(5)}));
  EXPECT_EQ(file.get("STYLED_ITEM"), (std::vector<Entity*>{file.at(5)}));
}

TEST(RecordLoader, RecordsAreListedUnderTheirTypesInTheOrderOfTheFile) {
  Store file("");
  RecordLoader loader(file);
  for (const std::string_view record : {"#7=PRODUCT('a')", "#5=STYLED_ITEM('x')", "#9=POINT()",
                                        "#3=PRODUCT('b')", "#4=PRODUCT('c')"}) {
    loader.add(record);
  }
  EXPECT_EQ(file.get("PRODUCT"), (std::vector<Entity*>{file.at(7), file.at(3), file.at(4)}));
  EXPECT_EQ(file.get("STYLED_ITEM"), (std::vector<Entity*>{file.at(5)}));
  EXPECT_EQ(file.types, (std::set<std::string>{"PRODUCT", "STYLED_ITEM"}));
}

TEST(RecordLoader, NothingOfTheRecordsTextIsNeededAfterwards) {
  Store file("");
  RecordLoader loader(file);
  std::string record = "#5=PRODUCT('a name of more than fifteen characters','','',(#6))";
  loader.add(record);
  record.assign(record.size(), '-');
  EXPECT_EQ(stored_records(file),
            (Lines{"#5 named [PRODUCT] [a name of more than fifteen characters]: 6"}));
  loader.add("#6=PRODUCT('x')");
  EXPECT_EQ(file.at(6)->type(), "PRODUCT");
}

TEST(RecordLoader, ThousandsOfTypeNamesAreToldApart) {
  // More names than the loader remembers, each twice; names that begin and end alike; long names.
  std::vector<std::string> records;
  Lines lines;
  const auto add = [&](const std::string& type, bool kept) {
    const std::string number = "#" + std::to_string(records.size() + 1);
    records.push_back(number + "=" + type + "(#1)");
    lines.push_back(number + (kept ? " typed [" + type + "]: 1" : " plain: 1"));
  };
  const std::string filling(60, '_');
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 700; ++i) {
      const std::string middle = std::to_string(1'000 + i);
      add("T" + middle, false);
      add("SHAPE_REPRESENTATION_" + middle, true);
      add("BEGINNING_" + middle + "_SHAPE_REPRESENTATION_THE_END", true);
      add("BEGINNING_" + middle + "_SHAPE_REPRESENTATIUN_THE_END", false);
      add("X" + filling + middle, false);
      add("SHAPE_REPRESENTATION" + filling + middle, true);
    }
  }
  Store file("");
  RecordLoader loader(file);
  std::string buffer(200, ' ');
  for (const std::string& record : records) {
    buffer = record;  // In the place of the one before, as when a file is read.
    loader.add(buffer);
  }
  EXPECT_EQ(stored_records(file), lines);
  EXPECT_EQ(file.types.size(), 2'100u);
  EXPECT_EQ(file.get_ids("SHAPE_REPRESENTATION_1699"), (std::set<unsigned>{4'196, 8'396}));
}

TEST(RecordLoader, TypeNamesThatDifferInOneCharacterAreToldApart) {
  for (const std::string name : {"INVISIBILITY", "STYLED_ITEM", "SHAPE_ASPECT", "DRAUGHTING_MODEL",
                                 "MATERIAL_PROPERTY", "SHAPE_DEFINITION_REPRESENTATION"}) {
    SCOPED_TRACE(name);
    std::vector<std::string> types = {name, name + "_", "_" + name,
                                      name.substr(0, name.size() - 1)};
    for (std::size_t i = 0; i < name.size(); ++i) {
      types.push_back(name);
      types.back()[i] = '~';
    }
    types.push_back(name);
    Store file("");
    RecordLoader loader(file);
    unsigned number = 0;
    for (const std::string& type : types) {
      loader.add("#" + std::to_string(++number) + "=" + type + "(1)");
      EXPECT_EQ(file.at(number)->type(), type == name ? name : "") << type;
    }
  }
}

TEST(RecordLoader, DropsWhatHasNoNumberOrTypeAndCutsReferencesAtTheFirstWithoutNumber) {
  using Numbers = std::vector<unsigned>;
  const struct {
    std::string_view record;
    std::optional<Numbers> references;  // none where it is dropped
  } CASES[] = {
      {"#5=A(#6)", Numbers{6}},
      {"#5=A(#6,'#x',#7)", Numbers{6, 7}},
      {"#5=A('#6)", Numbers{}},
      {"#5=A(#6,#x,#7)", Numbers{6}},
      {"#5=A(#6,#0,#7,(#8,#9))", Numbers{6}},
      {"#=A(#6)", std::nullopt},
      {"#0=A(#6)", std::nullopt},
      {"#4294967296=A(#6)", std::nullopt},
      {"A", std::nullopt},
      {"#5", std::nullopt},
      {"#5=()", std::nullopt},
  };
  for (const auto& [record, references] : CASES) {
    SCOPED_TRACE(record);
    Store file("");
    RecordLoader(file).add(record);
    std::size_t records = 0;
    file.entities.for_each_in_use(
        [&](std::size_t, const Entity* entity) { records += entity == nullptr ? 0 : 1; });
    ASSERT_EQ(records, references ? 1u : 0u);
    if (references) {
      EXPECT_EQ(file.at(5)->get_references(), *references);
    }
  }
}

TEST(RecordLoader, MemoryLimitEndsLoading) {
  Store file("");
  RecordLoader loader(file, 1'000'000);
  // The first block of records, a page of slots and the table of pages.
  loader.add("#5=A()");
  loader.add("#4096=A()");
  try {
    loader.add("#4294967295=A()");
    ADD_FAILURE() << "no exception";
  } catch (const InputError& error) {
    EXPECT_EQ(error.finding().kind, FindingKind::memory_limit);
    EXPECT_EQ(error.finding().instance, 4'294'967'295u);
  }
  EXPECT_EQ(file.entities.size(), SLOT_BLOCK) << "nothing was taken";
  loader.add("#4097=A()");
  for (const unsigned number : {5u, 4096u}) EXPECT_NE(file.at(number), nullptr) << number;
  EXPECT_NE(file.at(4097), nullptr) << "what fits is taken again";
}

/// The number of the first of the records `record(1)`, `record(2)`, ... that the limit refuses; 0
/// where the first thousand fit.
template <class Record>
unsigned first_refused(std::uint64_t limit, NameStyle names, Record record) {
  Store file("");
  file.name_style = names;
  RecordLoader loader(file, limit);
  for (unsigned i = 1; i <= 1000; ++i) {
    try {
      loader.add(record(i));
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().instance, i);
      return i;
    }
  }
  return 0;
}

TEST(RecordLoader, MemoryLimitCountsTheNamesThatAreKept) {
  const std::string name(100'000, 'x');
  const auto record = [&](unsigned i) {
    return "#" + std::to_string(i) + "=XREPRESENTATIONX('" + name + "')";
  };
  // A block of records, a page of slots and the table of pages leave room for 197 names.
  EXPECT_EQ(first_refused(20'000'000, NameStyle::product, record), 198u);
  EXPECT_EQ(first_refused(20'000'000, NameStyle::product_unicode, record), 198u);
  EXPECT_EQ(first_refused(20'000'000, NameStyle::record, record), 0u);
  // Short ones take room as well.
  const auto short_record = [](unsigned i) {
    return "#" + std::to_string(i) + "=XREPRESENTATIONX('')";
  };
  EXPECT_EQ(first_refused(330'000, NameStyle::record, short_record), 0u);
  EXPECT_EQ(first_refused(330'000, NameStyle::product, short_record), 346u);
}

TEST(RecordLoader, MemoryLimitCountsReferencesBeforeTheyAreKept) {
  const auto with_references = [](std::size_t count) {
    std::string list = "#1";
    for (std::size_t i = 1; i < count; ++i) list += ",#1";
    return [=](unsigned i) { return "#" + std::to_string(i) + "=A(" + list + ")"; };
  };
  EXPECT_EQ(first_refused(1'000'000, NameStyle::record, with_references(250'000)), 1u);
  EXPECT_EQ(first_refused(1'500'000, NameStyle::record, with_references(250'000)), 2u);
}

TEST(RecordLoader, MemoryLimitCountsATypeNameOnce) {
  const std::string name = std::string(1000, 'X') + "SHAPE_REPRESENTATION";
  Store file("");
  RecordLoader loader(file, 1'000'000);
  for (unsigned i = 1; i <= 3000; ++i) {
    loader.add("#" + std::to_string(i) + "=" + name + "()");
  }
  EXPECT_EQ(file.get(name).size(), 3000u);
  EXPECT_THROW(
      {
        for (unsigned i = 1; i <= 1000; ++i) {
          loader.add("#" + std::to_string(i) + "=" + name + std::to_string(i) + "()");
        }
      },
      InputError);
}

}  // namespace
}  // namespace Kessel::test
