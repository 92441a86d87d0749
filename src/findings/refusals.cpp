// What the reader says where a checked run ends.
#include "findings/refusals.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "findings/finding_kinds.h"
#include "findings/finding_list.h"

namespace Kessel {

namespace {

/// `number` rounded up to two digits, as what is only an estimate deserves.
std::uint64_t about(double number) {
  constexpr double MOST = 1e18;  // What 64 bits hold for sure.
  const double estimate = std::min(number, MOST);
  double step = 1;
  while (estimate / step >= 100) step *= 10;
  return static_cast<std::uint64_t>(std::ceil(estimate / step) * step);
}

/// What `needed` bytes for the beginning of a file let expect for all of it.
std::uint64_t estimated_need(std::uint64_t needed, const BytesRead& read) {
  return about(static_cast<double>(needed) * static_cast<double>(read.total) /
               static_cast<double>(read.done));
}

}  // namespace

Finding no_header_end(std::uint64_t offset) {
  return make_finding(FindingKind::header_without_end, "No line ends the header with \"ENDSEC;\".",
                      offset);
}

Finding no_data(std::uint64_t offset) {
  return make_finding(FindingKind::nothing_after_header, "The file ends with its header.", offset);
}

Finding header_as_data(std::uint64_t offset) {
  return make_finding(FindingKind::header_is_read_as_data,
                      "The header, which this line ends, holds a \";\" in front of a \"#\" or of "
                      "another \";\"; when the file is read again, data seems to begin or to end "
                      "there.",
                      offset);
}

Finding unclosed_text(std::uint64_t offset) {
  return make_finding(FindingKind::unclosed_text, "No \";\" closes this text, the file's last.",
                      offset);
}

Finding unclosed_record(std::uint32_t instance, bool is_whole, std::uint64_t offset) {
  return make_finding(FindingKind::unclosed_record,
                      is_whole ? "No \";\" closes this record, the file's last."
                               : "No \")\" and \";\" close this record up to the end of the file.",
                      offset, instance);
}

Finding too_long(std::uint64_t limit, std::uint64_t offset) {
  return make_finding(FindingKind::memory_limit,
                      "The header, a record or other text in front of a \";\" is longer than the "
                      "memory limit of " +
                          with_commas(limit) + " bytes.",
                      offset);
}

Finding too_much_memory(std::uint64_t needed, std::uint64_t limit, std::uint32_t instance,
                        std::uint64_t offset) {
  return make_finding(FindingKind::memory_limit,
                      "With instance #" + std::to_string(instance) +
                          " the records up to here need " + with_commas(needed) +
                          " bytes of memory, and the limit is " + with_commas(limit) + ".",
                      offset, instance);
}

Finding records_need_memory(std::uint64_t needed, std::uint64_t limit, const BytesRead& read) {
  const bool is_beginning = read.done != 0 && read.done < read.total;
  const std::string what = is_beginning ? "The first " + with_commas(read.done) + " of " +
                                              with_commas(read.total) + " bytes of the file take "
                                        : "The records need at least ";
  const std::string all =
      is_beginning ? "; all may take about " + with_commas(estimated_need(needed, read)) : "";
  return make_finding(FindingKind::memory_limit, what + with_commas(needed) +
                                                     " bytes of memory, and the limit is " +
                                                     with_commas(limit) + all + ".");
}

Finding files_need_memory(std::size_t before, std::uint64_t limit) {
  return make_finding(FindingKind::memory_limit,
                      "With those of the " +
                          (before == 1 ? "file" : with_commas(before) + " files") +
                          " read before it, the records of this file need more memory than the "
                          "limit of " +
                          with_commas(limit) + " bytes.");
}

Finding too_many_records(std::uint64_t offset) {
  return make_finding(FindingKind::memory_limit,
                      "The file has more records than can be told apart.", offset);
}

Finding input_changed(std::uint64_t offset) {
  return make_finding(FindingKind::changed_while_read, "The file was changed while it was split.",
                      offset);
}

Finding unreadable_file(std::string_view reason) {
  return make_finding(FindingKind::unreadable, "The file " + std::string(reason) + ".");
}

}  // namespace Kessel
