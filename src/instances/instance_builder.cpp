#include "instances/instance_builder.h"

#include <utility>

#include "findings/refusals.h"
#include "kessel/errors.h"

namespace Kessel {

void InstanceBuilder::begin_section(Exchange::Section section, std::string_view parameters) {
  instances_.sections_.push_back({instances_.size(), section});
  if (section != Exchange::Section::data) return;
  instances_.data_sections_.push_back({instances_.size(), std::string(parameters)});
}

void InstanceBuilder::begin_file(const TypeTable& types) {
  types_.clear();
  for (TypeId type = 0; type < types.size(); ++type) {
    types_.push_back(instances_.type_table_.type_like(types, type));
  }
}

void InstanceBuilder::begin_record(TypeId type, bool has_number) {
  Instances& all = instances_;
  const Index index = all.size();
  if (index == NO_RECORD - 1) throw InputError(too_many_records(0));
  if (index % Instances::BLOCK == 0) {
    require_memory();
    all.block_references_.push_back(all.references_.size());
    all.block_offsets_.push_back(0);
  }
  all.types_.push_back(types_[type]);
  all.numbers_.push_back(has_number ? index + 1 : 0);
  all.first_references_.push_back(
      static_cast<std::uint32_t>(all.references_.size() - all.block_references_.back()));
}

void InstanceBuilder::keep(std::string body) {
  instances_.keep(instances_.size() - 1, std::move(body));
}

void InstanceBuilder::finish() {
  Instances& all = instances_;
  if (all.size() == 0) return;
  all.index_ = NumberIndex(all.size(), 1, all.size());
  for (Index record = 0; record < all.size(); ++record) {
    if (all.numbers_[record] != 0) all.index_.enter(all.numbers_[record], record);
  }
  all.index_.finish();
  require_memory();
}

void InstanceBuilder::require_memory() const {
  const std::uint64_t needed = instances_.bytes();
  if (needed > memory_limit_) throw InputError(records_need_memory(needed, memory_limit_));
}

}  // namespace Kessel
