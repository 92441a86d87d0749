#include "commands/extract_command.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "json/documents.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "run/exit_codes.h"
#include "run/input_names.h"
#include "run/one_output.h"
#include "run/progress.h"
#include "run/unpacked.h"
#include "run/warnings.h"
#include "run/with_input.h"
#include "run/wrong_usage.h"
#include "system/interruption.h"
#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// Whether OUT is to be a folder.
bool is_folder(const ExtractArguments& arguments) {
  std::error_code ignored;
  return arguments.parts.size() > 1 || arguments.bodies || !arguments.out.has_filename() ||
         fs::is_directory(arguments.out, ignored);
}

/// Files that are several go into a folder; who names a file for them meant one.
void require_folder(const ExtractArguments& arguments) {
  std::error_code error;
  const bool is_several = arguments.parts.size() > 1 || arguments.bodies;
  if (!is_several || fs::is_directory(arguments.out, error)) return;
  if (fs::exists(arguments.out, error) || !stem_of(arguments.out).empty()) {
    throw WrongUsage("--output: " + arguments.out.string() +
                     ": is to be a folder, since several files may come of this; name one");
  }
}

/// What it takes to read the input.
Kessel::ExtractOptions reading_options(const ExtractArguments& arguments) {
  Kessel::ExtractOptions options;
  options.memory_limit = arguments.memory_limit;
  options.follow_references = arguments.follow;
  options.follow_outside = arguments.follow_outside;
  options.input_folder = folder_of_input(arguments.in);
  return options;
}

std::vector<Kessel::ExtractedFile> extract_from(const fs::path& in,
                                                const ExtractArguments& arguments,
                                                Warnings& warnings) {
  Kessel::ExtractOptions options = reading_options(arguments);
  Unpacked unpacked;
  options.readable = unpacked.readable();
  options.names = arguments.names;
  options.bodies = arguments.bodies;
  options.shrink = arguments.shrink;
  options.copy_references = arguments.copy_references;
  options.replace = arguments.force;
  options.warning = [&](const Kessel::Finding& finding) { warnings.add(finding); };
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = progress_on(bar);
  if (is_folder(arguments)) {
    return Kessel::extract_each(in, arguments.parts, arguments.out, options);
  }
  return {Kessel::extract(in, arguments.parts.front(), arguments.out, options)};
}

std::string extracted_text(const std::vector<Kessel::ExtractedFile>& files) {
  std::string text;
  for (const Kessel::ExtractedFile& file : files) {
    text += file.path.string() + ": " + counted(file.records, "record", "records") + "\n";
    for (const fs::path& copy : file.copies) text += copy.string() + ": copied\n";
  }
  return text;
}

/// A table: number, name, id, path.
std::string list_text(const std::vector<Kessel::NamedPart>& parts) {
  using ShownRow = std::array<std::string, 4>;
  std::vector<ShownRow> rows{{"Number", "Name", "Id", "Path"}};
  for (const Kessel::NamedPart& part : parts) {
    rows.push_back({"#" + std::to_string(part.record), printable(part.name), printable(part.id),
                    printable(part.path)});
  }
  std::array<std::size_t, 3> widths{};
  for (const ShownRow& row : rows) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      widths[i] = std::max(widths[i], display_width(row[i]));
    }
  }
  std::string text;
  for (const ShownRow& row : rows) {
    for (std::size_t i = 0; i < widths.size(); ++i) text += padded_right(row[i], widths[i]) + "  ";
    text += row.back() + "\n";
  }
  return text;
}

int list(const ExtractArguments& arguments, const fs::path& in) {
  Kessel::ExtractOptions options = reading_options(arguments);
  Unpacked unpacked;
  options.readable = unpacked.readable();
  Warnings warnings;
  options.warning = [&](const Kessel::Finding& finding) { warnings.add(finding); };
  const std::vector<Kessel::NamedPart> parts = Kessel::read_parts(in, options);
  warnings.mention(arguments.in);
  if (parts.empty()) mention_no_part(arguments.in);
  return print(arguments.json ? parts_json(parts, arguments.in) : list_text(parts));
}

}  // namespace

int extract(const ExtractArguments& arguments) {
  require_folder(arguments);
  return with_input(arguments.in, [&](const fs::path& in) {
    if (arguments.list) return list(arguments, in);
    hold_interruptions();
    try {
      refuse_to_replace(arguments.in, arguments.out);
      Warnings warnings;
      const std::vector<Kessel::ExtractedFile> files = extract_from(in, arguments, warnings);
      if (!arguments.quiet) warnings.mention(arguments.in);
      if (arguments.json) return print(extract_json(files, arguments.in, arguments.out));
      return arguments.quiet ? EXIT_DONE : print(extracted_text(files));
    } catch (const Kessel::OutputError& error) {
      return fail_to_write(error, arguments.force);
    }
  });
}

}  // namespace Velkstep
