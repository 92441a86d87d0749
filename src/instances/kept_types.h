// Of which records the texts are kept.
#pragma once

#include <string_view>

namespace Kessel {

/// Whether Instances keeps the text of records with that keyword: those that say which products
/// there are, how they are put together, what they are called and where their shapes are, and in
/// which units.
bool keeps_text_of(std::string_view keyword);

}  // namespace Kessel
