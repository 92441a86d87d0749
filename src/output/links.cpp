#include "output/links.h"

#include <algorithm>

#include "exchange/string_value.h"

namespace Kessel {

namespace {

struct FormatRow {
  std::string_view schema;  // what its name begins with
  std::string_view format;
};
constexpr FormatRow FORMATS[] = {{"AUTOMOTIVE_DESIGN", "STEP AP214"},
                                 {"CONFIG_CONTROL_DESIGN", "STEP AP203"},
                                 {"CONFIGURATION_CONTROL_3D_DESIGN", "STEP AP203"},
                                 {"AP203_", "STEP AP203"},
                                 {"AP209_", "STEP AP209"},
                                 {"AP210_", "STEP AP210"},
                                 {"AP214_", "STEP AP214"},
                                 {"AP242_", "STEP AP242"}};

}  // namespace

LinkForm link_form(const std::vector<std::string>& schemas) {
  const bool is_first_edition = std::any_of(
      schemas.begin(), schemas.end(),
      [](const std::string& schema) { return schema.starts_with("CONFIG_CONTROL_DESIGN"); });
  return is_first_edition ? LinkForm::associated_document : LinkForm::document_file;
}

std::string data_format(const std::vector<std::string>& schemas) {
  for (const std::string& schema : schemas) {
    for (const FormatRow& row : FORMATS) {
      if (schema.starts_with(row.schema)) return std::string(row.format);
    }
  }
  return "STEP";
}

std::string Links::add(std::string_view name, std::string_view definition,
                       std::string_view representation) {
  make_common();
  const std::string literal = Exchange::string_literal(name);
  if (form_ == LinkForm::associated_document) {
    // Readers look for the file's name in either place.
    return made_.add("DOCUMENT", literal + "," + literal + ",''," + type_);
  }
  add_document_file(literal, definition, representation);
  return {};
}

void Links::make_common() {
  if (has_common_) return;
  has_common_ = true;
  if (form_ == LinkForm::associated_document) {
    type_ = made_.add("DOCUMENT_TYPE", "'cad_filename'");
    return;
  }
  type_ = made_.add("DOCUMENT_TYPE", "'geometry'");
  source_ = made_.add("EXTERNAL_SOURCE", "IDENTIFIER('')");
  role_ = made_.add("IDENTIFICATION_ROLE", "'external document id and location',$");
  const std::string item =
      made_.add("DESCRIPTIVE_REPRESENTATION_ITEM", "'data format','" + std::string(format_) + "'");
  const std::string context = made_.add("REPRESENTATION_CONTEXT", "'','document parameters'");
  format_record_ = made_.add("REPRESENTATION", "'document format',(" + item + ")," + context);
  object_role_ = made_.add("OBJECT_ROLE", "'mandatory',$");
}

void Links::add_document_file(std::string_view name, std::string_view definition,
                              std::string_view representation) {
  const std::string file(name);
  const std::string document = made_.add("DOCUMENT_FILE", file + ",'',''," + type_ + ",'',$");
  made_.add("DOCUMENT_REPRESENTATION_TYPE", "'digital'," + document);
  made_.add("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT",
            file + "," + role_ + "," + source_ + ",(" + document + ")");
  const auto add_property = [&](std::string_view what, std::string_view shown) {
    const std::string property =
        made_.add("PROPERTY_DEFINITION", "'" + std::string(what) + "',''," + document);
    made_.add("PROPERTY_DEFINITION_REPRESENTATION", property + "," + std::string(shown));
  };
  if (!representation.empty()) add_property("external definition", representation);
  add_property("document property", format_record_);
  const std::string reference =
      made_.add("APPLIED_DOCUMENT_REFERENCE", document + ",'',(" + std::string(definition) + ")");
  made_.add("ROLE_ASSOCIATION", object_role_ + "," + reference);
}

}  // namespace Kessel
