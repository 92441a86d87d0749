// A run that ends, and that says so when a file was not written whole.
#include "splitter/checked_run.h"

#include <memory>
#include <string>
#include <string_view>

#include "association/associate.h"
#include "check/refusal.h"
#include "exchange/string_value.h"
#include "findings/input_file.h"
#include "findings/refusals.h"
#include "findings/write_failure.h"
#include "kessel/errors.h"
#include "output/input_stamp.h"
#include "reader/parse_file.h"
#include "splitter/fresh_files.h"
#include "splitter/root_list.h"
#include "splitter/written_files.h"
#include "structure/process_parts.h"
#include "writer/write_parts.h"

namespace Kessel {

namespace {

/// Leaves no open stream and no name behind, however the run ends.
struct CleanStatics {
  CleanStatics() { forget_write_failure(); }
  CleanStatics(const CleanStatics&) = delete;
  CleanStatics& operator=(const CleanStatics&) = delete;
  ~CleanStatics() { Part::free_statics(); }
};

/// What a product is called whose name has this body in the input. Files are called after products
/// in one way whatever the style; that of hosts, decode_step_to_utf8, leaves characters out.
std::string value_of_body(std::string_view body) {
  return Exchange::string_value('\'' + std::string(body) + '\'');
}

}  // namespace

std::unique_ptr<Store> CheckedRun::read() const {
  try {
    return parse_file_checked(in_, options_);
  } catch (const InputError& error) {
    throw InputError(explain(error.finding(), in_));
  }
}

std::vector<WrittenFile> CheckedRun::write_to(const std::filesystem::path& outdir) {
  open_input(in_);  // What cannot be opened is refused with the reason.
  const InputStamp before(in_);
  const std::unique_ptr<Store> file = read();

  const CleanStatics statics;
  process_parts(*file, value_of_body);
  require_fresh_files(*file, in_, outdir);
  list_root(*file);
  throw_write_failure();
  associate_entities(*file, options_);
  write_parts(*file, outdir, options_);
  if (InputStamp(in_) != before) throw InputError(input_changed(0));
  return described_files(*file, outdir);
}

}  // namespace Kessel
