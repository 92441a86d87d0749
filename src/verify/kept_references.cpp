#include "verify/kept_references.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "encoding/utf8_path.h"
#include "external/targets.h"
#include "instances/loader.h"
#include "kessel/errors.h"
#include "verify/said_by_files.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// How a text names a file: by all of its path, by the folder of a name that stands elsewhere, or
/// in a resource.
enum class Wording : char { whole, folder, resource };

Wording wording_of(const ExternalReference& reference, const FileName& name) {
  if (reference.is_to_anchor()) return Wording::resource;
  return name.text == name.name ? Wording::whole : Wording::folder;
}

/// Whether it means the same in every folder, though it does not begin with "/": it has a drive, a
/// host or a scheme.
bool is_seen_from_nowhere(const std::string& text) {
  return text.starts_with('\\') || text.find(':') == 1 || text.find("://") != std::string::npos;
}

/// Where `name` leads from `folder`, without links, be that there or not.
fs::path end_of(const FileName& name, const fs::path& folder) {
  if (is_seen_from_nowhere(name.text)) return path_of_utf8(name.name);
  return without_links(folder / path_of_utf8(name.name));
}

std::size_t common_end(const std::string& a, const std::string& b) {
  const auto end = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first;
  return static_cast<std::size_t>(end - a.rbegin());
}

/// The input's texts by what they lead to. Nothing is known here of how a split finds new texts:
/// one that leads elsewhere has to be noticed.
class InputTexts {
 public:
  InputTexts(const Sameness::ComparedFile& input, const fs::path& folder, const fs::path& outdir)
      : outdir_(without_links(outdir)) {
    for (const auto& reference : find_external_references(input.instances, input.products)) {
      const fs::path target = without_links(find_target(folder, reference).path);
      for (const FileName& name : reference.names) {
        const Wording wording = wording_of(reference, name);
        const fs::path end = end_of(name, folder);
        texts_[{end, wording}].push_back(name.text);
        if (end == target) leading_.emplace(wording, name.text);
        // Its folder stands elsewhere, and a copy may be called in another way.
        const bool is_alone = path_of_utf8(name.name) == target.filename() && end != target;
        if (is_alone) texts_of_copies_[{target, wording}].push_back(name.text);
      }
    }
  }

  /// The text of the input that says what `name` of a split's file says; its own text where none
  /// does and none has to, and else what it leads to.
  std::string of(const ExternalReference& reference, const FileName& name) {
    const Wording wording = wording_of(reference, name);
    const fs::path end = end_of(name, outdir_);
    const auto known = texts_.find({end, wording});
    if (known != texts_.end()) return most_alike(known->second, name.text);
    if (is_in_outdir(end)) {
      for (const Texts* const texts : {&texts_, &texts_of_copies_}) {
        const auto of_original = texts_of_original(*texts, end, wording);
        if (of_original != texts->end()) return most_alike(of_original->second, name.text);
      }
    }
    return leading_.contains({wording, name.text}) ? utf8_of_path(end) : name.text;
  }

 private:
  using Texts = std::map<std::pair<fs::path, Wording>, std::vector<std::string>>;

  bool is_in_outdir(const fs::path& path) const { return path.parent_path() == outdir_; }

  /// A copy stands for a file that says the same: one that is called so, or else the first.
  Texts::const_iterator texts_of_original(const Texts& texts, const fs::path& copy,
                                          Wording wording) {
    auto best = texts.end();
    for (auto one = texts.begin(); one != texts.end(); ++one) {
      const auto& [original, of] = one->first;
      if (of != wording || !said_.is_same(original, copy)) continue;
      if (best == texts.end() || original.filename() == copy.filename()) best = one;
    }
    return best;
  }

  /// What leads to one file may be worded in several ways; a split keeps the end of a text.
  static const std::string& most_alike(const std::vector<std::string>& texts,
                                       const std::string& text) {
    return *std::max_element(texts.begin(), texts.end(), [&](const auto& a, const auto& b) {
      return common_end(a, text) < common_end(b, text);
    });
  }

  const fs::path outdir_;
  Texts texts_;
  Texts texts_of_copies_;
  std::set<std::pair<Wording, std::string>> leading_;  // that lead to the files of their references
  SaidByFiles said_;
};

}  // namespace

void edit_kept_references(const std::function<const Sameness::ComparedFile&()>& input,
                          const fs::path& folder, const fs::path& outdir, Joining& joining) {
  std::unique_ptr<InputTexts> texts;
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    const JoinedFile& file = joining.files()[i];
    std::vector<TextEdit> edits;
    for (const ExternalReference& reference : file.kept) {
      if (!texts) texts = std::make_unique<InputTexts>(input(), folder, outdir);
      for (const FileName& name : reference.names) {
        std::string text = texts->of(reference, name);
        if (text == name.text) continue;
        edits.push_back({name.record, name.keyword, name.parameter, std::move(text)});
      }
    }
    joining.edit(i, TextEdits(std::move(edits)));
  }
}

std::set<fs::path> files_behind_kept_references(const Joining& joining) {
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
    std::ifstream in(path, std::ios::in | std::ios::binary);
    Instances instances;
    try {
      load_instances(in, instances);
    } catch (const InputError&) {
      continue;  // It is no part of the split.
    }
    enter(find_external_references(instances, find_products(instances)), path.parent_path());
  }
  return files;
}

}  // namespace Kessel
