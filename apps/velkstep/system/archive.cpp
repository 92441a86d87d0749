// Compressed inputs: one exchange file in gzip, zip and the like.
#include "system/archive.h"

#include <archive.h>
#include <archive_entry.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include "kessel/errors.h"
#include "system/write_all.h"

namespace Velkstep {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view SIGNATURES[] = {
    "\x1F\x8B"sv,          // gzip
    "PK\x03\x04"sv,        // zip
    "PK\x05\x06"sv,        // zip without files
    "BZh"sv,               // bzip2
    "\xFD\x37zXZ\0"sv,     // xz
    "\x28\xB5\x2F\xFD"sv,  // zstd
};

constexpr std::string_view ENDINGS[] = {".stp", ".step", ".p21", ".stpnc"};

constexpr std::string_view ROOT_OF_STANDARD_ARCHIVE = "iso-10303.p21";

std::string in_small_letters(std::string_view text) {
  std::string small(text);
  std::transform(small.begin(), small.end(), small.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return small;
}

[[noreturn]] void refuse(const std::string& sentence) {
  Kessel::Finding finding;
  finding.kind = Kessel::FindingKind::compressed;
  finding.severity = Kessel::Severity::error;
  finding.sentence = sentence;
  throw Kessel::InputError(finding);
}

/// One reading of an archive, from its beginning.
class Archive {
 public:
  explicit Archive(int file) : archive_(::archive_read_new(), ::archive_read_free) {
    if (archive_ == nullptr || ::lseek(file, 0, SEEK_SET) < 0) throw std::bad_alloc();
    ::archive_read_support_filter_all(archive_.get());
    ::archive_read_support_format_zip(archive_.get());
    ::archive_read_support_format_raw(archive_.get());
    ::archive_read_support_format_empty(archive_.get());  // What is compressed may be nothing.
    constexpr std::size_t BLOCK = std::size_t{64} * 1024;
    require(::archive_read_open_fd(archive_.get(), file, BLOCK));
  }

  /// Goes to the next file. False where there is none.
  bool next() {
    do {
      const int result = ::archive_read_next_header(archive_.get(), &entry_);
      if (result == ARCHIVE_EOF) return false;
      require(result);
    } while (::archive_entry_filetype(entry_) == AE_IFDIR);
    return true;
  }

  /// Whether there is nothing to unpack: no archive, and no byte.
  bool is_nothing() const { return ::archive_format(archive_.get()) == ARCHIVE_FORMAT_EMPTY; }

  std::string name() const {
    const char* name = ::archive_entry_pathname(entry_);
    return name == nullptr ? std::string() : name;
  }

  /// Reads on in the file. Returns what came, nothing at its end.
  std::string_view read() {
    const la_ssize_t count = ::archive_read_data(archive_.get(), block_.data(), block_.size());
    if (count < 0) require(static_cast<int>(count));
    return {block_.data(), static_cast<std::size_t>(count)};
  }

 private:
  void require(int result) const {
    if (result >= ARCHIVE_OK) return;
    const char* reason = ::archive_error_string(archive_.get());
    refuse(std::string("The archive cannot be unpacked: ") +
           (reason == nullptr ? "it is damaged" : reason) +
           ". Copy it again, or unpack it by other means.");
  }

  std::unique_ptr<archive, int (*)(archive*)> archive_;
  archive_entry* entry_ = nullptr;
  std::array<char, std::size_t{64} * 1024> block_;
};

bool is_called_as_exchange_file(std::string_view name) {
  const std::string small = in_small_letters(name);
  return std::any_of(std::begin(ENDINGS), std::end(ENDINGS),
                     [&](std::string_view ending) { return small.ends_with(ending); });
}

/// What systems put beside files, not in them.
bool is_hidden(std::string_view name) {
  const std::size_t slash = name.rfind('/');
  return name.starts_with("__MACOSX/") || name.substr(slash + 1).starts_with('.');
}

/// Which of an archive's files, counted from 0, is the exchange file.
std::size_t find_exchange_file(const std::vector<std::string>& names) {
  std::vector<std::size_t> found;
  std::vector<std::size_t> others;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (in_small_letters(names[i]) == ROOT_OF_STANDARD_ARCHIVE) return i;
    if (is_hidden(names[i])) continue;
    (is_called_as_exchange_file(names[i]) ? found : others).push_back(i);
  }
  if (found.empty()) found = others;
  if (found.empty()) refuse("The archive holds no file. Name one that holds an exchange file.");
  if (found.size() == 1) return found.front();
  refuse("The archive holds " + std::to_string(found.size()) +
         " files, not one exchange file: " + names[found[0]] + ", " + names[found[1]] +
         (found.size() > 2 ? ", ..." : "") + ". Unpack it, and name one of them.");
}

/// The names of an archive's files; one without a name for what is compressed by itself.
std::vector<std::string> names_in(int file) {
  Archive archive(file);
  std::vector<std::string> names;
  while (archive.next()) names.push_back(archive.name());
  if (names.empty() && archive.is_nothing()) names.emplace_back();
  return names;
}

std::uint64_t most_bytes_of(int file) {
  struct stat status = {};
  const bool is_known = ::fstat(file, &status) == 0 && status.st_size > 0;
  const auto size = static_cast<std::uint64_t>(is_known ? status.st_size : 0);
  return std::max(ALWAYS_UNPACKED, size * MOST_TIMES_ITS_SIZE);
}

}  // namespace

bool is_compressed(std::string_view head) {
  return std::any_of(std::begin(SIGNATURES), std::end(SIGNATURES),
                     [&](std::string_view signature) { return head.starts_with(signature); });
}

void unpack(int from, int to) {
  const std::size_t wanted = find_exchange_file(names_in(from));
  Archive archive(from);
  for (std::size_t i = 0; i <= wanted; ++i) {
    if (archive.next()) continue;
    if (archive.is_nothing()) return;
    refuse("The archive was changed while it was read. Try again when nobody writes to it.");
  }
  const std::uint64_t most = most_bytes_of(from);
  std::uint64_t bytes = 0;
  for (std::string_view block = archive.read(); !block.empty(); block = archive.read()) {
    bytes += block.size();
    if (bytes > most) {
      refuse("The archive becomes larger than " + std::to_string(most) +
             " bytes; unpack it first if it should.");
    }
    write_all(to, block);
  }
}

}  // namespace Velkstep
