#include "join/joining.h"

#include <fstream>
#include <memory>

#include "external/repointing.h"
#include "external/targets.h"
#include "findings/progress_reporter.h"
#include "instances/places.h"
#include "join/by_marks.h"
#include "join/by_structure.h"
#include "join/equal_values.h"
#include "join/joined_records.h"
#include "join/joined_text.h"
#include "join/reference_entries.h"

namespace Kessel {

Joining::Joining(const std::filesystem::path& root, const JoinOptions& options,
                 const Following& following)
    : options_(options),
      files_(root, options, following),
      records_(files_),
      documents_(unite()),
      lists_(files_, records_),
      numbering_(number()) {}

Documents Joining::unite() {
  unite_by_marks(files_, records_);
  Documents documents = unite_by_structure(files_, records_, doubts_);
  unite_anchors(files_, records_);
  unite_reference_entries(files_, records_);
  unite_equal_values(files_, records_);
  records_.settle();
  return documents;
}

Numbering Joining::number() {
  remove_residue(files_, documents_, lists_, records_);
  return Numbering(files_, records_);
}

std::vector<Node> Joining::nodes_by_number() const {
  std::vector<Node> nodes(numbering_.count());
  for (Node node = 0; node < records_.size(); ++node) {
    const std::uint64_t number = records_.is_written(node) ? numbering_.of(node) : 0;
    if (number != 0) nodes[number - 1] = node;
  }
  return nodes;
}

std::vector<Finding> Joining::doubts() const {
  std::vector<Finding> doubts = files_.warnings();
  doubts.insert(doubts.end(), doubts_.begin(), doubts_.end());
  for (Finding& doubt : doubts_about_marks(files_, records_)) doubts.push_back(std::move(doubt));
  return doubts;
}

void Joining::enter_into(Sameness::ComparedFile& joined) {
  make_joined_records(files_, records_, lists_, numbering_, options_.memory_limit, joined.instances,
                      joined.fingerprints.text);
}

Sameness::BodyReader Joining::body_reader() {
  struct File {
    std::size_t position = 0;
    std::ifstream stream;
  };
  auto nodes = std::make_shared<const std::vector<Node>>(nodes_by_number());
  auto last = std::make_shared<File>();
  return [this, nodes, last](Index index) {
    const Node node = (*nodes)[index];
    const std::size_t position = records_.file_of(node);
    const JoinedFile& file = files_[position];
    if (!last->stream.is_open() || last->position != position) {
      *last = {position, std::ifstream(file.path, std::ios::in | std::ios::binary)};
    }
    const Index record = records_.index_of(node);
    std::string body;
    JoinedText(files_, position, records_, lists_, numbering_)
        .append_body(record, read_again(last->stream, file.instances, record).body, body);
    return body;
  };
}

void Joining::write(const JoinedName& name, std::ostream& out) {
  std::uint64_t total = 0;
  for (std::size_t i = 0; i < files_.size(); ++i) total += files_[i].bytes;
  Options options;
  options.progress = options_.progress;
  ProgressReporter reporter(options, Stage::writing, total);
  write_joined(files_, records_, lists_, numbering_, name, out,
               [&](std::uint64_t done) { reporter.report(done); });
  reporter.report_end();
}

void keep_references(Joining& joining, const std::filesystem::path& out) {
  const std::filesystem::path to = without_links(std::filesystem::absolute(out).parent_path());
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    const JoinedFile& file = joining.files()[i];
    if (file.kept.empty()) continue;
    const auto from = without_links(std::filesystem::absolute(file.place).parent_path());
    joining.edit(i, TextEdits(repoint(file.kept, from, to)));
  }
}

}  // namespace Kessel
