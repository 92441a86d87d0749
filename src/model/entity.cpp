// The record classes.
#include "kessel/entity.h"

#include <cstddef>
#include <utility>

#include "findings/messages.h"

namespace Kessel {

namespace {
/// What records without a type or an attribute have in their place.
constexpr char NO_TEXT[] = "";
}  // namespace

Entity::Entity() = default;

Entity::Entity(Entity&& other)
    : part_numbers(std::move(other.part_numbers)), references_(std::move(other.references_)) {}

Entity::~Entity() = default;

std::string_view Entity::type() const {
  return NO_TEXT;
}

std::string_view Entity::attribute() const {
  return NO_TEXT;
}

void Entity::add_reference(unsigned id) {
  references_.append(id);
}

unsigned Entity::get_reference(int i) const {
  const std::span<const std::uint32_t> numbers = references();
  // A negative index becomes a huge one and is out of range like any other.
  if (static_cast<std::size_t>(i) < numbers.size()) return numbers[static_cast<std::size_t>(i)];
  messages() << "Got an out of range in 'get_child' while fetching child nb " << i << '\n';
  return 0;
}

const std::vector<unsigned>& Entity::get_references() const {
  return references_.as_vector();
}

bool Entity::refer_any() const {
  return !references().empty();
}

void Entity::shrink_to_fit() {
  references_.shrink_to_fit();
}

EntityWithType::EntityWithType(std::string_view type) : type_(type) {}

// The move takes the base part of `other` only.
// NOLINTNEXTLINE(clang-analyzer-cplusplus.Move)
EntityWithType::EntityWithType(Entity&& other) : Entity(std::move(other)), type_(other.type()) {}

EntityWithType::EntityWithType(EntityWithType&& other)
    : EntityWithType(static_cast<Entity&&>(other)) {}

EntityWithType::~EntityWithType() = default;

std::string_view EntityWithType::type() const {
  return type_;
}

EntityWithAttr::EntityWithAttr(std::string_view type, std::string_view attribute)
    : EntityWithType(type), attribute_(attribute) {}

EntityWithAttr::EntityWithAttr(Entity&& other)
    : EntityWithType(std::move(other)), attribute_(other.attribute()) {}

EntityWithAttr::EntityWithAttr(EntityWithAttr&& other)
    : EntityWithAttr(static_cast<Entity&&>(other)) {}

EntityWithAttr::~EntityWithAttr() = default;

std::string_view EntityWithAttr::attribute() const {
  return attribute_;
}

}  // namespace Kessel
