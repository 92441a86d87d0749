// The joined file as data, beside the joined file as it is written.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exchange/lexer.h"
#include "join/joining.h"
#include "kessel/join.h"
#include "sameness/compared_file.h"

namespace Kessel::test {

/// What is known of a record whose number is the same in both.
struct RecordSeen {
  std::string type;
  std::string kept;
  std::vector<std::uint64_t> references;  // numbers, 0 for none
  std::vector<std::uint64_t> listed;      // the same as a set
  std::uint64_t text = 0;
  std::uint64_t structure = 0;
  bool is_pure = false;
  Sameness::Worth worth = Sameness::Worth::identity;
  bool operator==(const RecordSeen&) const = default;
};

/// The words of a text; names of instances that are not there are all alike.
inline std::string words_of(const Instances& instances, std::string_view text) {
  std::string words;
  Exchange::Lexer lexer(text);
  for (auto word = lexer.next(); word.kind != Exchange::WordKind::end; word = lexer.next()) {
    const bool is_missing = word.kind == Exchange::WordKind::instance &&
                            instances.find(Exchange::number_in(word.text)) == NO_RECORD;
    words.append(is_missing ? std::string_view("#") : word.text).append(" ");
  }
  return words;
}

inline RecordSeen seen(const Sameness::ComparedFile& file, Index record) {
  const Instances& instances = file.instances;
  RecordSeen seen{std::string(instances.types().name(instances.type(record))),
                  words_of(instances, instances.kept_body(record)),
                  {},
                  {},
                  file.fingerprints.text[record],
                  file.fingerprints.structure[record],
                  file.fingerprints.is_pure[record],
                  file.fingerprints.worth[record]};
  for (const Reference reference : instances.references(record)) {
    const Index to = reference.record();
    (reference.is_listed() ? seen.listed : seen.references)
        .push_back(to == NO_RECORD ? 0 : instances.number(to));
  }
  std::sort(seen.listed.begin(), seen.listed.end());
  seen.listed.erase(std::unique(seen.listed.begin(), seen.listed.end()), seen.listed.end());
  return seen;
}

/// In what `written`, the file that `root` was joined to with `options`, differs from what a
/// comparison is given without it: a sentence, empty for nothing.
inline std::string difference_of_data(const std::filesystem::path& root,
                                      const std::filesystem::path& written,
                                      const JoinOptions& options) {
  Joining joining(root, options, Following{.only_made = false, .takes_texts = true});
  keep_references(joining, written);
  Sameness::ComparedFile data;
  joining.enter_into(data);
  Sameness::complete(data);
  Sameness::ComparedFile file;
  Sameness::read_file(written, file, {});
  if (data.instances.size() != file.instances.size()) return "another number of records";
  if (Sameness::schemas_of(data.instances) != Sameness::schemas_of(file.instances)) {
    return "another schema";
  }
  std::vector<Index> anchors_of_file;
  for (Index record = 0; record < file.instances.size(); ++record) {
    const std::uint64_t number = file.instances.number(record);
    if (number == 0) {
      anchors_of_file.push_back(record);
      continue;
    }
    const Index of_data = data.instances.find(number);
    const std::string name = "#" + std::to_string(number);
    if (of_data == NO_RECORD) return name + " is missing";
    if (seen(data, of_data) != seen(file, record)) return name + " says something else";
  }
  std::size_t next = 0;
  for (Index record = 0; record < data.instances.size(); ++record) {
    if (data.instances.number(record) != 0) continue;
    if (next == anchors_of_file.size()) return "there are more anchors";
    if (seen(data, record) != seen(file, anchors_of_file[next++])) return "another anchor";
  }
  return next == anchors_of_file.size() ? "" : "there are less anchors";
}

}  // namespace Kessel::test
