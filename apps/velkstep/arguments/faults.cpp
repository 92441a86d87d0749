#include "arguments/faults.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string_view>

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

std::string in_small_letters(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

/// Whether CLI11 knows the unit: "kB" is a thousand bytes, "KiB" 1024.
bool is_unit(std::string_view unit) {
  constexpr std::string_view LETTERS = "kmgtpe";
  if (unit.empty() || unit == "b") return true;
  if (LETTERS.find(unit.front()) == std::string_view::npos) return false;
  const std::string_view rest = unit.substr(1);
  return rest.empty() || rest == "b" || rest == "i" || rest == "ib";
}

std::string ending_of(const std::string& out) {
  return in_small_letters(fs::path(out).extension().string());
}

template <std::size_t COUNT>
bool is_among(const std::string& ending, const std::array<std::string_view, COUNT>& endings) {
  return std::find(endings.begin(), endings.end(), ending) != endings.end();
}

/// The name with another ending.
std::string renamed(const std::string& out, const char* ending) {
  return fs::path(out).replace_extension(ending).string();
}

constexpr std::array<std::string_view, 7> COMPRESSED = {".gz",  ".zip",  ".bz2", ".xz",
                                                        ".zst", ".zstd", ".stpz"};
constexpr std::array<std::string_view, 11> OF_OTHER_FORMATS = {
    ".png", ".jpg", ".jpeg", ".svg", ".pdf", ".stl", ".obj", ".igs", ".iges", ".gltf", ".glb"};

}  // namespace

// CLI11 takes a missing number for 1, and one that is negative or too large modulo something.
std::string fault_of_size(const std::string& size) {
  const std::size_t digits = std::min(size.find_first_not_of("0123456789"), size.size());
  constexpr std::size_t MOST_DIGITS = std::numeric_limits<std::uint64_t>::digits10;
  const std::size_t unit = std::min(size.find_first_not_of(' ', digits), size.size());
  const bool is_size =
      digits != 0 && digits <= MOST_DIGITS && is_unit(in_small_letters(size.substr(unit)));
  return is_size ? std::string() : size + " is no size; bytes are, or 500MB, or 2GiB";
}

std::string fault_of_count(const std::string& count) {
  constexpr std::size_t MOST_DIGITS = 18;
  const bool is_number = !count.empty() && count.size() <= MOST_DIGITS &&
                         count.find_first_not_of("0123456789") == std::string::npos;
  return is_number ? std::string() : count + " is not a number of 0 or more";
}

std::string fault_of_output(const std::string& out) {
  if (out.empty()) return "its name is empty; give it one";
  if (out == "-") return "nothing is written to standard output; name a file, even if it is ./-";
  return {};
}

std::string fault_of_exchange_file(const std::string& out) {
  const std::string ending = ending_of(out);
  if (is_among(ending, COMPRESSED)) {
    const std::string name = fs::path(out).stem().has_extension()
                                 ? fs::path(out).replace_extension()
                                 : fs::path(renamed(out, ".stp"));
    return out + ": what is written is not compressed; name it " + name;
  }
  if (is_among(ending, OF_OTHER_FORMATS)) {
    return out + ": what is written is an exchange file; name it " + renamed(out, ".stp");
  }
  return {};
}

std::string fault_of_report_folder(const std::string& out) {
  const std::string ending = ending_of(out);
  if (ending != ".html" && ending != ".htm") return {};
  return out + ": is to be a folder, in which report.html is written; name it " + renamed(out, "");
}

std::string fault_of_picture(const std::string& out) {
  const std::string ending = ending_of(out);
  if (ending.empty() || ending == ".svg") return {};
  return out + ": pictures are SVG; name it " + renamed(out, ".svg");
}

}  // namespace Velkstep
