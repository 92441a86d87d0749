#include "sameness/rewriting.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <map>
#include <vector>

namespace Kessel::test {

namespace {

std::size_t below(std::size_t end, Random& random) {
  return static_cast<std::size_t>(random() % end);
}

std::string blanks(Random& random) {
  static const std::vector<std::string> BLANKS{
      "", "", "", " ", "\n", "\t", " /* a; #1 'b */ ", "\r\n", "/**/"};
  return BLANKS[below(BLANKS.size(), random)];
}

/// "1.5" as "1.50", "15.E-1" and the like.
std::string respelled_real(const std::string& text, Random& random) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return text;
  const std::size_t e = text.find_first_of("Ee");
  const std::string mantissa = text.substr(0, e);
  const int exponent = e == std::string::npos ? 0 : std::stoi(text.substr(e + 1));
  const std::string fraction = mantissa.substr(point + 1);
  switch (below(4, random)) {
    case 0:
      return mantissa + "00E" + std::to_string(exponent);
    case 1:  // The point behind all digits.
      return mantissa.substr(0, point) + fraction + ".E" +
             std::to_string(exponent - static_cast<int>(fraction.size()));
    case 2: {
      const std::size_t sign = mantissa[0] == '-' || mantissa[0] == '+' ? 1 : 0;
      return mantissa.substr(0, sign) + "0" + mantissa.substr(sign) +
             (exponent < 0 ? "e-0" : "e+0") + std::to_string(std::abs(exponent));
    }
    default:
      return text;
  }
}

std::string hexadecimal(unsigned char byte, const char* digits) {
  return {digits[byte >> 4], digits[byte & 15]};
}

/// Some characters by their codes.
std::string respelled_string(const std::string& text, Random& random) {
  if (text.find('\\') != std::string::npos) return text;
  std::string out = "'";
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool is_letter = byte < 128 && std::isalnum(byte) != 0;
    const char* const DIGITS = "0123456789ABCDEF";
    switch (is_letter ? below(8, random) : 7) {
      case 0:
        out += "\\X\\" + hexadecimal(byte, DIGITS);
        break;
      case 1:
        out += "\\X2\\00" + hexadecimal(byte, DIGITS) + "\\X0\\";
        break;
      case 2:
        out += "\\X4\\000000" + hexadecimal(byte, DIGITS) + "\\X0\\";
        break;
      default:
        out += text[i];
    }
  }
  return out + "'";
}

std::string respelled(const Piece& piece, Random& random) {
  switch (piece.kind) {
    case Piece::Kind::instance:
      return below(8, random) == 0 ? "#00" + piece.text.substr(1) : piece.text;
    case Piece::Kind::number:
      return respelled_real(piece.text, random);
    case Piece::Kind::string:
      return respelled_string(piece.text, random);
    default:
      return piece.text;
  }
}

/// Something that is not what `literal` says.
std::string another(const Piece& literal, Random& random) {
  if (literal.kind == Piece::Kind::string) {
    return literal.text.substr(0, literal.text.size() - 1) + "x'";
  }
  if (literal.kind == Piece::Kind::number) {
    // A digit more in front changes the value, whatever the rest is.
    const std::size_t sign = literal.text[0] == '-' || literal.text[0] == '+' ? 1 : 0;
    return literal.text.substr(0, sign) + "7" + literal.text.substr(sign);
  }
  static const std::vector<std::string> WORDS{".T.", ".F.", ".UNSPECIFIED."};
  for (;;) {
    const std::string& word = WORDS[below(WORDS.size(), random)];
    if (word != literal.text) return word;
  }
}

bool is_literal(const Piece& piece) {
  return piece.kind == Piece::Kind::string || piece.kind == Piece::Kind::number ||
         (piece.kind == Piece::Kind::word && piece.text[0] == '.');
}

bool is_keyword(const Piece& piece) {
  return piece.kind == Piece::Kind::word && piece.text[0] != '.';
}

/// A reference that stands behind or in front of another in a list: the place of the "," between.
bool is_between_items(const std::vector<Piece>& pieces, std::size_t i) {
  return i > 0 && i + 1 < pieces.size() && pieces[i].text == "," &&
         pieces[i - 1].kind == Piece::Kind::instance && pieces[i + 1].kind == Piece::Kind::instance;
}

/// Leaves out an item of a list, doubles it or swaps it with the next.
std::string change_list(std::vector<Piece>& pieces, std::size_t comma, Random& random) {
  const auto at = pieces.begin() + static_cast<std::ptrdiff_t>(comma);
  switch (below(3, random)) {
    case 0:
      pieces.erase(at, at + 2);
      return "item left out";
    case 1: {
      const std::vector<Piece> item(at, at + 2);
      pieces.insert(at, item.begin(), item.end());
      return "item doubled";
    }
    default:
      std::swap(pieces[comma - 1], pieces[comma + 1]);
      return "items swapped";
  }
}

}  // namespace

PlainFile shuffled(PlainFile file, Random& random) {
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < file.records.size(); ++i) numbers.push_back(3 * i + 1);
  std::shuffle(numbers.begin(), numbers.end(), random);
  std::map<std::string, std::string> renamed;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    renamed[file.records[i].number] = "#" + std::to_string(numbers[i]);
  }
  for (PlainRecord& record : file.records) {
    record.number = renamed[record.number];
    for (Piece& piece : record.pieces) {
      if (piece.kind != Piece::Kind::instance) continue;
      const auto found = renamed.find(piece.text);
      piece.text = found == renamed.end() ? "#99999999" : found->second;
    }
  }
  std::shuffle(file.records.begin(), file.records.end(), random);
  return file;
}

std::string respelled(const PlainFile& file, Random& random) {
  std::string text = file.head;
  for (const PlainRecord& record : file.records) {
    text += blanks(random) + record.number + blanks(random) + "=";
    for (const Piece& piece : record.pieces) text += blanks(random) + respelled(piece, random);
    text += blanks(random) + ";";
  }
  return text + file.tail;
}

std::string mutate(PlainFile& file, Random& random) {
  for (;;) {
    PlainRecord& record = file.records[below(file.records.size(), random)];
    const std::size_t i = below(record.pieces.size(), random);
    Piece& piece = record.pieces[i];
    const std::string before = record.number + "=" + record.pieces[0].text + " " + piece.text;
    if (is_literal(piece)) {
      piece.text = another(piece, random);
    } else if (is_keyword(piece)) {
      piece.text += "_ELSE";
    } else if (piece.kind == Piece::Kind::instance) {
      const std::string other = file.records[below(file.records.size(), random)].number;
      if (other == piece.text) continue;
      piece.text = other;
    } else if (is_between_items(record.pieces, i)) {
      return before + ": " + change_list(record.pieces, i, random);
    } else {
      continue;
    }
    return before + ": now " + piece.text;
  }
}

}  // namespace Kessel::test
