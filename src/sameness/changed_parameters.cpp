#include "sameness/changed_parameters.h"

#include <algorithm>
#include <string>

#include "exchange/lexer.h"
#include "exchange/parameters.h"
#include "instances/collectors.h"
#include "sameness/text_hash.h"

namespace Kessel::Sameness {

namespace {

/// A parameter and where it leads to.
struct Parameter {
  std::string_view text;
  std::uint64_t hash = 0;
  std::vector<Node> nodes;  // NO_NODE for a number that no record has
  bool is_set = false;
};

class Body {
 public:
  Body(std::string_view body, const RecordGraph& file)
      : file_(file), sets_(collected_lists(body)), partials_(Exchange::partial_records(body)) {}

  std::size_t size() const { return partials_.size(); }
  std::string_view keyword(std::size_t i) const { return partials_[i].keyword; }

  std::vector<Parameter> parameters(std::size_t i) const {
    std::vector<Parameter> parameters;
    for (const std::string_view text : Exchange::items_of(partials_[i].list)) {
      Parameter parameter{text, 0, nodes_in(text), false};
      parameter.is_set = std::any_of(sets_.begin(), sets_.end(), [&](std::string_view set) {
        return set.data() == text.data();
      });
      parameter.hash = parameter.is_set ? text_hash(text, {&text, 1}) : text_hash(text);
      if (parameter.is_set) {
        std::sort(parameter.nodes.begin(), parameter.nodes.end());
        const auto end = std::unique(parameter.nodes.begin(), parameter.nodes.end());
        parameter.nodes.erase(end, parameter.nodes.end());
      }
      parameters.push_back(std::move(parameter));
    }
    return parameters;
  }

 private:
  std::vector<Node> nodes_in(std::string_view text) const {
    std::vector<Node> nodes;
    Exchange::Lexer lexer(text);
    for (auto word = lexer.next(); word.kind != Exchange::WordKind::end; word = lexer.next()) {
      if (word.kind != Exchange::WordKind::instance) continue;
      const Index record = file_.file.instances.find(Exchange::number_in(word.text));
      nodes.push_back(record == NO_RECORD ? NO_NODE : file_.nodes[record]);
    }
    return nodes;
  }

  const RecordGraph& file_;
  std::vector<std::string_view> sets_;
  std::vector<Exchange::PartialRecord> partials_;
};

bool is_same(const Parameter& a, const Parameter& b, const Changes& changes) {
  if (a.hash != b.hash || a.nodes.size() != b.nodes.size()) return false;
  if (a.is_set) {
    return std::all_of(a.nodes.begin(), a.nodes.end(), [&](Node node) {
      return std::binary_search(b.nodes.begin(), b.nodes.end(), changes.partner(node));
    });
  }
  return std::equal(a.nodes.begin(), a.nodes.end(), b.nodes.begin(), [&](Node x, Node y) {
    return x == NO_NODE || y == NO_NODE ? x == y : changes.is_same(x, y);
  });
}

std::string beginning_of(std::string_view text) {
  constexpr std::size_t MOST_BYTES = 200;
  return std::string(text.substr(0, MOST_BYTES));
}

}  // namespace

std::vector<ChangedParameter> changed_parameters(std::string_view body_a, std::string_view body_b,
                                                 const RecordGraph& a, const RecordGraph& b,
                                                 const Changes& changes) {
  const Body of_a(body_a, a);
  const Body of_b(body_b, b);
  std::vector<ChangedParameter> changed;
  for (std::size_t i = 0; i < std::min(of_a.size(), of_b.size()); ++i) {
    const std::vector<Parameter> in_a = of_a.parameters(i);
    const std::vector<Parameter> in_b = of_b.parameters(i);
    for (std::size_t j = 0; j < std::max(in_a.size(), in_b.size()); ++j) {
      const Parameter x = j < in_a.size() ? in_a[j] : Parameter();
      const Parameter y = j < in_b.size() ? in_b[j] : Parameter();
      if (is_same(x, y, changes)) continue;
      changed.push_back(
          {std::string(of_a.keyword(i)), j + 1, beginning_of(x.text), beginning_of(y.text)});
    }
  }
  return changed;
}

}  // namespace Kessel::Sameness
