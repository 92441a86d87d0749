// What is wrong or unusual in an input file or a finished split, where, and how bad it is.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "kessel/export.h"

namespace Kessel {

/// How bad a finding is.
enum class Severity {
  warning,  ///< a split works; something about the input or the result deserves a look
  error,    ///< a split fails, never ends, or loses or spoils something that the input says
};

/// What a finding is about. Hosts tell findings apart by it, not by their sentences.
enum class FindingKind {
  // the file as a whole
  unreadable,              ///< cannot be opened or read, or is no regular file
  empty_file,              ///< holds no byte
  compressed,              ///< a compressed file or an archive
  other_encoding,          ///< text in UTF-16, UTF-32 or EBCDIC
  binary,                  ///< data that is no text
  not_an_exchange_file,    ///< text that does not begin as an exchange file does
  first_line,              ///< the first line holds more or less than "ISO-10303-21;"
  header_without_end,      ///< no line ends the header with "ENDSEC;"
  nothing_after_header,    ///< the file ends with its header
  header_is_read_as_data,  ///< a ";" in a string of the header, and "#" or ";" behind it
  unclosed_text,           ///< text after the last ";"
  unclosed_record,         ///< a last record that no ")" and ";" close
  text_after_end,          ///< text behind "END-ISO-10303-21;", which is read
  missing_end,             ///< no "END-ISO-10303-21;"
  changed_while_read,  ///< the file was changed between its two readings; only `split` finds that

  // records and what stands between them
  record_number_too_large,  ///< dropped: a number above 4,294,967,295
  skipped_text,             ///< a statement that is neither a record nor a section's begin or end
  not_utf8,                 ///< bytes that are neither ASCII nor UTF-8, in the header or a record
  memory_limit,             ///< what is kept, or one text, is above `Options::memory_limit`
  unclosed_string,          ///< a string that nothing closes
  unclosed_comment,         ///< a comment that nothing closes
  unclosed_list,            ///< a record with a "(" that nothing closes
  unclosed_section,         ///< a section without its "ENDSEC;"
  missing_header,           ///< no "ISO-10303-21;" and "HEADER;" in front
  unsupported_scope,        ///< a record with a scope of its own ("&SCOPE")
  two_texts_of_a_number,    ///< two records under one number that say different things
  same_text_twice,          ///< a record or line has been there already with the same text
  empty_statement,          ///< nothing in front of a ";"
  signature_dropped,        ///< a signature, which signs nothing that is written
  unusual_record,           ///< a record without a type, or with a ")" or number that is of no use
  lone_backslash,           ///< a "\" in a string that begins no directive

  // references
  missing_instance,       ///< a reference to a number that no record has
  instance_beyond_store,  ///< the same, with a number so large that it may end the split
  reference_cycle,        ///< instances that refer to each other in a circle

  // product structure
  unused_usage,       ///< a usage that joins no two product definitions
  usage_cycle,        ///< a usage whose component leads back to the assembly
  part_without_name,  ///< a part that leads to no product, after which its file would be named
  foreign_shape,      ///< a record that puts parts of one product's shape into another's file
  occurrence_style,   ///< a style of one occurrence of a part that readers of a split cannot show
  unfollowed_file,    ///< a record by which readers of a split may not find a component's file
  no_part,            ///< nothing to split: no product definition has a shape or a component
  one_part,           ///< nothing to split: there is one part; only a split tells it

  // files of a finished split; only `verify` finds these
  missing_file,          ///< there is no folder, or no file that could be the root's
  wrong_header,          ///< the root's file names other schemas than the input
  missing_record,        ///< a record of the input that no file holds
  foreign_record,        ///< a record that the input does not hold, or not so often
  changed_record,        ///< says something else than the input's record
  unresolved_reference,  ///< refers to a number that no record of the file has
  undecided,             ///< so symmetrical that it only looks as if they said the same
  missing_root_list,     ///< no "roots.txt"; the library writes it into the working directory
  wrong_root_list,       ///< "roots.txt" does not hold the name of a file that is there
  foreign_file,          ///< an exchange file with records to which no other refers
  missing_listed_file,   ///< a file that the list of the split names is not there
  changed_listed_file,   ///< it is, but with other bytes than the split wrote
  wrong_split_list,      ///< the list of the split says nothing that can be read

  // files that refer to others
  missing_target,     ///< the file to which a reference leads is not there
  target_outside,     ///< a reference leads out of the folder of the file that is joined
  file_cycle,         ///< files that refer to each other in a circle
  mixed_schemas,      ///< files that obey different schemas
  unknown_component,  ///< a file holds nothing that a reference to it could mean
  copies_differ,      ///< one record of the input says different things in two files
  stand_in_left,      ///< a record that stands for another, which no file holds
  shape_elsewhere,    ///< another file holds it, and keeps it; only `split` and `extract` tell
};

/// The kind's name as it stands in FindingKind, for machines to read.
KESSEL_EXPORT std::string_view name_of(FindingKind kind);

/// One finding. Plain data; hosts may build their own.
struct Finding {
  FindingKind kind = FindingKind::unreadable;
  Severity severity = Severity::error;
  std::string sentence;      ///< plain English; ASCII but for names of files, which are UTF-8
  std::uint64_t offset = 0;  ///< bytes from the beginning of the file
  std::uint64_t line = 0;    ///< line of `offset`, from 1; 0 for a finding on the whole file
  /// Column of `offset` in its line, from 1, in bytes (a character beyond ASCII has two to four); 0
  /// where there is no line.
  std::uint64_t column = 0;
  std::uint64_t instance = 0;  ///< instance number in that file; 0 where none is concerned
  std::uint64_t count = 1;     ///< how many findings of the kind this one stands for
  /// The file that it is about, UTF-8: of a split, its name in the output folder, and "." for the
  /// folder itself; one that the input refers to, as seen from the input's folder. Empty for the
  /// input.
  std::string file = {};
};

}  // namespace Kessel
