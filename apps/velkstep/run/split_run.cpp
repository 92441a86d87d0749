#include "run/split_run.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <exception>
#include <iostream>
#include <optional>
#include <system_error>

#include "kessel/errors.h"
#include "kessel/extract.h"
#include "kessel/split_list.h"
#include "run/exit_codes.h"
#include "run/older_split.h"
#include "run/progress.h"
#include "run/unpacked.h"
#include "run/warnings.h"
#include "run/with_input.h"
#include "system/descriptor.h"
#include "system/input.h"
#include "system/interruption.h"
#include "system/patient_output.h"
#include "system/staged_output.h"
#include "system/temporary_folder.h"
#include "system/write_advice.h"
#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// Makes a folder the working directory while it lives.
class WorkingDirectory {
 public:
  explicit WorkingDirectory(const fs::path& folder)
      : before_(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)) {
    fs::current_path(folder);
  }
  WorkingDirectory(const WorkingDirectory&) = delete;
  WorkingDirectory& operator=(const WorkingDirectory&) = delete;
  ~WorkingDirectory() {
    // Where it cannot be had back, absolute paths still do.
    [[maybe_unused]] const int changed = ::fchdir(before_.number());
  }

 private:
  Descriptor before_;  // Its path may be too long, or gone.
};

/// Splits into `folder`, "roots.txt" as well.
std::vector<Kessel::WrittenFile> split_into(const fs::path& folder, const fs::path& in,
                                            const SplitArguments& arguments, Unpacked& unpacked,
                                            Warnings& warnings) {
  Kessel::Options options = arguments.options;
  options.input_name = arguments.in == "-" ? "-" : fs::path(arguments.in).filename().string();
  if (arguments.part.empty()) {
    warnings.listen(options);
  } else {
    options.follow_references = false;  // The part was followed to.
    warnings.listen_to_part(options);
  }
  options.input_folder = folder_of_input(arguments.in);
  options.output_folder = fs::absolute(arguments.outdir);
  if (options.assemblies == Kessel::AssemblyStyle::classic) {
    options.folder_in_headers = arguments.outdir;  // The library sees another one.
  }
  options.readable = unpacked.readable();
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = progress_on(bar);
  const WorkingDirectory inside(folder);
  return Kessel::split(in, ".", options);
}

/// A file of the part that is to be split, in `folder`.
fs::path extracted(const fs::path& in, const SplitArguments& arguments, const fs::path& folder,
                   Unpacked& unpacked, Warnings& warnings) {
  Kessel::ExtractOptions options;
  options.memory_limit = arguments.options.memory_limit;
  options.progress = [](const Kessel::Progress&) { throw_if_interrupted(); };
  options.follow_references = arguments.options.follow_references;
  options.follow_outside = arguments.options.follow_outside;
  options.readable = unpacked.readable();
  options.warning = [&](const Kessel::Finding& finding) { warnings.add(finding); };
  // What it refers to is looked for by the split, and from where the input is.
  options.input_folder = folder_of_input(arguments.in);
  options.output_folder = options.input_folder;
  return Kessel::extract(in, arguments.part, folder / "part.stp", options).path;
}

/// The root's file comes last: where it is, the split is complete.
std::vector<std::string> in_order_of_arrival(const FinishedSplit& split,
                                             const std::vector<std::string>& more) {
  std::vector<std::string> order = more;
  if (split.has_root) order.emplace_back(ROOTS_FILE);
  if (split.has_list) order.emplace_back(Kessel::SPLIT_LIST);
  for (auto file = split.files.rbegin(); file != split.files.rend(); ++file) {
    order.push_back(file->path.string());
  }
  return order;
}

/// No file may take the place of one that was read, not even where replacing was asked for.
void refuse_to_replace_inputs(const std::vector<std::string>& names, const fs::path& outdir,
                              const FinishedSplit& split) {
  for (const std::string& name : names) {
    std::error_code error;
    const fs::path there = outdir / name;
    if (fs::is_symlink(there, error)) continue;
    for (const fs::path& input : split.read) {
      if (!fs::equivalent(there, input, error)) continue;
      throw UnusableOutput(there, input == split.source
                                      ? "is the input; choose another folder"
                                      : "is read with the input; choose another folder");
    }
  }
}

/// The names of what a split writes that may be written, the root's file last. Throws where the
/// split may not.
std::vector<std::string> allowed_names(const FinishedSplit& split, const Delivery& delivery,
                                       const SplitArguments& arguments) {
  std::vector<std::string> names = in_order_of_arrival(split, delivery.more);
  if (arguments.force) refuse_to_replace_inputs(names, arguments.outdir, split);
  return names;
}

/// A line for each of `names`, the last one first, behind what stands for each in a column.
std::string preview_lines(const std::vector<std::string>& names, const fs::path& outdir,
                          std::size_t width,
                          const std::function<std::string(const std::string&)>& column) {
  std::string text;
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    text += padded_left(column(*name), width) + "  " + shown_path(outdir, *name) + '\n';
  }
  return text;
}

/// Prints what would be written, the root's file first, with sizes, and how much that is; then what
/// would go of an older split, which is put into `older`.
int preview(const FinishedSplit& split, const Delivery& delivery, const SplitArguments& arguments,
            OlderSplit& older) {
  const std::vector<std::string> names = allowed_names(split, delivery, arguments);
  refuse_what_is_there(arguments.outdir, names, arguments.force);
  if (arguments.force) older = find_older_split(arguments.outdir, names, split.read);
  if (arguments.json) return print(delivery.text);
  if (arguments.quiet) return EXIT_DONE;
  const auto size_of = [&](const std::string& name) { return fs::file_size(split.folder / name); };
  std::uint64_t all = 0;
  for (const std::string& name : names) all += size_of(name);
  const std::string total = grouped(all);
  const std::string gone = "removed";
  const std::size_t width =
      older.leftovers.names.empty() ? total.size() : std::max(total.size(), gone.size());
  return print(preview_lines(names, arguments.outdir, width,
                             [&](const std::string& name) { return grouped(size_of(name)); }) +
               padded_left(total, width) + "  bytes in " + counted(names.size(), "file", "files") +
               '\n' +
               preview_lines(older.leftovers.names, arguments.outdir, width,
                             [&](const std::string&) { return gone; }));
}

/// Moves the split's files into OUTDIR and prints what there is to say about them. If either fails,
/// nothing has happened.
int deliver(const FinishedSplit& split, const Delivery& delivery, const SplitArguments& arguments,
            StagedOutput& staged, OlderSplit& older) {
  const std::vector<std::string> names = allowed_names(split, delivery, arguments);
  staged.publish(names, arguments.force, [&] {
    if (arguments.force) older = find_older_split(arguments.outdir, names, split.read);
    return older.leftovers;
  });
  try {
    write_patiently(STDOUT_FILENO, delivery.text);
  } catch (const Interrupted& interruption) {
    // A reader that has gone has seen what it wanted.
    if (interruption.signal() == SIGPIPE) staged.keep();
    throw;
  } catch (const std::system_error& error) {
    return fail_to_print(error.code());
  }
  staged.keep();
  return EXIT_DONE;
}

/// Says what a reader should know of a split that is done, a line for each thing.
void mention(const FinishedSplit& split, const SplitArguments& arguments, const Warnings& warnings,
             const OlderSplit& older) {
  if (arguments.quiet) return;
  const auto why = warnings.why_copied();
  if (why && arguments.part.empty()) {  // A part was to be the only one.
    const std::string copy = shown_path(arguments.outdir, split.files.front().path.string());
    std::cerr << "velkstep: " << printable(shown_name(arguments.in)) << ": holds "
              << (*why == Kessel::FindingKind::one_part ? "one part only" : "no part") << "; "
              << printable(copy) << (arguments.dry_run ? " would be" : " is") << " a copy of it\n";
  }
  warnings.mention(arguments.in);
  std::cerr << older_split_text(older, arguments.outdir);
}

}  // namespace

std::string shown_path(const fs::path& outdir, const std::string& name) {
  const fs::path path = outdir / name;
  // A folder before ".." may be a link, and what is above its target is somewhere else.
  const bool goes_up = std::find(path.begin(), path.end(), "..") != path.end();
  return (goes_up ? path : path.lexically_normal()).string();
}

int run_split(const SplitArguments& arguments,
              const std::function<Delivery(const FinishedSplit&)>& prepare) {
  const std::string name = shown_name(arguments.in);
  try {
    const Input input(arguments.in);
    hold_interruptions();
    std::optional<StagedOutput> staged;
    std::optional<TemporaryFolder> trial;
    FinishedSplit split;
    std::optional<TemporaryFolder> alone;
    Unpacked unpacked;
    Warnings warnings;
    split.source = fs::absolute(input.path());
    split.input = arguments.part.empty() ? split.source
                                         : extracted(split.source, arguments,
                                                     alone.emplace().path(), unpacked, warnings);
    split.folder =
        arguments.dry_run ? trial.emplace().path() : staged.emplace(arguments.outdir).folder();
    split.files = split_into(split.folder, split.input, arguments, unpacked, warnings);
    split.read = unpacked.files();
    split.read.push_back(split.source);
    split.has_root = fs::exists(split.folder / ROOTS_FILE);
    split.has_list = fs::exists(split.folder / Kessel::SPLIT_LIST);
    if (split.files.empty()) {  // The library has said what hosts are told.
      fail(
          name,
          "holds one part or none, of which a classic split makes nothing; without --classic it is "
          "copied");
      return EXIT_NOTHING_TO_SPLIT;
    }
    OlderSplit older;
    const Delivery delivery = prepare(split);
    const int exit_code = staged ? deliver(split, delivery, arguments, *staged, older)
                                 : preview(split, delivery, arguments, older);
    if (exit_code == EXIT_DONE) mention(split, arguments, warnings, older);
    return exit_code;
  } catch (const Interrupted&) {
    throw;
  } catch (const UnusableOutput& error) {
    return fail(error.path().string(), error.what());
  } catch (const Kessel::InputError& error) {
    return fail_at(name_of_file(arguments.in, error.finding()), error.finding());
  } catch (const Kessel::PartError& error) {
    return fail_to_find(arguments.in, error);
  } catch (const Kessel::OutputError& error) {
    // What has an absolute path is in the folder for temporary files.
    const bool is_output = error.path().is_relative();
    return fail((is_output ? arguments.outdir / error.path().filename() : error.path()).string(),
                "cannot be written: " + reason_with_advice(error.reason()));
  } catch (const std::exception& error) {
    return fail(name, reason_of(error));
  }
}

}  // namespace Velkstep
