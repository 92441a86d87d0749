#include "support/split_run.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "kessel/part.h"
#include "kessel/splitter.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

SplitRun split_text(std::string_view input, const std::string& outdir) {
  namespace fs = std::filesystem;
  const ScratchFolder folder;
  folder.write("in.stp", input);
  SplitRun run;
  {
    const CapturedErrors errors;
    try {
      for (const fs::path& path : Kessel::Run("in.stp", outdir))
        run.result.push_back(path.string());
    } catch (const std::out_of_range& error) {
      run.exception = std::string("out_of_range: ") + error.what();
    } catch (const std::system_error& error) {
      run.exception = std::string("system_error: ") + error.what();
    } catch (const std::exception& error) {
      run.exception = std::string("exception: ") + error.what();
    }
    run.messages = errors.text();
  }
  Kessel::Part::free_statics();
  for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
    const std::string name = entry.path().lexically_relative(folder.path()).string();
    if (!entry.is_regular_file() || name == "in.stp") continue;
    if (name == "roots.txt") {
      run.roots_txt = read_file(entry.path());
    } else {
      run.files[name] = without_time_stamps(read_file(entry.path()));
    }
  }
  return run;
}

}  // namespace Kessel::test
