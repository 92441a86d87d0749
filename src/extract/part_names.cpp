#include "extract/part_names.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <set>
#include <utility>

#include "extract/similarity.h"

namespace Kessel {

namespace {

constexpr char BETWEEN_STEPS = '/';
/// So many candidates stand in a sentence.
constexpr std::size_t MOST_LISTED = 10;
constexpr std::size_t MOST_SIMILAR = 5;

/// The number in "#12"; 0 for anything else.
std::uint64_t number_in(std::string_view what) {
  if (!what.starts_with('#')) return 0;
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(what.data() + 1, what.data() + what.size(), number);
  return error == std::errc() && end == what.data() + what.size() ? number : 0;
}

}  // namespace

PartError::PartError(const std::string& sentence, std::vector<NamedPart> candidates,
                     const std::filesystem::path& path)
    : std::runtime_error(path.empty() ? sentence : path.string() + ": " + sentence),
      sentence_(sentence),
      path_(path),
      candidates_(std::move(candidates)) {}
PartError::PartError(const PartError&) = default;
PartError::~PartError() = default;

const std::vector<NamedPart>& PartError::candidates() const {
  return candidates_;
}

const std::string& PartError::sentence() const {
  return sentence_;
}

const std::filesystem::path& PartError::path() const {
  return path_;
}

PartNames::PartNames(const Instances& instances, const Products& products)
    : instances_(instances), products_(products), places_(products.products.size()) {
  find_places();
}

/// Breadth first, so that paths are short.
void PartNames::find_places() {
  std::deque<ProductId> open;
  const auto enter = [&](ProductId product, ProductId above) {
    if (std::exchange(places_[product].is_known, true)) return;
    places_[product].above = above;
    open.push_back(product);
  };
  for (const ProductId top : products_.tops) enter(top, NO_PRODUCT);
  while (!open.empty()) {
    const ProductId above = open.front();
    open.pop_front();
    for (const ProductId component : components(above)) enter(component, above);
  }
}

/// What stands directly below a product, by usages and mapped items; some of it several times.
std::vector<ProductId> PartNames::components(ProductId product) const {
  std::vector<ProductId> below;
  for (const std::uint32_t usage : products_.products[product].usages) {
    const Usage& used = products_.usages[usage];
    if (!used.closes_circle) below.push_back(used.component);
  }
  for (const MappedProduct& mapped : products_.products[product].mapped) {
    if (!mapped.closes_circle) below.push_back(mapped.product);
  }
  return below;
}

std::string PartNames::number(ProductId product) const {
  return "#" + std::to_string(instances_.number(products_.products[product].definition));
}

std::string PartNames::label(ProductId product) const {
  const Product& one = products_.products[product];
  if (!one.name.empty()) return one.name;
  return one.id.empty() ? number(product) : one.id;
}

NamedPart PartNames::operator[](ProductId product) const {
  const Product& one = products_.products[product];
  NamedPart part{instances_.number(one.definition), one.id, one.name, label(product)};
  for (ProductId above = places_[product].above; above != NO_PRODUCT;
       above = places_[above].above) {
    part.path.insert(0, label(above) + BETWEEN_STEPS);
  }
  return part;
}

ProductId PartNames::find(std::string_view what) const {
  const ProductId product = numbered(what);
  if (product != NO_PRODUCT) return product;
  std::vector<ProductId> found = called(what);
  if (found.empty()) found = on_path(what);
  if (found.size() != 1) refuse(what, found);
  return found.front();
}

bool PartNames::is_called(ProductId product, std::string_view what) const {
  if (what.empty()) return false;
  const Product& one = products_.products[product];
  return one.name == what || one.id == what;
}

std::vector<ProductId> PartNames::called(std::string_view what) const {
  std::vector<ProductId> some;
  for (ProductId product = 0; product < products_.products.size(); ++product) {
    if (is_called(product, what)) some.push_back(product);
  }
  return some;
}

/// Names may hold the separator: every end of a step is tried.
std::vector<ProductId> PartNames::on_path(std::string_view path) const {
  std::set<ProductId> found;
  std::set<std::pair<ProductId, std::size_t>> seen;
  std::vector<std::pair<ProductId, std::size_t>> open;  // a product, and where its step begins
  for (const ProductId top : products_.tops) open.emplace_back(top, 0);
  while (!open.empty()) {
    const auto [product, begin] = open.back();
    open.pop_back();
    if (!seen.emplace(product, begin).second) continue;
    const std::string_view rest = path.substr(begin);
    const Product& one = products_.products[product];
    for (const std::string& step : {one.name, one.id, number(product)}) {
      if (step.empty() || !rest.starts_with(step)) continue;
      if (rest.size() == step.size()) {
        found.insert(product);
      } else if (rest[step.size()] == BETWEEN_STEPS) {
        const std::size_t next = begin + step.size() + 1;
        for (const ProductId component : components(product)) open.emplace_back(component, next);
      }
    }
  }
  return {found.begin(), found.end()};
}

ProductId PartNames::numbered(std::string_view what) const {
  const std::uint64_t number = number_in(what);
  const Index record = number == 0 ? NO_RECORD : instances_.find(number);
  return record == NO_RECORD ? NO_PRODUCT : products_.find(record);
}

std::vector<ProductId> PartNames::most_similar(std::string_view what) const {
  const ProductId meant = numbered("#" + std::string(what));
  if (meant != NO_PRODUCT) return {meant};
  const std::string_view last = what.substr(what.find_last_of(BETWEEN_STEPS) + 1);
  std::vector<std::pair<std::size_t, ProductId>> similar;
  for (ProductId product = 0; product < products_.products.size(); ++product) {
    const Product& one = products_.products[product];
    const std::size_t best = std::min(unlikeness(one.name, last), unlikeness(one.id, last));
    if (best != UNLIKE) similar.emplace_back(best, product);
  }
  std::sort(similar.begin(), similar.end());
  if (similar.size() > MOST_SIMILAR) similar.resize(MOST_SIMILAR);
  std::vector<ProductId> some;
  for (const auto& [distance, product] : similar) some.push_back(product);
  return some;
}

std::string PartNames::list(const std::vector<ProductId>& some) const {
  std::string text;
  for (std::size_t i = 0; i < some.size() && i < MOST_LISTED; ++i) {
    const NamedPart part = (*this)[some[i]];
    text += (i == 0 ? "#" : ", #") + std::to_string(part.record) + " (" + part.path + ")";
  }
  if (some.size() > MOST_LISTED) {
    text += " and " + std::to_string(some.size() - MOST_LISTED) + " more";
  }
  return text;
}

void PartNames::refuse(std::string_view what, const std::vector<ProductId>& called) const {
  const std::string name = "\"" + std::string(what) + "\"";
  const std::vector<ProductId> some = called.empty() ? most_similar(what) : called;
  std::string sentence;
  if (!called.empty()) {
    sentence = "There are " + std::to_string(called.size()) + " parts called " + name + ": " +
               list(called) + "; say which one by its number.";
  } else if (!some.empty()) {
    sentence = "There is no part called " + name + "; similar " +
               (some.size() == 1 ? "is " : "are ") + list(some) + ".";
  } else {
    sentence = "There is no part called " + name + ".";
  }
  std::vector<NamedPart> candidates;
  for (const ProductId product : some) candidates.push_back((*this)[product]);
  throw PartError(sentence, std::move(candidates));
}

}  // namespace Kessel
