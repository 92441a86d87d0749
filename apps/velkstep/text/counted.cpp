#include "text/counted.h"

#include <cstddef>

namespace Velkstep {

std::string grouped(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
  return text;
}

std::string counted(std::uint64_t count, std::string_view one, std::string_view many) {
  return grouped(count) + " " + std::string(count == 1 ? one : many);
}

}  // namespace Velkstep
