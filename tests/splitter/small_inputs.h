// Small exchange files for tests of whole runs, and the files that they are split into.
#pragma once

#include <string>
#include <string_view>

namespace Kessel::test {

/// An exchange file with these records, one per line, in its data section.
inline std::string exchange_file(std::string_view records) {
  return "ISO-10303-21;\n"
         "HEADER;\n"
         "FILE_DESCRIPTION(('small'),'2;1');\n"
         "FILE_NAME('in.stp','then',('me'),('us'),'','','');\n"
         "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
         "ENDSEC;\n"
         "DATA;\n" +
         std::string(records) +
         "ENDSEC;\n"
         "END-ISO-10303-21;\n";
}

/// What the header of the output file `path` looks like, up to and including "DATA;".
inline std::string output_begin(std::string_view path) {
  return "ISO-10303-21;\n"
         "HEADER;\n"
         "FILE_DESCRIPTION(('small'),'2;1');\n"
         "FILE_NAME('" +
         std::string(path) +
         "','<time>',('me'),('us'),'','','');\n"
         "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
         "ENDSEC;\n"
         "\n"
         "DATA;\n";
}

/// The whole output file `path` with these records, time stamp replaced.
inline std::string output_file(std::string_view path, std::string_view records) {
  return output_begin(path) + std::string(records) + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// A box (#3) with a lid (#6), of which the lid has a shape. The box is the root.
inline constexpr std::string_view BOX_WITH_LID =
    "#1=PRODUCT('box','box','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
    "#4=PRODUCT('lid','lid','',());\n"
    "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
    "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"
    "#8=PRODUCT_DEFINITION_SHAPE('','',#6);\n"
    "#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);\n"
    "#10=SHAPE_REPRESENTATION('lid',(#11),#12);\n"
    "#11=MANIFOLD_SOLID_BREP('',$);\n"
    "#12=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n";

/// The records of the box's file, "#1_part.stp": the lid's shape without its solid, a shared
/// context, and a block that points at the lid's file.
inline constexpr std::string_view BOX_RECORDS =
    "#4=PRODUCT('box','box','',());\n"
    "#3=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "#1=PRODUCT_DEFINITION('d','',#3,$);\n"
    "#6=PRODUCT('lid','lid','',());\n"
    "#5=PRODUCT_DEFINITION_FORMATION('','',#6);\n"
    "#2=PRODUCT_DEFINITION('d','',#5,$);\n"
    "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#1,#2,$);\n"
    "#8=PRODUCT_DEFINITION_SHAPE('','',#2);\n"
    "#12=DOCUMENT_TYPE('geometry');\n"
    "#13=DOCUMENT_FILE('#4_part.stp','','',#12,'',$);\n"
    "#14=DOCUMENT_REPRESENTATION_TYPE('digital',#13);\n"
    "#15=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
    "#16=IDENTIFICATION_ROLE('external document id and location',$);\n"
    "#17=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('#4_part.stp',#16,#15,(#13));\n"
    "#18=PROPERTY_DEFINITION('external definition','',#13);\n"
    "#19=PROPERTY_DEFINITION_REPRESENTATION(#18,#10);\n"
    "#20=APPLIED_DOCUMENT_REFERENCE(#13,'',(#2));\n"
    "#21=OBJECT_ROLE('mandatory',$);\n"
    "#22=ROLE_ASSOCIATION(#21,#20);\n"
    "#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);\n"
    "#10=SHAPE_REPRESENTATION('lid',(),#11);\n"
    "#11=GEOMETRIC_REPRESENTATION_CONTEXT('id','external',3);\n";

/// The records of the lid's file, "#4_part.stp".
inline constexpr std::string_view LID_RECORDS =
    "#3=PRODUCT('lid','lid','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#3);\n"
    "#1=PRODUCT_DEFINITION('d','',#2,$);\n"
    "#4=PRODUCT_DEFINITION_SHAPE('','',#1);\n"
    "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n"
    "#6=SHAPE_REPRESENTATION('lid',(#8),#7);\n"
    "#8=MANIFOLD_SOLID_BREP('',$);\n"
    "#7=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n";

/// One product, alone.
inline constexpr std::string_view LID_ALONE =
    "#4=PRODUCT('lid','lid','',());\n"
    "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "#6=PRODUCT_DEFINITION('d','',#5,$);\n";

/// Two products, each a component of the other.
inline constexpr std::string_view CYCLE =
    "#1=PRODUCT('hen','hen','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
    "#4=PRODUCT('egg','egg','',());\n"
    "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
    "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"
    "#8=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#6,#3,$);\n";

inline constexpr std::string_view ONLY_ONE_PART =
    "Only one part was found in the file !\n"
    "Impossible to proceed with the splitting algorithm.\n";

inline constexpr std::string_view NO_ROOT =
    "No root part found. It implies not part in the file or a cyclic part tree.\n"
    "Stopping the algorithm.\n";

}  // namespace Kessel::test
