#include "run/meant_files.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <fstream>
#include <optional>
#include <system_error>
#include <vector>

#include "kessel/errors.h"
#include "kessel/split_list.h"
#include "run/input_names.h"
#include "run/split_run.h"
#include "text/near_miss.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// More files of a folder than these are not looked at.
constexpr std::size_t MOST_ENTRIES = 10'000;

/// Nor is more of a line that is to be a name.
constexpr std::size_t MOST_OF_A_NAME = 4096;

/// The names of files in a folder, in order.
std::vector<std::string> files_in(const fs::path& folder) {
  std::error_code error;
  std::vector<std::string> names;
  fs::directory_iterator entry(folder.empty() ? "." : folder, error);
  for (; !error && entry != fs::directory_iterator() && names.size() < MOST_ENTRIES;
       entry.increment(error)) {
    std::error_code unknown;
    if (entry->is_regular_file(unknown)) names.push_back(entry->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// A name as far as people remember it: without its ending, in small letters.
std::string remembered(const fs::path& name) {
  std::string stem = name.stem().string();
  std::transform(stem.begin(), stem.end(), stem.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return stem;
}

}  // namespace

std::string meant_instead_of(const fs::path& path) {
  const std::vector<std::string> names = files_in(path.parent_path());
  std::vector<std::string> words;
  for (const std::string& name : names) words.push_back(remembered(name));
  const std::string typed = remembered(path.filename());
  auto meant = std::find(words.begin(), words.end(), typed);
  if (meant == words.end()) {
    meant = std::find(words.begin(), words.end(), near_miss(typed, words));
  }
  if (meant == words.end() || meant->empty()) return {};
  return (path.parent_path() / names[static_cast<std::size_t>(meant - words.begin())]).string();
}

namespace {

/// The name of the root's file, as the list of a split has it, or the one that hosts read.
std::string listed_root(const fs::path& folder) {
  if (const auto list = Kessel::read_split_list(folder)) return list->root;
  std::error_code error;
  if (!fs::is_regular_file(folder / ROOTS_FILE, error)) return {};  // A pipe may wait for ever.
  std::ifstream roots(folder / ROOTS_FILE);
  std::string name(MOST_OF_A_NAME, '\0');
  roots.getline(name.data(), static_cast<std::streamsize>(name.size()));
  name.resize(name.find('\0'));
  return fs::path(name).has_parent_path() ? std::string() : name;
}

/// The root's file where the folder holds a split; empty for none.
std::string root_in(const fs::path& folder) {
  try {
    const std::string name = listed_root(folder);
    std::error_code error;
    if (name.empty() || !fs::is_regular_file(folder / name, error)) return {};
    return (folder / name).string();
  } catch (const Kessel::InputError&) {
    return {};
  }
}

}  // namespace

std::string what_to_name_in(const fs::path& folder) {
  const std::string root = root_in(folder);
  if (!root.empty()) return "name the file of its root, " + root;
  for (const std::string& name : files_in(folder)) {
    if (stem_of(name).empty()) continue;
    const std::string ending = name.substr(stem_of(name).size());
    return "name files in it, such as " + (folder / ("*" + ending)).string();
  }
  return "it holds no STEP file: name one";
}

std::string split_of(const fs::path& file) {
  const fs::path folder = file.has_parent_path() ? file.parent_path() : ".";
  const fs::path root = root_in(folder);
  std::error_code error;
  return root.empty() || fs::equivalent(root, file, error) ? std::string() : folder.string();
}

}  // namespace Velkstep
