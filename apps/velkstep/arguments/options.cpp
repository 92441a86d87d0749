#include "arguments/options.h"

#include "arguments/choice.h"
#include "arguments/faults.h"

namespace Velkstep {

CLI::Option* add_names_option(CLI::App* command, Kessel::NameStyle& names) {
  return add_choice(
      command, "--names", names, NAME_STYLES,
      "What files are called after: the product's name, in ASCII (product) or as it "
      "is (product-unicode), or the number of the product's own record (record), which is not "
      "that of tree");
}

void add_memory_limit_option(CLI::App* command, std::uint64_t& memory_limit) {
  command
      ->add_option("--memory-limit", memory_limit,
                   "Refuse an input whose records would take more memory: bytes, or a size such "
                   "as 500MB or 2GiB")
      ->transform(CLI::AsSizeValue(true).description(""))
      ->transform(CLI::Validator(fault_of_size, ""))  // Comes before the other.
      ->type_name("SIZE");
}

void add_follow_options(CLI::App* command, bool& follow, bool& follow_outside,
                        const char* description) {
  command->add_flag("--follow", follow, description);
  command->add_flag("--follow-outside", follow_outside, "Also follow files outside of IN's folder");
}

void add_colour_option(CLI::App* command, ColourChoice& colours) {
  add_choice(
      command, "--color", colours, COLOURS,
      "Mark text for terminals: where standard output is one and NO_COLOR is not set (auto), "
      "or in any case (always)");
}

void add_inputs(CLI::App* command, std::vector<std::string>& inputs, std::size_t& jobs,
                const std::string& description) {
  command->add_option("IN", inputs, description)->required();
  command->add_option("-j,--jobs", jobs, "How many inputs to work on at once; 0 for one per core")
      ->type_name("N")
      ->check(CLI::Validator(fault_of_count, ""))
      ->capture_default_str();
}

void add_progress_option(CLI::App* command, ShowProgress& progress) {
  add_choice(command, "--progress", progress, PROGRESS,
             "Show on standard error how far the run has come: on a terminal, when it takes longer "
             "than half a second (auto), or in any case (always)");
}

namespace {

CLI::Option* add_assemblies_option(CLI::App* command, Kessel::AssemblyStyle& assemblies) {
  return add_choice(
      command, "--assemblies", assemblies, ASSEMBLY_STYLES,
      "What an assembly's file holds: what it takes to open by itself (nested), the whole "
      "structure "
      "below it without its components' geometry (lean), or as hosts of Kessel::Run have it "
      "(classic)");
}

}  // namespace

namespace {

/// Refuses choices that make no sense together.
void require_fit(const Kessel::Options& options) {
  if (options.reading == Kessel::Reading::classic &&
      options.assemblies != Kessel::AssemblyStyle::classic) {
    throw CLI::ValidationError("--reading=classic", "needs --assemblies=classic");
  }
  if ((options.follow_references || options.copy_references) &&
      options.assemblies == Kessel::AssemblyStyle::classic) {
    throw CLI::ValidationError(options.follow_references ? "--follow" : "--copy-references",
                               "does not go with --assemblies=classic");
  }
  if (options.shrink && options.assemblies == Kessel::AssemblyStyle::classic) {
    throw CLI::ValidationError("--shrink", "needs --assemblies=lean or nested");
  }
}

/// What becomes of files that IN refers to.
void add_reference_options(CLI::App* command, Kessel::Options& options) {
  CLI::Option* const follow =
      command->add_flag("--follow", options.follow_references,
                        "Split IN and the files that it refers to as one assembly");
  command
      ->add_flag(
          "--copy-references", options.copy_references,
          "Copy the files that IN refers to into OUTDIR, in place of referring to them where "
          "they are")
      ->excludes(follow);
  command->add_flag("--follow-outside", options.follow_outside,
                    "Also follow or copy files outside of IN's folder");
}

}  // namespace

CLI::Option* add_reading_option(CLI::App* command, Kessel::Reading& reading) {
  return add_choice(command, "--reading", reading, READINGS,
                    "How IN is cut into records: as ISO 10303-21 has it (standard), or as hosts of "
                    "Kessel::Run have it, at every \";\" (classic)");
}

namespace {

/// Adds the options that choose how to split, each by itself or all for hosts at once.
void add_style_options(CLI::App* command, Kessel::Options& options) {
  CLI::Option* const assemblies = add_assemblies_option(command, options.assemblies);
  CLI::Option* const names = add_names_option(command, options.names);
  CLI::Option* const reading = add_reading_option(command, options.reading);
  command
      ->add_flag_callback(
          "--classic",
          [&options] {
            const Kessel::Options classic = Kessel::Options::classic();
            options.assemblies = classic.assemblies;
            options.names = classic.names;
            options.reading = classic.reading;
          },
          "Write the bytes that Kessel::Run writes: classic assemblies, names and reading")
      ->excludes(assemblies)
      ->excludes(names)
      ->excludes(reading);
}

}  // namespace

void add_split_arguments(CLI::App* command, SplitArguments& arguments) {
  add_inputs(command, arguments.inputs, arguments.jobs,
             "The exchange files to split; - reads standard input. A second one that is no file is "
             "OUTDIR");
  command
      ->add_option("-o,--output", arguments.output,
                   "The folder for the files, created as needed; of several inputs, for one folder "
                   "each. Without it, lamp.step is split into lamp")
      ->type_name("OUTDIR")
      ->check(CLI::Validator(fault_of_output, ""));
  command
      ->add_option("--part", arguments.parts,
                   "Split only this part and all below it, named as for extract, as if it had been "
                   "extracted before; several go into folders of their names below OUTDIR")
      ->type_name("WHAT")
      ->expected(1)
      ->allow_extra_args(false)  // What follows is the input.
      ->take_all();
  add_style_options(command, arguments.options);
  add_reference_options(command, arguments.options);
  add_memory_limit_option(command, arguments.options.memory_limit);
  command->add_flag("--shrink", arguments.options.shrink,
                    "Make records that say the same one first, as shrink does");
  command->add_flag("-f,--force", arguments.force,
                    "Replace files in OUTDIR that are called as the new ones, and remove what an "
                    "older split left there and nobody changed");
  command->add_flag(
      "-n,--dry-run", arguments.dry_run,
      "Print what would be written, with sizes in bytes, and removed, and do nothing");
  command->add_flag("-q,--quiet", arguments.quiet, "Print nothing but errors");
  command->add_flag("--json", arguments.json,
                    "Print one line of JSON for each file in place of paths");
  add_progress_option(command, arguments.progress);
  command->parse_complete_callback([&options = arguments.options] { require_fit(options); });
}

}  // namespace Velkstep
