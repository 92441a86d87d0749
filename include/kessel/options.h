// What a host can choose about a split.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <string>

#include "kessel/finding.h"

namespace Kessel {

/// What an assembly's file holds.
enum class AssemblyStyle {
  /// One file for the whole structure, the root's: it holds every definition and usage, and a
  /// reference to every leaf part's file. Where a component's solid hangs on its shape by a shape
  /// representation relationship, the root repeats it. A sub-assembly's file has no data.
  classic,
  /// One file for the whole structure, the root's, which also holds what assemblies have of their
  /// own, bodies included, and one for each part, to which it refers. A sub-assembly has no file. A
  /// body stands where its product does, and every record of the input in some file.
  lean,
  /// Each assembly's file is an assembly that opens by itself: its own definition and bodies, the
  /// usages that start from it, and of its direct components the definition, shape and placements,
  /// with a reference to each component's file, be that a part or a sub-assembly. As in lean, a
  /// body stands where its product does, and every record of the input in some file.
  nested,
};

/// What the files are called.
enum class NameStyle {
  /// After the number of the product's record: "#12_part.stp".
  record,
  /// After the product's name, or its id where the name is empty or of no use, in ASCII: letters
  /// lose their marks, characters of other scripts become code points. Made safe for every common
  /// file system and for shells, and told apart without regard to case with " (2)", " (3)", ... in
  /// the order of the parts. A part with neither is called "part 12.stp" after its record. The
  /// classic style knows the id only.
  product,
  /// The same with the name's own characters. Not every reader finds files of such names.
  product_unicode,
};

/// How an input is cut into records.
enum class Reading {
  /// As ISO 10303-21 has it, every edition: strings with anything in them, comments and blanks
  /// between any two words, several data sections, anchors and references. A record's text is kept
  /// as it stands. Only what makes it doubtful where a record ends is an error.
  standard,
  /// As `Run` reads, which outputs that hosts compare depend on: a ";" ends a record wherever it
  /// stands, a line ends the header, comments are text. Where no comment and no ";" in a string is
  /// in the way, both see the same. For `AssemblyStyle::classic` only.
  classic,
};

/// What a run is busy with.
enum class Stage {
  reading,  ///< the records, measured in bytes of the input
  sorting,  ///< which record goes into which file, measured in passes over the records
  writing,  ///< the files, measured in bytes of the input, which is read again
};

/// How far a run has come.
struct Progress {
  Stage stage = Stage::reading;
  std::uint64_t done = 0;
  std::uint64_t total = 0;  ///< of the stage; `done` is never more
};

/// Choices for one run; the default ones are right for people.
struct Options {
  static constexpr std::uint64_t NO_LIMIT = std::numeric_limits<std::uint64_t>::max();

  /// The choices with which a split writes the bytes that `Run` writes.
  static Options classic() {
    Options options;
    options.reading = Reading::classic;
    options.assemblies = AssemblyStyle::classic;
    options.names = NameStyle::record;
    return options;
  }

  Reading reading = Reading::standard;
  AssemblyStyle assemblies = AssemblyStyle::nested;
  NameStyle names = NameStyle::product;
  /// Whether records that say the same become one first, as `shrink` does (kessel/shrink.h). Goes
  /// with the styles lean and nested only.
  bool shrink = false;
  /// The folder that the name of a file in its own header (ISO 10303-21, 8.2.2) has in front.
  /// Without a value that is the output folder, as the caller gave it, in the classic style, and
  /// none in the others.
  std::optional<std::filesystem::path> folder_in_headers = std::nullopt;
  /// What the input is called, UTF-8, where that is not the name of the file `in`: the list of a
  /// split says it, and the file of an input without products is called after it.
  std::string input_name = {};
  /// The folder from which the input's names of other files are seen; empty for the one that it
  /// lies in. For inputs that are copies of something.
  std::filesystem::path input_folder = {};
  /// Whether the files that the input refers to are read and split with it, as if all were one file
  /// (see `join`); else a split refers to them. Not for `AssemblyStyle::classic`.
  bool follow_references = false;
  /// Whether the files that the input refers to, and those that these refer to in turn, are copied
  /// into the folder of the split. Not for `AssemblyStyle::classic`.
  bool copy_references = false;
  /// Whether files outside of the input's folder may be followed or copied.
  bool follow_outside = false;
  /// Asked of every file that is followed or copied to where what it says can be read as plain
  /// text, as JoinOptions::readable; null where all files are read where they are.
  std::function<std::filesystem::path(const std::filesystem::path&)> readable = {};
  /// The folder in which the files of a split are going to lie, from which their names of other
  /// files are seen; empty for the one that they are written into.
  std::filesystem::path output_folder = {};
  /// Bytes that may be kept of the input in memory: records, the table of their numbers,
  /// references, types, and the names of products where files are called after them. Also the bytes
  /// that the header, or a record or whatever else stands in front of a ";", may have as text. It
  /// bounds what a hostile file can make the reader ask for: what is kept stays below it, to within
  /// a block of 256 KiB and the strings of one record, and reading needs at most ten times the
  /// longest text beside that. What the passes add to the records later is not counted.
  std::uint64_t memory_limit = NO_LIMIT;
  /// Told how far the run has come, on the caller's thread: after each pass, and after every
  /// megabyte of the input. An exception that leaves it ends the run, which is how to cancel one;
  /// what was written until then is in the files.
  std::function<void(const Progress&)> progress = {};
  /// Told what a person should know about the input or the result, on the caller's thread: nothing
  /// is lost, but it deserves a look. `check` lists what concerns the input.
  std::function<void(const Finding&)> warning = {};
};

}  // namespace Kessel
