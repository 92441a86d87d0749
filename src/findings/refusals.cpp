// What the reader says where a checked run ends.
#include "findings/refusals.h"

#include <string>

#include "findings/finding_kinds.h"

namespace Kessel {

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
                          std::to_string(limit) + " bytes.",
                      offset);
}

Finding too_much_memory(std::uint64_t needed, std::uint64_t limit, std::uint32_t instance,
                        std::uint64_t offset) {
  return make_finding(FindingKind::memory_limit,
                      "With instance #" + std::to_string(instance) + " the records need at least " +
                          std::to_string(needed) + " bytes of memory, and the limit is " +
                          std::to_string(limit) + ".",
                      offset, instance);
}

Finding records_need_memory(std::uint64_t needed, std::uint64_t limit) {
  return make_finding(FindingKind::memory_limit,
                      "The records need at least " + std::to_string(needed) +
                          " bytes of memory, and the limit is " + std::to_string(limit) + ".");
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
