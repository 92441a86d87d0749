// Writing and reading the list of a split.
#include "kessel/split_list.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "encoding/utf8_path.h"
#include "findings/finding_kinds.h"
#include "findings/named_errors.h"
#include "kessel/errors.h"
#include "split_list/json_text.h"
#include "split_list/xxh64.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t LIST_FORMAT = 1;
constexpr const char* HASH_NAME = "XXH64";
/// A list that is larger is none: a million files take less.
constexpr std::uint64_t MOST_OF_LIST = std::uint64_t{512} << 20;

/// Sixteen digits.
std::string hash_text(std::uint64_t hash) {
  std::array<char, 16> digits{};
  const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16).ptr;
  const std::string text(digits.data(), static_cast<std::size_t>(end - digits.data()));
  return std::string(digits.size() - text.size(), '0') + text;
}

std::optional<std::uint64_t> hash_of_text(const std::string& text) {
  std::uint64_t hash = 0;
  const char* const last = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), last, hash, 16);
  if (text.size() != 16 || read != last || error != std::errc()) return std::nullopt;
  return hash;
}

/// Reading a file through, a block at a time.
struct HashedFile {
  std::uint64_t bytes = 0;
  Xxh64 hash;
  bool is_whole = false;

  explicit HashedFile(const fs::path& path) {
    std::ifstream in(path, std::ios::in | std::ios::binary);
    std::string block(std::size_t{32} << 10, '\0');
    while (in) {
      in.read(block.data(), static_cast<std::streamsize>(block.size()));
      const auto count = static_cast<std::size_t>(in.gcount());
      hash.add(std::string_view(block).substr(0, count));
      bytes += count;
    }
    is_whole = in.eof() && !in.bad();
  }
};

std::string json_of(const ListedFile& file) {
  return "{\"file\": " + json_string(file.name) +
         ", \"record\": " + (file.record == 0 ? "null" : std::to_string(file.record)) +
         ", \"id\": " + json_string(file.id) + ", \"name\": " + json_string(file.product) +
         ", \"bytes\": " + std::to_string(file.bytes) + ", \"hash\": \"" + hash_text(file.hash) +
         "\"}";
}

/// The finding with which a list is refused.
[[noreturn]] void refuse_list(const std::string& sentence) {
  Finding finding = make_finding(FindingKind::wrong_split_list, sentence);
  finding.file = SPLIT_LIST;
  throw InputError(finding);
}

/// What a list must have, or it is refused.
const JsonValue& required(const JsonValue& object, const std::string& name, JsonValue::Kind kind) {
  const JsonValue* const value = object.find(name);
  if (value == nullptr || value->kind != kind) {
    refuse_list("The list of the split has no member \"" + name + "\" as it should.");
  }
  return *value;
}

std::string text_in(const JsonValue& object, const std::string& name) {
  return required(object, name, JsonValue::Kind::string).text;
}

std::uint64_t number_in(const JsonValue& object, const std::string& name) {
  const auto number = required(object, name, JsonValue::Kind::number).whole_number();
  if (!number) refuse_list("The list of the split has no whole number in \"" + name + "\".");
  return *number;
}

/// The name of a file in the folder itself. Names with other systems' separators are none.
std::string name_in(const JsonValue& object, const std::string& member) {
  std::string name = text_in(object, member);
  if (name.empty() || name == "." || name == ".." ||
      name.find_first_of(std::string_view("/\\\0", 3)) != std::string::npos) {
    refuse_list("The list of the split names something that is no file in its folder.");
  }
  return name;
}

ListedFile file_in(const JsonValue& entry) {
  ListedFile file;
  file.name = name_in(entry, "file");
  const JsonValue* const record = entry.find("record");
  if (record != nullptr) file.record = record->whole_number().value_or(0);
  file.id = text_in(entry, "id");
  file.product = text_in(entry, "name");
  file.bytes = number_in(entry, "bytes");
  const auto hash = hash_of_text(text_in(entry, "hash"));
  if (!hash) refuse_list("The list of the split has a hash that is none.");
  file.hash = *hash;
  return file;
}

SplitList list_in(const JsonValue& json) {
  if (number_in(json, "format") != LIST_FORMAT || text_in(json, "hash") != HASH_NAME) {
    refuse_list("The list of the split is of another version than this program knows.");
  }
  SplitList list;
  list.program = text_in(json, "program");
  const JsonValue& options = required(json, "options", JsonValue::Kind::object);
  list.assemblies = text_in(options, "assemblies");
  list.names = text_in(options, "names");
  list.reading = text_in(options, "reading");
  const JsonValue& input = required(json, "input", JsonValue::Kind::object);
  list.input = text_in(input, "name");
  list.input_bytes = number_in(input, "bytes");
  list.root = name_in(json, "root");
  for (const JsonValue& entry : required(json, "files", JsonValue::Kind::list).items) {
    list.files.push_back(file_in(entry));
  }
  return list;
}

std::string text_of(const SplitList& list) {
  std::string text = "{\n \"format\": " + std::to_string(LIST_FORMAT) +
                     ",\n \"program\": " + json_string(list.program) +
                     ",\n \"options\": {\"assemblies\": " + json_string(list.assemblies) +
                     ", \"names\": " + json_string(list.names) +
                     ", \"reading\": " + json_string(list.reading) +
                     "},\n \"input\": {\"name\": " + json_string(list.input) +
                     ", \"bytes\": " + std::to_string(list.input_bytes) +
                     "},\n \"root\": " + json_string(list.root) + ",\n \"hash\": \"" + HASH_NAME +
                     "\",\n \"files\": [";
  const char* separator = "\n  ";
  for (const ListedFile& file : list.files) {
    text += separator + json_of(file);
    separator = ",\n  ";
  }
  return text + "\n ]\n}\n";
}

std::optional<SplitList> read_list_file(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  if (type == fs::file_type::not_found) return std::nullopt;
  if (type != fs::file_type::regular || fs::file_size(path, error) > MOST_OF_LIST || error) {
    refuse_list("The list of the split is no file that can be read.");
  }
  std::ifstream in(path, std::ios::in | std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  const std::optional<JsonValue> json = read_json(text.view());
  if (!json) refuse_list("The list of the split is no JSON.");
  return list_in(*json);
}

}  // namespace

std::optional<SplitList> read_split_list(const fs::path& folder) {
  const fs::path path = folder / SPLIT_LIST;
  return with_named_errors(path, [&] { return read_list_file(path); });
}

void write_split_list(const SplitList& list, const fs::path& folder) {
  const fs::path path = folder / SPLIT_LIST;
  errno = 0;
  std::ofstream out(path, std::ios::out | std::ios::binary | std::ios::trunc);
  out << text_of(list);
  out.close();
  if (out.fail()) throw OutputError(path, {errno != 0 ? errno : EIO, std::generic_category()});
}

ListedState state_of(const ListedFile& file, const fs::path& folder) {
  const fs::path path = folder / path_of_utf8(file.name);
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  if (type == fs::file_type::not_found) return ListedState::missing;
  if (type != fs::file_type::regular || fs::file_size(path, error) != file.bytes || error) {
    return ListedState::changed;
  }
  const HashedFile now(path);
  const bool is_same = now.is_whole && now.bytes == file.bytes && now.hash.value() == file.hash;
  return is_same ? ListedState::unchanged : ListedState::changed;
}

ListedFile list_file(const std::string& name, const fs::path& folder) {
  const fs::path path = folder / path_of_utf8(name);
  errno = 0;
  const HashedFile read(path);
  if (!read.is_whole) throw OutputError(path, {errno != 0 ? errno : EIO, std::generic_category()});
  ListedFile file;
  file.name = name;
  file.bytes = read.bytes;
  file.hash = read.hash.value();
  return file;
}

}  // namespace Kessel
