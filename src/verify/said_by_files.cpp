#include "verify/said_by_files.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include "encoding/utf8_path.h"
#include "exchange/reader.h"
#include "external/external_references.h"
#include "external/targets.h"
#include "external/text_edits.h"
#include "instances/loader.h"
#include "kessel/errors.h"
#include "sameness/hash.h"

namespace Kessel {

namespace fs = std::filesystem;

namespace {

/// Sums up the statements of a file, without the texts that `names` name.
class StatementSum final : public Exchange::Listener {
 public:
  explicit StatementSum(const TextEdits& names) : names_(names) {}

  void header_entity(const Exchange::Statement& entity) override { add(entity.text); }
  void begin_section(Exchange::Section section, std::string_view parameters) override {
    sum_ = Sameness::combined(sum_, static_cast<std::uint64_t>(section));
    add(parameters);
  }
  void record(const Exchange::Record& record) override {
    sum_ = Sameness::combined(sum_, record.number);
    add_without_names(record.body);
  }
  void entry(Exchange::Section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention>) override {
    add_without_names(entry.text);
  }

  std::uint64_t sum() const { return sum_; }

 private:
  void add(std::string_view text) { sum_ = Sameness::combined(sum_, Sameness::hash_of(text)); }

  void add_without_names(std::string_view body) {
    std::size_t from = 0;
    for (const Replacement& name : replacements(body, names_.of(next_++))) {
      add(body.substr(from, name.begin - from));
      from = name.end;
    }
    add(body.substr(from));
  }

  const TextEdits& names_;
  Index next_ = 0;
  std::uint64_t sum_ = 0;
};

}  // namespace

bool SaidByFiles::is_same(const fs::path& a, const fs::path& b) {
  const std::uint64_t said = said_by(a);
  return said != 0 && said == said_by(b);
}

std::uint64_t SaidByFiles::said_by(const fs::path& path) {
  const auto known = known_.find(path);
  if (known != known_.end()) return known->second;
  // Of a circle, how far back it leads.
  const auto above = std::find(way_.begin(), way_.end(), path);
  if (above != way_.end()) return static_cast<std::uint64_t>(way_.end() - above);
  way_.push_back(path);
  const std::uint64_t said = sum_up(path);
  way_.pop_back();
  known_.emplace(path, said);
  return said;
}

std::uint64_t SaidByFiles::sum_up(const fs::path& path) {
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return 0;
  std::ifstream in;
  Instances instances;
  try {
    in.open(readable_ ? readable_(path) : path, std::ios::in | std::ios::binary);
    load_instances(in, instances);
  } catch (const InputError&) {
    return 0;
  }
  std::vector<TextEdit> names;
  std::uint64_t ends = 0;
  for (const auto& reference : find_external_references(instances, find_products(instances))) {
    const Target target = find_target(path.parent_path(), reference);
    const fs::path end = without_links(target.path);
    ends =
        Sameness::combined(ends, target.is_there ? said_by(end) : Sameness::hash_of(end.string()));
    for (const FileName& name : reference.names) {
      const fs::path said = path_of_utf8(name.name);
      const bool leads = without_links(path.parent_path() / said) == end;
      if (!leads && said != end.filename()) continue;
      names.push_back({name.record, name.keyword, name.parameter, {}});
    }
  }
  const TextEdits places(std::move(names));
  StatementSum statements(places);
  in.clear();
  in.seekg(0);
  const Exchange::Ending ending = read_exchange_file(in, {}, statements);
  if (ending.error) return 0;
  return Sameness::combined(statements.sum(), ends) | 1;
}

}  // namespace Kessel
