#include "external/resource.h"

#include <cstddef>

#include "exchange/lexer.h"

namespace Kessel {

namespace {

/// What of a URI is a file's path.
std::string_view path_of_uri(std::string_view uri) {
  constexpr std::string_view FILE_SCHEME = "file://";
  if (uri.starts_with(FILE_SCHEME)) {
    uri.remove_prefix(FILE_SCHEME.size());
    constexpr std::string_view HOST = "localhost";
    if (uri.starts_with(HOST)) uri.remove_prefix(HOST.size());
    return uri.starts_with('/') ? uri : std::string_view();
  }
  // A scheme ends with the first ":", in front of any "/".
  const std::size_t colon = uri.find(':');
  const bool has_scheme = colon != std::string_view::npos && uri.find('/') > colon;
  const bool has_host = uri.starts_with("//");
  return has_scheme || has_host ? std::string_view() : uri;
}

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// RFC 3986, 2.3, and what a path may hold besides.
bool stands_for_itself(char c) {
  constexpr std::string_view OTHERS = "-._~/!$&'()*+,;=@";
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
         OTHERS.find(c) != std::string_view::npos;
}

}  // namespace

Resource resource_in(std::string_view entry) {
  Resource resource;
  Exchange::Lexer lexer(entry);
  for (auto word = lexer.next(); word.kind != Exchange::WordKind::end; word = lexer.next()) {
    if (word.kind != Exchange::WordKind::resource) continue;
    resource.whole = word.text.substr(1);
    if (resource.whole.ends_with('>')) resource.whole.remove_suffix(1);
    const std::size_t mark = resource.whole.find('#');
    if (mark != std::string_view::npos) resource.anchor = resource.whole.substr(mark + 1);
    resource.file = resource.whole.substr(0, mark);
    resource.path = path_of_uri(resource.file);
    break;
  }
  return resource;
}

std::string file_of_uri(std::string_view uri) {
  return decoded_uri(path_of_uri(uri));
}

std::string decoded_uri(std::string_view part) {
  std::string text;
  for (std::size_t i = 0; i < part.size(); ++i) {
    const int high = part[i] == '%' && i + 2 < part.size() ? hex_value(part[i + 1]) : -1;
    const int low = high >= 0 ? hex_value(part[i + 2]) : -1;
    if (low < 0) {
      text += part[i];
      continue;
    }
    text += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return text;
}

std::string encoded_uri(std::string_view path) {
  constexpr char DIGITS[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : path) {
    if (stands_for_itself(c)) {
      text += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    text.append(1, '%').append(1, DIGITS[byte >> 4]).append(1, DIGITS[byte & 15]);
  }
  return text;
}

}  // namespace Kessel
