#include "formats/findings.h"

#include <algorithm>

#include "run/exit_codes.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

using Kessel::Finding;
using Kessel::Severity;

const char* to_text(Severity severity) {
  return severity == Severity::error ? "error" : "warning";
}

}  // namespace

std::string finding_text(const std::string& name, const Finding& finding) {
  std::string text = printable(name) + ':';
  if (finding.line != 0) text += std::to_string(finding.line) + ':';
  return text + " " + to_text(finding.severity) + ": " + finding.sentence + '\n';
}

Json finding_json(const Finding& finding) {
  Json json = {
      {"kind", Kessel::name_of(finding.kind)},
      {"severity", to_text(finding.severity)},
      {"sentence", finding.sentence},
      {"offset", nullptr},
      {"line", nullptr},
      {"instance", nullptr},
      {"count", finding.count},
  };
  if (finding.line != 0) {
    json["offset"] = finding.offset;
    json["line"] = finding.line;
  }
  if (finding.instance != 0) json["instance"] = finding.instance;
  return json;
}

int exit_code_of(const std::vector<Finding>& findings) {
  const bool errors = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.severity == Severity::error;
  });
  if (errors) return EXIT_FAILED;
  return findings.empty() ? EXIT_DONE : EXIT_WARNINGS;
}

}  // namespace Velkstep
