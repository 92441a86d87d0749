#include "verify/kept_references.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

#include "encoding/utf8_path.h"
#include "external/resource.h"
#include "external/targets.h"
#include "instances/loader.h"
#include "kessel/errors.h"
#include "sameness/text_hash.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// Whether it means the same in every folder, though it does not begin with "/": it has a drive, a
/// host or a scheme.
bool is_seen_from_nowhere(const std::string& text) {
  return text.starts_with('\\') || text.find(':') == 1 || text.find("://") != std::string::npos;
}

/// Nothing is known here of how a split finds new texts: one that leads elsewhere has to be
/// noticed.
bool leads(const FileName& name, const fs::path& folder, const Target& target) {
  if (!target.is_there && is_seen_from_nowhere(name.text)) return false;
  const fs::path path = folder / path_of_utf8(name.name);
  if (without_links(path) == without_links(target.path)) return true;
  std::error_code ignored;  // What cannot be compared is not the same.
  return fs::equivalent(path, target.path, ignored);
}

/// Whether the text is no more than the folder of a name that stands elsewhere.
bool is_folder(const ExternalReference& reference, const FileName& name) {
  return !reference.is_to_anchor() && name.text != name.name;
}

/// Whether a text may be no more than a file's name, whose folder stands elsewhere.
bool has_folder_apart(const ExternalReference& reference) {
  return std::any_of(reference.names.begin(), reference.names.end(),
                     [&](const FileName& name) { return is_folder(reference, name); });
}

}  // namespace

KeptReferences::KeptReferences(const Sameness::ComparedFile& input, const fs::path& folder,
                               const fs::path& outdir, const Joining& joining,
                               const Options& options)
    : of_input_(find_external_references(input.instances, input.products)),
      folder_(folder),
      outdir_(without_links(outdir)),
      said_(options.readable) {
  for (const ExternalReference& reference : of_input_) {
    originals_.push_back(without_links(find_target(folder_, reference).path));
  }
  const std::set<fs::path> known(originals_.begin(), originals_.end());
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    for (const ExternalReference& reference : joining.files()[i].kept) {
      const Target target = find_target(outdir_, reference);
      const fs::path file = without_links(target.path);
      if (target.is_there && file.parent_path() == outdir_ && !known.contains(file)) {
        has_copies_ = true;
      }
    }
  }
}

/// The first of what the input refers to that says what `file` says; itself where none does.
const fs::path& KeptReferences::original_of(const fs::path& file) {
  const auto first = std::find_if(
      originals_.begin(), originals_.end(),
      [&](const fs::path& original) { return original == file || said_.is_same(original, file); });
  return first == originals_.end() ? file : *first;
}

TextEdits KeptReferences::edits_for(const std::vector<ExternalReference>& references,
                                    const fs::path& folder) {
  std::vector<TextEdit> edits;
  for (const ExternalReference& reference : references) {
    const Target target = find_target(folder, reference);
    const fs::path file = without_links(target.path);
    const bool may_be_copied = has_copies_ && target.is_there;
    const fs::path meant = may_be_copied ? original_of(file) : file;
    // All copies are in one folder, wherever their originals are.
    const std::string folder_meant = may_be_copied ? "." : utf8_of_path(meant.parent_path());
    const bool is_apart = has_folder_apart(reference);
    for (const FileName& name : reference.names) {
      const bool is_alone = is_apart && path_of_utf8(name.name) == file.filename();
      if (!is_alone && !leads(name, folder, target)) continue;
      std::string text = is_folder(reference, name) ? folder_meant : utf8_of_path(meant);
      if (reference.is_to_anchor()) text = encoded_uri(text);
      edits.push_back({name.record, name.keyword, name.parameter, std::move(text)});
    }
  }
  return TextEdits(std::move(edits));
}

void KeptReferences::edit(Sameness::ComparedFile& input) {
  const TextEdits edits = edits_for(of_input_, folder_);
  Sameness::RecordHash hash(input.instances.types());
  for (const Index record : input.instances.kept()) {
    if (edits.of(record).empty()) continue;
    const std::string_view body = input.instances.kept_body(record);
    std::string edited(EditedText(body, body, {}, edits.of(record)).text());
    input.fingerprints.text[record] = hash.of(input.instances.type(record), edited);
    input.instances.keep_instead(record, std::move(edited));
  }
  Sameness::complete(input);
}

void KeptReferences::edit(Joining& joining) {
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    joining.edit(i, edits_for(joining.files()[i].kept, outdir_));
  }
}

bool has_kept_references(const Joining& joining) {
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    if (!joining.files()[i].kept.empty()) return true;
  }
  return false;
}

std::set<fs::path> files_behind_kept_references(const Joining& joining, const Options& options) {
  std::set<fs::path> files;
  std::vector<fs::path> open;
  const auto enter = [&](const std::vector<ExternalReference>& references, const fs::path& folder) {
    for (const ExternalReference& reference : references) {
      const Target target = find_target(folder, reference);
      if (!target.is_there) continue;
      const fs::path path = without_links(target.path);
      if (files.insert(path).second) open.push_back(path);
    }
  };
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    enter(joining.files()[i].kept, joining.files()[i].path.parent_path());
  }
  while (!open.empty()) {
    const fs::path path = std::move(open.back());
    open.pop_back();
    Instances instances;
    try {
      std::ifstream in(options.readable ? options.readable(path) : path,
                       std::ios::in | std::ios::binary);
      load_instances(in, instances);
    } catch (const InputError&) {
      continue;  // It is no part of the split.
    }
    enter(find_external_references(instances, find_products(instances)), path.parent_path());
  }
  return files;
}

}  // namespace Kessel
