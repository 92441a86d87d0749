// The private side of File, for tests of single passes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kessel/file.h"
#include "model/store.h"

namespace Kessel {

/// Passes and members of a store that hosts cannot reach. Each function is the member of its name.
struct FileInternals {
  using Ids = File::Ids;

  // reader
  static std::unique_ptr<File> parse_file(const std::filesystem::path& path,
                                          NameStyle names = NameStyle::record) {
    return std::unique_ptr<File>(File::parse_file(path, {.names = names}));
  }

  // structure
  static void process_parts(File& file, std::string (*decode)(std::string_view)) {
    file.process_parts(decode);
  }
  static void find_and_create_parts(File& file) { file.find_and_create_parts(); }
  static void link_parts(File& file) { file.link_parts(); }
  static void find_parts_types(File& file, std::string (*decode)(std::string_view)) {
    file.find_parts_types(decode);
  }
  static void classify_by_geometry(File& file) { file.classify_by_geometry(); }
  static void generate_root(File& file) { file.generate_root(); }
  static void list_root(const File& file) { file.list_root(); }

  // association
  static void associate_entities(const File& file) { file.associate_entities(); }
  static void initiate_recognition(const File& file) { file.initiate_recognition(); }
  static void associate_others(const File& file) { file.associate_others(); }

  // writer
  static void write_parts(File& file, const std::filesystem::path& outdir) {
    file.write_parts(outdir);
  }

  // model
  static NameStyle& name_style(File& file) { return file.name_style_; }
  static void make_room(File& file, unsigned id) { file.make_room(id); }
  static std::pair<std::string_view, Ids*> intern_type(File& file, std::string_view type) {
    return file.intern_type(type);
  }
  static std::string_view add_type(File& file, unsigned id, std::string_view type) {
    return file.add_type(id, type);
  }
  static void set_references(File& file, Entity& entity, std::span<const unsigned> references) {
    file.set_references(entity, references);
  }
  static void add_part(File& file, Part* part) { file.add_part(part); }
  template <class Record, class... Args>
  static Record* store(File& file, unsigned id, Args&&... args) {
    return file.store<Record>(id, std::forward<Args>(args)...);
  }

  // members
  static std::ifstream& input(File& file) { return file.input_; }
  static std::string& first_line(File& file) { return file.first_line_; }
  static std::string& header(File& file) { return file.header_; }
  static std::map<std::string_view, Ids>& ids_by_type(File& file) { return file.ids_by_type_; }
  static std::vector<Part*>& parts(File& file) { return file.parts_; }
  static Part*& root(File& file) { return file.root_; }
  static bool& root_generated(File& file) { return file.root_generated_; }
};

}  // namespace Kessel
