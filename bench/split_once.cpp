// Splits one file through the library, and does nothing else: the process that whole-run figures
// are taken of.
//
//     split_once [FORM] IN OUTDIR
//
// FORM: see FORMS below; without it, the two-argument form runs.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <iterator>
#include <string_view>

#include "kessel/splitter.h"

namespace {

/// A way to split: an option of this program, and those of the library.
struct Form {
  std::string_view name;
  Kessel::Options options;
};

using Kessel::AssemblyStyle;
using Kessel::Reading;

/// As classic splits are, but for the reading and the limit.
Kessel::Options classic(Reading reading, std::uint64_t memory_limit) {
  Kessel::Options options = Kessel::Options::classic();
  options.reading = reading;
  options.memory_limit = memory_limit;
  return options;
}

const Form FORMS[] = {
    {"--checked", Kessel::Options::classic()},
    {"--limited", classic(Reading::classic, 64ULL << 30U)},
    {"--standard", classic(Reading::standard, Kessel::Options::NO_LIMIT)},
    {"--nested", {.assemblies = AssemblyStyle::nested}},
    {"--lean", {.assemblies = AssemblyStyle::lean}},
};

const Form* find_form(std::string_view name) {
  const Form* const end = std::end(FORMS);
  const Form* const found =
      std::find_if(FORMS, end, [&](const Form& form) { return form.name == name; });
  return found == end ? nullptr : found;
}

/// How many files were written.
std::size_t run(const Form* form, const char* in, const char* outdir) {
  if (form != nullptr) return Kessel::split(in, outdir, form->options).size();
  return Kessel::Run(in, outdir).size();
}

}  // namespace

int main(int argc, char** argv) {
  const Form* const form = argc == 4 ? find_form(argv[1]) : nullptr;
  if (argc != 3 && form == nullptr) {
    std::fputs("usage: split_once [FORM] IN OUTDIR\nforms:", stderr);
    for (const Form& known : FORMS) std::fprintf(stderr, " %s", known.name.data());
    std::fputs("\n", stderr);
    return 2;
  }
  try {
    std::printf("%zu\n", run(form, argv[argc - 2], argv[argc - 1]));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "split_once: %s\n", error.what());
    return 1;
  }
  return 0;
}
