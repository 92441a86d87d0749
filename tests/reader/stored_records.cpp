#include "reader/stored_records.h"

#include <string_view>
#include <typeinfo>

namespace Kessel::test {

namespace {

std::string kept_by(const Entity& entity) {
  const auto bracketed = [](std::string_view text) { return " [" + std::string(text) + "]"; };
  if (typeid(entity) == typeid(EntityWithAttr)) {
    return " named" + bracketed(entity.type()) + bracketed(entity.attribute());
  }
  if (typeid(entity) == typeid(EntityWithType)) return " typed" + bracketed(entity.type());
  return typeid(entity) == typeid(Entity) ? " plain" : " of another class";
}

}  // namespace

std::vector<std::string> stored_records(const Store& file) {
  std::vector<std::string> lines;
  file.entities.for_each_in_use([&](std::size_t number, const Entity* entity) {
    if (entity == nullptr) return;
    std::string line = "#" + std::to_string(number) + kept_by(*entity) + ":";
    for (const unsigned reference : entity->get_references()) {
      line += " " + std::to_string(reference);
    }
    lines.push_back(line);
  });
  return lines;
}

}  // namespace Kessel::test
