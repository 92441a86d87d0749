// Records that a split makes, and records of the input that it words anew.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "output/file_numbers.h"
#include "output/renumbered_text.h"

namespace Kessel {

/// Collects the records that the split makes for one file; they stand behind those of the input.
class MadeRecords {
 public:
  /// Marks a record without a counterpart in the input.
  static constexpr std::string_view MARK = "/*~*/";

  MadeRecords(FileNumbers& numbers, FileId file) : numbers_(numbers), file_(file) {}

  /// Adds `keyword(parameters)` and returns "#" and its number.
  std::string add(std::string_view keyword, std::string_view parameters);

  /// The same for a complex instance of those partial records.
  std::string add_complex(std::string_view partial_records);

  /// What was added since the last call.
  std::string take() { return std::move(text_); }

 private:
  FileNumbers& numbers_;
  FileId file_;
  std::string text_;
};

/// Adds a placement at the origin (AXIS2_PLACEMENT_3D, ISO 10303-42), and returns "#" and its
/// number.
std::string placement_at_origin(MadeRecords& made);

/// What stands for an item of a component's shape that an assembly gives a style to: an item of a
/// representation (ISO 10303-43) that refers to nothing and shows nothing.
inline constexpr std::string_view ITEM_STAND_IN = "CARTESIAN_POINT('',(0.,0.,0.))";

/// The text with the numbers of `file`.
std::string renumbered(const MentioningText& text, const FileNumbers& numbers, FileId file);

/// The body of a placeholder for the representation `body`: a SHAPE_REPRESENTATION (ISO 10303-41)
/// of those of its placements that stand in `file`, or of one at the origin, in its own context.
std::string placeholder_body(const MentioningText& body, const Instances& instances,
                             const FileNumbers& numbers, FileId file, MadeRecords& made);

/// The body of a representation context whose type is 'external', which says that what it is the
/// context of is placed here and defined elsewhere.
std::string external_context_body(const MentioningText& body, const FileNumbers& numbers,
                                  FileId file);

/// The body of a product definition with one more associated document (ISO 10303-41), the first.
std::string documented_definition_body(const MentioningText& body, const FileNumbers& numbers,
                                       FileId file, std::string_view document);

}  // namespace Kessel
