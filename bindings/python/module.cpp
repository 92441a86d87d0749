// The extension module: the functions behind those of the Python package.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kessel/assembly.h"
#include "kessel/check.h"
#include "kessel/diff.h"
#include "kessel/drawing.h"
#include "kessel/extract.h"
#include "kessel/join.h"
#include "kessel/overview.h"
#include "kessel/picture.h"
#include "kessel/shrink.h"
#include "kessel/splitter.h"
#include "kessel/summary.h"
#include "plain_data.h"
#include "runs.h"

namespace Velkstep {

namespace {

namespace py = pybind11;
namespace fs = std::filesystem;

template <class Style, std::size_t COUNT>
using Words = std::array<std::pair<std::string_view, Style>, COUNT>;

constexpr Words<Kessel::AssemblyStyle, 3> ASSEMBLIES = {{
    {"classic", Kessel::AssemblyStyle::classic},
    {"lean", Kessel::AssemblyStyle::lean},
    {"nested", Kessel::AssemblyStyle::nested},
}};

constexpr Words<Kessel::View, 4> VIEWS = {{
    {"iso", Kessel::View::isometric},
    {"front", Kessel::View::front},
    {"top", Kessel::View::top},
    {"right", Kessel::View::right},
}};

constexpr Words<Kessel::NameStyle, 3> NAMES = {{
    {"record", Kessel::NameStyle::record},
    {"product", Kessel::NameStyle::product},
    {"product-unicode", Kessel::NameStyle::product_unicode},
}};

constexpr Words<Kessel::Reading, 2> READINGS = {{
    {"standard", Kessel::Reading::standard},
    {"classic", Kessel::Reading::classic},
}};

template <class Style, std::size_t COUNT>
Style style_of(const char* argument, const std::string& given, const Words<Style, COUNT>& words) {
  for (const auto& [word, style] : words) {
    if (word == given) return style;
  }
  std::string known;
  for (std::size_t i = 0; i < COUNT; ++i) {
    if (i != 0) known += i + 1 == COUNT ? " and " : ", ";
    known += "'" + std::string(words[i].first) + "'";
  }
  throw py::value_error(std::string(argument) + ": there is no style '" + given + "'; there are " +
                        known);
}

/// What becomes of files that an input refers to, where they are not copied.
void choose_references(const std::string& references, bool follow_outside, auto& options) {
  if (references != "keep" && references != "follow") {
    throw py::value_error("references: neither 'keep' nor 'follow'");
  }
  options.follow_references = references == "follow";
  options.follow_outside = follow_outside;
}

void require_function(const py::object& progress) {
  if (!progress.is_none() && PyCallable_Check(progress.ptr()) == 0) {
    throw py::type_error("progress: neither a function nor None");
  }
}

/// What becomes of files that an input refers to.
template <class Choices>
void read_references(const std::string& word, Choices& options) {
  if (word != "keep" && word != "follow" && word != "copy") {
    throw py::value_error("references: neither 'keep' nor 'follow' nor 'copy'");
  }
  options.follow_references = word == "follow";
  options.copy_references = word == "copy";
}

std::vector<fs::path> split(const fs::path& input, const fs::path& outdir,
                            const std::string& assemblies, const std::string& names,
                            const std::string& reading, const py::object& progress, bool shrink,
                            const std::string& references, bool follow_outside) {
  require_function(progress);
  Kessel::Options options;
  options.shrink = shrink;
  read_references(references, options);
  options.follow_outside = follow_outside;
  options.assemblies = style_of("assemblies", assemblies, ASSEMBLIES);
  options.names = style_of("names", names, NAMES);
  options.reading = style_of("reading", reading, READINGS);
  if (options.reading == Kessel::Reading::classic &&
      options.assemblies != Kessel::AssemblyStyle::classic) {
    throw py::value_error("reading: 'classic' needs assemblies='classic'");
  }
  if (references != "keep" && options.assemblies == Kessel::AssemblyStyle::classic) {
    throw py::value_error("references: the classic style keeps them");
  }
  if (shrink && options.assemblies == Kessel::AssemblyStyle::classic) {
    throw py::value_error("shrink: the classic style cannot be shrunk");
  }
  options.progress = progress_for(progress);
  std::vector<fs::path> files;
  run_alone(input, [&] {
    for (Kessel::WrittenFile& file : Kessel::split(input, outdir, options)) {
      files.push_back(std::move(file.path));
    }
  });
  return files;
}

py::dict tree(const fs::path& input, const std::string& names, const std::string& references,
              bool follow_outside) {
  Kessel::Options options;
  choose_references(references, follow_outside, options);
  options.names = style_of("names", names, NAMES);
  Kessel::Assembly assembly;
  run_alone(input, [&] { assembly = Kessel::read_assembly(input, options); });
  return tree_dict(assembly, input.string());
}

py::dict info(const fs::path& input, const std::string& references, bool follow_outside) {
  Kessel::Options options;
  choose_references(references, follow_outside, options);
  Kessel::Summary summary;
  run_alone(input, [&] { summary = Kessel::read_summary(input, options); });
  return info_dict(summary, input.string());
}

py::dict overview(const fs::path& input, std::optional<double> tolerance, const std::string& names,
                  const py::object& progress, const std::string& references, bool follow_outside) {
  require_function(progress);
  Kessel::Options options;
  choose_references(references, follow_outside, options);
  options.names = style_of("names", names, NAMES);
  options.progress = progress_for(progress);
  std::optional<Kessel::DrawingOptions> fineness;
  if (tolerance) fineness.emplace().tolerance = *tolerance;
  Kessel::Overview all;
  run_alone(input, [&] { all = Kessel::read_overview(input, fineness, options); });
  return overview_dict(all, input.string());
}

py::dict diff(const fs::path& a, const fs::path& b, const py::object& progress) {
  require_function(progress);
  Kessel::Options options;
  options.progress = progress_for(progress);
  Kessel::Difference difference;
  run_alone(a, [&] { difference = Kessel::diff(a, b, options); });
  return diff_dict(difference, a.string(), b.string());
}

py::dict check(const fs::path& input, const py::object& progress, const std::string& references,
               bool follow_outside) {
  require_function(progress);
  Kessel::Options options;
  choose_references(references, follow_outside, options);
  options.progress = progress_for(progress);
  std::vector<Kessel::Finding> findings;
  run_alone(input, [&] { findings = Kessel::check(input, options); });
  return check_dict(findings, input.string());
}

py::dict verify(const fs::path& input, const fs::path& outdir, const py::object& progress,
                const std::string& references, bool follow_outside) {
  require_function(progress);
  Kessel::Options options;
  choose_references(references, follow_outside, options);
  options.progress = progress_for(progress);
  Kessel::Verification verification;
  run_alone(input, [&] { verification = Kessel::verify(input, outdir, options); });
  return verify_dict(verification, input.string(), outdir.string());
}

py::dict join(const fs::path& root, const fs::path& out, bool replace, bool follow_outside,
              const py::object& progress, bool shrink, bool allow_missing,
              bool allow_mixed_schemas) {
  require_function(progress);
  Kessel::JoinOptions options;
  options.shrink = shrink;
  options.allow_missing = allow_missing;
  options.allow_mixed_schemas = allow_mixed_schemas;
  options.replace = replace;
  options.follow_outside = follow_outside;
  options.progress = progress_for(progress);
  Kessel::Joined joined;
  run_alone(root, [&] { joined = Kessel::join(root, out, options); });
  return join_dict(joined, root.string(), out.string());
}

py::dict shrink(const fs::path& input, const fs::path& out, bool replace, bool drop_unreachable,
                bool renumber, const py::object& progress) {
  require_function(progress);
  Kessel::ShrinkOptions options;
  options.replace = replace;
  options.drop_unreachable = drop_unreachable;
  options.renumber = renumber;
  options.progress = progress_for(progress);
  std::vector<Kessel::Finding> warnings;
  options.warning = [&](const Kessel::Finding& finding) { warnings.push_back(finding); };
  Kessel::Shrunk shrunk;
  run_alone(input, [&] { shrunk = Kessel::shrink(input, out, options); });
  return shrink_dict(shrunk, warnings, input.string(), out.string());
}

py::dict picture(const fs::path& input, const fs::path& out, const std::string& part,
                 const std::string& view, bool replace, const py::object& progress,
                 const std::string& references, bool follow_outside) {
  require_function(progress);
  Kessel::PictureOptions options;
  choose_references(references, follow_outside, options);
  options.part = part;
  options.view = style_of("view", view, VIEWS);
  options.replace = replace;
  options.progress = progress_for(progress);
  Kessel::Picture drawn;
  run_alone(input, [&] { drawn = Kessel::draw_picture(input, out, options); });
  return picture_dict(drawn, view, input.string(), out.string());
}

py::dict drawing(const fs::path& input, double tolerance, const std::string& names,
                 const py::object& progress, const std::string& references, bool follow_outside) {
  require_function(progress);
  Kessel::Options options;
  choose_references(references, follow_outside, options);
  options.names = style_of("names", names, NAMES);
  options.progress = progress_for(progress);
  Kessel::DrawingOptions fineness;
  fineness.tolerance = tolerance;
  Kessel::Drawing drawn;
  run_alone(input, [&] { drawn = Kessel::read_drawing(input, fineness, options); });
  return drawing_dict(drawn, input.string());
}

py::dict extract(const fs::path& input, const std::vector<std::string>& parts, const fs::path& out,
                 bool is_folder, bool bodies, const std::string& names, bool replace,
                 const py::object& progress, bool shrink, const std::string& references,
                 bool follow_outside) {
  require_function(progress);
  Kessel::ExtractOptions options;
  options.names = style_of("names", names, NAMES);
  options.bodies = bodies;
  options.shrink = shrink;
  read_references(references, options);
  options.follow_outside = follow_outside;
  options.replace = replace;
  options.progress = progress_for(progress);
  std::vector<Kessel::ExtractedFile> files;
  run_alone(input, [&] {
    if (is_folder) {
      files = Kessel::extract_each(input, parts, out, options);
    } else {
      files.push_back(Kessel::extract(input, parts.front(), out, options));
    }
  });
  return extract_dict(files, input.string(), out.string());
}

}  // namespace

}  // namespace Velkstep

PYBIND11_MODULE(_velkstep, module) {
  module.def("check", &Velkstep::check);
  module.def("diff", &Velkstep::diff);
  module.def("drawing", &Velkstep::drawing);
  module.def("extract", &Velkstep::extract);
  module.def("join", &Velkstep::join);
  module.def("overview", &Velkstep::overview);
  module.def("shrink", &Velkstep::shrink);
  module.def("picture", &Velkstep::picture);
  module.def("split", &Velkstep::split);
  module.def("tree", &Velkstep::tree);
  module.def("info", &Velkstep::info);
  module.def("verify", &Velkstep::verify);
}
