// One split by the command line, from its input to files that are all in place.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "kessel/splitter.h"
#include "run/split_arguments.h"

namespace Velkstep {

/// What the library leaves in the working directory beside the parts' files.
inline constexpr const char* ROOTS_FILE = "roots.txt";

/// A split whose files are not in OUTDIR yet.
struct FinishedSplit {
  std::filesystem::path source;  ///< where the whole input can be read
  std::filesystem::path input;   ///< the same for what is split of it
  std::vector<std::filesystem::path>
      read;                      ///< the whole input, and the files that were read with it
  std::filesystem::path folder;  ///< where the files are
  std::vector<Kessel::WrittenFile> files;  ///< the root's first; paths are bare names
  bool has_root = false;                   ///< false where every part is a component of another
  bool has_list = false;                   ///< whether there is a list of the files
};

/// What a command adds to a split.
struct Delivery {
  std::string text;               ///< to be printed when everything is in place
  std::vector<std::string> more;  ///< names of further files that were written beside the parts'
};

/// How a file in OUTDIR is called in what a command prints.
std::string shown_path(const std::filesystem::path& outdir, const std::string& name);

/// Splits into a fresh folder, calls `prepare` with that, moves everything into OUTDIR, and prints.
/// A dry run does that in a temporary folder, and prints what would be moved.
/// Whatever goes wrong is printed as one line, and leaves OUTDIR as it was. Returns the exit code.
/// Throws `Interrupted`: then, too, OUTDIR is as it was, unless the signal is SIGPIPE.
int run_split(const SplitArguments& arguments,
              const std::function<Delivery(const FinishedSplit&)>& prepare);

}  // namespace Velkstep
