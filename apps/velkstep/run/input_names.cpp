#include "run/input_names.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string_view>

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 6> COMPRESSED_ENDINGS = {".gz", ".zip", ".bz2",
                                                                ".xz", ".zst", ".zstd"};
constexpr std::array<std::string_view, 5> EXCHANGE_ENDINGS = {".step", ".stp", ".p21", ".stpnc",
                                                              ".stpz"};

/// Takes the one of `endings` off that `name` has, in capital or small letters. Returns whether.
template <class Endings>
bool take_off(std::string& name, const Endings& endings) {
  const auto ends_with = [&](std::string_view ending) {
    return name.size() >= ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), name.rbegin(), [](char a, char b) {
             return a == std::tolower(static_cast<unsigned char>(b));
           });
  };
  const auto found = std::find_if(endings.begin(), endings.end(), ends_with);
  if (found == endings.end()) return false;
  name.resize(name.size() - found->size());
  return true;
}

}  // namespace

std::string stem_of(const std::string& in) {
  std::string name = fs::path(in).filename().string();
  const bool was_compressed = take_off(name, COMPRESSED_ENDINGS);
  const bool was_exchange = take_off(name, EXCHANGE_ENDINGS);
  const bool is_name = !name.empty() && name != "." && name != "..";
  return is_name && (was_compressed || was_exchange) ? name : std::string();
}

}  // namespace Velkstep
