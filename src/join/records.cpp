#include "join/records.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "findings/finding_kinds.h"
#include "kessel/errors.h"

namespace Kessel {

Records::Records(const FileSet& files) {
  std::uint64_t count = 0;
  for (std::size_t i = 0; i < files.size(); ++i) {
    firsts_.push_back(static_cast<Node>(count));
    count += files[i].instances.size();
    if (count >= NO_JOINED) {
      throw InputError(make_finding(FindingKind::memory_limit,
                                    "The files have more records than can be told apart."));
    }
  }
  firsts_.push_back(static_cast<Node>(count));
  leaders_ = Column<Node>(count);
  for (Node node = 0; node < size(); ++node) leaders_[node] = node;
  standings_ = Column<Standing>(count, Standing::whole);
}

std::size_t Records::file_of(Node node) const {
  const auto behind = std::upper_bound(firsts_.begin(), firsts_.end(), node);
  return static_cast<std::size_t>(behind - firsts_.begin()) - 1;
}

Node Records::leader(Node node) {
  while (leaders_[node] != node) {
    leaders_[node] = leaders_[leaders_[node]];
    node = leaders_[node];
  }
  return node;
}

void Records::unite(Node a, Node b) {
  const Node first = leader(a);
  const Node second = leader(b);
  if (first == second) return;
  united_.push_back(a);
  united_.push_back(b);
  leaders_[std::max(first, second)] = std::min(first, second);
}

void Records::settle() {
  // A record became one with others only by being united itself, so that none is missing here.
  std::sort(united_.begin(), united_.end());
  united_.erase(std::unique(united_.begin(), united_.end()), united_.end());
  std::vector<std::tuple<Node, Standing, Node>> classes;  // of leader, standing, member
  classes.reserve(united_.size());
  for (const Node node : united_) classes.emplace_back(leader(node), standings_[node], node);
  std::sort(classes.begin(), classes.end());
  Node of = NO_JOINED;
  Node text = NO_JOINED;
  std::vector<std::pair<Node, Node>> texts;
  texts.reserve(classes.size());
  for (const auto& [leader, standing, member] : classes) {
    if (leader != of) text = member;
    of = leader;
    texts.emplace_back(text, member);
  }
  for (const auto& [written, member] : texts) leaders_[member] = written;
  std::sort(texts.begin(), texts.end());
  united_.clear();
  for (const auto& [written, member] : texts) united_.push_back(member);
}

}  // namespace Kessel
