#include "arguments/commands.h"

#include <filesystem>
#include <memory>
#include <string>

#include "arguments/choice.h"
#include "arguments/faults.h"
#include "arguments/help_format.h"
#include "arguments/options.h"
#include "commands/check_command.h"
#include "commands/diff_command.h"
#include "commands/extract_command.h"
#include "commands/info_command.h"
#include "commands/join_command.h"
#include "commands/picture_command.h"
#include "commands/report_command.h"
#include "commands/shrink_command.h"
#include "commands/split_command.h"
#include "commands/tree_command.h"
#include "commands/verify_command.h"
#include "run/exit_codes.h"

namespace Velkstep {

namespace {

/// A subcommand, and the arguments that parsing fills for it.
template <class Arguments>
struct Command {
  CLI::App* app;
  std::shared_ptr<Arguments> arguments;
};

/// Adds a subcommand: when it is chosen, `action` is to call `run` with its arguments.
template <class Arguments>
Command<Arguments> add_command(CLI::App& app, Action& action, int (*run)(const Arguments&),
                               const std::string& name, const std::string& description) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand(name, description)->group("Commands");
  command->footer(USUAL_EXIT_CODES);
  command->callback(
      [&action, arguments, run] { action = [arguments, run] { return run(*arguments); }; });
  return {command, arguments};
}

/// The one input of a command.
void add_input(CLI::App* command, std::string& in) {
  command->add_option("IN", in, "The exchange file; - reads standard input")->required();
}

/// The one file that a command writes. `fault_of_ending` says what is wrong with its ending.
void add_output_option(CLI::App* command, std::filesystem::path& out,
                       std::string (*fault_of_ending)(const std::string&)) {
  command->add_option("-o,--output", out, "The file to write")
      ->type_name("OUT")
      ->check(CLI::Validator(fault_of_output, ""))
      ->check(CLI::Validator(fault_of_ending, ""))
      ->required();
}

void add_split_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, split, "split", "Split each IN into one file per part");
  command->footer(SPLIT_EXIT_CODES);
  add_split_arguments(command, *arguments);
}

void add_check_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, check, "check", "Say what is wrong or unusual in each IN");
  command->footer(CHECK_EXIT_CODES);
  add_inputs(command, arguments->in, arguments->jobs,
             "The exchange files to check; - reads standard input");
  add_follow_options(command, arguments->options.follow_references,
                     arguments->options.follow_outside,
                     "Also check the files that IN refers to, each by itself");
  add_memory_limit_option(command, arguments->options.memory_limit);
  command->add_flag("--json", arguments->json, "Print one line of JSON for each file");
}

void add_diff_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, diff, "diff", "Say whether A and B say the same, and what differs");
  command->footer(DIFF_EXIT_CODES);
  command->add_option("A", arguments->a, "An exchange file; - reads standard input")->required();
  command->add_option("B", arguments->b, "Another; - reads standard input")->required();
  command->add_flag("--summary", arguments->summary, "Count what differs in place of listing it");
  add_memory_limit_option(command, arguments->options.memory_limit);
  add_progress_option(command, arguments->progress);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
}

void add_verify_command(CLI::App& app, Action& action) {
  const auto [command, arguments] = add_command(
      app, action, verify, "verify", "Check the files that IN was split into under OUTDIR");
  command->footer(CHECK_EXIT_CODES);
  command
      ->add_option("IN", arguments->in, "The exchange file that was split; - reads standard input")
      ->required();
  command->add_option("OUTDIR", arguments->outdir, "The folder with the files of the split")
      ->check(CLI::Validator(fault_of_output, ""))
      ->required();
  add_follow_options(command, arguments->options.follow_references,
                     arguments->options.follow_outside);
  add_memory_limit_option(command, arguments->options.memory_limit);
  add_progress_option(command, arguments->progress);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
}

void add_join_command(CLI::App& app, Action& action) {
  const auto [command, arguments] = add_command(
      app, action, join, "join", "Join ROOT and the files that it refers to into one file");
  command
      ->add_option("ROOT", arguments->root,
                   "The file that refers to the others, or the folder of a split; - reads standard "
                   "input")
      ->required();
  add_output_option(command, arguments->out, fault_of_exchange_file);
  command->add_flag("-f,--force", arguments->force, "Replace OUT if it is there");
  command->add_flag("--follow-outside", arguments->follow_outside,
                    "Also read files outside of ROOT's folder");
  command->add_flag("--allow-missing", arguments->allow_missing,
                    "Keep references to files that are not there");
  command->add_flag("--allow-mixed-schemas", arguments->allow_mixed_schemas,
                    "Also take files of other schemas than ROOT's, which OUT is of");
  command->add_flag("--shrink", arguments->shrink,
                    "Make records of the result that say the same one");
  add_memory_limit_option(command, arguments->memory_limit);
  command->add_flag("-q,--quiet", arguments->quiet, "Print nothing but errors");
  add_progress_option(command, arguments->progress);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
}

void add_shrink_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, shrink, "shrink", "Write IN again, without what it says twice");
  add_input(command, arguments->in);
  add_output_option(command, arguments->out, fault_of_exchange_file);
  command->add_flag("--drop-unreachable", arguments->drop_unreachable,
                    "Leave out values, geometry and contexts that nothing leads to");
  command->add_flag("--renumber", arguments->renumber,
                    "Number the records from 1, in place of keeping their numbers");
  command->add_flag("-f,--force", arguments->force, "Replace OUT if it is there");
  add_memory_limit_option(command, arguments->memory_limit);
  command->add_flag("-q,--quiet", arguments->quiet, "Print nothing but errors");
  add_progress_option(command, arguments->progress);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
}

void add_extract_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, extract, "extract",
                  "Write a part or sub-assembly of IN, with all below it, as one file");
  add_input(command, arguments->in);
  CLI::Option* parts =
      command
          ->add_option("--part", arguments->parts,
                       "The product's name or id, # and the number of its definition, or a path "
                       "such as 'Desk lamp/Boom/Arm'; for several OUT is a folder")
          ->type_name("WHAT")
          ->expected(1)
          ->allow_extra_args(false)  // What follows is the input.
          ->take_all();
  CLI::Option* out = command
                         ->add_option("-o,--output", arguments->out,
                                      "The file to write, or the folder for several files")
                         ->type_name("OUT")
                         ->check(CLI::Validator(fault_of_output, ""))
                         ->check(CLI::Validator(fault_of_exchange_file, ""));
  CLI::Option* bodies = command->add_flag(
      "--bodies", arguments->bodies, "Write a file for each body of a part, OUT being a folder");
  CLI::Option* list =
      command->add_flag("--list", arguments->list, "List what can be extracted, and write nothing");
  list->excludes(parts)->excludes(out)->excludes(bodies);
  command->formatter(help_format("--part WHAT -o OUT"));
  add_names_option(command, arguments->names);
  command->add_flag("--shrink", arguments->shrink,
                    "Make records of each result that say the same one");
  CLI::Option* follow = command->add_flag("--follow", arguments->follow,
                                          "Read IN and the files that it refers to as one");
  command
      ->add_flag("--copy-references", arguments->copy_references,
                 "Copy the files that the part refers to beside OUT, in place of referring to them "
                 "where they are")
      ->excludes(follow)
      ->excludes(list);
  command->add_flag("--follow-outside", arguments->follow_outside,
                    "Also follow or copy files outside of IN's folder");
  command->add_flag("-f,--force", arguments->force, "Replace files that are there");
  add_memory_limit_option(command, arguments->memory_limit);
  command->add_flag("-q,--quiet", arguments->quiet, "Print nothing but errors");
  add_progress_option(command, arguments->progress);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
  command->parse_complete_callback([parts, out, list] {
    if (list->count() != 0) return;
    if (parts->count() == 0) throw CLI::RequiredError("--part");
    if (out->count() == 0) throw CLI::RequiredError("--output");
  });
}

void add_picture_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, picture, "picture", "Draw IN, or a part of it, as an SVG file");
  add_input(command, arguments->in);
  command
      ->add_option("--part", arguments->part,
                   "The product's name or id, # and the number of its definition, or a path such "
                   "as 'Desk lamp/Boom/Arm'; without it, the whole is drawn")
      ->type_name("WHAT");
  add_choice(command, "--view", arguments->view, VIEWS, "Where it is seen from");
  add_follow_options(command, arguments->follow, arguments->follow_outside);
  add_output_option(command, arguments->out, fault_of_picture);
  command->add_flag("-f,--force", arguments->force, "Replace OUT if it is there");
  add_memory_limit_option(command, arguments->memory_limit);
  command->add_flag("-q,--quiet", arguments->quiet, "Print nothing but errors");
  add_progress_option(command, arguments->progress);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
}

void add_tree_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, tree, "tree", "Show how the parts of each IN are put together");
  add_inputs(command, arguments->in, arguments->jobs, "The exchange files; - reads standard input");
  CLI::Option* depth =
      command->add_option("--depth", arguments->depth, "Levels to show below the root")
          ->type_name("N")
          ->check(CLI::Validator(fault_of_count, ""))
          ->capture_default_str();
  add_names_option(command, arguments->names);
  CLI::Option* json =
      command->add_flag("--json", arguments->json, "Print one line of JSON for each file");
  CLI::Option* dot = command->add_flag("--dot", arguments->dot, "Print a graph for Graphviz");
  CLI::Option* bom = command->add_flag("--bom", arguments->bom,
                                       "List the parts that have a shape, with total quantities");
  command->add_flag("--csv", arguments->csv, "With --bom: as comma-separated values")->needs(bom);
  command
      ->add_flag("--sizes", arguments->sizes,
                 "With --bom: also the box around each part, and its unit")
      ->needs(bom);
  add_choice(command, "--sort", arguments->order, PARTS_ORDERS,
             "With --bom: sort by name, or by quantity, the most frequent first")
      ->needs(bom);
  add_follow_options(command, arguments->follow, arguments->follow_outside);
  add_memory_limit_option(command, arguments->memory_limit);
  add_colour_option(command, arguments->colours);
  json->excludes(dot)->excludes(bom)->excludes(depth);
  dot->excludes(bom);
  bom->excludes(depth);
}

void add_info_command(CLI::App& app, Action& action) {
  const auto [command, arguments] = add_command(
      app, action, info, "info", "Show what the header of each IN says, and count what it holds");
  add_inputs(command, arguments->in, arguments->jobs, "The exchange files; - reads standard input");
  add_follow_options(command, arguments->follow, arguments->follow_outside);
  add_memory_limit_option(command, arguments->memory_limit);
  add_colour_option(command, arguments->colours);
  command->add_flag("--json", arguments->json, "Print one line of JSON for each file");
}

void add_report_command(CLI::App& app, Action& action) {
  const auto [command, arguments] =
      add_command(app, action, report, "report",
                  "Split each IN, and write a page about its parts, report.html");
  command->footer(SPLIT_EXIT_CODES);
  add_split_arguments(command, *arguments);
  command->get_option("--output")->check(CLI::Validator(fault_of_report_folder, ""));
  command->add_flag_callback(
      "--no-pictures", [arguments = arguments] { arguments->pictures = false; },
      "Leave out the drawings of the parts, their boxes and colours");
}

}  // namespace

void add_commands(CLI::App& app, Action& action) {
  app.name("velkstep");
  app.description("Splits STEP assemblies (ISO 10303-21 files) into one file per part.");
  app.formatter(help_format());
  app.set_version_flag("--version", "velkstep " VELKSTEP_VERSION, "Print the version and exit");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.require_subcommand(1);
  app.footer(std::string("velkstep COMMAND --help has the options of a command.\n\n") + EXIT_CODES);

  add_split_command(app, action);
  add_check_command(app, action);
  add_diff_command(app, action);
  add_verify_command(app, action);
  add_join_command(app, action);
  add_shrink_command(app, action);
  add_extract_command(app, action);
  add_tree_command(app, action);
  add_info_command(app, action);
  add_picture_command(app, action);
  add_report_command(app, action);
}

}  // namespace Velkstep
