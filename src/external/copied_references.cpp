#include "external/copied_references.h"

#include <algorithm>
#include <fstream>
#include <utility>

#include "encoding/utf8_path.h"
#include "exchange/reader.h"
#include "external/repointing.h"
#include "external/resource.h"
#include "external/targets.h"
#include "findings/finding_kinds.h"
#include "findings/input_file.h"
#include "findings/refusals.h"
#include "instances/loader.h"
#include "kessel/errors.h"
#include "naming/unique_names.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void throw_about(Finding finding, const fs::path& path) {
  finding.file = utf8_of_path(path);
  throw InputError(finding, path);
}

/// Learns where edits change bytes of a file, and how many records that has.
class EditedBytes final : public Exchange::Listener {
 public:
  explicit EditedBytes(const TextEdits& edits) : edits_(edits) {}

  void record(const Exchange::Record& record) override {
    ++records_;
    look_at(record.body,
            record.offset + static_cast<std::uint64_t>(record.body.data() - record.text.data()));
  }
  void entry(Exchange::Section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention>) override {
    look_at(entry.text, entry.offset);
  }

  struct Bytes {
    std::uint64_t begin;
    std::uint64_t end;
    std::string text;
  };
  const std::vector<Bytes>& bytes() const { return bytes_; }
  std::uint32_t records() const { return records_; }

 private:
  void look_at(std::string_view body, std::uint64_t offset) {
    for (Replacement& replacement : replacements(body, edits_.of(next_++))) {
      bytes_.push_back(
          {offset + replacement.begin, offset + replacement.end, std::move(replacement.text)});
    }
  }

  const TextEdits& edits_;
  Index next_ = 0;
  std::uint32_t records_ = 0;
  std::vector<Bytes> bytes_;
};

/// Copies a stream block by block.
class ByteCopier {
 public:
  ByteCopier(std::istream& in, std::ostream& out)
      : in_(in), out_(out), block_(std::size_t{1} << 18) {}

  void copy_to(std::uint64_t end) {
    while (at_ < end && in_ && out_) {
      const std::uint64_t most = std::min<std::uint64_t>(end - at_, block_.size());
      in_.read(block_.data(), static_cast<std::streamsize>(most));
      if (in_.gcount() == 0) return;
      out_.write(block_.data(), in_.gcount());
      at_ += static_cast<std::uint64_t>(in_.gcount());
    }
  }
  void pass_over(std::uint64_t end) {
    in_.seekg(static_cast<std::streamoff>(end));
    at_ = end;
  }

 private:
  std::istream& in_;
  std::ostream& out_;
  std::vector<char> block_;
  std::uint64_t at_ = 0;
};

}  // namespace

void CopiedReferences::add(const std::vector<ExternalReference>& references) {
  references_.insert(references_.end(), references.begin(), references.end());
  std::size_t next = copies_.size();
  enter(references, from_);
  for (; next < copies_.size(); ++next) {
    if (copies_[next].is_in_place) continue;
    load(copies_[next]);
    // Entering moves the copies.
    const std::vector<ExternalReference> in_turn = copies_[next].references;
    enter(in_turn, copies_[next].path.parent_path());
  }
  require_below();
}

void CopiedReferences::enter(const std::vector<ExternalReference>& references,
                             const fs::path& folder) {
  for (const ExternalReference& reference : references) {
    const Target target = find_target(folder, reference);
    const fs::path path = without_links(target.path);
    const bool is_in_place = path.parent_path() == to_;
    // What lies there keeps its name, and what is missing there must not seem to be found.
    if (is_in_place) names_.insert(caseless_name(utf8_of_path(path.filename())));
    if (!target.is_there || !places_.emplace(path, copies_.size()).second) continue;
    if (!options_.follow_outside && !is_below(path, from_)) outside_.push_back(target.name->name);
    if (!is_in_place) written_.push_back(copies_.size());
    copies_.push_back({path, path, utf8_of_path(path.filename()), is_in_place, {}, {}});
  }
}

void CopiedReferences::require_below() const {
  if (outside_.empty()) return;
  std::string names;
  for (const std::string& name : outside_) names += (names.empty() ? "\"" : ", \"") + name + "\"";
  throw InputError(make_finding(FindingKind::target_outside,
                                "References lead out of the folder of the file: " + names + "."));
}

void CopiedReferences::give_names(const std::vector<std::string>& taken) {
  for (const std::string& name : taken) names_.insert(caseless_name(name));
  for (const std::size_t i : written_) {
    const std::string stem = utf8_of_path(copies_[i].path.stem());
    const std::string extension = utf8_of_path(copies_[i].path.extension());
    for (int number = 2; !names_.insert(caseless_name(copies_[i].name)).second; ++number) {
      copies_[i].name = stem + " (" + std::to_string(number) + ")" + extension;
    }
  }
  edits_of_input_ = edits_for(references_, from_);
  for (const std::size_t i : written_) {
    copies_[i].edits = edits_for(copies_[i].references, copies_[i].path.parent_path());
  }
}

void CopiedReferences::load(Copy& copy) const {
  Options quiet;
  quiet.memory_limit = options_.memory_limit;
  Instances instances;
  try {
    if (options_.readable) copy.readable = options_.readable(copy.path);
    std::ifstream in = open_input(copy.readable);
    load_instances(in, instances, quiet);
  } catch (const InputError& error) {
    throw_about(error.finding(), copy.path);
  }
  copy.references = find_external_references(instances, find_products(instances));
}

TextEdits CopiedReferences::edits_for(const std::vector<ExternalReference>& references,
                                      const fs::path& folder) const {
  std::vector<TextEdit> edits;
  std::vector<ExternalReference> missing;
  for (const ExternalReference& reference : references) {
    const Target target = find_target(folder, reference);
    const auto copy = places_.find(without_links(target.path));
    if (!target.is_there || copy == places_.end()) {
      missing.push_back(reference);
      continue;
    }
    const std::string& name = copies_[copy->second].name;
    const std::string file = utf8_of_path(path_of_utf8(target.name->name).filename());
    for (const FileName& one : reference.names) {
      const bool leads = leads_to(one, folder, target.path);
      const bool is_folder = one.text.size() < one.name.size() && one.name.ends_with("/" + file) &&
                             !reference.is_to_anchor();
      if (!leads && one.name != file) continue;
      std::string text = leads && is_folder         ? std::string(".")
                         : reference.is_to_anchor() ? encoded_uri(name)
                                                    : name;
      if (text != one.text) {
        edits.push_back({one.record, one.keyword, one.parameter, std::move(text)});
      }
    }
  }
  for (TextEdit& edit : repoint(missing, folder, to_)) edits.push_back(std::move(edit));
  return TextEdits(std::move(edits));
}

std::uint32_t CopiedReferences::write(std::size_t place, std::ostream& out) const {
  const Copy& copy = copies_[written_[place]];
  std::ifstream in(copy.readable, std::ios::in | std::ios::binary);
  EditedBytes places(copy.edits);
  const Exchange::Limits limits{.scrutiny = Exchange::Scrutiny::none};
  const Exchange::Ending ending = read_exchange_file(in, limits, places);
  if (ending.error || in.bad()) throw_about(input_changed(ending.bytes), copy.path);
  in.close();
  in.open(places.bytes().empty() ? copy.path : copy.readable, std::ios::in | std::ios::binary);
  ByteCopier copier(in, out);
  for (const EditedBytes::Bytes& bytes : places.bytes()) {
    copier.copy_to(bytes.begin);
    out << bytes.text;
    copier.pass_over(bytes.end);
  }
  copier.copy_to(~std::uint64_t{0});
  if (in.bad()) throw_about(input_changed(0), copy.path);
  return places.records();
}

}  // namespace Kessel
