#include "verify/folder.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <set>
#include <system_error>

#include "findings/finding_kinds.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;
using enum FindingKind;

/// The largest "roots.txt" that is looked at; names of files are shorter.
constexpr std::uint64_t MOST_OF_ROOT_LIST = 65536;

std::string utf8_of(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::file_type type_of(const fs::path& path) {
  std::error_code ignored;
  return fs::symlink_status(path, ignored).type();
}

bool is_exchange_file(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return extension == ".stp" || extension == ".step" || extension == ".p21";
}

/// Reads a regular file of at most `most` bytes; false where it cannot be.
bool read_whole(const fs::path& path, std::uint64_t size, std::string& text) {
  std::ifstream file(path, std::ios::in | std::ios::binary);
  text.resize(size);
  file.read(text.data(), static_cast<std::streamsize>(size));
  text.resize(static_cast<std::size_t>(file.gcount()));
  return text.size() == size;
}

}  // namespace

OutputFolder::OutputFolder(const fs::path& path, const std::vector<Part*>& parts)
    : path_(path), parts_(parts) {
  there_.reserve(parts.size());
  for (const Part* part : parts) {
    const bool named = !part->path.empty();
    there_.push_back(named && type_of(path / part->path) == fs::file_type::regular ? 1 : 0);
  }
}

bool OutputFolder::check_others(const Part* root, FindingList& findings) const {
  std::set<fs::path> known;
  for (const Part* part : parts_) known.insert(part->path);
  std::set<fs::path> foreign;
  std::error_code error;
  fs::directory_iterator entry(path_, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (is_exchange_file(name) && !known.contains(name)) foreign.insert(name);
  }
  if (error) {
    findings.begin_file(".");
    findings.add(make_finding(missing_file, "The folder cannot be read: " + error.message() + "."));
    return false;
  }
  check_root_list(root, findings);
  for (const fs::path& name : foreign) {
    findings.begin_file(utf8_of(name));
    findings.add(make_finding(foreign_file, "The file does not belong to the split."));
  }
  return true;
}

void OutputFolder::check_root_list(const Part* root, FindingList& findings) const {
  const char* const name = "roots.txt";
  const fs::path path = path_ / name;
  const fs::file_type type = type_of(path);
  findings.begin_file(name);
  if (type == fs::file_type::not_found) {
    if (root != nullptr) {
      findings.add(make_finding(missing_root_list,
                                "There is no \"roots.txt\" that holds the root file's name."));
    }
    return;
  }
  std::error_code error;
  std::string text;
  const std::uint64_t size = type == fs::file_type::regular ? fs::file_size(path, error) : 0;
  const bool readable = type == fs::file_type::regular && !error && size <= MOST_OF_ROOT_LIST &&
                        read_whole(path, size, text);
  if (root == nullptr) {
    findings.add(make_finding(wrong_root_list, "There is no root whose file it could name."));
  } else if (!readable || text != utf8_of(root->path) + "\n") {
    findings.add(make_finding(wrong_root_list, "It does not hold the root file's name, " +
                                                   Kessel::quoted(utf8_of(root->path)) + "."));
  }
}

Finding OutputFolder::why_not(const Part& part) const {
  if (part.path.empty()) {
    return make_finding(part_without_name,
                        "A part leads to no product after which its file could be named; it has no "
                        "file.");
  }
  switch (type_of(path_ / part.path)) {
    case fs::file_type::not_found:
      return make_finding(missing_file, "The file is not there.");
    case fs::file_type::symlink:
      return make_finding(not_a_file, "This is a link, not a file.");
    case fs::file_type::directory:
      return make_finding(not_a_file, "This is a folder, not a file.");
    default:
      return make_finding(not_a_file, "This is no regular file.");
  }
}

std::optional<Finding> OutputFolder::read(const Part& part, std::uint64_t most,
                                          std::string& text) const {
  const fs::path path = path_ / part.path;
  std::error_code error;
  const std::uint64_t size = fs::file_size(path, error);
  text.clear();
  if (!error && size > most) {
    return make_finding(oversized_file, "With " + with_commas(size) +
                                            " bytes the file is larger than a split of this input "
                                            "can make one; it was not read.");
  }
  if (error || !read_whole(path, size, text)) {
    return make_finding(unreadable, "The file cannot be read.");
  }
  return std::nullopt;
}

}  // namespace Kessel
