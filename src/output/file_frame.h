// What stands around the records of a file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "instances/instances.h"

namespace Kessel {

/// The header section of the input, from "ISO-10303-21;" to its "ENDSEC;", for files of the split:
/// FILE_NAME (ISO 10303-21, 8.2.2) says the file's name and `time_stamp`, or the input's time where
/// that is empty. Where the sections of the input become one, entities that speak of sections speak
/// of all.
class HeaderForm {
 public:
  HeaderForm(const std::vector<std::string>& entities, std::string_view time_stamp,
             bool has_one_section);

  /// The header of the file that is called `name` (UTF-8).
  std::string with_name(std::string_view name) const;

 private:
  std::vector<std::string> pieces_;  // the name stands between them
};

/// The parameters of DATA for each of the input's data sections; one empty string where the
/// sections become one, since they are all of one schema.
std::vector<std::string> section_parameters(const Instances& instances);

/// The names in FILE_SCHEMA, UTF-8.
std::vector<std::string> schemas(const std::vector<std::string>& entities);

}  // namespace Kessel
