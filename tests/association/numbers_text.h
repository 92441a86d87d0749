// Who holds which record under which number, in stores read from exchange files.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "structure/literal_file.h"

namespace Kessel::test {

/// The parts that hold one instance, in order, such as "#3=1 root=4".
inline std::string holders_of(const Store& file, const Entity& entity) {
  std::string text;
  for (const auto& [part, number] : entity.part_numbers) {
    if (!text.empty()) text += ' ';
    text += name_of(file, part) + '=' + std::to_string(number);
  }
  return text;
}

/// The last number of each part's file, such as "#3=11 root=4".
inline std::string last_numbers_of(const Store& file) {
  std::string text;
  for (const Part* part : file.parts) {
    if (!text.empty()) text += ' ';
    text += name_of(file, part) + '=' + std::to_string(part->last_instance_number);
  }
  return text;
}

/// A line per record, such as "#3: #3=1 root=4", one for a generated root, and the last numbers.
inline std::string numbers_of(const Store& file) {
  std::string text;
  file.entities.for_each_in_use([&](std::size_t number, const Entity* entity) {
    if (entity == nullptr) return;
    text += '#' + std::to_string(number) + ": " + holders_of(file, *entity) + '\n';
  });
  const Part* root = file.root;
  if (root != nullptr && name_of(file, root) == "root") {
    text += "root: " + holders_of(file, *root) + '\n';
  }
  return text + "last: " + last_numbers_of(file) + '\n';
}

}  // namespace Kessel::test
