#include "shrink/plain_check.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

namespace Kessel::test {

namespace {

/// Words in the names of types that bear identity, beside which a few words make a value.
constexpr const char* IDENTITY[] = {"PRODUCT",
                                    "REPRESENTATION",
                                    "CONTEXT",
                                    "VERTEX",
                                    "EDGE",
                                    "FACE",
                                    "SHELL",
                                    "LOOP",
                                    "BREP",
                                    "SOLID",
                                    "ITEM",
                                    "ASSIGNMENT",
                                    "USAGE_OCCURRENCE",
                                    "SHAPE",
                                    "PROPERTY",
                                    "ANNOTATION",
                                    "APPROVAL",
                                    "INVISIBILITY"};
constexpr const char* VALUES[] = {"PRESENTATION_STYLE_ASSIGNMENT",
                                  "APPROVAL_STATUS",
                                  "GEOMETRIC_REPRESENTATION_ITEM",
                                  "APPROVAL_ROLE",
                                  "APPROVAL_PERSON",
                                  "REPRESENTATION_ITEM",
                                  "PRE_DEFINED_ITEM"};

/// Words in the names of records whose list, or target, is meant as it is.
constexpr const char* NAMING[] = {
    "REPRESENTATION", "STYLED",        "INVISIBILITY",        "LAYER",  "DEFINED_TRANSFORMATION",
    "IDENTIFIED",     "GEOMETRIC_SET", "GEOMETRIC_CURVE_SET", "MAPPED", "ATTRIBUTE"};

/// Whether `word` stands in the keyword `text`, between underscores or at its ends.
bool has_word(const std::string& text, const std::string& word) {
  return ("_" + text + "_").find("_" + word + "_") != std::string::npos;
}

/// Whether two numbers are one, however they are spelt.
bool is_same_number(const std::string& a, const std::string& b) {
  const bool is_real = a.find('.') != std::string::npos;
  const double x = std::strtod(a.c_str(), nullptr);
  const double y = std::strtod(b.c_str(), nullptr);
  return is_real == (b.find('.') != std::string::npos) && x == y;
}

std::vector<std::string> keywords_of(const PlainRecord& record) {
  std::vector<std::string> keywords;
  for (std::size_t i = 0; i + 1 < record.pieces.size(); ++i) {
    const bool is_keyword = record.pieces[i].kind == Piece::Kind::word &&
                            record.pieces[i].text[0] != '.' && record.pieces[i + 1].text == "(";
    if (is_keyword && !has_word(record.pieces[i].text, "MEASURE")) {
      keywords.push_back(record.pieces[i].text);
    }
  }
  return keywords;
}

bool bears_identity(const PlainRecord& record) {
  for (const std::string& keyword : keywords_of(record)) {
    if (keyword.ends_with("_UNIT")) continue;
    if (std::find(std::begin(VALUES), std::end(VALUES), keyword) != std::end(VALUES)) continue;
    for (const char* word : IDENTITY) {
      if (has_word(keyword, word)) return true;
    }
  }
  return false;
}

bool is_geometry(const PlainRecord& record) {
  for (const std::string& keyword : keywords_of(record)) {
    for (const char* word : {"POINT", "DIRECTION", "VECTOR", "PLACEMENT", "LINE", "CIRCLE", "PLANE",
                             "CURVE", "SURFACE"}) {
      if (has_word(keyword, word) && !has_word(keyword, "STYLE") && !has_word(keyword, "UNIT")) {
        return true;
      }
    }
  }
  return false;
}

bool may_repeat(const PlainRecord& record) {
  const std::vector<std::string> keywords = keywords_of(record);
  return std::any_of(keywords.begin(), keywords.end(), [](const std::string& keyword) {
    return keyword == "POLYLINE" || keyword.find("B_SPLINE") != std::string::npos;
  });
}

using Numbers = std::map<std::string, std::string>;

class Check {
 public:
  Check(const PlainFile& before, const PlainFile& after) : before_(before) {
    for (const PlainRecord& record : before.records) old_[record.number] = &record;
    for (const PlainRecord& record : after.records) new_[record.number] = &record;
  }

  std::vector<std::string> faults() {
    find_targets();
    for (const auto& [number, record] : new_) check_lists(*record);
    for (const auto& [from, to] : targets_) {
      if (from != to) check_pair(from, to);
    }
    check_gone();
    return std::move(faults_);
  }

 private:
  void say(const std::string& number, const std::string& what) {
    faults_.push_back(number + " " + what);
  }

  /// Which record each became, by who refers to it, and that it says the same.
  void find_targets() {
    for (const auto& [number, record] : new_) {
      const auto old = old_.find(number);
      if (old == old_.end()) {
        say(number, "is new");
        continue;
      }
      note(number, number);
    }
    while (!open_.empty()) {
      const auto [from, to] = open_.back();
      open_.pop_back();
      const auto a = old_.find(from);
      const auto b = new_.find(to);
      if (a != old_.end() && b != new_.end()) compare(*a->second, *b->second);
    }
  }

  void compare(const PlainRecord& a, const PlainRecord& b) {
    if (a.pieces.size() != b.pieces.size()) return say(a.number, "has another length");
    for (std::size_t i = 0; i < a.pieces.size(); ++i) {
      if (a.pieces[i].kind != b.pieces[i].kind) say(a.number, "is another record");
      if (a.pieces[i].kind == Piece::Kind::instance) {
        note(a.pieces[i].text, b.pieces[i].text);
      } else if (a.pieces[i].kind == Piece::Kind::number) {
        if (!is_same_number(a.pieces[i].text, b.pieces[i].text)) say(a.number, "has other numbers");
      } else if (a.pieces[i].text != b.pieces[i].text) {
        say(a.number, "has another text");
      }
    }
  }

  void note(const std::string& from, const std::string& to) {
    const auto [known, is_new] = targets_.emplace(from, to);
    if (is_new) open_.emplace_back(from, to);
    if (known->second != to) say(from, "became two: " + known->second + " and " + to);
  }

  void check_lists(const PlainRecord& record) {
    const auto old = old_.find(record.number);
    if (old == old_.end() || may_repeat(record)) return;
    const std::vector<Piece>& pieces = record.pieces;
    if (pieces.size() != old->second->pieces.size()) return;
    Numbers was;  // by what it is now
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      if (pieces[i].kind != Piece::Kind::instance) continue;
      const std::string& before = old->second->pieces[i].text;
      const auto known = was.emplace(pieces[i].text, before).first;
      if (known->second != before) say(record.number, "holds twice " + pieces[i].text);
    }
  }

  void check_pair(const std::string& from, const std::string& to) {
    const auto a = old_.find(from);
    const auto b = old_.find(to);
    if (a == old_.end() || b == old_.end()) return say(from, "leads elsewhere");
    if (!new_.contains(to)) say(to, "is used, and gone");
    if (new_.contains(from)) say(from, "is there, and another is used");
    if (bears_identity(*a->second)) say(from, "bears identity");
    for (const std::string& number : {from, to}) check_users(number);
  }

  void check_users(const std::string& number) {
    if (users_.empty()) {
      for (const PlainRecord& record : before_.records) {
        for (const Piece& piece : record.pieces) {
          if (piece.kind == Piece::Kind::instance) users_[piece.text].insert(&record);
        }
      }
    }
    if (!is_geometry(*old_[number])) return;
    for (const PlainRecord* user : users_[number]) {
      for (const std::string& keyword : keywords_of(*user)) {
        if (keyword == "REPRESENTATION_ITEM" || keyword == "GEOMETRIC_REPRESENTATION_ITEM") {
          continue;
        }
        for (const char* word : NAMING) {
          if (has_word(keyword, word)) say(number, "is what " + user->number + " means");
        }
      }
    }
  }

  /// What is gone, and was used by nothing that is left.
  void check_gone() {
    for (const auto& [number, record] : old_) {
      if (new_.contains(number) || targets_.contains(number)) continue;
      if (bears_identity(*record)) say(number, "bears identity, and is gone");
    }
  }

  const PlainFile& before_;
  std::map<std::string, const PlainRecord*> old_;
  std::map<std::string, const PlainRecord*> new_;
  std::map<std::string, std::set<const PlainRecord*>> users_;
  Numbers targets_;
  std::vector<std::pair<std::string, std::string>> open_;  // of them, not compared yet
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> faults_of_shrunk(const PlainFile& before, const PlainFile& after) {
  return Check(before, after).faults();
}

}  // namespace Kessel::test
