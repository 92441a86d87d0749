// The page that shows a split.
#include "formats/report_page.h"

#include "json/documents.h"
#include "report/page_text.h"

namespace Velkstep {

std::string report_page(const FinishedSplit& split, const SplitArguments& arguments) {
  std::string page(REPORT_PAGE_START);
  page += report_json(split, arguments);
  page += REPORT_PAGE_END;
  return page;
}

}  // namespace Velkstep
