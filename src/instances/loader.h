// Fills Instances from a reading.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "exchange/reader.h"
#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "instances/instances.h"
#include "kessel/finding.h"
#include "kessel/options.h"

namespace Kessel {

/// Listens to a reading and enters every record. For what needs more of each record's text than is
/// kept, derive from it and override `added`.
class InstanceLoader : public Exchange::Listener {
 public:
  /// Fills `instances`, which must outlive it. Of the options the memory limit and the progress
  /// matter, for both of which `total` is the size of the input.
  InstanceLoader(Instances& instances, const Options& options, std::uint64_t total = 0);

  /// Ends the loading: numbers become references. `in` is the input, from which records under one
  /// number are compared. Throws InputError where two of them differ. Warnings, here as in a
  /// reading, go to `warning`.
  void finish(std::istream& in);

  void header_entity(const Exchange::Statement& entity) override;
  void begin_section(Exchange::Section section, std::string_view parameters) override;
  void record(const Exchange::Record& record) final;
  void entry(Exchange::Section section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention> mentions) final;

 protected:
  /// A record was entered under `index`; its references are not resolved yet.
  virtual void added(Index /*index*/, const Exchange::Record&) {}
  /// So was the line of an anchor or reference section.
  virtual void added_entry(Index /*index*/, const Exchange::Statement&,
                           std::span<const Exchange::Mention>) {}
  /// What is held for the records beside the instances, which counts for the memory limit.
  virtual std::uint64_t further_bytes() const { return 0; }

 private:
  Index begin_record(TypeId type, std::uint64_t number, std::uint64_t offset);
  void begin_block(std::uint64_t offset);
  void note_number(std::uint64_t number);
  void add_references(std::span<const Exchange::Mention> mentions);
  void note_listed(const Exchange::Record& record);
  void keep(Index index, std::string_view body);
  std::uint64_t needed_memory() const;
  void require_memory(std::uint64_t more = 0) const;
  /// What of a record's text is looked at: bits.
  enum Look : signed char { UNKNOWN = -1, NOTHING = 0, LISTS = 1, WHOLE_TEXT = 2 };
  int look_at(TypeId type) {
    const bool is_known = type < looks_.size() && looks_[type] != UNKNOWN;
    return is_known ? looks_[type] : learn_look(type);
  }
  int learn_look(TypeId type);
  void enter_numbers();
  void resolve();
  void drop_repeated(std::istream& in);
  void drop_repeated_lines(std::istream& in);

  Instances& instances_;
  ProgressReporter reporter_;
  BytesRead read_;
  std::uint64_t memory_limit_;
  std::uint64_t smallest_ = ~std::uint64_t{0};
  std::uint64_t largest_ = 0;
  std::uint64_t references_of_block_ = 0;
  Column<std::uint64_t> listed_;    // places of references in collectors' lists
  std::vector<signed char> looks_;  // by type: Look
  struct LargeReference {
    std::uint64_t place = 0;
    std::uint64_t number = 0;
  };
  Column<LargeReference> large_references_;  // those to numbers that 32 bits do not hold
  std::vector<Repeated> repeated_;
};

/// Reads the exchange file in `in` and finishes `loader`, which listens. Throws InputError for what
/// cannot be read to its end or does not fit into memory, its finding with its line.
void load_with(std::istream& in, InstanceLoader& loader, const Options& options);

/// Reads the exchange file in `in` into `instances`. Throws InputError for what cannot be read to
/// its end, its finding with its line. Returns the warnings, by ascending offset, with lines.
std::vector<Finding> load_instances(std::istream& in, Instances& instances,
                                    const Options& options = {});

}  // namespace Kessel
