// Stores read from exchange files that stand in a test, and what the passes left in them, as text.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "model/store.h"
#include "reader/parse_file.h"
#include "structure/process_parts.h"
#include "support/out_of_range.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

/// A store with the records of a data section; no pass has run yet.
inline std::unique_ptr<Store> read_records(const std::string& data) {
  const ScratchFolder folder;
  return parse_file(folder.write("in.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n" + data +
                                               "ENDSEC;\nEND-ISO-10303-21;\n"));
}

/// A name decoder that fails the test: no text of the input becomes part of a name.
inline std::string refuse_to_decode(std::string_view text) {
  ADD_FAILURE() << "decoded \"" << text << '"';
  return {};
}

/// The same with parts, links, root and names, as the first file of a run. "roots.txt" is lost.
inline std::unique_ptr<Store> read_structure(const std::string& data) {
  std::unique_ptr<Store> file = read_records(data);
  const ScratchFolder folder;
  Part::free_statics();
  process_parts(*file, refuse_to_decode);
  return file;
}

/// "#7" for the part in slot 7, "root" for one that stands for no record.
inline std::string name_of(const Store& file, const Entity* part) {
  std::string name = "root";
  file.entities.for_each_in_use([&](std::size_t number, const Entity* entity) {
    if (entity == part) name = "#" + std::to_string(number);
  });
  return name;
}

/// The names of some parts, each followed by a space.
inline std::string names_of(const Store& file, const std::vector<Part*>& parts) {
  std::string names;
  for (const Part* part : parts) names += name_of(file, part) + ' ';
  return names;
}

/// The file's list of parts.
inline std::string parts_of(const Store& file) {
  return names_of(file, file.parts);
}

/// Each part with its `part_kind`, such as "#7=2 root=1 ".
inline std::string kinds_of(const Store& file) {
  std::string text;
  for (const Part* part : file.parts) {
    text += name_of(file, part) + '=' + std::to_string(part->part_kind) + ' ';
  }
  return text;
}

/// Each part with its path, such as "#7=#3_part.stp ".
inline std::string paths_of(const Store& file) {
  std::string text;
  for (const Part* part : file.parts) text += name_of(file, part) + '=' + part->path.string() + ' ';
  return text;
}

}  // namespace Kessel::test
