#include "output/whole_copy.h"

#include <cstddef>
#include <string>

#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "kessel/errors.h"
#include "output/text_files.h"

namespace Kessel {

FileFigures copy_whole(std::istream& in, const std::filesystem::path& to, std::uint32_t records,
                       const Options& options) {
  ProgressReporter reporter(options, Stage::writing, size_for_progress(in, options));
  TextFiles file({to});
  std::string block(std::size_t{256} << 10, '\0');
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    file.write(0, std::string_view(block).substr(0, static_cast<std::size_t>(in.gcount())));
    if (reporter.is_due(file.size(0))) reporter.report(file.size(0));
  }
  if (in.bad()) throw InputError(input_changed(file.size(0)));
  file.finish();
  reporter.report_end();
  return {records, file.size(0), file.hash(0)};
}

}  // namespace Kessel
