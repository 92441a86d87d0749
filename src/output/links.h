// How a file points at a component's file.
#pragma once

#include <string>
#include <string_view>

#include "output/made_records.h"

namespace Kessel {

/// How the schema of a file lets it refer to other files.
enum class LinkForm {
  /// DOCUMENT_FILE and its kin, as recommended for AP214, AP242 and AP203 edition 2.
  document_file,
  /// AP203 edition 1 has no DOCUMENT_FILE: a document of the type 'cad_filename' that is associated
  /// with the component's definition.
  associated_document,
};

/// What a file says about its format, such as "STEP AP214", and how it refers to others; both
/// follow from its schemas.
LinkForm link_form(const std::vector<std::string>& schemas);
std::string data_format(const std::vector<std::string>& schemas);

/// Makes the records by which one file refers to others; what does not depend on the component is
/// made once.
class Links {
 public:
  Links(MadeRecords& made, LinkForm form, std::string_view format)
      : made_(made), form_(form), format_(format) {}

  /// Refers to the file `name` (UTF-8) for the component with that definition and representation,
  /// both as "#1"; the representation is empty where the component has none. For documents that
  /// are associated nothing refers to the definition; instead the document's name is returned,
  /// "#1".
  std::string add(std::string_view name, std::string_view definition,
                  std::string_view representation);

 private:
  void make_common();
  void add_document_file(std::string_view name, std::string_view definition,
                         std::string_view representation);

  MadeRecords& made_;
  LinkForm form_;
  std::string_view format_;
  bool has_common_ = false;
  std::string type_;
  std::string source_;
  std::string role_;
  std::string format_record_;
  std::string object_role_;
};

}  // namespace Kessel
