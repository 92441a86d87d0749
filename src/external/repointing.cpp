#include "external/repointing.h"

#include <system_error>

#include "encoding/utf8_path.h"
#include "external/resource.h"
#include "external/targets.h"

namespace Kessel {

namespace fs = std::filesystem;

namespace {

/// Whether it is seen from nowhere: "/a", "\\host\a", "C:\a", "http://a".
bool is_absolute_name(std::string_view text) {
  if (text.starts_with('/') || text.starts_with('\\')) return true;
  const auto is_letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  const bool has_drive = text.size() > 1 && is_letter(text[0]) && text[1] == ':';
  return has_drive || text.find("://") != std::string_view::npos;
}

}  // namespace

std::string repointed(std::string_view text, const fs::path& from, const fs::path& to,
                      bool is_uri) {
  if (from == to || is_absolute_name(text)) return std::string(text);
  // Steps up come to the folder that is there, whatever links are in the rest.
  fs::path base = from;
  while ((text == ".." || text.starts_with("../")) && base.has_relative_path()) {
    base = base.parent_path();
    text.remove_prefix(text.size() > 2 ? 3 : 2);
  }
  const fs::path way = base.lexically_relative(to);
  std::string path = way == "." ? std::string() : utf8_of_path(way.generic_string());
  if (is_uri) path = encoded_uri(path);
  if (!path.empty() && !text.empty()) path += '/';
  path += text;
  return path.empty() ? "." : path;
}

bool leads_to(const FileName& name, const fs::path& folder, const fs::path& target) {
  const fs::path path = folder / path_of_utf8(name.name);
  if (path.lexically_normal() == target.lexically_normal()) return true;
  std::error_code ignored;  // What cannot be compared is not the same.
  return fs::equivalent(path, target, ignored);
}

std::vector<TextEdit> repoint(const std::vector<ExternalReference>& references,
                              const fs::path& from, const fs::path& to) {
  std::vector<TextEdit> edits;
  if (from == to) return edits;
  for (const ExternalReference& reference : references) {
    const Target target = find_target(from, reference);
    for (const FileName& name : reference.names) {
      if (!leads_to(name, from, target.path)) continue;
      std::string text = repointed(name.text, from, to, reference.is_to_anchor());
      if (text == name.text) continue;
      edits.push_back({name.record, name.keyword, name.parameter, std::move(text)});
    }
  }
  return edits;
}

}  // namespace Kessel
