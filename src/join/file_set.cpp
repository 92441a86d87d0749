#include "join/file_set.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <system_error>

#include "encoding/utf8_path.h"
#include "external/targets.h"
#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/refusals.h"
#include "instances/places.h"
#include "instances/schema.h"
#include "join/marked_loader.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// `names`, with commas and in quotation marks.
std::string listed_names(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
  return text;
}

}  // namespace

FileSet::FileSet(const fs::path& root, const JoinOptions& options, const Following& following)
    : options_(options), following_(following) {
  if (auto finding = find_no_regular_file(root)) {
    finding->file = utf8_of_path(place_of_root(root).filename());
    throw InputError(*finding);
  }
  // The folder is that of the name which the caller gives, even if that is a link.
  std::error_code ignored;
  const fs::path place = place_of_root(root);
  folder_ = without_links(fs::absolute(place, ignored).parent_path());
  enter(root, without_links(place));
  for (std::size_t i = 0; i < files_.size(); ++i) follow(i);
  require_all_files();
  require_no_circle();
  require_one_schema();
}

std::size_t FileSet::enter(const fs::path& path, const Identity& identity) {
  const auto [place, is_new] = known_.emplace(identity, files_.size());
  if (!is_new) return place->second;
  auto file = std::make_unique<JoinedFile>();
  file->place = files_.empty() ? place_of_root(path) : path;
  file->name = files_.empty() ? utf8_of_path(file->place.filename())
                              : utf8_of_path(identity.lexically_relative(folder_));
  try {
    file->path = options_.readable ? options_.readable(path) : path;
    load(*file);
  } catch (const InputError& error) {
    Finding finding = error.finding();
    finding.file = file->name;
    throw InputError(finding);
  }
  files_.push_back(std::move(file));
  return place->second;
}

void FileSet::load(JoinedFile& file) {
  file.bytes = size_of_file(file.path);
  std::error_code unknown;
  file.written = fs::last_write_time(file.path, unknown);
  Options options;
  if (options_.memory_limit != Options::NO_LIMIT) {
    options.memory_limit = options_.memory_limit - std::min(options_.memory_limit, memory_);
  }
  if (options_.progress) {
    options.progress = [&](const Progress& progress) {
      options_.progress({progress.stage, bytes_ + progress.done, bytes_ + progress.total});
    };
  }
  std::ifstream in = open_input(file.path);
  MarkedLoader loader(file, following_.takes_texts, options, file.bytes);
  try {
    load_with(in, loader, options);
  } catch (const InputError& error) {
    if (error.finding().kind != FindingKind::memory_limit || memory_ == 0) throw;
    throw InputError(files_need_memory(files_.size(), options_.memory_limit));
  }
  if (!file.split) file.marked.clear();
  if (loader.text_after_end()) {
    std::vector<Finding> found{*loader.text_after_end()};
    locate(in, found);
    found.front().file = file.name;
    warnings_.push_back(found.front());
  }
  memory_ += file.memory();
  bytes_ += file.bytes;
}

/// Loads what the file refers to, and notes what is not there.
void FileSet::follow(std::size_t from) {
  MissingTargets missing;
  const Products products = find_products(files_[from]->instances);
  const fs::path folder = files_[from]->place.parent_path();
  const std::string referrer =
      from == 0 ? std::string() : " (referred to by \"" + files_[from]->name + "\")";
  for (ExternalReference& reference : find_external_references(files_[from]->instances, products)) {
    if (following_.only_made && !files_[from]->is_made(reference.document)) {
      files_[from]->kept.push_back(std::move(reference));
      continue;
    }
    const Target target = find_target(folder, reference);
    const Identity identity = without_links(target.path);
    const std::string sentence = "\"" + target.name->name + "\"" + referrer;
    std::vector<std::string>* const trouble = !options_.follow_outside && is_outside(identity)
                                                  ? &outside_
                                              : !target.is_there ? &missing_
                                                                 : nullptr;
    if (trouble == &missing_ && options_.allow_missing) {
      missing.emplace_back(reference.document, target.name->name);
      files_[from]->kept.push_back(std::move(reference));
      continue;
    }
    if (trouble == nullptr) {
      const std::size_t file = enter(target.path, identity);
      files_[from]->references.push_back({std::move(reference), file});
    } else if (std::find(trouble->begin(), trouble->end(), sentence) == trouble->end()) {
      trouble->push_back(sentence);
    }
  }
  warn_of_missing(*files_[from], missing);
}

void FileSet::warn_of_missing(const JoinedFile& file, const MissingTargets& missing) {
  if (missing.empty()) return;
  std::ifstream in(file.path, std::ios::in | std::ios::binary);
  FindingList findings;
  findings.begin_file(file.name);
  for (const auto& [record, name] : missing) {
    findings.add(warning_at(in, file.instances, record, FindingKind::missing_target,
                            missing_target_sentence(name)));
  }
  std::vector<Finding> found = findings.take();
  locate(in, found);
  warnings_.insert(warnings_.end(), found.begin(), found.end());
}

bool FileSet::is_outside(const Identity& identity) const {
  return !is_below(identity, folder_);
}

void FileSet::require_all_files() const {
  if (!outside_.empty()) {
    throw InputError(make_finding(
        FindingKind::target_outside,
        "References lead out of the folder of the file: " + listed_names(outside_) + "."));
  }
  if (!missing_.empty()) {
    throw InputError(
        make_finding(FindingKind::missing_target,
                     "Files that are referred to are missing: " + listed_names(missing_) + "."));
  }
}

/// Goes along references, and remembers the way: who is on it twice refers to itself.
void FileSet::require_no_circle() const {
  struct Step {
    std::size_t file;
    std::size_t next = 0;  // of its references
  };
  enum class State : char { fresh, on_the_way, done };
  std::vector<State> states(files_.size(), State::fresh);
  std::vector<Step> way{{0}};
  states[0] = State::on_the_way;
  while (!way.empty()) {
    Step& step = way.back();
    const auto& references = files_[step.file]->references;
    if (step.next == references.size()) {
      states[step.file] = State::done;
      way.pop_back();
      continue;
    }
    const std::size_t target = references[step.next++].target;
    if (states[target] == State::on_the_way) {
      std::vector<std::string> names;
      auto first = std::find_if(way.begin(), way.end(),
                                [&](const Step& on_it) { return on_it.file == target; });
      for (; first != way.end(); ++first) {
        names.push_back("\"" + utf8_of_path(files_[first->file]->place.filename()) + "\"");
      }
      throw InputError(make_finding(
          FindingKind::file_cycle,
          names.size() == 1
              ? "The file " + names.front() + " refers to itself."
              : "Files refer to each other in a circle: " + listed_names(names) + "."));
    }
    if (states[target] == State::fresh) {
      states[target] = State::on_the_way;
      way.push_back({target});
    }
  }
}

void FileSet::require_one_schema() {
  const std::string expected = schema_of(root().instances);
  for (const auto& file : files_) {
    const std::string schema = schema_of(file->instances);
    if (schema == expected) continue;
    Finding finding = other_schema(schema, expected);
    finding.file = file->name;
    if (!options_.allow_mixed_schemas) throw InputError(finding);
    finding.severity = Severity::warning;
    warnings_.push_back(std::move(finding));
  }
}

}  // namespace Kessel
