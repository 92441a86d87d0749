#include "join/origins.h"

#include <cstdint>
#include <map>

namespace Kessel {

std::vector<Origin> origins_of(const FileSet& files) {
  std::vector<Origin> origins;
  std::map<std::uint64_t, std::size_t> splits;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (files[i].split) {
      const auto [place, is_new] = splits.emplace(*files[i].split, origins.size());
      if (!is_new) {
        origins[place->second].push_back(i);
        continue;
      }
    }
    origins.push_back({i});
  }
  return origins;
}

}  // namespace Kessel
