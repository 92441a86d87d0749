// What parts are called on paper, and how lists sort them.
#pragma once

#include <string>
#include <string_view>

#include "kessel/assembly.h"

namespace Velkstep {

/// In which order a list of parts has them.
enum class PartsOrder {
  file,      ///< as in the file
  name,      ///< by name, whether in capital or small letters
  quantity,  ///< the most frequent first, equally frequent ones by name
};

/// "part", "assembly" or "assembly with bodies".
std::string_view role_name(Kessel::PartRole role);

/// The part's name, else its id, else what it is; printable.
std::string title_of(const Kessel::PartInfo& part);

/// "#12", or nothing for a part without a record.
std::string record_of(const Kessel::PartInfo& part);

/// The part's file, printable; empty for none.
std::string file_of(const Kessel::PartInfo& part);

/// A total in decimal, with a sign in front that says "or more" where counting ended.
std::string total_of(const Kessel::PartInfo& part);

}  // namespace Velkstep
