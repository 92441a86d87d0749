#include "commands/picture_command.h"

#include <iostream>

#include "json/documents.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "run/exit_codes.h"
#include "run/one_output.h"
#include "run/progress.h"
#include "run/unpacked.h"
#include "run/warnings.h"
#include "run/with_input.h"
#include "system/interruption.h"
#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

Kessel::Picture draw(const fs::path& in, const PictureArguments& arguments, Warnings& warnings) {
  Kessel::PictureOptions options;
  options.part = arguments.part;
  options.view = arguments.view;
  options.memory_limit = arguments.memory_limit;
  options.follow_references = arguments.follow;
  options.follow_outside = arguments.follow_outside;
  options.input_folder = folder_of_input(arguments.in);
  Unpacked unpacked;
  options.readable = unpacked.readable();
  options.replace = arguments.force;
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = progress_on(bar);
  options.warning = [&](const Kessel::Finding& finding) { warnings.add(finding); };
  return Kessel::draw_picture(in, arguments.out, options);
}

std::string picture_text(const PictureArguments& arguments, const Kessel::Picture& picture) {
  std::string text = arguments.out.string() + ": " + printable(picture.name) + ", " +
                     counted(picture.lines, "line", "lines") + "\n";
  if (picture.left_out != 0) text += "It leaves out what would be too small to be seen.\n";
  return text;
}

/// A picture without a line, or without parts of what it is to show, looks as if something had gone
/// wrong.
void mention_missing(const PictureArguments& arguments, const Kessel::Picture& picture) {
  const bool is_empty = picture.places == 0;
  if (!is_empty && picture.elsewhere == 0) return;
  const std::string out = printable(arguments.out.string());
  std::cerr << "velkstep: " << printable(shown_name(arguments.in)) << ": ";
  if (picture.elsewhere == 0) {
    std::cerr << "holds nothing to draw there, so " << out
              << " is empty; velkstep info says what it holds\n";
    return;
  }
  std::cerr << (picture.elsewhere == 1
                    ? "the shape of 1 part is"
                    : "the shapes of " + counted(picture.elsewhere, "part", "parts") + " are")
            << " in other files, so " << out << (is_empty ? " is empty" : " lacks them")
            << "; --follow reads them, too\n";
}

}  // namespace

int picture(const PictureArguments& arguments) {
  return with_input(arguments.in, [&](const fs::path& in) {
    hold_interruptions();
    try {
      refuse_to_replace(arguments.in, arguments.out);
      Warnings warnings;
      const Kessel::Picture picture = draw(in, arguments, warnings);
      if (!arguments.quiet) {
        warnings.mention(arguments.in);
        mention_missing(arguments, picture);
      }
      if (arguments.json) {
        return print(picture_json(picture, arguments.view, arguments.in, arguments.out));
      }
      return arguments.quiet ? EXIT_DONE : print(picture_text(arguments, picture));
    } catch (const Kessel::OutputError& error) {
      return fail_to_write(error, arguments.force);
    }
  });
}

}  // namespace Velkstep
