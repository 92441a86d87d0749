// What parts are called on paper.
#pragma once

#include <string>
#include <string_view>

#include "kessel/assembly.h"

namespace Velkstep {

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
