// Takes parts out of an exchange file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "kessel/export.h"
#include "kessel/finding.h"
#include "kessel/options.h"

namespace Kessel {

/// Choices for extracting. The input is read as the standard has it (Reading::standard).
struct ExtractOptions {
  /// Bytes that may be kept of the input; as Options::memory_limit.
  std::uint64_t memory_limit = Options::NO_LIMIT;
  /// What files are called, where several are asked for: as a split calls them.
  NameStyle names = NameStyle::product;
  /// Whether each of the part's own bodies gets a file: every solid, shell, surface model or mapped
  /// item (ISO 10303-42, -43) among the items of its shape representations. For extract_each().
  bool bodies = false;
  /// Whether records of each output that say the same become one, as `shrink` makes them one
  /// (kessel/shrink.h).
  bool shrink = false;
  /// Whether the files that the input refers to are read with it, as if all were one file (see
  /// `join`); else the references of what is extracted stay, and lead to the same files from the
  /// folder of the output. The numbers of parts are then those of the joined file.
  bool follow_references = false;
  /// Whether the files that what is extracted refers to, and those that these refer to in turn, are
  /// copied into the folder of the output, so that the references lead there. A name that an output
  /// or another copy has gets " (2)" behind.
  bool copy_references = false;
  /// Whether files outside of the input's folder may be followed or copied.
  bool follow_outside = false;
  /// As Options::readable.
  std::function<std::filesystem::path(const std::filesystem::path&)> readable = {};
  /// The folder from which the input's names of other files are seen, as Options::input_folder.
  std::filesystem::path input_folder = {};
  /// The folder in which the outputs are going to lie, as Options::output_folder.
  std::filesystem::path output_folder = {};
  /// Whether an output that is there already is replaced; devices and pipes never are.
  bool replace = false;
  /// Told how far it has come, as Options::progress; sorting and writing come again for each part.
  std::function<void(const Progress&)> progress = {};
  /// Told what a person should know about the input or the result, as Options::warning.
  std::function<void(const Finding&)> warning = {};
};

/// What can be extracted: a product definition (ISO 10303-41) that has a shape or a place in the
/// structure. Texts are UTF-8.
struct NamedPart {
  std::uint64_t record = 0;  ///< the definition's instance number
  std::string id;            ///< the product's id
  std::string name;          ///< the product's name
  /// Names from a top of the structure down to it, "Desk lamp/Boom/Arm"; where a product has no
  /// name, its id, or else "#" and its number. The first of several paths.
  std::string path;
};

/// A name that no part has, or several.
class KESSEL_EXPORT PartError : public std::runtime_error {
 public:
  /// `what()` is the path of the file as the system spells it, ": ", and the sentence; the sentence
  /// alone without a path. `sentence` is UTF-8 and has the candidates in it.
  PartError(const std::string& sentence, std::vector<NamedPart> candidates,
            const std::filesystem::path& path = {});
  PartError(const PartError&);
  PartError& operator=(const PartError&) = delete;
  ~PartError() override;

  /// The parts that have the name; or, where none has it, those with the most similar names.
  const std::vector<NamedPart>& candidates() const;
  /// What is wrong, without the path; lives as long as the exception.
  const std::string& sentence() const;
  /// The file that was looked at, as it was given; every function of the library sets it. Lives as
  /// long as the exception.
  const std::filesystem::path& path() const;

 private:
  std::string sentence_;
  std::filesystem::path path_;
  std::vector<NamedPart> candidates_;
};

/// A file that was written.
struct ExtractedFile {
  std::filesystem::path path;
  NamedPart part;
  std::uint64_t body = 0;     ///< instance number of its only body; 0 where it has all
  std::uint64_t records = 0;  ///< in the file
  std::uint64_t bytes = 0;    ///< of the file
  /// The copies that were made of files that it refers to (ExtractOptions::copy_references); one
  /// that several files need stands with the first of them.
  std::vector<std::filesystem::path> copies = {};
};

/// Reads what can be extracted from the exchange file `in`, in the order of the file. Throws as
/// read_assembly() does. Of the options the memory limit counts, and those of following.
KESSEL_EXPORT std::vector<NamedPart> read_parts(const std::filesystem::path& in,
                                                const ExtractOptions& options = {});

/// Writes one product of the exchange file `in` with all below it, as the one exchange file `out`.
/// It refers to no other file but to those that these products refer to in the input.
///
/// `part` (UTF-8) is "#" and the instance number of its definition; or the name or id of its
/// product; or, where no product is called so, a path: names, ids or such numbers from a top of the
/// structure down to it, with "/" between them.
///
/// The file holds all that belongs to the product and its components, direct and indirect: their
/// definitions, usages, shapes, bodies, and what leads to those or is needed by them, such as
/// styles, layers, properties, annotations and management data. Lists that speak of many things
/// (layers, approvals, styled items) keep those that stand in the file. Nothing of any other
/// product is in it: a record that needs such, like a colour that an assembly above gives to a face
/// in its own context, stays behind, and so do the usages of the product itself. What belongs to no
/// product stays behind, too, unless the product is the only top of the structure: then the file
/// holds all that the input holds. Every record has the text that it has in the input, numbered
/// anew from 1, but for the names of files that it refers to.
///
/// `out` appears when it is finished, or not at all; it is written beside itself under another name
/// that begins with a dot. Prints nothing. Time and memory are those of a split.
///
/// Throws `PartError` where `part` names no
/// part or several, `InputError` for an input that cannot be read, or that was changed meanwhile;
/// `OutputError` where `out` cannot be written, is there already and not to be replaced, is a
/// folder, or is the input or a file that the input refers to; and `std::bad_alloc`. With
/// `follow_references` it throws what `join` throws, too; with `copy_references` `InputError` for a
/// file that cannot be read, or lies outside of the input's folder. Copies appear in
/// front of it, or not at all.
KESSEL_EXPORT ExtractedFile extract(const std::filesystem::path& in, const std::string& part,
                                    const std::filesystem::path& out,
                                    const ExtractOptions& options = {});

/// Does the same for each of `parts`, in the order in which they are named, a product that is named
/// twice once. The files stand in the folder `outdir`, which is created as needed, under the names
/// that a split would give them. They appear when all of them are finished. Each costs a further
/// reading of the input.
///
/// With `ExtractOptions::bodies` there is a file for each body of each part instead, "Arm body
/// 1.stp", "Arm body 2.stp", ... for "Arm.stp", with the part's product, definition and placements
/// and what belongs to that body, without components; `PartError` is thrown for a part without one.
KESSEL_EXPORT std::vector<ExtractedFile> extract_each(const std::filesystem::path& in,
                                                      const std::vector<std::string>& parts,
                                                      const std::filesystem::path& outdir,
                                                      const ExtractOptions& options = {});

}  // namespace Kessel
