#include "exchange/legal_files.h"

#include <cstddef>
#include <random>
#include <set>
#include <string_view>

namespace Kessel::test {

namespace {

/// Part of a string literal, and what it says.
struct Piece {
  std::string_view text;
  std::string_view value;
};

constexpr Piece PIECES[] = {
    {"a", "a"},
    {"bolt; M3", "bolt; M3"},
    {" ", " "},
    {"''", "'"},
    {"\\\\", "\\"},
    {"\\S\\'", "\u00A7"},
    {"\\S\\\\", "\u00DC"},
    {"\\S\\d", "\u00E4"},
    {"\\S\\;", "\u00BB"},
    {"\\S\\ ", "\u00A0"},
    {"\\PE\\\\S\\P\\PA\\", "\u0430"},
    {"\\PG\\\\S\\a\\PA\\", "\u03B1"},
    {"\\X\\E9", "\u00E9"},
    {"\\X\\27", "'"},
    {"\\X2\\652F67B6\\X0\\", "\u652F\u67B6"},
    {"\\X2\\0027\\X0\\", "'"},
    {"\\X4\\0001F600\\X0\\", "\U0001F600"},
    {"\u00FC", "\u00FC"},
    {"\u652F", "\u652F"},
    {"\U0001F600", "\U0001F600"},
    {"#5", "#5"},
    {"/*", "/*"},
    {"*/", "*/"},
    {"(", "("},
    {")", ")"},
    {",", ","},
    {"=", "="},
    {",$,*", ",$,*"},
    {"ENDSEC;", "ENDSEC;"},
    {"DATA;\n#7=A();", "DATA;#7=A();"},
    {"<", "<"},
    {">", ">"},
    {"\"", "\""},
    {"\n", ""},
    {"\r\n", ""},
    {"\\N\\", ""},
    {"\\F\\", ""},
    {"N", "N"},
    {"S", "S"},
};

constexpr std::string_view BLANKS[] = {
    " ",     "\n",    "\r\n",          "\t",           "  \n ",        "\f",
    "\\N\\", "\\F\\", "/* comment */", "/* it's */",   "/*#5=A(;*/",   "/* ENDSEC; */",
    "/**/",  "/***/", "/*/ */",        "/* \\S\\' */", "/* < > \" */", "/*\u00FC\n\n*/",
};

constexpr std::string_view KEYWORDS[] = {
    "A",
    "PRODUCT",
    "SHAPE_REPRESENTATION",
    "B_SPLINE_CURVE_WITH_KNOTS",
    "X3D_ITEM",
    "_A1",
    "!USER",
    "!A_1",
    "DATA",
    "ENDSEC",
    "PRESENTATION_LAYER_ASSIGNMENT",
};

constexpr std::string_view RESOURCES[] = {
    "<a>",       "<http://example.org/part.stp#12>", "<file:/a;b?c='d'&e=(f,g)/*h*/>", "<#it's;>",
    "<urn:x=1>",
};

class Generator {
 public:
  explicit Generator(std::uint32_t seed) : random_(seed) {}

  LegalFile generate() {
    choose_numbers();
    if (one_in(8)) file_.text = "\xEF\xBB\xBF";
    blankness_ = one_in(3) ? 2 : one_in(2) ? 12 : 1000;
    file_.text += one_in(2) ? "ISO-10303-21;" : "\n/* first */ ISO-10303-21 ;";
    header();
    if (one_in(3)) anchors();
    if (one_in(3)) references();
    for (unsigned sections = below(4); sections > 0; --sections) data();
    word("END-ISO-10303-21");
    blanks();
    return std::move(file_);
  }

 private:
  unsigned below(std::size_t n) { return static_cast<unsigned>(random_() % n); }
  bool one_in(unsigned n) { return below(n) == 0; }
  template <class T, std::size_t n>
  const T& any(const T (&table)[n]) {
    return table[below(n)];
  }

  void choose_numbers() {
    const std::uint64_t bases[] = {0, 0, 90, 1'999'999'990, 4'294'967'290, ~std::uint64_t{0} - 99};
    const std::uint64_t base = any(bases);
    const unsigned steps[] = {1, 1, 2, 3};
    const unsigned step = any(steps);
    for (unsigned i = 1; i < 32; ++i) numbers_.push_back(std::to_string(base + i * step));
    for (std::size_t i = numbers_.size(); i > 1; --i) {
      if (one_in(2)) std::swap(numbers_[i - 1], numbers_[below(i)]);
    }
  }

  void blanks() {
    while (one_in(blankness_)) file_.text += any(BLANKS);
  }

  /// A word of the file's frame, with its ";".
  void word(std::string_view text) {
    blanks();
    file_.text += text;
    if (one_in(4)) blanks();
    file_.text += ';';
  }

  void token(std::string_view text) {
    blanks();
    file_.text += text;
    statement_.tokens.emplace_back(text);
  }

  void begin(std::string section) {
    statement_ = {};
    statement_.section = std::move(section);
  }
  void end() {
    blanks();
    file_.text += ';';
    file_.statements.push_back(statement_);
  }

  void header() {
    word("HEADER");
    for (const std::string_view keyword : {"FILE_DESCRIPTION", "FILE_NAME", "FILE_SCHEMA"}) {
      begin("HEADER");
      record(keyword);
      end();
    }
    while (one_in(3)) {
      begin("HEADER");
      record(any(KEYWORDS) == "ENDSEC" ? "SECTION_LANGUAGE" : "!MINE");
      end();
    }
    word("ENDSEC");
  }

  void anchors() {
    word("ANCHOR");
    while (!one_in(4)) {
      begin("ANCHOR");
      token(any(RESOURCES));
      token("=");
      anchor_item();
      while (one_in(4)) {
        token("{");
        token(one_in(2) ? "tag" : "TAG1");
        token(":");
        anchor_item();
        token("}");
      }
      end();
    }
    word("ENDSEC");
  }

  void anchor_item() {
    if (one_in(3)) {
      token(any(RESOURCES));
    } else if (one_in(4)) {
      token("(");
      for (unsigned items = below(3), i = 0; i < items; ++i) {
        if (i > 0) token(",");
        anchor_item();
      }
      token(")");
    } else {
      atom();
    }
  }

  void references() {
    word("REFERENCE");
    while (!one_in(4) && used_ < numbers_.size()) {
      begin("REFERENCE");
      if (one_in(3)) {
        token("@12");
      } else {
        name(numbers_[used_++]);
      }
      token("=");
      token(any(RESOURCES));
      end();
    }
    word("ENDSEC");
  }

  void data() {
    blanks();
    file_.text += "DATA";
    if (one_in(2)) {
      blanks();
      file_.text += one_in(2) ? "('a;b',('SCHEMA'))" : "( 'x' , ( 'SCHEMA' ) )";
    }
    blanks();
    file_.text += ';';
    for (unsigned records = below(10); records > 0 && used_ < numbers_.size(); --records) {
      begin("DATA");
      name(numbers_[used_]);
      token("=");
      statement_.number = numbers_[used_++];
      statement_.tokens.clear();
      statement_.names.clear();
      if (one_in(4)) {
        token("(");
        do record(any(KEYWORDS));
        while (!one_in(3));
        token(")");
      } else {
        record(any(KEYWORDS));
      }
      end();
    }
    word("ENDSEC");
  }

  void record(std::string_view keyword) {
    token(keyword);
    token("(");
    for (unsigned parameters = below(6), i = 0; i < parameters; ++i) {
      if (i > 0) token(",");
      parameter(0);
    }
    token(")");
  }

  void parameter(int depth) {
    const unsigned choice = below(depth < 4 ? 8 : 6);
    if (choice == 0) {
      token("*");
    } else if (choice == 6) {
      token("(");
      for (unsigned items = below(4), i = 0; i < items; ++i) {
        if (i > 0) token(",");
        parameter(depth + 1);
      }
      token(")");
    } else if (choice == 7) {
      token(any(KEYWORDS));
      token("(");
      parameter(depth + 1);
      token(")");
    } else {
      atom();
    }
  }

  void atom() {
    constexpr std::string_view OTHERS[] = {
        "$",   "0",         "-12",   "+3",       "007", "1.",    "-1.5E+10", "0.E0",  "1.E-5",
        ".T.", ".UNSET_1.", "\"0\"", "\"1F3A\"", "@12", "#PI_2", "@E",       "+0.25",
    };
    switch (below(3)) {
      case 0:
        return string();
      case 1:
        return name(numbers_[below(numbers_.size())]);
      default:
        return token(any(OTHERS));
    }
  }

  void name(const std::string& number) {
    statement_.names.push_back(number);
    token("#" + std::string(one_in(5) ? 1 + below(4) : 0, '0') + number);
  }

  void string() {
    std::string literal = "'";
    std::string value;
    while (!one_in(4)) {
      const Piece& piece = any(PIECES);
      literal += piece.text;
      value += piece.value;
    }
    statement_.strings.push_back(value);
    token(literal + "'");
  }

  std::mt19937 random_;
  unsigned blankness_ = 1000;
  std::vector<std::string> numbers_;
  std::size_t used_ = 0;
  LegalStatement statement_;
  LegalFile file_;
};

}  // namespace

LegalFile legal_file(std::uint32_t seed) {
  return Generator(seed).generate();
}

}  // namespace Kessel::test
