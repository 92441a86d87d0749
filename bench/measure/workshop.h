// The folder in which everything is measured, and the inputs in it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Kessel::bench {

/// The programs that are run. They stand in one folder.
struct Programs {
  std::filesystem::path generate_assembly;
  std::filesystem::path copy_floor;
  std::filesystem::path split_once;
  std::filesystem::path peer_split;  ///< not always there

  explicit Programs(const std::filesystem::path& folder);
};

/// One generated file.
struct Input {
  std::string_view shape;
  std::uint32_t size = 0;
  std::filesystem::path path;
  std::uint64_t bytes = 0;
  std::uint64_t records = 0;  ///< pieces between two ";" that begin with "#"
};

/// What a split left in its folder.
struct Written {
  std::uint64_t files = 0;
  std::uint64_t bytes = 0;
  std::vector<std::uint64_t> sizes = {};  ///< of each file
};

/// The work folder. Inputs stay in it for the next time, unless the folder is a temporary one.
class Workshop {
 public:
  /// Works in `folder`, which is created as needed; when it is empty, in a new folder that is
  /// removed at the end. That one is made where files live in memory, if there is such a place with
  /// room (then no disk is measured), or among the system's temporary files.
  explicit Workshop(const std::filesystem::path& folder);
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;
  ~Workshop();

  const std::filesystem::path& folder() const { return folder_; }

  /// The generated file of that shape and size. Generates it when it is missing, then reads it as a
  /// whole, which also brings it into the page cache.
  Input input(const Programs& programs, std::string_view shape, std::uint32_t size) const;

  /// A path in the folder where nothing is: what an earlier run left there is removed.
  std::filesystem::path fresh(const std::string& name) const;

 private:
  std::filesystem::path folder_;
  bool temporary_ = false;
};

/// Counts the files in `folder` and their bytes.
Written look_into(const std::filesystem::path& folder);

/// Seconds that it takes to create one small file in `folder`, on average over many. On some file
/// systems this is most of the time of a split into many files.
double seconds_to_create_a_file(const Workshop& workshop);

}  // namespace Kessel::bench
