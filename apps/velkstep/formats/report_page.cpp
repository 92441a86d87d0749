// The page that shows a split.
#include "formats/report_page.h"

#include <string_view>

#include "json/documents.h"
#include "report/page_text.h"

namespace Velkstep {

std::string report_page(const FinishedSplit& split, const SplitArguments& arguments) {
  std::string page;
  for (const std::string_view piece : REPORT_PAGE_START) page += piece;
  page += report_json(split, arguments);
  for (const std::string_view piece : REPORT_PAGE_END) page += piece;
  return page;
}

}  // namespace Velkstep
