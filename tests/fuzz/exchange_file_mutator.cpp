// Changes exchange files statement by statement, so that most of them stay assemblies: bytes alone
// seldom make a reference that leads somewhere.
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max);

namespace Kessel::test {
namespace {

constexpr std::string_view DIGITS = "0123456789";

/// The statements of a file, each with its ";", and edits of them.
class Statements {
 public:
  Statements(std::string_view text, unsigned seed) : random_(seed) {
    while (!text.empty()) {
      const std::size_t end = text.find(';');
      const std::size_t length = end == std::string_view::npos ? text.size() : end + 1;
      all_.emplace_back(text.substr(0, length));
      text.remove_prefix(length);
    }
  }

  void edit() {
    if (all_.empty()) return;
    std::string& statement = any();
    switch (random_() % 6) {
      case 0:
        statement.clear();
        break;
      case 1:
        std::swap(statement, any());
        break;
      case 2:
        statement += any();
        break;
      case 3:
        replace(statement, number_in(statement), any(), &Statements::number_in);
        break;
      case 4:
        replace(statement, keyword_in(statement), any(), &Statements::keyword_in);
        break;
      default:
        replace(statement, attribute_in(statement), any(), &Statements::attribute_in);
    }
  }

  std::string text() const {
    std::string text;
    for (const std::string& statement : all_) text += statement;
    return text;
  }

 private:
  /// Begin and length of something in a statement.
  using Span = std::pair<std::size_t, std::size_t>;

  std::string& any() { return all_[random_() % all_.size()]; }

  /// The digits behind one of the "#".
  Span number_in(const std::string& text) { return span(text, "#", DIGITS); }
  /// The letters behind one of the "=" or "(".
  Span keyword_in(const std::string& text) {
    return span(text, "=(", "ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789");
  }
  /// What stands between one of the commas or parentheses and the next.
  Span attribute_in(const std::string& text) {
    const Span begin = span(text, ",(", "");
    const std::size_t end = text.find_first_of(",)", begin.first);
    return {begin.first, end == std::string::npos ? 0 : end - begin.first};
  }

  /// Of the places behind one of `marks` any, and how many of `members` follow there.
  Span span(const std::string& text, std::string_view marks, std::string_view members) {
    std::vector<std::size_t> begins;
    for (std::size_t at = 0; (at = text.find_first_of(marks, at)) != std::string::npos;) {
      begins.push_back(++at);
    }
    if (begins.empty()) return {0, 0};
    const std::size_t begin = begins[random_() % begins.size()];
    const std::size_t end = text.find_first_not_of(members, begin);
    return {begin, (end == std::string::npos ? text.size() : end) - begin};
  }

  void replace(std::string& statement, Span old, const std::string& source,
               Span (Statements::*find)(const std::string&)) {
    const Span found = (this->*find)(source);
    const std::string replacement = source.substr(found.first, found.second);
    statement.replace(old.first, old.second, replacement);
  }

  std::minstd_rand random_;
  std::vector<std::string> all_;
};

}  // namespace
}  // namespace Kessel::test

/// Half of the time changes bytes, the other half statements.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max, unsigned seed) {
  if (seed % 2 == 0) return LLVMFuzzerMutate(data, size, max);
  Kessel::test::Statements statements({reinterpret_cast<const char*>(data), size}, seed / 2 + 1);
  for (unsigned edits = 1 + seed / 2 % 4; edits > 0; --edits) statements.edit();
  const std::string text = statements.text();
  if (text.empty() || text.size() > max) return LLVMFuzzerMutate(data, size, max);
  text.copy(reinterpret_cast<char*>(data), text.size());
  return text.size();
}
