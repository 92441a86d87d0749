#include "splitter/copied_references.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>
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

CopiedReferences::CopiedReferences(const std::vector<ExternalReference>& references,
                                   const fs::path& from, const fs::path& to, const Options& options)
    : from_(from), to_(to), options_(options) {
  enter(references, from);
  for (std::size_t i = 0; i < copies_.size(); ++i) {
    if (copies_[i].is_in_place) continue;
    load(copies_[i]);
    // Entering moves the copies.
    const std::vector<ExternalReference> in_turn = copies_[i].references;
    enter(in_turn, copies_[i].path.parent_path());
  }
  if (!outside_.empty()) {
    std::string names;
    for (const std::string& name : outside_) names += (names.empty() ? "\"" : ", \"") + name + "\"";
    throw InputError(make_finding(FindingKind::target_outside,
                                  "References lead out of the folder of the file: " + names + "."));
  }
  edits_of_input_ = edits_for(references, from);
  for (Copy& copy : copies_) {
    if (!copy.is_in_place) copy.edits = edits_for(copy.references, copy.path.parent_path());
  }
}

void CopiedReferences::enter(const std::vector<ExternalReference>& references,
                             const fs::path& folder) {
  for (const ExternalReference& reference : references) {
    const Target target = find_target(folder, reference);
    if (!target.is_there) continue;
    const fs::path path = without_links(target.path);
    if (places_.contains(path)) continue;
    places_.emplace(path, copies_.size());
    if (!options_.follow_outside && !is_below(path, from_)) outside_.push_back(target.name->name);
    Copy copy;
    copy.path = path;
    copy.is_in_place = path.parent_path() == to_;
    copy.name = copy.is_in_place ? utf8_of_path(path.filename()) : unused_name(path.filename());
    copies_.push_back(std::move(copy));
  }
}

std::string CopiedReferences::unused_name(const fs::path& path) {
  const std::string stem = utf8_of_path(path.stem());
  const std::string extension = utf8_of_path(path.extension());
  for (std::uint32_t& number = taken_[caseless_name(stem + extension)];;) {
    ++number;
    const std::string name =
        number == 1 ? stem + extension : stem + " (" + std::to_string(number) + ")" + extension;
    if (number == 1 || taken_.emplace(caseless_name(name), 1).second) return name;
  }
}

void CopiedReferences::load(Copy& copy) const {
  Options quiet;
  quiet.memory_limit = options_.memory_limit;
  Instances instances;
  try {
    std::ifstream in = open_input(copy.path);
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
      std::string text = leads && is_folder         ? std::string()
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

std::vector<std::string> CopiedReferences::new_names() const {
  std::vector<std::string> names;
  for (const Copy& copy : copies_) {
    if (!copy.is_in_place) names.push_back(copy.name);
  }
  return names;
}

std::vector<WrittenFile> CopiedReferences::write(const fs::path& outdir) const {
  std::vector<WrittenFile> files;
  for (const Copy& copy : copies_) {
    if (copy.is_in_place) continue;
    std::ifstream in(copy.path, std::ios::in | std::ios::binary);
    EditedBytes places(copy.edits);
    const Exchange::Limits limits{.scrutiny = Exchange::Scrutiny::none};
    const Exchange::Ending ending = read_exchange_file(in, limits, places);
    if (ending.error || in.bad()) throw_about(input_changed(ending.bytes), copy.path);
    in.clear();
    in.seekg(0);
    const fs::path path = outdir / path_of_utf8(copy.name);
    errno = 0;
    std::ofstream out(path, std::ios::out | std::ios::binary);
    ByteCopier copier(in, out);
    for (const EditedBytes::Bytes& bytes : places.bytes()) {
      copier.copy_to(bytes.begin);
      out << bytes.text;
      copier.pass_over(bytes.end);
    }
    copier.copy_to(~std::uint64_t{0});
    if (in.bad()) throw_about(input_changed(0), copy.path);
    const auto size =
        static_cast<std::uint64_t>(out ? static_cast<std::streamoff>(out.tellp()) : 0);
    out.close();
    if (!out) throw OutputError(path, {errno != 0 ? errno : EIO, std::generic_category()});
    files.push_back({path.lexically_normal(), 0, places.records(), size, true});
  }
  return files;
}

}  // namespace Kessel
