// The C interface: the same split, with every exception turned into a status.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "c_interface/difference_rows.h"
#include "c_interface/finding_rows.h"
#include "c_interface/overview_rows.h"
#include "encoding/utf8_path.h"
#include "kessel/check.h"
#include "kessel/diff.h"
#include "kessel/encoding.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "kessel/join.h"
#include "kessel/kessel.h"
#include "kessel/options.h"
#include "kessel/overview.h"
#include "kessel/picture.h"
#include "kessel/shrink.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"

struct kessel_result {
  kessel_status status = KESSEL_DONE;
  std::string error;
  std::string error_file;
  std::uint64_t error_line = 0;
  std::uint64_t error_column = 0;
  std::vector<std::string> files;
  bool is_same = false;
  bool is_certain = false;
  Kessel::Shrunk shrunk;
  Kessel::DifferenceRows differences;
  Kessel::FindingRows findings;
  Kessel::OverviewRows overview;
};

namespace Kessel {

namespace {

constexpr std::uint64_t ALL_FLAGS = KESSEL_SHRINK | KESSEL_DROP_UNREACHABLE | KESSEL_RENUMBER |
                                    KESSEL_FOLLOW_REFERENCES | KESSEL_COPY_REFERENCES |
                                    KESSEL_FOLLOW_OUTSIDE | KESSEL_ALLOW_MISSING |
                                    KESSEL_ALLOW_MIXED_SCHEMAS | KESSEL_DRAW;

constexpr const char* NO_MEMORY = "Not enough memory.";

/// Leaves the progress function when the host wants to stop.
class Cancelled : public std::exception {};

/// An argument that no split can be made of.
class BadArgument : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

/// What the caller knows of the options; members that it does not know keep their defaults.
kessel_options known_options(const kessel_options* given) {
  kessel_options known;
  kessel_default_options(&known, sizeof known);
  if (given == nullptr) return known;
  if (given->size < sizeof given->size) throw BadArgument("The options' size is not set.");
  std::memcpy(&known, given, std::min(given->size, sizeof known));
  known.size = sizeof known;
  return known;
}

Options to_options(const kessel_options& given) {
  if (given.assemblies < KESSEL_ASSEMBLIES_CLASSIC || given.assemblies > KESSEL_ASSEMBLIES_NESTED) {
    throw BadArgument("There is no such style of assemblies.");
  }
  if (given.names < KESSEL_NAMES_RECORD || given.names > KESSEL_NAMES_PRODUCT_UNICODE) {
    throw BadArgument("There is no such style of names.");
  }
  if (given.reading < KESSEL_READING_STANDARD || given.reading > KESSEL_READING_CLASSIC) {
    throw BadArgument("There is no such reading.");
  }
  if (given.reading == KESSEL_READING_CLASSIC && given.assemblies != KESSEL_ASSEMBLIES_CLASSIC) {
    throw BadArgument("The classic reading is for the classic style of assemblies only.");
  }
  const bool touches_references =
      (given.flags & (KESSEL_FOLLOW_REFERENCES | KESSEL_COPY_REFERENCES)) != 0;
  if (touches_references && given.assemblies == KESSEL_ASSEMBLIES_CLASSIC) {
    throw BadArgument("The classic style neither follows nor copies references.");
  }
  Options options;
  options.follow_references = (given.flags & KESSEL_FOLLOW_REFERENCES) != 0;
  options.copy_references = (given.flags & KESSEL_COPY_REFERENCES) != 0;
  options.follow_outside = (given.flags & KESSEL_FOLLOW_OUTSIDE) != 0;
  options.assemblies = static_cast<AssemblyStyle>(given.assemblies);
  options.names = static_cast<NameStyle>(given.names);
  options.reading = static_cast<Reading>(given.reading);
  options.memory_limit = given.memory_limit;
  if ((given.flags & ~ALL_FLAGS) != 0) throw BadArgument("There is no such flag.");
  options.shrink = (given.flags & KESSEL_SHRINK) != 0;
  if (given.progress != nullptr) {
    options.progress = [given](const Progress& progress) {
      const auto stage = static_cast<kessel_stage>(progress.stage);
      if (given.progress(given.progress_context, stage, progress.done, progress.total) != 0) {
        throw Cancelled();
      }
    };
  }
  return options;
}

/// Collects what a run is warned of.
class Heard {
 public:
  /// Has `options` tell it, as long as it lives.
  explicit Heard(std::function<void(const Finding&)>& warning) {
    warning = [this](const Finding& finding) { findings_.push_back(finding); };
  }
  FindingRows take() { return FindingRows(std::move(findings_)); }

 private:
  std::vector<Finding> findings_;
};

/// The path that a caller means. What is not UTF-8 could not be given back as it came.
std::filesystem::path path_of(const char* utf8, const char* missing) {
  if (utf8 == nullptr) throw BadArgument(missing);
  std::filesystem::path path = path_of_utf8(utf8);
  try {
    fspath_to_utf8(path);
  } catch (const std::system_error&) {
    throw BadArgument("A path is not UTF-8.");
  }
  return path;
}

void split_into(kessel_result& result, const char* in, const char* outdir,
                const kessel_options* options) {
  const std::filesystem::path input = path_of(in, "The path of the input is missing.");
  const std::filesystem::path folder = path_of(outdir, "The path of the output is missing.");
  std::vector<std::string> files;
  Options choices = to_options(known_options(options));
  Heard heard(choices.warning);
  for (const WrittenFile& file : split(input, folder, choices)) {
    files.push_back(fspath_to_utf8(file.path));
  }
  result.findings = heard.take();
  if (files.empty()) {
    result.error = "There is nothing to split.";
    result.status = KESSEL_NOTHING_TO_SPLIT;
  }
  result.files = std::move(files);
}

void compare(kessel_result& result, const char* a, const char* b, const kessel_options* options) {
  const std::filesystem::path path_a = path_of(a, "The path of the first input is missing.");
  const std::filesystem::path path_b = path_of(b, "The path of the second input is missing.");
  const Difference difference = diff(path_a, path_b, to_options(known_options(options)));
  result.differences = DifferenceRows(difference);
  result.is_same = difference.is_same;
  result.is_certain = difference.is_certain;
}

void verify_into(kessel_result& result, const char* in, const char* outdir,
                 const kessel_options* options) {
  const std::filesystem::path input = path_of(in, "The path of the input is missing.");
  const std::filesystem::path folder = path_of(outdir, "The path of the output is missing.");
  result.findings = FindingRows(verify(input, folder, to_options(known_options(options))).findings);
}

void check_into(kessel_result& result, const char* in, const kessel_options* options) {
  const std::filesystem::path input = path_of(in, "The path of the input is missing.");
  result.findings = FindingRows(check(input, to_options(known_options(options))));
}

void overview_into(kessel_result& result, const char* in, const kessel_options* options) {
  const std::filesystem::path input = path_of(in, "The path of the input is missing.");
  const kessel_options known = known_options(options);
  std::optional<DrawingOptions> fineness;
  if ((known.flags & KESSEL_DRAW) != 0) fineness.emplace();
  Overview overview = read_overview(input, fineness, to_options(known));
  FindingRows findings(std::move(overview.findings));
  result.overview = OverviewRows(std::move(overview));
  result.findings = std::move(findings);
}

void join_into(kessel_result& result, const char* root, const char* out,
               const kessel_options* options) {
  const std::filesystem::path input = path_of(root, "The path of the input is missing.");
  const std::filesystem::path output = path_of(out, "The path of the output is missing.");
  const Options choices = to_options(known_options(options));
  const std::uint64_t flags = known_options(options).flags;
  JoinOptions join_options;
  join_options.follow_outside = (flags & KESSEL_FOLLOW_OUTSIDE) != 0;
  join_options.allow_missing = (flags & KESSEL_ALLOW_MISSING) != 0;
  join_options.allow_mixed_schemas = (flags & KESSEL_ALLOW_MIXED_SCHEMAS) != 0;
  join_options.memory_limit = choices.memory_limit;
  join_options.progress = choices.progress;
  join_options.shrink = choices.shrink;
  std::vector<std::string> files = {fspath_to_utf8(output)};
  result.findings = FindingRows(join(input, output, join_options).warnings);
  result.files = std::move(files);
}

void shrink_into(kessel_result& result, const char* in, const char* out,
                 const kessel_options* options) {
  const std::filesystem::path input = path_of(in, "The path of the input is missing.");
  const std::filesystem::path output = path_of(out, "The path of the output is missing.");
  const kessel_options known = known_options(options);
  const Options choices = to_options(known);
  ShrinkOptions shrink_options;
  shrink_options.memory_limit = choices.memory_limit;
  shrink_options.progress = choices.progress;
  shrink_options.drop_unreachable = (known.flags & KESSEL_DROP_UNREACHABLE) != 0;
  shrink_options.renumber = (known.flags & KESSEL_RENUMBER) != 0;
  std::vector<std::string> files = {fspath_to_utf8(output)};
  Heard heard(shrink_options.warning);
  result.shrunk = shrink(input, output, shrink_options);
  result.findings = heard.take();
  result.files = std::move(files);
}

/// Fills what a caller knows of `known`.
template <class Known>
void fill(Known* given, std::size_t size, const Known& known) {
  if (given == nullptr) return;
  std::memset(static_cast<void*>(given), 0, size);
  std::memcpy(static_cast<void*>(given), &known, std::min(size, sizeof known));
}

View to_view(std::int32_t view) {
  switch (view) {
    case KESSEL_VIEW_ISOMETRIC:
      return View::isometric;
    case KESSEL_VIEW_FRONT:
      return View::front;
    case KESSEL_VIEW_TOP:
      return View::top;
    case KESSEL_VIEW_RIGHT:
      return View::right;
    default:
      throw BadArgument("There is no such view.");
  }
}

void draw_into(kessel_result& result, const char* in, const char* part, std::int32_t view,
               const char* out, const kessel_options* options) {
  const std::filesystem::path input = path_of(in, "The path of the input is missing.");
  const std::filesystem::path output = path_of(out, "The path of the output is missing.");
  const Options choices = to_options(known_options(options));
  PictureOptions picture_options;
  if (part != nullptr) picture_options.part = part;
  picture_options.view = to_view(view);
  picture_options.memory_limit = choices.memory_limit;
  picture_options.progress = choices.progress;
  picture_options.follow_references = choices.follow_references;
  picture_options.follow_outside = choices.follow_outside;
  std::vector<std::string> files = {fspath_to_utf8(output)};
  Heard heard(picture_options.warning);
  draw_picture(input, output, picture_options);
  result.findings = heard.take();
  result.files = std::move(files);
}

void extract_into(kessel_result& result, const char* in, const char* part, const char* out,
                  const kessel_options* options) {
  const std::filesystem::path input = path_of(in, "The path of the input is missing.");
  if (part == nullptr) throw BadArgument("The name of the part is missing.");
  const std::filesystem::path output = path_of(out, "The path of the output is missing.");
  const Options choices = to_options(known_options(options));
  ExtractOptions extract_options;
  extract_options.memory_limit = choices.memory_limit;
  extract_options.progress = choices.progress;
  extract_options.shrink = choices.shrink;
  extract_options.follow_references = choices.follow_references;
  extract_options.copy_references = choices.copy_references;
  extract_options.follow_outside = choices.follow_outside;
  std::vector<std::string> files = {fspath_to_utf8(output)};
  Heard heard(extract_options.warning);
  const ExtractedFile file = extract(input, part, output, extract_options);
  result.findings = heard.take();
  for (const std::filesystem::path& copy : file.copies) files.push_back(fspath_to_utf8(copy));
  result.files = std::move(files);
}

/// Notes how a split ended. Needs no memory that might be missing.
void end(kessel_result& result, kessel_status status, const char* error) noexcept {
  try {
    result.error = error;
    result.status = status;
  } catch (const std::bad_alloc&) {
    result.status = KESSEL_OUT_OF_MEMORY;
  }
}

/// The same for an input that was refused.
void end(kessel_result& result, const InputError& error) noexcept {
  end(result, KESSEL_INPUT_ERROR, error.what());
  result.error_line = error.finding().line;
  result.error_column = error.finding().column;
  try {
    result.error_file = utf8_of_path(error.path());
  } catch (const std::bad_alloc&) {
    result.status = KESSEL_OUT_OF_MEMORY;
  }
}

/// Calls `run` with a new result; every exception becomes its status.
template <class Run>
kessel_result* guarded(const char* cancelled, Run run) {
  std::unique_ptr<kessel_result> result(new (std::nothrow) kessel_result);
  if (!result) return nullptr;
  try {
    run(*result);
  } catch (const std::bad_alloc&) {
    result->status = KESSEL_OUT_OF_MEMORY;
  } catch (const Cancelled&) {
    end(*result, KESSEL_CANCELLED, cancelled);
  } catch (const BadArgument& error) {
    end(*result, KESSEL_BAD_ARGUMENT, error.what());
  } catch (const PartError& error) {
    end(*result, KESSEL_BAD_ARGUMENT, error.what());
  } catch (const InputError& error) {
    end(*result, error);
  } catch (const OutputError& error) {
    end(*result, KESSEL_OUTPUT_ERROR, error.what());
  } catch (const std::filesystem::filesystem_error& error) {
    end(*result, KESSEL_OUTPUT_ERROR, error.what());
  } catch (const std::invalid_argument& error) {
    end(*result, KESSEL_BAD_ARGUMENT, error.what());
  } catch (const std::out_of_range& error) {
    end(*result, KESSEL_INPUT_ERROR, error.what());
  } catch (const std::exception& error) {
    end(*result, KESSEL_FAILED, error.what());
  } catch (...) {
    end(*result, KESSEL_FAILED, "Something else than a standard exception was thrown.");
  }
  return result.release();
}

/// Puts `choices` into the `size` bytes at `options`.
void fill(kessel_options* options, std::size_t size, const Options& choices) {
  if (options == nullptr) return;
  kessel_options filled = {};
  filled.size = size;
  filled.assemblies = static_cast<std::int32_t>(choices.assemblies);
  filled.names = static_cast<std::int32_t>(choices.names);
  filled.reading = static_cast<std::int32_t>(choices.reading);
  filled.memory_limit = choices.memory_limit;
  // A caller of a later version has members that stand for their defaults when they are zero.
  std::memset(static_cast<void*>(options), 0, size);
  std::memcpy(options, &filled, std::min(size, sizeof filled));
}

}  // namespace

}  // namespace Kessel

void kessel_default_options(kessel_options* options, std::size_t size) {
  Kessel::fill(options, size, Kessel::Options());
}

void kessel_classic_options(kessel_options* options, std::size_t size) {
  Kessel::fill(options, size, Kessel::Options::classic());
}

kessel_result* kessel_split(const char* in, const char* outdir, const kessel_options* options) {
  return Kessel::guarded("The split was cancelled.", [&](kessel_result& result) {
    Kessel::split_into(result, in, outdir, options);
  });
}

kessel_result* kessel_diff(const char* a, const char* b, const kessel_options* options) {
  return Kessel::guarded("The comparison was cancelled.",
                         [&](kessel_result& result) { Kessel::compare(result, a, b, options); });
}

kessel_result* kessel_verify(const char* in, const char* outdir, const kessel_options* options) {
  return Kessel::guarded("The check was cancelled.", [&](kessel_result& result) {
    Kessel::verify_into(result, in, outdir, options);
  });
}

kessel_result* kessel_check(const char* in, const kessel_options* options) {
  return Kessel::guarded("The check was cancelled.",
                         [&](kessel_result& result) { Kessel::check_into(result, in, options); });
}

kessel_result* kessel_overview(const char* in, const kessel_options* options) {
  return Kessel::guarded("The reading was cancelled.", [&](kessel_result& result) {
    Kessel::overview_into(result, in, options);
  });
}

int kessel_summary_of(const kessel_result* result, kessel_summary* summary, std::size_t size) {
  const bool is_there = result != nullptr && result->overview.is_there();
  Kessel::fill(summary, size, is_there ? result->overview.summary() : kessel_summary());
  return is_there ? 1 : 0;
}

std::size_t kessel_part_count(const kessel_result* result) {
  return result == nullptr ? 0 : result->overview.parts();
}

int kessel_part_at(const kessel_result* result, std::size_t index, kessel_part* part,
                   std::size_t size) {
  const bool is_there = index < kessel_part_count(result);
  Kessel::fill(part, size, is_there ? result->overview.part(index) : kessel_part());
  return is_there ? 1 : 0;
}

int kessel_component_at(const kessel_result* result, std::size_t part, std::size_t index,
                        kessel_component* component, std::size_t size) {
  const bool is_there = result != nullptr && index < result->overview.components(part);
  Kessel::fill(component, size,
               is_there ? result->overview.component(part, index) : kessel_component());
  return is_there ? 1 : 0;
}

int kessel_line_at(const kessel_result* result, std::size_t part, std::size_t index,
                   kessel_line* line, std::size_t size) {
  const bool is_there = result != nullptr && index < result->overview.lines(part);
  Kessel::fill(line, size, is_there ? result->overview.line(part, index) : kessel_line());
  return is_there ? 1 : 0;
}

std::size_t kessel_finding_count(const kessel_result* result) {
  return result == nullptr ? 0 : result->findings.size();
}

int kessel_finding_at(const kessel_result* result, std::size_t index, kessel_finding* finding,
                      std::size_t size) {
  const bool is_there = index < kessel_finding_count(result);
  Kessel::fill(finding, size, is_there ? result->findings.row(index) : kessel_finding());
  return is_there ? 1 : 0;
}

kessel_result* kessel_join(const char* root, const char* out, const kessel_options* options) {
  return Kessel::guarded("The joining was cancelled.", [&](kessel_result& result) {
    Kessel::join_into(result, root, out, options);
  });
}

kessel_result* kessel_shrink(const char* in, const char* out, const kessel_options* options) {
  return Kessel::guarded("The shrinking was cancelled.", [&](kessel_result& result) {
    Kessel::shrink_into(result, in, out, options);
  });
}

void kessel_shrunk_of(const kessel_result* result, kessel_shrunk* shrunk, std::size_t size) {
  kessel_shrunk known = {};
  if (result != nullptr) {
    const Kessel::Shrunk& all = result->shrunk;
    known = {all.records_before, all.records_after, all.unreachable, all.bytes_before,
             all.bytes_after};
  }
  Kessel::fill(shrunk, size, known);
}

std::size_t kessel_difference_count(const kessel_result* result) {
  return result == nullptr ? 0 : result->differences.size();
}

int kessel_difference_at(const kessel_result* result, std::size_t index,
                         kessel_difference* difference, std::size_t size) {
  const bool is_there = index < kessel_difference_count(result);
  Kessel::fill(difference, size, is_there ? result->differences.row(index) : kessel_difference());
  return is_there ? 1 : 0;
}

kessel_result* kessel_picture(const char* in, const char* part, int32_t view, const char* out,
                              const kessel_options* options) {
  return Kessel::guarded("The drawing was cancelled.", [&](kessel_result& result) {
    Kessel::draw_into(result, in, part, view, out, options);
  });
}

kessel_result* kessel_extract(const char* in, const char* part, const char* out,
                              const kessel_options* options) {
  return Kessel::guarded("The extraction was cancelled.", [&](kessel_result& result) {
    Kessel::extract_into(result, in, part, out, options);
  });
}

int kessel_is_certain(const kessel_result* result) {
  return result != nullptr && result->is_certain ? 1 : 0;
}

int kessel_is_same(const kessel_result* result) {
  return result != nullptr && result->is_same ? 1 : 0;
}

kessel_status kessel_status_of(const kessel_result* result) {
  return result == nullptr ? KESSEL_OUT_OF_MEMORY : result->status;
}

const char* kessel_error_of(const kessel_result* result) {
  if (kessel_status_of(result) == KESSEL_OUT_OF_MEMORY) return Kessel::NO_MEMORY;
  return result->error.c_str();
}

const char* kessel_error_file(const kessel_result* result) {
  return result == nullptr ? "" : result->error_file.c_str();
}

std::uint64_t kessel_error_line(const kessel_result* result) {
  return result == nullptr ? 0 : result->error_line;
}

std::uint64_t kessel_error_column(const kessel_result* result) {
  return result == nullptr ? 0 : result->error_column;
}

std::size_t kessel_file_count(const kessel_result* result) {
  return result == nullptr ? 0 : result->files.size();
}

const char* kessel_file(const kessel_result* result, std::size_t index) {
  return index < kessel_file_count(result) ? result->files[index].c_str() : nullptr;
}

void kessel_free(kessel_result* result) {
  delete result;
}
