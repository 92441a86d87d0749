// The order of the checks.
#include "kessel/verify.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "external/targets.h"
#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "instances/places.h"
#include "join/followed_input.h"
#include "join/joining.h"
#include "kessel/diff.h"
#include "kessel/encoding.h"
#include "kessel/errors.h"
#include "sameness/comparison.h"
#include "verify/differences.h"
#include "verify/kept_references.h"
#include "verify/split_folder.h"
#include "verify/stand_ins.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// The input, which is read while the files of a split are joined.
class Input {
 public:
  struct Refused {
    Finding finding;
  };

  /// Begins to read it. What is given must outlive the object.
  void begin(const fs::path& in, std::uint64_t memory_limit) {
    options_.memory_limit = memory_limit;
    options_.progress = [this](const Progress&) {
      if (!is_wanted_) throw NotWanted();
    };
    options_.warning = [this](const Finding& warning) {
      if (warning.kind == FindingKind::text_after_end) warnings_.push_back(warning);
    };
    reading_ = std::async([this, &in] {
      auto file = std::make_unique<Sameness::ComparedFile>();
      Sameness::read_file(in, *file, options_);
      return file;
    });
  }
  Input() = default;
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input() { is_wanted_ = false; }

  /// Throws Refused where it cannot be read.
  Sameness::ComparedFile& file() {
    try {
      if (!file_) file_ = reading_.get();
    } catch (const InputError& error) {
      throw Refused{error.finding()};
    }
    return *file_;
  }
  /// What a split of it leaves out, once file() has returned it.
  const std::vector<Finding>& warnings() const { return warnings_; }
  /// Whether file() has returned it.
  bool is_read() const { return file_ != nullptr; }

 private:
  struct NotWanted {};

  Options options_;
  std::unique_ptr<Sameness::ComparedFile> file_;
  std::vector<Finding> warnings_;
  std::atomic<bool> is_wanted_ = true;
  std::future<std::unique_ptr<Sameness::ComparedFile>> reading_;  // ends first
};

/// Checks one split.
class SplitCheck {
 public:
  SplitCheck(const fs::path& in, const fs::path& outdir, const Options& options)
      : in_(in), outdir_(outdir), folder_(folder_of_references(in, options)) {
    options_.memory_limit = options.memory_limit;
    options_.progress = options.progress;
    options_.readable = options.readable;
    join_options_.memory_limit = options.memory_limit;
    join_options_.progress = options.progress;
  }

  Verification check() {
    SplitFolder folder(outdir_);
    const auto root = folder.find_root(findings_);
    folder.check_listed(findings_);
    if (root) check_files(*root, folder);
    verification_.findings = findings_.take();
    if (root) set_places(*root);
    sort_by_place();
    return std::move(verification_);
  }

 private:
  void check_files(const fs::path& root, SplitFolder& folder) {
    input_.begin(in_, options_.memory_limit);
    try {
      join(root, {.only_made = true, .takes_texts = true});
      is_joined_ = true;
      check_joined_files();
      verification_.files += folder.check_others(joined_names(), findings_);
      compare(root);
    } catch (const Input::Refused& refused) {
      findings_.begin_file("");
      findings_.add(refused.finding);
    } catch (const InputError& error) {
      findings_.begin_file(error.finding().file.empty() ? "." : error.finding().file);
      findings_.add(error.finding());
    }
  }

  /// What the input refers to is no part of the split.
  void join(const fs::path& root, const Following& following) {
    joining_ = std::make_unique<Joining>(root, join_options_, following);
    if (!kept_ && has_kept_references(*joining_)) {
      kept_ =
          std::make_unique<KeptReferences>(input_.file(), folder_, outdir_, *joining_, options_);
      kept_->edit(input_.file());
    }
    if (kept_) kept_->edit(*joining_);
  }

  /// The same once more, where something is found.
  void join_again(const fs::path& root) {
    if (joining_) return;
    join_options_.progress = nullptr;
    join(root, {.only_made = true});
  }

  void check_joined_files() {
    const FileSet& files = joining_->files();
    verification_.files = files.size();
    for (std::size_t i = 0; i < files.size(); ++i) {
      verification_.records += files[i].instances.size();
      check_references(i);
    }
    for (Finding& doubt : joining_->doubts()) {
      if (doubt.kind != FindingKind::text_after_end) doubt.severity = Severity::error;
      findings_.begin_file(doubt.file);
      findings_.add(std::move(doubt));
    }
    check_stand_ins(*joining_, findings_);
  }

  /// How many references of a record lead nowhere.
  std::size_t missing_references(std::size_t file, Index record) const {
    const auto references = joining_->files()[file].instances.references(record);
    return static_cast<std::size_t>(
        std::count_if(references.begin(), references.end(),
                      [](Reference reference) { return reference.record() == NO_RECORD; }));
  }

  /// What is written into the joined file is compared with the input there, and what stands for
  /// such a record may lead nowhere as that does.
  void check_references(std::size_t i) {
    const JoinedFile& file = joining_->files()[i];
    if (file.instances.missing_references() == 0) return;
    const Records& records = joining_->records();
    findings_.begin_file(file.name);
    for (Index record = 0; record < file.instances.size(); ++record) {
      const std::size_t missing = missing_references(i, record);
      if (missing == 0 || file.instances.type(record) == TypeTable::REPEATED) continue;
      const Node node = records.node(i, record);
      const Node text = records.text_of(node);
      if (records.is_written(node)) continue;
      if (text != node &&
          missing <= missing_references(records.file_of(text), records.index_of(text))) {
        continue;
      }
      const std::uint64_t number = file.instances.number(record);
      findings_.add(make_finding(
          FindingKind::unresolved_reference,
          "#" + std::to_string(number) + " refers to an instance that the file does not have.", 0,
          number));
    }
  }

  std::set<fs::path> joined_names() const {
    std::set<fs::path> names;
    for (std::size_t i = 0; i < joining_->files().size(); ++i) {
      names.insert(joining_->files()[i].path.lexically_relative(outdir_).lexically_normal());
    }
    // Copies of files that the input refers to.
    for (const fs::path& path : files_behind_kept_references(*joining_, options_)) {
      if (path.parent_path() == without_links(outdir_)) names.insert(path.filename());
    }
    return names;
  }

  void compare(const fs::path& root) {
    Sameness::ComparedFile joined;
    try {
      joining_->enter_into(joined);
    } catch (const InputError& refused) {
      // The folder's files together do not fit into memory.
      findings_.begin_file(".");
      findings_.add(refused.finding());
      return;
    }
    // Its memory is of use; where something is found the files are read again.
    joining_.reset();
    Sameness::complete(joined);
    Sameness::BodyReader bodies;
    const auto body_of_joined = [&](Index record) {
      const std::string_view kept = joined.instances.kept_body(record);
      if (!kept.empty()) return std::string(kept);
      if (!bodies) {
        join_again(root);
        bodies = joining_->body_reader();
      }
      return bodies(record);
    };
    const Sameness::ComparedFile& input = input_.file();
    findings_.begin_file("");
    for (const Finding& warning : input_.warnings()) findings_.add(warning);
    const auto body_of_input = [&,
                                read = Sameness::body_reader(in_, input.instances)](Index record) {
      const std::string_view kept = input.instances.kept_body(record);
      return kept.empty() ? read(record) : std::string(kept);
    };
    const Difference difference =
        Sameness::compare_files(input, body_of_input, joined, body_of_joined, options_);
    if (!difference.is_certain) {
      findings_.begin_file(".");
      findings_.add(make_finding(FindingKind::undecided,
                                 "The files are so symmetrical all over that nobody can tell "
                                 "whether they say the same; they look the same."));
    }
    if (difference.is_same) return;
    join_again(root);
    add_differences(difference, *joining_, findings_);
  }

  /// Looks up where the records stand that findings are about.
  void set_places(const fs::path& root) {
    if (input_.is_read()) set_places_in(in_, input_.file().instances, "");
    const auto& found = verification_.findings;
    const bool is_about_files = std::any_of(found.begin(), found.end(), [](const Finding& finding) {
      return finding.instance != 0 && !finding.file.empty();
    });
    if (!is_joined_ || !is_about_files) return;
    join_again(root);
    const FileSet& files = joining_->files();
    for (std::size_t i = 0; i < files.size(); ++i) {
      set_places_in(files[i].path, files[i].instances, files[i].name);
    }
  }

  /// The same for those with this name of a file.
  void set_places_in(const fs::path& path, const Instances& instances, const std::string& name) {
    std::vector<Finding*> of_file;
    for (Finding& finding : verification_.findings) {
      if (finding.file == name && finding.instance != 0) of_file.push_back(&finding);
    }
    if (of_file.empty()) return;
    std::ifstream in(path, std::ios::in | std::ios::binary);
    std::vector<Finding> placed;
    for (Finding* finding : of_file) {
      const Index record = instances.find(finding->instance);
      if (record != NO_RECORD) finding->offset = read_again(in, instances, record).offset;
      placed.push_back(*finding);
    }
    locate(in, placed);
    for (std::size_t at = 0; at < placed.size(); ++at) *of_file[at] = std::move(placed[at]);
  }

  /// Findings on a file stand together, those on all of it first.
  void sort_by_place() {
    std::map<std::string, std::size_t> ranks;
    for (const Finding& finding : verification_.findings) {
      ranks.emplace(finding.file, ranks.size());
    }
    std::stable_sort(verification_.findings.begin(), verification_.findings.end(),
                     [&](const Finding& a, const Finding& b) {
                       return std::pair(ranks[a.file], a.offset) <
                              std::pair(ranks[b.file], b.offset);
                     });
  }

  const fs::path& in_;
  const fs::path& outdir_;
  const fs::path folder_;  // from which the input's references are seen
  Options options_;
  JoinOptions join_options_;
  Input input_;
  std::unique_ptr<Joining> joining_;
  std::unique_ptr<KeptReferences> kept_;  // where the split has any
  bool is_joined_ = false;                // it was once, at least
  FindingList findings_;
  Verification verification_;
};

/// What is said of one of the files that are read as the input: nobody knows its name otherwise.
Finding on_the_input(Finding finding) {
  if (finding.file.empty()) return finding;
  finding.sentence = quoted_name(finding.file) + ": " + finding.sentence;
  finding.offset = finding.line = finding.column = 0;
  finding.instance = 0;
  finding.file.clear();
  return finding;
}

/// Compares with what the input and the files that it refers to say together. Nobody knows the
/// places and numbers of that.
Verification verify_followed(const fs::path& in, const fs::path& outdir, const Options& options) {
  std::optional<FollowedInput> whole;
  Options read = options;
  read.warning = nullptr;
  try {
    whole.emplace(in, read);
  } catch (const InputError& error) {
    Verification refused;
    refused.findings.push_back(on_the_input(error.finding()));
    return refused;
  }
  Verification verification = SplitCheck(whole->path(), outdir, whole->options_for_path()).check();
  for (Finding& finding : verification.findings) {
    if (!finding.file.empty()) continue;
    finding.offset = finding.line = finding.column = 0;
    finding.instance = 0;
  }
  std::vector<Finding> doubts;
  for (const Finding& doubt : whole->doubts()) doubts.push_back(on_the_input(doubt));
  verification.findings.insert(verification.findings.begin(), doubts.begin(), doubts.end());
  return verification;
}

}  // namespace

Verification verify(const fs::path& in, const fs::path& outdir, const Options& options) {
  return options.follow_references ? verify_followed(in, outdir, options)
                                   : SplitCheck(in, outdir, options).check();
}

}  // namespace Kessel
