#include "verify/known_changes.h"

#include <string>
#include <string_view>

#include "support/scratch_folder.h"

namespace Kessel::test {

bool is_known_change(const Finding& finding, const std::filesystem::path& outdir) {
  if (finding.kind == FindingKind::malformed_record && finding.severity == Severity::warning) {
    return true;
  }
  const std::string text = read_file(outdir / finding.file);
  const std::string_view record = std::string_view(text).substr(
      finding.offset, text.find(';', finding.offset) - finding.offset);
  return record.find("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION(") !=
             std::string_view::npos ||
         record.find("GEOMETRIC_REPRESENTATION_CONTEXT(") != std::string_view::npos;
}

}  // namespace Kessel::test
