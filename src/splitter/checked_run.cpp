// A run that ends, and that says so when a file was not written whole.
#include "splitter/checked_run.h"

#include <memory>

#include "check/input_file.h"
#include "check/refusal.h"
#include "kessel/encoding.h"
#include "kessel/errors.h"
#include "reader/refusals.h"
#include "splitter/fresh_files.h"
#include "splitter/input_stamp.h"
#include "splitter/written_files.h"

namespace Kessel {

namespace {

/// Leaves no open stream and no name behind, however the run ends.
struct CleanStatics {
  CleanStatics() { Part::_failure.reset(); }
  CleanStatics(const CleanStatics&) = delete;
  CleanStatics& operator=(const CleanStatics&) = delete;
  ~CleanStatics() { Part::free_statics(); }
};

}  // namespace

std::unique_ptr<File> CheckedRun::read() const {
  try {
    return File::parse_file_checked(in_, options_);
  } catch (const InputError& error) {
    throw InputError(explain(error.finding(), in_, options_));
  }
}

std::vector<WrittenFile> CheckedRun::write_to(const std::filesystem::path& outdir) {
  if (const auto finding = find_no_regular_file(in_)) throw InputError(*finding);
  const InputStamp before(in_);
  const std::unique_ptr<File> file = read();

  const CleanStatics statics;
  file->process_parts(decode_step_to_utf8);
  require_fresh_files(*file, in_, outdir);
  if (file->root_part() != nullptr) file->list_root();
  if (Part::_failure) throw OutputError(Part::_failure->path, Part::_failure->reason);
  file->extract_parts(outdir, options_);
  if (InputStamp(in_) != before) throw InputError(input_changed(0));
  return described_files(*file, outdir);
}

}  // namespace Kessel
