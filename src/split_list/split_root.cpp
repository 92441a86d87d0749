#include "split_list/split_root.h"

#include <fstream>
#include <system_error>

#include "encoding/utf8_path.h"
#include "findings/finding_kinds.h"
#include "kessel/errors.h"
#include "kessel/split_list.h"

namespace Kessel {

namespace {

/// The largest list of roots that is looked at; names of files are shorter.
constexpr std::uint64_t MOST_OF_ROOT_LIST = 65536;

/// What names a file in the folder itself.
bool is_plain_name(const std::filesystem::path& name) {
  return name.has_filename() && name == name.filename();
}

}  // namespace

std::optional<std::string> read_root_list(const std::filesystem::path& folder) {
  const std::filesystem::path path = folder / ROOT_LIST;
  std::error_code error;
  const auto type = std::filesystem::symlink_status(path, error).type();
  if (type == std::filesystem::file_type::not_found) return std::nullopt;
  std::string name;
  if (std::filesystem::is_regular_file(path, error) &&
      std::filesystem::file_size(path, error) <= MOST_OF_ROOT_LIST && !error) {
    std::ifstream list(path, std::ios::in | std::ios::binary);
    std::getline(list, name);
  }
  return name;
}

std::filesystem::path root_of_split(const std::filesystem::path& folder) {
  const std::optional<SplitList> list = read_split_list(folder);
  const std::string name = list ? list->root : read_root_list(folder).value_or("");
  const std::filesystem::path root = path_of_utf8(name);
  std::error_code ignored;
  if (is_plain_name(root) && std::filesystem::is_regular_file(folder / root, ignored)) {
    return folder / root;
  }
  throw InputError(make_finding(
      FindingKind::missing_file,
      "The folder holds no split: neither a list of one nor a \"roots.txt\" names a file in it."));
}

}  // namespace Kessel
