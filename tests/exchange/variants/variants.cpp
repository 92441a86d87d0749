#include "exchange/variants/variants.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <random>

#include "exchange/variants/form.h"

namespace Kessel::test {

namespace {

// Seeded, so that every run has the same files.
void shuffle(std::vector<WrittenRecord>& records) {
  std::mt19937 random(7);
  for (std::size_t i = records.size(); i > 1; --i) {
    std::swap(records[i - 1], records[random() % i]);
  }
}

/// A permutation of 0 to count - 1.
std::uint64_t permuted(std::uint64_t place, std::uint64_t count) {
  std::uint64_t factor = 7919;  // a prime
  while (std::gcd(factor, count) != 1) factor += 2;
  return place * factor % count;
}

constexpr std::uint64_t TWO_TO_31 = 0x8000'0000;
constexpr char RECORD_IN_COMMENT[] = "/* #5=PRODUCT('x','y',$,(#6)); */\n";
constexpr char ANCHORS[] = "ANCHOR;\n<a;b>=#1;\n<it's>=(#2,'x;'){tag:<http://y/*z#1>};\nENDSEC;\n";
constexpr char REFERENCES[] =
    "REFERENCE;\n#18446744073709551000=<http://a/b;c='d'/*e#f>;\n@7=<g>;\nENDSEC;\n";

const std::vector<Variant> VARIANTS = {
    {"plain"},

    // What names may hold.
    {"semicolon in a name", "bolt; M3", "bolt; M3"},
    {"end of the section in a name", "ENDSEC;", "ENDSEC;"},
    {"begin of the data in a name", "DATA; ", "DATA; "},
    {"end of the file in a name", "END-ISO-10303-21;", "END-ISO-10303-21;"},
    {"record in a name", "#7=PRODUCT(1);", "#7=PRODUCT(1);"},
    {"reference in a name", " #5", " #5"},
    {"opening parenthesis in a name", "(", "("},
    {"closing parenthesis in a name", ")", ")"},
    {"doubled apostrophes in a name", "it''s ''here''", "it's 'here'"},
    {"begin of a comment in a name", "/*", "/*"},
    {"end of a comment in a name", "*/", "*/"},
    {"equal sign in a name", "a=b", "a=b"},
    {"signs of parameters in a name", ",$,*", ",$,*"},
    {"quotation marks in a name", "2\"", "2\""},
    {"resource in a name", "<a;b>", "<a;b>"},
    {"two-byte characters in a name", "\\X2\\652F67B6\\X0\\", "\u652F\u67B6"},
    {"four-byte characters in a name", "\\X4\\0001F600\\X0\\", "\U0001F600"},
    {"one-byte character in a name", "\\X\\E9", "\u00E9"},
    {"shifted character in a name", "\\S\\d", "\u00E4"},
    {"shifted apostrophe in a name", "\\S\\'", "\u00A7"},
    {"shifted apostrophe and another in a name", "\\S\\''' 5", "\u00A7' 5"},
    {"shifted semicolon in a name", "\\S\\;", "\u00BB"},
    {"shifted apostrophe behind another directive in a name", "\\X2\\00E4\\X0\\\\S\\'",
     "\u00E4\u00A7"},
    {"other alphabet in a name", "\\PE\\\\S\\P", "\u0430"},
    {"backslash in a name", "C:\\\\dir\\\\", "C:\\dir\\"},
    {"UTF-8 in a name", "\u652F\u67B6 \u00E9", "\u652F\u67B6 \u00E9"},
    {"print control in a name", "a\\N\\b\\F\\", "ab"},
    {"line break in a name", "a\nb", "ab"},

    // Comments.
    {"comments between records", "", "", [](Form& f) { f.before_record = "/* comment */\n"; }},
    {"comments with a semicolon", "", "", [](Form& f) { f.before_record = "/* ; */"; }},
    {"comments with an apostrophe", "", "", [](Form& f) { f.before_record = "/* it's */ "; }},
    {"comments with a record", "", "", [](Form& f) { f.before_record = RECORD_IN_COMMENT; }},
    {"comments with the end of the section", "", "",
     [](Form& f) { f.behind_record = "\n/* ENDSEC; */\n"; }},
    {"comments behind records on their line", "", "",
     [](Form& f) { f.behind_record = " /* #5=A(; */\n"; }},
    {"comments with a reference in records", "", "", [](Form& f) { f.inside_record = "/* #5 */"; }},
    {"comments with an apostrophe in records", "", "",
     [](Form& f) { f.inside_record = "/* it's */"; }},
    {"comments with a semicolon in records", "", "",
     [](Form& f) { f.inside_record = "/* ; ENDSEC; */"; }},
    {"comments with parentheses in records", "", "",
     [](Form& f) { f.inside_record = "/* )(( */"; }},
    {"comments between all tokens", "", "", [](Form& f) { f.between_tokens = "/* ,#1; */"; }},
    {"comments of stars between all tokens", "", "",
     [](Form& f) { f.between_tokens = "/***//**//*/*/"; }},
    {"comment in front of the file", "", "", [](Form& f) { f.in_front = "/* DATA; #1=A(); */\n"; }},
    {"comment between header and data", "", "",
     [](Form& f) { f.behind_header = "\n/* DATA; it's #1=A(); */\n"; }},
    {"comment behind the end", "", "", [](Form& f) { f.end += "/* that's it; */\n"; }},

    // Blanks and lines.
    {"everything on one line", "", "", [](Form& f) { f.line_end = ""; }},
    {"data behind the header on its line", "", "", [](Form& f) { f.behind_header = ""; }},
    {"carriage returns and line feeds", "", "", [](Form& f) { f.line_end = "\r\n"; }},
    {"carriage returns alone", "", "", [](Form& f) { f.line_end = "\r"; }},
    {"blanks between all tokens", "", "", [](Form& f) { f.between_tokens = "  "; }},
    {"tabs between all tokens", "", "", [](Form& f) { f.between_tokens = "\t"; }},
    {"line breaks between all tokens", "", "", [](Form& f) { f.between_tokens = "\n"; }},
    {"form feeds between all tokens", "", "", [](Form& f) { f.between_tokens = "\f\v"; }},
    {"print control between all tokens", "", "", [](Form& f) { f.between_tokens = "\\N\\\\F\\"; }},
    {"print control between records", "", "", [](Form& f) { f.before_record = "\\F\\\n"; }},
    {"strings broken over lines", "", "", [](Form& f) { f.breaks_strings = true; }},
    {"empty lines", "", "", [](Form& f) { f.behind_record = "\n\n \n"; }},
    {"empty statements", "", "", [](Form& f) { f.behind_record = ";;\n"; }},
    {"byte order mark", "", "", [](Form& f) { f.in_front = "\xEF\xBB\xBF"; }},
    {"no line break at the end", "", "", [](Form& f) { f.end.pop_back(); }},

    // Numbers and order.
    {"leading zeros", "", "", [](Form& f) { f.zeros = "000"; }},
    {"more leading zeros than digits", "", "",
     [](Form& f) { f.zeros = "000000000000000000000000"; }},
    {"numbers around 2,000,000,000", "", "",
     [](Form& f) { f.number = [](auto i, auto n) { return 2'000'000'000 - n / 2 + i; }; }},
    {"numbers around 2^31", "", "",
     [](Form& f) { f.number = [](auto i, auto n) { return TWO_TO_31 - n / 2 + i; }; }},
    {"numbers around 2^32", "", "",
     [](Form& f) { f.number = [](auto i, auto n) { return 2 * TWO_TO_31 - n / 2 + i; }; }},
    {"numbers up to 2^64-1", "", "",
     [](Form& f) { f.number = [](auto i, auto n) { return 0 - n + i; }; }},
    {"sparse numbers", "", "",
     [](Form& f) { f.number = [](auto i, auto) { return 17 + i * 1'000'003; }; }},
    {"numbers far apart", "", "",
     [](Form& f) { f.number = [](auto i, auto) { return 1 + i * 0x9E37'79B9'7F4A'7C15; }; }},
    {"descending numbers", "", "",
     [](Form& f) { f.number = [](auto i, auto n) { return n - i; }; }},
    {"shuffled numbers", "", "",
     [](Form& f) { f.number = [](auto i, auto n) { return 1 + permuted(i, n); }; }},
    {"shuffled records", "", "", [](Form& f) { shuffle(f.records); }},
    {"records in reverse", "", "",
     [](Form& f) { std::reverse(f.records.begin(), f.records.end()); }},
    {"shuffled records and numbers", "", "",
     [](Form& f) {
       shuffle(f.records);
       f.number = [](auto i, auto n) { return 10 + 10 * permuted(i, n); };
     }},

    // Sections.
    {"two data sections", "", "", [](Form& f) { f.middle = "ENDSEC;\nDATA;\n"; }},
    {"two data sections with parameters", "", "",
     [](Form& f) {
       f.data = "DATA('a;#1=A();',('S'));";
       f.middle = "ENDSEC;\nDATA ( 'b' , ('S') ) ;\n";
     }},
    {"empty data sections", "", "",
     [](Form& f) { f.middle = "ENDSEC;DATA;ENDSEC;\n/*DATA;*/DATA;"; }},
    {"anchor section", "", "", [](Form& f) { f.sections = ANCHORS; }},
    {"reference section", "", "", [](Form& f) { f.sections = REFERENCES; }},
    {"anchor and reference section", "", "",
     [](Form& f) { f.sections = std::string(ANCHORS) + REFERENCES; }},
    {"signature", "", "", [](Form& f) { f.end += "SIGNATURE\nQUJD;REVG'==\nENDSEC;\n"; }},

    // What every reader forgives.
    {"text behind the end", "", "", [](Form& f) { f.end += "#1=A('\n"; }},
    {"no end", "", "", [](Form& f) { f.end = "ENDSEC;\n"; }},
    {"end cut off", "", "", [](Form& f) { f.end = "ENDSEC;\nEND-ISO"; }},
    {"a record twice", "", "",
     [](Form& f) { f.records.insert(f.records.begin() + 2, f.records[0]); }},
    {"shifted apostrophe doubled in a name", "\\S\\'' 5", "\u00A7 5"},
    {"lone backslash in a name", "C:\\dir\\", "C:\\dir\\"},
    {"surrogates in a name", "\\X2\\D83DDE00\\X0\\", "\U0001F600"},
    {"Latin-1 in a name", "\xE4", "\u00E4"},
};

/// Puts `suffix` behind the strings of all PRODUCT records.
void lengthen_names(Form& form, const std::string& suffix) {
  for (WrittenRecord& record : form.records) {
    if (record.tokens.at(0).text != "PRODUCT") continue;
    for (plain::Token& token : record.tokens) {
      if (token.kind != 'S') continue;
      token.text.pop_back();
      token.text += suffix + "'";
    }
  }
}

/// UTF-8 as the body of a string, each character beyond ASCII in a directive of its own.
std::string in_ascii(const std::string& text) {
  std::string body;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80) {
      body += static_cast<char>(lead);
      if (lead == '\'' || lead == '\\') body += static_cast<char>(lead);
      continue;
    }
    std::uint32_t character = lead & (lead < 0xE0 ? 0x1Fu : lead < 0xF0 ? 0x0Fu : 0x07u);
    for (; i < text.size() && (text[i] & 0xC0) == 0x80; ++i) {
      character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08X", character);
    body += "\\X4\\" + std::string(digits.data()) + "\\X0\\";
  }
  return body;
}

}  // namespace

const std::vector<Variant>& variants() {
  return VARIANTS;
}

Rewritten rewritten(const Variant& variant, std::string_view file) {
  return rewritten(variant, form_of(file));
}

Rewritten rewritten(const Variant& variant, Form form) {
  lengthen_names(form, variant.suffix);
  if (variant.change != nullptr) variant.change(form);
  Rewritten rewritten{text_of(form), {}};
  for (const auto& [plain, number] : numbers_of(form)) rewritten.plain_numbers[number] = plain;
  return rewritten;
}

std::string plain_form(const Variant& variant, Form form) {
  lengthen_names(form, in_ascii(variant.suffix_value));
  return text_of(form);
}

std::string plain_form(std::string_view file) {
  return text_of(form_of(file));
}

}  // namespace Kessel::test
