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

/// What the header of the output file `path` of a classic split looks like, up to and including
/// "DATA;".
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

/// The whole output file of a nested split, time stamp replaced. Unlike in classic ones, no empty
/// line stands in front of the data.
inline std::string nested_file(std::string_view path, std::string_view records) {
  std::string begin = output_begin(path);
  begin.erase(begin.find("\n\nDATA;"), 1);
  return begin + std::string(records) + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// The same of a classic one.
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

/// What stands in "box.stp" of a nested split, with names of products: the lid's shape is a
/// placeholder at the origin, and a block points at the lid's file.
inline constexpr std::string_view NESTED_BOX_RECORDS =
    "/* velkstep split 5e5068dcac85482d: the number in front of a record is"
    " its number in the file that was split */\n"
    "#1=PRODUCT('box','box','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
    "/*4*/#4=PRODUCT('lid','lid','',());\n"
    "/*5*/#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "/*6*/#6=PRODUCT_DEFINITION('d','',#5,$);\n"
    "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"
    "/*8*/#8=PRODUCT_DEFINITION_SHAPE('','',#6);\n"
    "/*9*/#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);\n"
    "/*~10*/#10=SHAPE_REPRESENTATION('lid',(#31),#11);\n"
    "/*~12*/#11=GEOMETRIC_REPRESENTATION_CONTEXT('id','external',3);\n"
    "/*~*/#12=DOCUMENT_TYPE('geometry');\n"
    "/*~*/#13=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
    "/*~*/#14=IDENTIFICATION_ROLE('external document id and location',$);\n"
    "/*~*/#15=DESCRIPTIVE_REPRESENTATION_ITEM('data format','STEP AP214');\n"
    "/*~*/#16=REPRESENTATION_CONTEXT('','document parameters');\n"
    "/*~*/#17=REPRESENTATION('document format',(#15),#16);\n"
    "/*~*/#18=OBJECT_ROLE('mandatory',$);\n"
    "/*~*/#19=DOCUMENT_FILE('lid.stp','','',#12,'',$);\n"
    "/*~*/#20=DOCUMENT_REPRESENTATION_TYPE('digital',#19);\n"
    "/*~*/#21=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('lid.stp',#14,#13,(#19));\n"
    "/*~*/#22=PROPERTY_DEFINITION('external definition','',#19);\n"
    "/*~*/#23=PROPERTY_DEFINITION_REPRESENTATION(#22,#10);\n"
    "/*~*/#24=PROPERTY_DEFINITION('document property','',#19);\n"
    "/*~*/#25=PROPERTY_DEFINITION_REPRESENTATION(#24,#17);\n"
    "/*~*/#26=APPLIED_DOCUMENT_REFERENCE(#19,'',(#6));\n"
    "/*~*/#27=ROLE_ASSOCIATION(#18,#26);\n"
    "/*~*/#28=CARTESIAN_POINT('',(0.,0.,0.));\n"
    "/*~*/#29=DIRECTION('',(0.,0.,1.));\n"
    "/*~*/#30=DIRECTION('',(1.,0.,0.));\n"
    "/*~*/#31=AXIS2_PLACEMENT_3D('',#28,#29,#30);\n";

/// The same of "lid.stp".
inline constexpr std::string_view NESTED_LID_RECORDS =
    "/* velkstep split 5e5068dcac85482d: the number in front of a record is"
    " its number in the file that was split */\n"
    "/*4*/#1=PRODUCT('lid','lid','',());\n"
    "/*5*/#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "/*6*/#3=PRODUCT_DEFINITION('d','',#2,$);\n"
    "/*8*/#4=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "/*9*/#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n"
    "/*10*/#6=SHAPE_REPRESENTATION('lid',(#7),#8);\n"
    "#7=MANIFOLD_SOLID_BREP('',$);\n"
    "/*12*/#8=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n";

/// One product, alone.
inline constexpr std::string_view LID_ALONE =
    "#4=PRODUCT('lid','lid','',());\n"
    "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "#6=PRODUCT_DEFINITION('d','',#5,$);\n";

/// The same with a shape, so that it is a part.
inline constexpr std::string_view LID_WITH_SHAPE =
    "#4=PRODUCT('lid','lid','',());\n"
    "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
    "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
    "#7=PRODUCT_DEFINITION_SHAPE('','',#6);\n"
    "#8=SHAPE_DEFINITION_REPRESENTATION(#7,#9);\n"
    "#9=SHAPE_REPRESENTATION('',(),$);\n";

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
