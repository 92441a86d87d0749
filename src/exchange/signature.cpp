// What a file is, by its first bytes.
#include "exchange/signature.h"

#include <algorithm>
#include <span>
#include <string>

#include "exchange/characters.h"
#include "findings/finding_kinds.h"

namespace Kessel {

namespace {

using enum FindingKind;
using namespace std::string_view_literals;

struct Signature {
  std::string_view bytes;
  FindingKind kind;
  const char* what;
};

// The first that fits counts.
constexpr Signature SIGNATURES[] = {
    {"\x1F\x8B"sv, compressed, "gzip"},
    {"\x1F\x9D"sv, compressed, "compress"},
    {"PK\x03\x04"sv, compressed, "zip"},
    {"PK\x05\x06"sv, compressed, "zip"},
    {"BZh"sv, compressed, "bzip2"},
    {"\xFD\x37zXZ\0"sv, compressed, "xz"},
    {"\x28\xB5\x2F\xFD"sv, compressed, "zstd"},
    {"\x04\x22\x4D\x18"sv, compressed, "lz4"},
    {"LZIP"sv, compressed, "lzip"},
    {"7z\xBC\xAF\x27\x1C"sv, compressed, "7z"},
    {"Rar!\x1A\x07"sv, compressed, "rar"},
    {"\x89HDF\r\n\x1A\n"sv, binary, "an HDF5 file"},
    {"%PDF-"sv, binary, "a PDF file"},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, binary, "a compound document"},
    {"\x7F\x45LF"sv, binary, "an ELF file"},
    {"\xFF\xFE\0\0"sv, other_encoding, "UTF-32"},
    {"\0\0\xFE\xFF"sv, other_encoding, "UTF-32"},
    {"\xFF\xFE"sv, other_encoding, "UTF-16"},
    {"\xFE\xFF"sv, other_encoding, "UTF-16"},
    {"\xC9\xE2\xD6\x60"sv, other_encoding, "EBCDIC"},
    {"<?xml"sv, not_an_exchange_file, "an XML file"},
};

// The same of texts, behind blanks and in capital or small letters.
constexpr Signature SIGNATURES_OF_TEXTS[] = {
    {"<!doctype html"sv, not_an_exchange_file, "a web page, which a failed download may leave"},
    {"<html"sv, not_an_exchange_file, "a web page, which a failed download may leave"},
    {"version https://git-lfs"sv, not_an_exchange_file,
     "a pointer of Git LFS (\"git lfs pull\" gets the file)"},
};

constexpr std::size_t LONGEST_OF_TEXTS = 32;

// What stands at the 257th byte of a tar archive (POSIX.1, pax).
constexpr std::string_view TAR = "ustar";
constexpr std::size_t PLACE_OF_TAR = 257;

// The same behind blanks, each of which may be more than one byte, whichever stands first.
constexpr Signature SIGNATURES_BEHIND_BLANKS[] = {
    {"I\0\0\0S\0\0\0O"sv, other_encoding, "UTF-32"},
    {"I\0S\0O"sv, other_encoding, "UTF-16"},
};

std::string sentence_for(FindingKind kind, const std::string& what) {
  switch (kind) {
    case compressed:
      return "The file is compressed (" + what + "); unpack it first.";
    case other_encoding:
      return "The file is text in " + what + ", which is not read; save it as UTF-8.";
    default:
      return "The file is no exchange file: it is " + what + ".";
  }
}

bool is_no_text(char c) {
  return (c >= 0 && c < ' ' && !Exchange::is_blank(c) && c != '\x1A' && c != '\x1B') || c == '\x7F';
}

std::string_view without_wide_blanks_in_front(std::string_view text) {
  while (!text.empty() && (text.front() == '\0' || Exchange::is_blank(text.front())))
    text.remove_prefix(1);
  return text;
}

std::string in_small_letters(std::string_view text) {
  std::string small(text);
  for (char& c : small) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return small;
}

/// What the first of `signatures` that `head` begins with says.
std::optional<Finding> find_signature(std::string_view head,
                                      std::span<const Signature> signatures) {
  for (const Signature& signature : signatures) {
    if (!head.starts_with(signature.bytes)) continue;
    return make_finding(signature.kind, sentence_for(signature.kind, signature.what));
  }
  return std::nullopt;
}

}  // namespace

std::optional<Finding> recognise(std::string_view head) {
  if (auto finding = find_signature(head, SIGNATURES)) return finding;
  const std::string_view behind_blanks = without_wide_blanks_in_front(head);
  if (auto finding = find_signature(behind_blanks, SIGNATURES_BEHIND_BLANKS)) return finding;
  constexpr std::string_view BEGIN = "ISO-10303-21";
  if (head.starts_with(BYTE_ORDER_MARK)) head.remove_prefix(BYTE_ORDER_MARK.size());
  const std::string_view text = head.substr(Exchange::behind_blanks(head, 0));
  if (text.starts_with(BEGIN)) return std::nullopt;
  if (auto finding =
          find_signature(in_small_letters(text.substr(0, LONGEST_OF_TEXTS)), SIGNATURES_OF_TEXTS)) {
    return finding;
  }
  if (std::any_of(head.begin(), head.end(), is_no_text)) {
    if (head.size() > PLACE_OF_TAR && head.substr(PLACE_OF_TAR).starts_with(TAR)) {
      return make_finding(compressed, "The file is an archive (tar); unpack it first.");
    }
    return make_finding(binary, sentence_for(binary, "binary data"));
  }
  // A comment in front may be longer than what was given.
  if (text.empty() && head.size() >= HEAD_SIZE) return std::nullopt;
  return make_finding(not_an_exchange_file,
                      "The file is no exchange file: it does not begin with \"ISO-10303-21\".");
}

}  // namespace Kessel
