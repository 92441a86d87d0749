#include "run/warnings.h"

#include <iostream>

#include "run/advice.h"
#include "run/with_input.h"
#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

/// How to have what is in other files, too.
const char* advice_on_files(std::uint64_t count) {
  return count == 1 ? "--follow reads it, too." : "--follow reads them, too.";
}

}  // namespace

void Warnings::add(const Kessel::Finding& warning) {
  kinds_.insert(warning.kind);
  if (warning.kind == Kessel::FindingKind::one_part ||
      warning.kind == Kessel::FindingKind::no_part) {
    why_copied_ = warning.kind;
  } else if (warning.kind == Kessel::FindingKind::missing_target) {
    missing_.push_back(warning);
  } else if (warning.kind == Kessel::FindingKind::foreign_shape ||
             warning.kind == Kessel::FindingKind::occurrence_style ||
             warning.kind == Kessel::FindingKind::unfollowed_file ||
             warning.kind == Kessel::FindingKind::shape_elsewhere ||
             warning.kind == Kessel::FindingKind::text_after_end ||
             warning.kind == Kessel::FindingKind::usage_cycle ||
             warning.kind == Kessel::FindingKind::unknown_component ||
             warning.kind == Kessel::FindingKind::copies_differ ||
             warning.kind == Kessel::FindingKind::stand_in_left) {
    Group& group = told_[warning.kind];
    if (group.count == 0) group.first = warning;
    group.count += warning.count;
  } else {
    count_ += warning.count;
  }
}

void Warnings::listen(Kessel::Options& options) {
  options.warning = [this](const Kessel::Finding& finding) { add(finding); };
}

void Warnings::listen_to_part(Kessel::Options& options) {
  options.warning = [this, told = kinds_](Kessel::Finding finding) {
    if (told.contains(finding.kind)) return;
    finding.offset = finding.line = finding.column = 0;
    finding.instance = 0;
    add(finding);
  };
}

void Warnings::mention(const std::string& argument) const {
  if (!missing_.empty()) {
    const Kessel::Finding& first = missing_.front();
    std::uint64_t more = 0;
    for (const Kessel::Finding& missing : missing_) more += missing.count;
    --more;
    std::cerr << "velkstep: " << printable(place_in(name_of_file(argument, first), first)) << ": "
              << printable(first.sentence)
              << (more == 0 ? "" : " " + grouped(more) + " more are missing.")
              << " Put it there, or what is in it is missing.\n";
  }
  for (const auto& [kind, group] : told_) {
    const std::string advice = kind == Kessel::FindingKind::shape_elsewhere
                                   ? advice_on_files(group.count)
                                   : advice_on_joined(group.first);
    std::cerr << "velkstep: "
              << printable(place_in(name_of_file(argument, group.first), group.first)) << ": "
              << printable(group.first.sentence)
              << (group.count == 1 ? "" : " " + grouped(group.count - 1) + " more like it.")
              << (advice.empty() ? "" : " ") << advice << "\n";
  }
  if (count_ == 0) return;
  std::cerr << "velkstep: " << printable(shown_name(argument)) << ": "
            << counted(count_, "warning", "warnings") << "; velkstep check"
            << (argument == "-" ? "" : " " + in_command(argument)) << " lists "
            << (count_ == 1 ? "it" : "them") << "\n";
}

}  // namespace Velkstep
