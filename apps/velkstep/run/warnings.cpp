#include "run/warnings.h"

#include <iostream>

#include "run/with_input.h"
#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

void Warnings::add(const Kessel::Finding& warning) {
  if (warning.kind == Kessel::FindingKind::one_part ||
      warning.kind == Kessel::FindingKind::no_part) {
    why_copied_ = warning.kind;
  } else {
    count_ += warning.count;
  }
}

void Warnings::listen(Kessel::Options& options) {
  options.warning = [this](const Kessel::Finding& finding) { add(finding); };
}

void Warnings::mention(const std::string& argument) const {
  if (count_ == 0) return;
  std::cerr << "velkstep: " << printable(shown_name(argument)) << ": "
            << counted(count_, "warning", "warnings")
            << "; nothing is lost, and velkstep check says what it is about\n";
}

}  // namespace Velkstep
