#include "naming/unique_names.h"

#include "naming/characters.h"
#include "naming/file_stem.h"
#include "naming/unicode_forms.h"

namespace Kessel {

namespace {

std::string caseless(std::string_view name) {
  return to_utf8(to_caseless_form(characters_of(name)));
}

}  // namespace

std::string UniqueNames::take(std::string_view stem) {
  const auto [entry, is_new] = taken_.try_emplace(caseless(stem), 1);
  if (is_new) return std::string(stem).append(FILE_EXTENSION);
  for (std::uint32_t& number = entry->second;;) {
    const std::string suffix = " (" + std::to_string(++number) + ")";
    const std::string name = shortened_stem(stem, suffix.size()) + suffix;
    if (taken_.try_emplace(caseless(name), 1).second) return name + std::string(FILE_EXTENSION);
  }
}

}  // namespace Kessel
