// Small assemblies whose names are hard on whoever makes file names of them.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

// Names of parts, in UTF-8. Some cannot be file names on every system, some are equal after
// normalisation or without regard to case, and some are longer than a file name may be.
constexpr std::array<std::string_view, 24> ODD_NAMES = {
    "\u652f\u67b6",                                            // Chinese: bracket
    "\u87ba\u4e1d M4\u00d710",                                 // Chinese and Latin mixed: screw
    "Halter f\u00fcr T\u00fcrgriff",                           // German
    "Halter fu\u0308r Tu\u0308rgriff",                         // the same with combining marks
    "\u041a\u0440\u043e\u043d\u0448\u0442\u0435\u0439\u043d",  // Cyrillic
    "\U0001F527 tool",                                         // beyond the basic plane
    "plate 1/2 inch",
    "path\\to\\part",
    "../outside",
    "the 'left' lever",
    "12\" wheel",
    "rev: A <draft> | *?",
    "CON",
    "nul.step",
    "ends with dots...",
    "ends with a space ",
    " starts with a space",
    ".hidden",
    "-o",
    "Cover",
    "COVER",
    "tab\there",
    "",
    "#57_part.stp",
};

// Longer than the 255 bytes that common file systems allow for a name.
std::string long_name() {
  std::string name = "long";
  while (name.size() < 300) name += " and longer";
  return name;
}

// Returns the name of part `i`; the list is used again and again with a number behind each name.
std::string odd_name(std::uint32_t i) {
  const std::uint32_t count = static_cast<std::uint32_t>(ODD_NAMES.size()) + 1;
  const std::uint32_t turn = i / count;
  const std::string name =
      i % count < ODD_NAMES.size() ? std::string(ODD_NAMES[i % count]) : long_name();
  return turn == 0 ? name : name + " " + std::to_string(turn + 1);
}

}  // namespace

void write_odd_names(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  std::vector<Usage> usages;
  for (std::uint32_t i = 0; i < size; ++i) {
    const std::string name = odd_name(i);
    const Component part =
        write_box_part(out, contexts, name, {10.0 + i, 10.0, 10.0}, random_colour(random));
    usages.push_back(usage_at(part, name, {0.0, 20.0 * i, 0.0}));
  }
  InstanceId geometric_context = write_own_context(out);
  // "Sub-assembly" in Chinese, with a slash.
  const Component group =
      write_assembly(out, contexts, geometric_context, "\u5b50\u88c5\u914d/A", usages);
  geometric_context = write_own_context(out);
  const std::vector<Usage> top{usage_at(group, "\u5b50\u88c5\u914d/A:1", {})};
  // "General assembly" in Chinese.
  write_assembly(out, contexts, geometric_context, "\u603b\u88c5\u914d O'Neil", top);
}

void write_equal_names(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  std::vector<Usage> groups;
  for (std::uint32_t i = 0; i < size; ++i) {
    const Component large =
        write_box_part(out, contexts, "Bracket", {20.0 + i, 10.0, 5.0}, random_colour(random));
    const Component small =
        write_box_part(out, contexts, "bracket", {10.0 + i, 5.0, 5.0}, random_colour(random));
    const InstanceId geometric_context = write_own_context(out);
    const std::vector<Usage> usages{usage_at(large, "Bracket", {}),
                                    usage_at(small, "Bracket", {0.0, 20.0, 0.0})};
    const Component group = write_assembly(out, contexts, geometric_context, "Unit", usages);
    groups.push_back(usage_at(group, "Unit", {0.0, 0.0, 20.0 * i}));
  }
  const InstanceId geometric_context = write_own_context(out);
  // The top assembly has the name of the units below it.
  write_assembly(out, contexts, geometric_context, "Unit", groups);
}

}  // namespace Kessel::bench
