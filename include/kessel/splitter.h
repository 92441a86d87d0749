// VelkStepSplitter: splits an exchange file with a product assembly into one file per part.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "kessel/export.h"
#include "kessel/options.h"

namespace Kessel {

/// Splits the exchange file `in` (ISO 10303-21, clear text) into one file per part under `outdir`
/// and returns the files' paths, the root's first, the others by ascending record number. `outdir`
/// is created as needed. A file of the same name that is there already is appended to, so that a
/// second run into the same folder spoils the files of the first: use `split` where that may
/// happen.
///
/// Problems in the data are printed as sentences on standard error and the run goes on: exactly one
/// part (nothing is written, the list is empty), no root (every part is used by
/// another: the leaf parts' files hold what is theirs, those of assemblies no records), malformed
/// usages, files that cannot be opened for writing. "roots.txt" with the root's file name is
/// written to the working directory.
///
/// Throws `std::invalid_argument` "Failed to open input file." (it is missing, a folder, or cannot
/// be read), `std::out_of_range` "invalid vector
/// subscript" (a reference beyond the store) or "invalid map<K, T> key" (an assembly's file lacks
/// what a component's reference block must point at), `std::runtime_error` "Unable to change pos
/// indicator", `std::filesystem::filesystem_error` "create_directories", `std::system_error` for an
/// `outdir` that is not UTF-8, `std::bad_alloc`. What was written until then is in the files. Names
/// that the ended run gave out stay taken until `Part::free_statics` is called.
///
/// Does not return for two kinds of input: one in which no line ends the header with "ENDSEC;", and
/// one whose end is not reached at a ";" that completes a record or a section, such as text after
/// the last ";".
///
/// Works on the caller's thread; two runs must not overlap in one process.
KESSEL_EXPORT std::vector<std::filesystem::path> Run(const std::filesystem::path& in,
                                                     const std::filesystem::path& outdir);

/// A file of a split.
struct WrittenFile {
  /// As `Run` returns it, normalised without a look at the disk: where `outdir` goes up (`..`) from
  /// a link, it does not lead to the file.
  std::filesystem::path path;
  std::uint64_t part = 0;     ///< number of the part's record in the input; 0 for a generated root
  std::uint32_t records = 0;  ///< instances in the file
  std::uint64_t bytes = 0;    ///< the file's size
  bool is_copy = false;       ///< of a file that the input refers to; of no part then
};

/// The checked form of `Run`, with choices; `Options::classic()` gives the same files. What
/// differs:
///
/// It returns. Where `Run` would not, and where the records would need more memory than
/// `options.memory_limit`, it throws `InputError` (`kessel/errors.h`) before it writes anything; so
/// it does for an `in` that cannot be opened or is no regular file. It also throws `InputError`
/// when somebody changes the input meanwhile, as far as its size, its time and the end of its data
/// tell.
///
/// It damages nothing. Before it writes anything it looks whether any of the files is there
/// already: a file, a folder, a link, which is not followed, or anything else under that name. If
/// so, it throws `OutputError` with the path and `std::errc::file_exists`, for a folder
/// `std::errc::is_a_directory`. "roots.txt" is overwritten where it is a regular file and not the
/// input, and refused likewise otherwise. What somebody else makes after that look is appended to,
/// as by `Run`.
///
/// When it returns, every file was written whole, "roots.txt" included, and closed without an
/// error. As soon as one cannot be, it throws `OutputError` and prints nothing about it; the files
/// are left as they are then.
///
/// However it ends, no stream stays open and no name stays taken.
///
/// Throws `std::invalid_argument` also where `options` have `Reading::classic` with a style of
/// assemblies other than the classic one, or follow or copy references with that one; nothing is
/// read then.
///
/// Where the input refers to other files (see `join`), lean and nested splits do so as well, by
/// names as they are seen from where the files lie, and no file gets the name of one that the input
/// refers to. With `Options::follow_references` all are split as one file instead, which is made in
/// the system's folder for temporary ones; with `Options::copy_references` the files are copied.
///
/// In the styles lean and nested it also differs in what it writes. Beside the files it leaves the
/// list SPLIT_LIST of them in `outdir` (`kessel/split_list.h`), for which holds what holds for each
/// file. An input that cannot be split, since it gives one file only, is copied, byte for byte,
/// under the name of its product or, where it holds none, under its own, with a warning
/// (`FindingKind::one_part`, `no_part`). In the classic style nothing is written then, and the list
/// is empty.
///
/// Returns the files in the order of `Run`'s list, with what was written about each part.
KESSEL_EXPORT std::vector<WrittenFile> split(const std::filesystem::path& in,
                                             const std::filesystem::path& outdir,
                                             const Options& options = {});

}  // namespace Kessel

/// Tells the host framework that this is one of its libraries. Returns 1.
extern "C" KESSEL_EXPORT int TARNWELL_KBF2_INTERNAL_VelkStepSplitter();
