#include "picture/svg.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

namespace Kessel {

namespace {

// How many steps there are between near and far, and how faint the farthest is.
constexpr int STEPS = 8;
constexpr int FAINTEST_PERCENT = 30;
constexpr int STROKE_WIDTH = 12;
constexpr std::int32_t DEFAULT_COLOUR = 0x303030;

/// Text for a document, in which some characters mean something and others must not be.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
  }
  for (const char* none : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {  // U+FFFE and U+FFFF
    for (std::size_t at; (at = result.find(none)) != std::string::npos;) result.replace(at, 3, "?");
  }
  return result;
}

/// A colour that is seen on white: what is too light becomes darker, its hue stays.
std::string visible_colour(std::int32_t rgb) {
  constexpr int LIGHTEST = 140;
  const std::int32_t colour = rgb == NO_COLOUR ? DEFAULT_COLOUR : rgb;
  std::array<int, 3> parts{colour >> 16 & 0xFF, colour >> 8 & 0xFF, colour & 0xFF};
  const int lightness = (299 * parts[0] + 587 * parts[1] + 114 * parts[2]) / 1000;
  if (lightness > LIGHTEST) {
    for (int& part : parts) part = part * LIGHTEST / lightness;
  }
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(parts[0]),
                static_cast<unsigned>(parts[1]), static_cast<unsigned>(parts[2]));
  return text;
}

/// Pixels with one decimal.
std::string pixels(std::int32_t tenths) {
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

void append_number(std::int32_t number, std::string& text) {
  if (number >= 0 && !text.empty() && text.back() >= '0' && text.back() <= '9') text += ' ';
  text += std::to_string(number);
}

/// Appends a line with steps from point to point, which are shorter than places.
void append_line(const Sketch& sketch, const SketchedLine& line, std::string& path) {
  const SketchedPoint* before = &sketch.points[line.first];
  path += 'M';
  append_number(before->right, path);
  append_number(before->down, path);
  path += 'l';
  for (std::size_t i = 1; i < line.count; ++i) {
    const SketchedPoint* here = before + 1;
    append_number(here->right - before->right, path);
    append_number(here->down - before->down, path);
    before = here;
  }
}

int step_of(const Sketch& sketch, double near) {
  const double depth = sketch.nearest - sketch.farthest;
  if (!(depth > 0)) return STEPS - 1;
  return std::clamp(static_cast<int>(STEPS * (near - sketch.farthest) / depth), 0, STEPS - 1);
}

}  // namespace

void write_svg(const Sketch& sketch, const std::string& title, std::ostream& out) {
  // The farthest first, so that what is near is drawn over it.
  std::map<std::pair<int, std::string>, std::string> paths;
  for (auto line = sketch.lines.rbegin(); line != sketch.lines.rend(); ++line) {
    append_line(sketch, *line, paths[{step_of(sketch, line->near), visible_colour(line->colour)}]);
  }
  const std::string name = escaped(title);
  out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << pixels(sketch.width)
      << "\" height=\"" << pixels(sketch.height) << "\" viewBox=\"0 0 " << sketch.width << ' '
      << sketch.height << "\" role=\"img\" aria-label=\"" << name << "\">\n<title>" << name
      << "</title>\n<g fill=\"none\" stroke-width=\"" << STROKE_WIDTH
      << "\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
  for (const auto& [look, path] : paths) {
    const auto& [step, colour] = look;
    const int percent = FAINTEST_PERCENT + (100 - FAINTEST_PERCENT) * step / (STEPS - 1);
    out << "<path stroke=\"" << colour << "\" stroke-opacity=\"" << percent / 100 << '.'
        << (percent % 100 < 10 ? "0" : "") << percent % 100 << "\" d=\"" << path << "\"/>\n";
  }
  out << "</g>\n</svg>\n";
}

}  // namespace Kessel
