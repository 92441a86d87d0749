// velkstep report IN... [-o OUTDIR]
#include "commands/report_command.h"

#include <cerrno>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>

#include "formats/report_page.h"
#include "json/documents.h"
#include "kessel/split_list.h"
#include "run/split_plan.h"
#include "run/split_run.h"
#include "system/staged_output.h"
#include "system/write_advice.h"

namespace Velkstep {

namespace {

/// What the page is called in OUTDIR. No part's file ends like this.
constexpr const char* REPORT_FILE = "report.html";

/// Writes the page, and into the list of the files.
void write_page(const FinishedSplit& split, const SplitArguments& arguments) {
  errno = 0;
  std::ofstream file(split.folder / REPORT_FILE, std::ios::binary);
  file << report_page(split, arguments);
  file.close();
  if (!file) {
    throw UnusableOutput(
        arguments.outdir / REPORT_FILE,
        "cannot be written: " + reason_with_advice({errno, std::system_category()}));
  }
  std::optional<Kessel::SplitList> list = Kessel::read_split_list(split.folder);
  if (!list) return;  // Classic splits have none.
  list->files.push_back(Kessel::list_file(REPORT_FILE, split.folder));
  Kessel::write_split_list(*list, split.folder);
}

int report_one(const SplitArguments& arguments) {
  return run_split(arguments, [&](const FinishedSplit& split) {
    write_page(split, arguments);
    Delivery delivery = {.text = {}, .more = {REPORT_FILE}};
    if (arguments.json) {
      delivery.text = split_json(split, arguments, REPORT_FILE);
    } else if (!arguments.quiet) {
      delivery.text = shown_path(arguments.outdir, REPORT_FILE) + '\n';
    }
    return delivery;
  });
}

}  // namespace

int report(const SplitArguments& arguments) {
  return for_each_split(arguments, report_one);
}

}  // namespace Velkstep
