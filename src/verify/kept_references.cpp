#include "verify/kept_references.h"

#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "encoding/utf8_path.h"
#include "external/repointing.h"
#include "external/targets.h"
#include "instances/loader.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// The input's texts by what a split may write for them.
class InputTexts {
 public:
  InputTexts(const Sameness::ComparedFile& input, const fs::path& folder, const fs::path& outdir) {
    const fs::path from = without_links(folder);
    const fs::path to = without_links(outdir);
    const auto references = find_external_references(input.instances, input.products);
    for (const ExternalReference& reference : references) {
      for (const FileName& name : reference.names) {
        texts_.emplace(repointed(name.text, from, to, reference.is_to_anchor()), name.text);
        const fs::path copy = path_of_utf8(name.name).filename();
        if (name.text == name.name) copies_.emplace(utf8_of_path(copy), name.text);
      }
    }
  }

  /// The input's text for `text`; the same where nothing else is known.
  const std::string& of(const std::string& text) const {
    for (const auto* const known : {&texts_, &copies_}) {
      if (const auto found = known->find(text); found != known->end()) return found->second;
    }
    return text;
  }

 private:
  std::map<std::string, std::string> texts_;
  std::map<std::string, std::string> copies_;
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
        const std::string& text = texts->of(name.text);
        if (text != name.text) edits.push_back({name.record, name.keyword, name.parameter, text});
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
