#include "run/older_split.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>

#include "kessel/errors.h"
#include "kessel/split_list.h"
#include "run/split_run.h"
#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// Names that are listed in a line; the others are counted.
constexpr std::size_t MOST_NAMES = 5;

bool is_plain_file(const fs::path& path) {
  std::error_code error;
  return fs::symlink_status(path, error).type() == fs::file_type::regular;
}

/// Whether `path` is a file with that text, which is short.
bool has_text(const fs::path& path, const std::string& text) {
  std::error_code error;
  if (!is_plain_file(path) || fs::file_size(path, error) != text.size()) return false;
  std::ifstream in(path, std::ios::binary);
  std::ostringstream there;
  there << in.rdbuf();
  return there.view() == text;
}

void look_at(const Kessel::SplitList& list, const fs::path& folder,
             const std::set<std::string>& names, const std::vector<fs::path>& inputs,
             OlderSplit& older) {
  for (const Kessel::ListedFile& file : list.files) {
    const bool is_read = std::any_of(inputs.begin(), inputs.end(), [&](const fs::path& input) {
      std::error_code error;
      return fs::equivalent(folder / file.name, input, error);
    });
    if (is_read || names.contains(file.name)) continue;
    const Kessel::ListedState state = Kessel::state_of(file, folder);
    if (state == Kessel::ListedState::unchanged) older.leftovers.names.push_back(file.name);
    if (state == Kessel::ListedState::changed) older.changed.push_back(file.name);
  }
  older.leftovers.first = list.root;
  if (!names.contains(ROOTS_FILE) && has_text(folder / ROOTS_FILE, list.root + "\n")) {
    older.leftovers.names.emplace_back(ROOTS_FILE);
  }
  if (!names.contains(Kessel::SPLIT_LIST)) {
    older.leftovers.names.emplace_back(Kessel::SPLIT_LIST);
  }
}

}  // namespace

OlderSplit find_older_split(const fs::path& folder, const std::vector<std::string>& names,
                            const std::vector<fs::path>& inputs) {
  OlderSplit older;
  try {
    const std::optional<Kessel::SplitList> list = Kessel::read_split_list(folder);
    if (list) look_at(*list, folder, {names.begin(), names.end()}, inputs, older);
  } catch (const Kessel::InputError& error) {
    older.problem = error.finding().sentence;
  }
  return older;
}

std::string older_split_text(const OlderSplit& older, const fs::path& folder) {
  const std::string begin = "velkstep: " + printable(folder.string());
  if (!older.problem.empty()) {
    return begin + ": " + older.problem +
           " What an earlier split left stays; remove by hand what is not needed.\n";
  }
  if (older.changed.empty()) return {};
  std::string names;
  const std::size_t shown = std::min(older.changed.size(), MOST_NAMES);
  for (std::size_t i = 0; i < shown; ++i) {
    names += (i == 0 ? "" : ", ") + std::string(printable(older.changed[i]));
  }
  if (shown < older.changed.size()) names += ", ...";
  return begin + ": " + counted(older.changed.size(), "file", "files") +
         " of an earlier split changed since, and " +
         (older.changed.size() == 1 ? "stays; remove it" : "stay; remove them") +
         " where not needed: " + names + "\n";
}

}  // namespace Velkstep
