// Pictures of parts, for documents.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "kessel/export.h"
#include "kessel/options.h"

namespace Kessel {

/// Where a picture is seen from. The z axis points upwards, but for `top`.
enum class View {
  isometric,  ///< from in front, above and the right: all axes are shortened alike
  front,      ///< along the y axis: x to the right
  top,        ///< down along the z axis: x to the right, y upwards
  right,      ///< against the x axis: y to the right
};

/// Choices for a picture.
struct PictureOptions {
  /// Which part, UTF-8, as extract() understands it (`kessel/extract.h`): "#" and the number of its
  /// definition, its product's name or id, or a path; empty for the whole.
  std::string part = {};
  View view = View::isometric;
  /// Bytes that may be kept of the input; as Options::memory_limit.
  std::uint64_t memory_limit = Options::NO_LIMIT;
  /// Whether the files that the input refers to are read with it, as if all were one file (see
  /// `join`); else parts whose shapes stand in those have no lines. The numbers of parts are then
  /// those of the joined file.
  bool follow_references = false;
  /// Whether files outside of the input's folder may be followed.
  bool follow_outside = false;
  /// As Options::readable.
  std::function<std::filesystem::path(const std::filesystem::path&)> readable = {};
  /// The folder from which the input's names of other files are seen, as Options::input_folder.
  std::filesystem::path input_folder = {};
  /// Whether an output that is there already is replaced; devices and pipes never are.
  bool replace = false;
  /// Told how far it has come, as Options::progress; Stage::sorting counts parts that are drawn.
  std::function<void(const Progress&)> progress = {};
  /// Told what about the reading deserves a look, as Options::warning.
  std::function<void(const Finding&)> warning = {};
};

/// What a picture shows.
struct Picture {
  std::uint64_t record = 0;  ///< instance number of the part's definition; 0 for a generated root
  std::string name;          ///< of the part, UTF-8, or its id, or "#" and that number
  std::uint64_t places = 0;  ///< how many parts with lines were drawn, one at two places twice
  std::uint64_t lines = 0;   ///< how many lines are in it
  /// How many lines are not in it since there are more than a picture can hold: of several places,
  /// the last ones; of lines, those that would be the smallest.
  std::uint64_t left_out = 0;
  /// Edges of the parts drawn that the file does not describe, as `DrawnPart::dropped`.
  std::uint64_t dropped = 0;
  /// Parts in it, each counted once, that have no lines since their shapes stand in files that the
  /// input refers to (`PartInfo::external_file`) and that were not read with it.
  std::uint64_t elsewhere = 0;
  std::uint64_t bytes = 0;  ///< size of the file
};

/// Draws a part of the exchange file `in`, or all of it, with its components at their places, as
/// lines into the file `out`: SVG 1.1, UTF-8, at most 800 by 600 pixels and 4 MB, its title the
/// part's name. A line has its part's colour where the file gives one, darkened where it would not
/// be seen on white; what is farther away is fainter. The same input gives the same bytes. A part
/// without lines gives an empty picture.
///
/// `out` appears when it is finished, or not at all. Prints nothing. Works on the caller's thread.
///
/// Throws `PartError` where `options.part` names no part or several, `InputError` for an input that
/// cannot be read, `OutputError` where `out` cannot be written, is there already and not to be
/// replaced, is a folder, or is the input or a file that the input refers to; `std::bad_alloc`, and
/// what `options.progress` throws. With `follow_references` it throws what `join` throws, too.
KESSEL_EXPORT Picture draw_picture(const std::filesystem::path& in,
                                   const std::filesystem::path& out,
                                   const PictureOptions& options = PictureOptions());

}  // namespace Kessel
