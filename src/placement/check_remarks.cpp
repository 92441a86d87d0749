// Whether what is said of one product alone stands in that product's file.
#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "placement/check_placement.h"
#include "placement/classes.h"

namespace Kessel {

namespace {

/// Finds the files that each record speaks of, from the records that products and usages consist of
/// up to those that refer to them.
class Subjects {
 public:
  /// A file, or one of these.
  using Subject = std::uint32_t;
  static constexpr Subject NOTHING = 0xFFFF'FFFF;
  static constexpr Subject SEVERAL = 0xFFFF'FFFE;

  Subjects(const Instances& instances, const Products& products, const Placement& placement)
      : instances_(instances),
        products_(products),
        placement_(placement),
        classes_(instances, products),
        subjects_(instances.size(), NOTHING),
        states_(instances.size(), State::unseen) {
    for (ProductId id = 0; id < products_.products.size(); ++id) claim_product(id);
    for (const auto* list : {&products_.usages, &products_.deeper}) {
      for (const Usage& usage : *list) claim_usage(usage);
    }
    for (Index record = 0; record < instances_.size(); ++record) {
      // Such a style stands with what is styled, wherever it is seen.
      if (instances_.is(record, "PRESENTATION_STYLE_BY_CONTEXT")) claim(record, SEVERAL);
    }
    for (Index record = 0; record < instances_.size(); ++record) visit(record);
  }

  /// Whether it is said of others, rather than a part of a product, a usage or a context.
  bool is_remark(Index record) const {
    return states_[record] == State::done && !classes_.has(record, SOFT) &&
           instances_.type(record) != TypeTable::REPEATED;
  }

  /// Many products share contexts, points and directions.
  Subject of(Index record) const {
    if (is_plain_geometry(instances_, record)) return NOTHING;
    if (classes_.has(record, SOFT) && states_[record] != State::claimed) return NOTHING;
    return subjects_[record];
  }

  static void add(Subject& subject, Subject other) {
    if (other == NOTHING || other == subject) return;
    subject = subject == NOTHING ? other : SEVERAL;
  }

 private:
  enum class State : std::uint8_t { unseen, claimed, open, done };
  struct Step {
    Index record;
    std::size_t next;
  };

  void claim(Index record, Subject subject) {
    add(subjects_[record], subject);
    states_[record] = State::claimed;
  }

  /// What the product leads to, up to what other products are.
  void claim_product(ProductId id) {
    const Product& product = products_.products[id];
    std::vector<Index> open{product.definition};
    for (const ShapeLink& link : product.links) open.push_back(link.link);
    for (const auto* list :
         {&product.shapes, &product.representations, &product.tied, &product.ties}) {
      open.insert(open.end(), list->begin(), list->end());
    }
    std::unordered_set<Index> seen(open.begin(), open.end());
    while (!open.empty()) {
      const Index record = open.back();
      open.pop_back();
      claim(record, placement_.file_of[id]);
      for (const Reference reference : instances_.references(record)) {
        const Index other = reference.record();
        if (other == NO_RECORD || classes_.has(other, SOFT | DEFINING | SHOWING)) continue;
        if (seen.insert(other).second) open.push_back(other);
      }
    }
  }

  void claim_usage(const Usage& usage) {
    const Subject subject =
        usage.closes_circle ? SEVERAL : Subject{placement_.file_of[usage.assembly]};
    const auto take = [&](Index record) {
      subjects_[record] = subject;
      states_[record] = State::claimed;
    };
    take(usage.record);
    for (const Reference end : instances_.references(usage.record)) {
      // Such as an occurrence of the component, which the usage is of.
      if (end.record() == NO_RECORD || classes_.has(end.record(), SOFT | DEFINING | USED)) continue;
      take(end.record());
    }
    for (const auto* list : {&usage.shapes, &usage.placements, &usage.relationships}) {
      for (const Index record : *list) take(record);
    }
    for (const ShapeLink& link : usage.links) {
      take(link.link);
      take(link.representation);
    }
  }

  /// Those first that the record refers to.
  void visit(Index first) {
    if (states_[first] != State::unseen) return;
    std::vector<Step> path{{first, 0}};
    states_[first] = State::open;
    while (!path.empty()) {
      const Index record = path.back().record;
      const auto references = instances_.references(record);
      if (path.back().next == references.size()) {
        path.pop_back();
        finish(record);
        continue;
      }
      const Index other = references[path.back().next++].record();
      if (other == NO_RECORD || states_[other] != State::unseen) continue;
      states_[other] = State::open;
      path.push_back({other, 0});
    }
  }

  void finish(Index record) {
    states_[record] = State::done;
    for (const Reference reference : instances_.references(record)) {
      if (reference.record() != NO_RECORD) add(subjects_[record], of(reference.record()));
    }
  }

  const Instances& instances_;
  const Products& products_;
  const Placement& placement_;
  Classes classes_;
  std::vector<Subject> subjects_;
  std::vector<State> states_;
};

class RemarkCheck {
 public:
  RemarkCheck(const Instances& instances, const Products& products, const Placement& placement)
      : instances_(instances), placement_(placement), subjects_(instances, products, placement) {}

  std::vector<std::string> run() {
    for (Index record = 0; record < instances_.size(); ++record) {
      if (subjects_.is_remark(record)) check(record);
    }
    return std::move(sentences_);
  }

 private:
  static bool is_file(Subjects::Subject subject) {
    return subject != Subjects::NOTHING && subject != Subjects::SEVERAL;
  }

  /// A collector speaks of each of its items by itself.
  void check(Index record) {
    Subjects::Subject fixed = Subjects::NOTHING;
    std::vector<Index> listed;
    for (const Reference reference : instances_.references(record)) {
      if (reference.record() == NO_RECORD) continue;
      if (reference.is_listed()) {
        listed.push_back(reference.record());
      } else {
        Subjects::add(fixed, subjects_.of(reference.record()));
      }
    }
    if (listed.empty() && is_file(fixed)) require(record, fixed);
    for (const Index item : listed) {
      Subjects::Subject both = subjects_.of(item);
      if (!is_file(both)) continue;
      Subjects::add(both, fixed);
      if (!is_file(both)) continue;
      require(record, both);
      require(item, both);
    }
  }

  void require(Index record, FileId file) {
    const Stand* const stand = placement_.stands.find(record, file);
    if (stand != nullptr && stand->role() != Role::stand_in) return;
    std::string& sentence = sentences_.emplace_back("#");
    sentence += std::to_string(instances_.number(record));
    sentence += " is missing in file " + std::to_string(file) + ", of which it speaks";
  }

  const Instances& instances_;
  const Placement& placement_;
  Subjects subjects_;
  std::vector<std::string> sentences_;
};

}  // namespace

std::vector<std::string> check_remarks(const Instances& instances, const Products& products,
                                       const Placement& placement) {
  return RemarkCheck(instances, products, placement).run();
}

}  // namespace Kessel
