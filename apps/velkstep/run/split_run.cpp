#include "run/split_run.h"

#include <exception>

#include "kessel/errors.h"
#include "run/exit_codes.h"
#include "run/with_input.h"
#include "system/input.h"
#include "system/interruption.h"
#include "system/staged_output.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// What the library leaves in the working directory beside the parts' files.
constexpr const char* ROOTS_FILE = "roots.txt";

/// Makes a folder the working directory while it lives.
class WorkingDirectory {
 public:
  explicit WorkingDirectory(const fs::path& folder) : before_(fs::current_path()) {
    fs::current_path(folder);
  }
  WorkingDirectory(const WorkingDirectory&) = delete;
  WorkingDirectory& operator=(const WorkingDirectory&) = delete;
  ~WorkingDirectory() {
    std::error_code ignored;
    fs::current_path(before_, ignored);
  }

 private:
  fs::path before_;
};

/// Splits into `folder`, "roots.txt" as well.
std::vector<Kessel::WrittenFile> split_into(const fs::path& folder, const fs::path& in,
                                            const SplitArguments& arguments) {
  Kessel::Options options = arguments.options;
  options.folder_in_headers = false;
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = [&](const Kessel::Progress& progress) {
    throw_if_interrupted();
    bar.show(progress);
  };
  const WorkingDirectory inside(folder);
  return Kessel::split(in, ".", options);
}

/// The root's file comes last: where it is, the split is complete.
std::vector<std::string> in_order_of_arrival(const FinishedSplit& split,
                                             const std::vector<std::string>& more) {
  std::vector<std::string> order = more;
  if (split.has_root) order.emplace_back(ROOTS_FILE);
  for (auto file = split.files.rbegin(); file != split.files.rend(); ++file) {
    order.push_back(file->path.string());
  }
  return order;
}

int fail_at(const std::string& name, const Kessel::Finding& finding) {
  return fail(finding.line == 0 ? name : name + ":" + std::to_string(finding.line),
              finding.sentence);
}

}  // namespace

int run_split(const SplitArguments& arguments,
              const std::function<Delivery(const FinishedSplit&)>& prepare) {
  const std::string name = shown_name(arguments.in);
  try {
    hold_interruptions();
    const Input input(arguments.in);
    StagedOutput staged(arguments.outdir);
    FinishedSplit split;
    split.input = fs::absolute(input.path());
    split.folder = staged.folder();
    split.files = split_into(split.folder, split.input, arguments);
    split.has_root = fs::exists(split.folder / ROOTS_FILE);
    if (split.files.empty()) return EXIT_NOTHING_TO_SPLIT;  // The library has said why.
    const Delivery delivery = prepare(split);
    staged.publish(in_order_of_arrival(split, delivery.more), arguments.force);
    return print(delivery.text);
  } catch (const Interrupted&) {
    throw;
  } catch (const UnusableOutput& error) {
    return fail(error.path().string(), error.what());
  } catch (const Kessel::InputError& error) {
    return fail_at(name, error.finding());
  } catch (const Kessel::OutputError& error) {
    return fail((arguments.outdir / error.path().filename()).string(),
                "cannot be written: " + error.reason().message());
  } catch (const std::exception& error) {
    return fail(name, reason_of(error));
  }
}

}  // namespace Velkstep
