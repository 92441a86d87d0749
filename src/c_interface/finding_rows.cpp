#include "c_interface/finding_rows.h"

namespace Kessel {

kessel_finding FindingRows::row(std::size_t i) const {
  const Finding& finding = findings_[i];
  kessel_finding row = {};
  row.severity = finding.severity == Severity::error ? KESSEL_ERROR : KESSEL_WARNING;
  row.kind = name_of(finding.kind).data();  // a literal, which a zero byte ends
  row.file = finding.file.c_str();
  row.sentence = finding.sentence.c_str();
  row.line = finding.line;
  row.column = finding.column;
  row.instance = finding.instance;
  row.count = finding.count;
  return row;
}

}  // namespace Kessel
