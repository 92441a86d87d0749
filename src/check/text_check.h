// Checks the text of an exchange file while it is read.
#pragma once

#include <cstdint>
#include <istream>
#include <string_view>
#include <vector>

#include "check/record_places.h"
#include "findings/finding_list.h"
#include "model/store.h"
#include "reader/record_cutter.h"
#include "reader/record_loader.h"

namespace Kessel {

/// Reads one exchange file as a run reads it, into a store, and looks at everything that the
/// reader drops, joins, passes over or waits for.
class TextCheck : private CuttingWitness {
 public:
  /// Reads from `in` into `store`, which may take `memory_limit` bytes; adds to `findings`.
  TextCheck(std::istream& in, Store& store, FindingList& findings, std::uint64_t memory_limit);

  /// Reads everything. Returns whether a run comes to the end of the data as well. A header
  /// without end is not a finding where `expects_no_header`.
  bool read(bool expects_no_header);

  /// Where each record of the store stands.
  const RecordPlaces& places() const { return places_; }

 private:
  void passed_over(std::string_view piece) override;
  void to_be_joined(std::string_view piece) override;

  bool read_header(bool expects_no_header);
  void look_at_bytes_of_header(std::string_view line, Place place);
  bool read_records();
  void look_at(std::string_view record);
  void look_at_text_of(std::string_view record, std::uint32_t number);
  void look_at_comments_in(std::string_view record, std::uint32_t number);
  void look_behind_empty_statement(Place place);
  void load(std::string_view record, std::uint32_t number);
  void look_at_last_number_of(std::string_view record, std::uint32_t number);
  void report_numbers_beyond_store();
  void say_why_dropped(std::string_view record);
  void note_text_after_end(Place place);

  std::istream& in_;
  Store& store_;
  FindingList& findings_;
  RecordCutter cutter_;
  RecordLoader loader_;
  std::uint64_t memory_limit_;
  RecordPlaces places_;

  /// A number in the text of a record that the store does not have. The writer sees it all the
  /// same.
  struct Mention {
    Place place;
    std::uint32_t record;
    std::uint32_t number;
  };
  std::vector<Mention> not_kept_;  // Those beyond the store as it was then.

  Place place_;  // Of the record that is looked at.
  // The pieces of the next record.
  bool is_joined_ = false;
  bool in_string_ = false;
  bool joined_in_string_ = false;
  bool joined_behind_string_ = false;
  // What was passed over.
  bool in_comment_ = false;
  bool found_end_ = false;
  bool found_text_after_end_ = false;
};

}  // namespace Kessel
