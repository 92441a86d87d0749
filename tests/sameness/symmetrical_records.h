// Records that are so symmetrical that nobody can tell in a short time what they say.
#pragma once

#include <cstddef>
#include <string>

namespace Kessel::test {

/// The records of a ladder of gadgets whose ends meet: every gadget can be turned round together
/// with others on a circle through it, and so nothing tells one end of anything from the other.
/// `twisted` crosses one of the connections, which makes another graph of it, but one that looks
/// the same wherever one stands: only who follows all circles at once sees the difference (the
/// graphs of Cai, Fuerer and Immerman).
inline std::string symmetrical_records(bool twisted) {
  constexpr std::size_t GADGETS = 60;
  const auto name = [](std::size_t number) { return "#" + std::to_string(number); };
  // Each gadget has three connections, each of which has two sides.
  const auto side = [&](std::size_t gadget, std::size_t connection, std::size_t which) {
    return name(1 + (gadget % GADGETS) * 6 + connection * 2 + which);
  };
  std::string text;
  for (std::size_t i = 1; i <= GADGETS * 6; ++i) text += name(i) + "=VERTEX_POINT('',$);\n";
  std::size_t next = GADGETS * 6 + 1;
  const auto connect = [&](const std::string& a, const std::string& b) {
    text += name(next++) + "=EDGE(" + a + "," + b + ");\n";
  };
  for (std::size_t gadget = 0; gadget < GADGETS; ++gadget) {
    for (std::size_t even = 0; even < 4; ++even) {
      const std::size_t first = even & 1;
      const std::size_t second = even >> 1;
      text += name(next++) + "=GADGET(" + side(gadget, 0, first) + "," + side(gadget, 1, second) +
              "," + side(gadget, 2, first ^ second) + ");\n";
    }
    const std::size_t crossed = twisted && gadget == 0 ? 1 : 0;
    for (std::size_t which = 0; which < 2; ++which) {
      connect(side(gadget, 0, which), side(gadget + 1, 1, which ^ crossed));
      if (gadget < GADGETS / 2) {
        connect(side(gadget, 2, which), side(gadget + GADGETS / 2, 2, which));
      }
    }
  }
  return text;
}

}  // namespace Kessel::test
