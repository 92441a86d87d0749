#include "output/made_records.h"

#include <gtest/gtest.h>

#include "output/links.h"
#include "placement/placement.h"
#include "support/loaded_text.h"

namespace Kessel::test {
namespace {

/// Records that all stand in the only file, and the text of one of them.
class RecordIn : public Exchange::Listener {
 public:
  RecordIn(const std::string& records, std::uint64_t number) : file_(records) {
    placement_.files.resize(1);
    placement_.stands = FileSets(file_.instances.size());
    for (Index i = 0; i < file_.instances.size(); ++i) placement_.stands.add(i, 0, Role::own);
    numbers.emplace(file_.instances, placement_);
    wanted_ = number;
    Exchange::read_exchange_file(file_.in, {}, *this);
  }

  void record(const Exchange::Record& record) override {
    if (record.number != wanted_) return;
    text_ = record.body;
    for (const Exchange::Mention& mention : record.mentions) {
      const auto at = [&](const char* p) { return text_.data() + (p - record.body.data()); };
      mentions_.push_back({mention.number, at(mention.begin), at(mention.end)});
    }
  }

  MentioningText body() const {
    return {text_, mentions_, file_.instances.references(file_.at(wanted_))};
  }
  const Instances& instances() const { return file_.instances; }

  std::optional<FileNumbers> numbers;

 private:
  LoadedText file_;
  Placement placement_;
  std::uint64_t wanted_ = 0;
  std::string text_;
  std::vector<Exchange::Mention> mentions_;
};

TEST(RenumberedText, ChangesNamesOutsideOfStringsAndComments) {
  const RecordIn at("#10=A(#20,'#20',#0020 /* #20 */);\n#20=B();\n", 10);
  EXPECT_EQ(renumbered(at.body(), *at.numbers, 0), "A(#2,'#20',#2 /* #20 */)");
}

TEST(RenumberedText, NamesOfNothingNeverGetTheNumberOfARecord) {
  const RecordIn at("#10=A(#2,#99,#0,#18446744073709551615);\n#20=B();\n#30=C();\n", 10);
  EXPECT_EQ(renumbered(at.body(), *at.numbers, 0), "A(#5,#99,#0,#18446744073709551615)");
}

TEST(Placeholder, HasThePlacementsThatStandInTheFile) {
  RecordIn at(
      "#10=ADVANCED_BREP_SHAPE_REPRESENTATION('it''s',(#20,#30),#40);\n"
      "#20=MANIFOLD_SOLID_BREP('',$);\n#30=AXIS2_PLACEMENT_3D('',$,$,$);\n"
      "#40=REPRESENTATION_CONTEXT('','');\n",
      10);
  MadeRecords made(*at.numbers, 0);
  EXPECT_EQ(placeholder_body(at.body(), at.instances(), *at.numbers, 0, made),
            "SHAPE_REPRESENTATION('it''s',(#3),#4)");
  EXPECT_EQ(made.take(), "");
}

TEST(Placeholder, HasOneAtTheOriginWhereThereIsNone) {
  RecordIn at(
      "#10=(REPRESENTATION('',(#20),#40)SHAPE_REPRESENTATION());\n"
      "#20=MANIFOLD_SOLID_BREP('',$);\n#40=REPRESENTATION_CONTEXT('','');\n",
      10);
  MadeRecords made(*at.numbers, 0);
  EXPECT_EQ(placeholder_body(at.body(), at.instances(), *at.numbers, 0, made),
            "SHAPE_REPRESENTATION('',(#7),#3)");
  EXPECT_EQ(made.take(),
            "/*~*/#4=CARTESIAN_POINT('',(0.,0.,0.));\n/*~*/#5=DIRECTION('',(0.,0.,1.));\n"
            "/*~*/#6=DIRECTION('',(1.,0.,0.));\n/*~*/#7=AXIS2_PLACEMENT_3D('',#4,#5,#6);\n");
}

TEST(ExternalContext, SimpleAndComplex) {
  const RecordIn simple("#1=GEOMETRIC_REPRESENTATION_CONTEXT('ID1','3D',3);\n", 1);
  EXPECT_EQ(external_context_body(simple.body(), *simple.numbers, 0),
            "GEOMETRIC_REPRESENTATION_CONTEXT('ID1','external',3)");
  const RecordIn complex(
      "#9=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#10))"
      "REPRESENTATION_CONTEXT('ID1' , '3D' ) );\n#10=A();\n",
      9);
  EXPECT_EQ(external_context_body(complex.body(), *complex.numbers, 0),
            "(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2))"
            "REPRESENTATION_CONTEXT('ID1' , 'external' ) )");
}

TEST(DocumentedDefinition, OnePlainAndOneThatHasDocuments) {
  const RecordIn plain("#1=PRODUCT_DEFINITION ('a','',#2,#2 );\n#2=A();\n", 1);
  EXPECT_EQ(documented_definition_body(plain.body(), *plain.numbers, 0, "#7"),
            "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('a','',#2,#2 ,(#7))");
  const RecordIn has(
      "#1=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('a','',#2,#2,(#2));\n#2=A();\n", 1);
  EXPECT_EQ(documented_definition_body(has.body(), *has.numbers, 0, "#7"),
            "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('a','',#2,#2,(#7,#2))");
}

TEST(Links, ByDocumentFile) {
  RecordIn at("#1=A();\n#2=B();\n", 1);
  MadeRecords made(*at.numbers, 0);
  Links links(made, link_form({"AUTOMOTIVE_DESIGN { 1 0 }"}), "STEP AP214");
  EXPECT_EQ(links.add("a.stp", "#1", "#2"), "");
  EXPECT_EQ(made.take(),
            "/*~*/#3=DOCUMENT_TYPE('geometry');\n"
            "/*~*/#4=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
            "/*~*/#5=IDENTIFICATION_ROLE('external document id and location',$);\n"
            "/*~*/#6=DESCRIPTIVE_REPRESENTATION_ITEM('data format','STEP AP214');\n"
            "/*~*/#7=REPRESENTATION_CONTEXT('','document parameters');\n"
            "/*~*/#8=REPRESENTATION('document format',(#6),#7);\n"
            "/*~*/#9=OBJECT_ROLE('mandatory',$);\n"
            "/*~*/#10=DOCUMENT_FILE('a.stp','','',#3,'',$);\n"
            "/*~*/#11=DOCUMENT_REPRESENTATION_TYPE('digital',#10);\n"
            "/*~*/#12=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('a.stp',#5,#4,(#10));\n"
            "/*~*/#13=PROPERTY_DEFINITION('external definition','',#10);\n"
            "/*~*/#14=PROPERTY_DEFINITION_REPRESENTATION(#13,#2);\n"
            "/*~*/#15=PROPERTY_DEFINITION('document property','',#10);\n"
            "/*~*/#16=PROPERTY_DEFINITION_REPRESENTATION(#15,#8);\n"
            "/*~*/#17=APPLIED_DOCUMENT_REFERENCE(#10,'',(#1));\n"
            "/*~*/#18=ROLE_ASSOCIATION(#9,#17);\n");
  links.add("b.stp", "#1", "");
  EXPECT_EQ(made.take(),
            "/*~*/#19=DOCUMENT_FILE('b.stp','','',#3,'',$);\n"
            "/*~*/#20=DOCUMENT_REPRESENTATION_TYPE('digital',#19);\n"
            "/*~*/#21=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('b.stp',#5,#4,(#19));\n"
            "/*~*/#22=PROPERTY_DEFINITION('document property','',#19);\n"
            "/*~*/#23=PROPERTY_DEFINITION_REPRESENTATION(#22,#8);\n"
            "/*~*/#24=APPLIED_DOCUMENT_REFERENCE(#19,'',(#1));\n"
            "/*~*/#25=ROLE_ASSOCIATION(#9,#24);\n");
}

TEST(Links, ByAssociatedDocument) {
  RecordIn at("#1=A();\n", 1);
  MadeRecords made(*at.numbers, 0);
  Links links(made, link_form({"CONFIG_CONTROL_DESIGN"}), "STEP AP203");
  EXPECT_EQ(links.add("a.stp", "#1", ""), "#3");
  EXPECT_EQ(made.take(),
            "/*~*/#2=DOCUMENT_TYPE('cad_filename');\n"
            "/*~*/#3=DOCUMENT('a.stp','a.stp','',#2);\n");
}

TEST(Links, FormatsBySchema) {
  EXPECT_EQ(data_format({"AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF { 1 0 }"}), "STEP AP242");
  EXPECT_EQ(data_format({"AUTOMOTIVE_DESIGN"}), "STEP AP214");
  EXPECT_EQ(data_format({"CONFIGURATION_CONTROL_3D_DESIGN_ED2_MIM_LF"}), "STEP AP203");
  EXPECT_EQ(data_format({"SOMETHING_ELSE"}), "STEP");
}

}  // namespace
}  // namespace Kessel::test
