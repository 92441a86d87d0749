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
      {"column", nullptr},
      {"instance", nullptr},
      {"count", finding.count},
  };
  if (finding.line != 0) {
    json["offset"] = finding.offset;
    json["line"] = finding.line;
    json["column"] = finding.column;
  }
  if (finding.instance != 0) json["instance"] = finding.instance;
  return json;
}

/// The findings about the one input.
Json findings_of_input(const std::vector<Finding>& findings) {
  Json list = Json::array();
  for (const Finding& finding : findings) list.push_back(finding_json(finding));
  return list;
}

/// The findings, each with its file.
Json findings_with_files(const std::vector<Finding>& findings) {
  Json list = Json::array();
  for (const Finding& finding : findings) {
    Json one = finding_json(finding);
    one["file"] = nullptr;
    if (!finding.file.empty()) one["file"] = finding.file;
    list.push_back(std::move(one));
  }
  return list;
}

}  // namespace

std::string check_json(const std::vector<Finding>& findings, const std::string& input) {
  return json_line(
      {{"format", JSON_FORMAT}, {"input", input}, {"findings", findings_with_files(findings)}});
}

std::string shrink_json(const Kessel::Shrunk& shrunk, const std::vector<Finding>& warnings,
                        const std::string& input, const std::filesystem::path& out) {
  return json_line({
      {"format", JSON_FORMAT},
      {"input", input},
      {"output", out.string()},
      {"records_before", shrunk.records_before},
      {"records_after", shrunk.records_after},
      {"unreachable", shrunk.unreachable},
      {"bytes_before", shrunk.bytes_before},
      {"bytes_after", shrunk.bytes_after},
      {"findings", findings_of_input(warnings)},
  });
}

std::string verify_json(const Kessel::Verification& verification, const std::string& input,
                        const std::filesystem::path& outdir) {
  return json_line({
      {"format", JSON_FORMAT},
      {"input", input},
      {"output", outdir.string()},
      {"files", verification.files},
      {"records", verification.records},
      {"findings", findings_with_files(verification.findings)},
  });
}

std::string join_json(const Kessel::Joined& joined, const std::string& root,
                      const std::filesystem::path& out) {
  Json json = {
      {"format", JSON_FORMAT},
      {"input", root},
      {"output", out.string()},
      {"records", joined.records},
      {"bytes", joined.bytes},
      {"inputs", Json::array()},
      {"findings", findings_with_files(joined.warnings)},
  };
  for (const Kessel::JoinedInput& input : joined.inputs) {
    json["inputs"].push_back({{"file", input.path.string()}, {"records", input.records}});
  }
  return json_line(json);
}

}  // namespace Velkstep
