// The class that hosts drive: the steps of a run, and what they may see of the store.
#include "kessel/file.h"

#include <utility>

#include "association/associate.h"
#include "model/store.h"
#include "reader/parse_file.h"
#include "splitter/root_list.h"
#include "structure/process_parts.h"
#include "writer/write_parts.h"

namespace Kessel {

// NOLINTBEGIN(performance-unnecessary-value-param): the interface takes paths by value.

File::File(std::filesystem::path path) : store_(std::make_unique<Store>(path)) {}

File::File(std::unique_ptr<Store> store) : store_(std::move(store)) {}

File::~File() = default;

File* File::from(std::filesystem::path in, std::string (*decode)(std::string_view)) {
  std::unique_ptr<Store> store = parse_file(in);
  process_parts(*store, decode);
  list_root(*store);
  return new File(std::move(store));
}

void File::extract_parts(std::filesystem::path outdir) {
  associate_entities(*store_);
  write_parts(*store_, outdir);
}

// NOLINTEND(performance-unnecessary-value-param)

Entity* File::create_entity(unsigned id) {
  return store_->create_entity(id);
}

Entity* File::create_entity(unsigned id, std::string_view type) {
  return store_->create_entity(id, type);
}

Entity* File::create_entity(unsigned id, std::string_view type, std::string_view attribute) {
  return store_->create_entity(id, type, attribute);
}

const std::set<std::string>& File::types() const {
  return store_->types;
}

Entity* File::at(unsigned id) const {
  return store_->at(id);
}

std::vector<Entity*> File::get(std::string_view type) const {
  return store_->get(type);
}

std::set<unsigned> File::get_ids(std::string_view type) const {
  return store_->get_ids(type);
}

const std::vector<Part*>& File::parts() const {
  return store_->parts;
}

Part* File::root_part() const {
  return store_->root;
}

}  // namespace Kessel
