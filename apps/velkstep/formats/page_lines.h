// The lines of a drawing as the report page holds them: small, and fit for a browser.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kessel/drawing.h"

namespace Velkstep {

/// One part's own lines. Each is a row of 16-bit numbers, low byte first: how many points it has,
/// its colour (a position in the list of colours, 65535 for none), and x, y, z of each point, from
/// 0 to 65535 within the box around the part's lines. The longest come first, so that a small
/// picture may do with the first ones.
struct PageLines {
  std::string base64;          ///< empty where the part has no lines of its own
  std::int32_t colour = -1;    ///< what most of their length is coloured: 0xRRGGBB, or none
  std::uint64_t left_out = 0;  ///< lines that the page has no room for
};

/// All parts' lines, parallel to `Drawing::parts`.
struct PageDrawing {
  std::vector<std::int32_t> colours;  ///< 0xRRGGBB, each once
  std::vector<PageLines> parts;
};

/// The lines in at most `most_bytes` bytes (before base 64). Where they would take more, every part
/// gets the same share at most: its lines become coarser, up to a hundredth of its box, and then
/// the shortest are left out.
PageDrawing lines_for_page(const Kessel::Drawing& drawing, std::uint64_t most_bytes);

/// Whether the page shows a component: not one that is hidden, or closes a cycle.
bool is_shown(const Kessel::PlacedComponent& component);

/// Where the components of a part are that are shown: twelve 32-bit floating-point numbers for
/// each, low byte first, in base 64.
std::string placements_for_page(const Kessel::DrawnPart& part);

}  // namespace Velkstep
