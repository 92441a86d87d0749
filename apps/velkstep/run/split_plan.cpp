#include "run/split_plan.h"

#include <map>
#include <system_error>

#include "run/each_input.h"
#include "run/input_names.h"
#include "run/meant_files.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// An input that cannot be one, or whose name tells nothing.
[[noreturn]] void refuse_name(const std::string& in) {
  std::error_code error;
  if (fs::is_directory(in, error)) {
    throw WrongUsage(in + " is a folder; " + what_to_name_in(in) +
                     ", or the folder for the result by -o " + in);
  }
  throw WrongUsage(in +
                   ": its name does not end in .step or the like, which would tell what to call "
                   "its folder; -o OUTDIR names one");
}

/// The folder for an input that needs one of its own below `folder`.
fs::path folder_of(const std::string& in, const fs::path& folder) {
  if (in == "-") {
    throw WrongUsage("standard input has no name for a folder; -o OUTDIR names one for it alone");
  }
  const std::string stem = stem_of(in);
  if (!stem.empty()) return folder / stem;
  std::error_code error;
  if (!fs::exists(in, error)) return folder / fs::path(in).filename();  // Opening it will fail.
  refuse_name(in);
}

void refuse_folders(const std::vector<std::string>& inputs) {
  for (const std::string& in : inputs) {
    std::error_code error;
    if (fs::is_directory(in, error)) refuse_name(in);
    if (in.ends_with('/')) {
      throw WrongUsage(in + " is not there; the folder for the results is named by -o " + in);
    }
  }
}

/// What the folder of a part is called that was asked for as `what`: the last step of a path.
std::string part_folder(const std::string& what) {
  const std::string name = what.substr(what.find_last_of('/') + 1);
  if (name.empty() || name == "." || name == "..") {
    throw WrongUsage("--part " + what + " does not tell what to call its folder; say it by name");
  }
  return name;
}

/// One split for each part that was asked for.
std::vector<SplitArguments> for_parts(const SplitArguments& whole) {
  if (whole.parts.empty()) return {whole};
  std::vector<SplitArguments> plan;
  for (const std::string& part : whole.parts) {
    plan.push_back(whole);
    plan.back().part = part;
    if (whole.parts.size() > 1) plan.back().outdir /= part_folder(part);
  }
  return plan;
}

/// No two inputs go into one folder, and no two parts.
void require_own_folders(const std::vector<SplitArguments>& plan) {
  std::map<fs::path, std::string> known;
  for (const SplitArguments& one : plan) {
    const std::string what = one.parts.size() > 1 ? "--part " + one.part : one.in;
    const auto [before, is_new] = known.emplace(one.outdir.lexically_normal(), what);
    if (is_new) continue;
    throw WrongUsage(before->second + " and " + what + " would both go into " +
                     one.outdir.string() + "; split them one by one, each with its own -o OUTDIR");
  }
}

/// A second input that was mistyped is no folder.
void refuse_folder_like_a_file(const std::string& in, const std::string& folder) {
  std::error_code error;
  if (stem_of(folder).empty() || fs::exists(folder, error)) return;
  const std::string meant = meant_instead_of(folder);
  const bool is_another = !meant.empty() && !stem_of(meant).empty() && meant != in;
  throw WrongUsage(folder + " is not there; " +
                   (is_another ? "did you mean " + meant + "? Or" : "check its name, or") +
                   " name the folder for the result by -o " + folder);
}

}  // namespace

std::vector<SplitArguments> plan_splits(const SplitArguments& arguments) {
  std::vector<std::string> inputs = arguments.inputs;
  fs::path folder = arguments.output;
  std::error_code error;
  if (folder.empty() && inputs.size() == 2 && inputs[1] != "-" &&
      !fs::is_regular_file(inputs[1], error)) {
    refuse_folder_like_a_file(inputs[0], inputs[1]);
    folder = inputs[1];
    inputs.pop_back();
    if (folder.empty()) throw WrongUsage("OUTDIR is empty; name a folder");
  }
  const bool is_one = inputs.size() == 1;
  if (!is_one) refuse_folders(inputs);
  std::vector<SplitArguments> plan;
  for (const std::string& in : inputs) {
    SplitArguments one = arguments;
    one.in = in;
    one.outdir = is_one && !folder.empty() ? folder : folder_of(in, folder);
    for (SplitArguments& part : for_parts(one)) plan.push_back(std::move(part));
  }
  require_own_folders(plan);
  return plan;
}

int for_each_split(const SplitArguments& arguments,
                   const std::function<int(const SplitArguments&)>& split_one) {
  std::vector<SplitArguments> plan = plan_splits(arguments);
  EachInput each;
  each.jobs = arguments.jobs;
  if (arguments.parts.size() > 1) {
    each.one = "part";
    each.many = "parts";
  }
  each.summary = !arguments.quiet;
  each.progress = arguments.quiet ? ShowProgress::never : arguments.progress;
  for (SplitArguments& one : plan) {
    each.inputs.push_back(one.in);
    if (plan.size() > 1) one.progress = ShowProgress::never;  // Theirs would not be seen.
  }
  return for_each_input(each, [&](std::size_t i) { return split_one(plan[i]); });
}

}  // namespace Velkstep
