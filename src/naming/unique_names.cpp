#include "naming/unique_names.h"

#include "naming/characters.h"
#include "naming/file_stem.h"
#include "naming/unicode_forms.h"

namespace Kessel {

std::string caseless_name(std::string_view name) {
  return to_utf8(to_caseless_form(characters_of(name)));
}

void UniqueNames::reserve(std::string_view name) {
  std::string taken = caseless_name(name);
  const std::string extension = caseless_name(FILE_EXTENSION);
  if (!taken.ends_with(extension)) return;  // All names that are given out do.
  taken.resize(taken.size() - extension.size());
  taken_.try_emplace(std::move(taken), 1);
}

std::string UniqueNames::take(std::string_view stem) {
  const auto [entry, is_new] = taken_.try_emplace(caseless_name(stem), 1);
  if (is_new) return std::string(stem).append(FILE_EXTENSION);
  for (std::uint32_t& number = entry->second;;) {
    const std::string suffix = " (" + std::to_string(++number) + ")";
    const std::string name = shortened_stem(stem, suffix.size()) + suffix;
    if (taken_.try_emplace(caseless_name(name), 1).second)
      return name + std::string(FILE_EXTENSION);
  }
}

}  // namespace Kessel
