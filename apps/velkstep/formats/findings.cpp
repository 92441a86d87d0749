#include "formats/findings.h"

#include <algorithm>

#include "run/advice.h"
#include "run/exit_codes.h"
#include "run/with_input.h"
#include "text/terminal.h"

namespace Velkstep {

using Kessel::Finding;
using Kessel::Severity;

const char* word_of(Severity severity) {
  return severity == Severity::error ? "error" : "warning";
}

std::string finding_text(const std::string& name, const Finding& finding) {
  // Warnings are many, and a split works in spite of them.
  const bool is_error = finding.severity == Severity::error;
  return printable(place_in(name, finding)) + ": " + word_of(finding.severity) + ": " +
         (is_error ? sentence_with_advice(finding, name) : finding.sentence) + '\n';
}

int exit_code_of(const std::vector<Finding>& findings) {
  const bool errors = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.severity == Severity::error;
  });
  if (errors) return EXIT_FAILED;
  return findings.empty() ? EXIT_DONE : EXIT_WARNINGS;
}

}  // namespace Velkstep
