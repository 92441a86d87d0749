// Findings as JSON.
#include "formats/findings.h"
#include "json/documents.h"
#include "json/json_line.h"
#include "run/words.h"

namespace Velkstep {

namespace {

using Kessel::Finding;

/// All that is known of a finding but its file.
Json finding_json(const Finding& finding) {
  Json json = {
      {"kind", Kessel::name_of(finding.kind)},
      {"severity", word_of(finding.severity)},
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

}  // namespace

std::string check_json(const std::vector<Finding>& findings, const std::string& input) {
  Json json = {{"format", JSON_FORMAT}, {"input", input}, {"findings", Json::array()}};
  for (const Finding& finding : findings) json["findings"].push_back(finding_json(finding));
  return json_line(json);
}

std::string verify_json(const Kessel::Verification& verification, const std::string& input,
                        const std::filesystem::path& outdir, const Kessel::Options& options) {
  Json json = {
      {"format", JSON_FORMAT},           {"input", input},
      {"output", outdir.string()},       {"assemblies", word_of(options.assemblies)},
      {"names", word_of(options.names)}, {"files", verification.files},
      {"records", verification.records}, {"findings", Json::array()},
  };
  for (const Finding& finding : verification.findings) {
    Json one = finding_json(finding);
    one["file"] = nullptr;
    if (!finding.file.empty()) one["file"] = finding.file;
    json["findings"].push_back(std::move(one));
  }
  return json_line(json);
}

}  // namespace Velkstep
