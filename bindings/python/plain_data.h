// What the library found, as dictionaries and lists. The shapes are those of the command's JSON.
#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "kessel/assembly.h"
#include "kessel/diff.h"
#include "kessel/drawing.h"
#include "kessel/extract.h"
#include "kessel/join.h"
#include "kessel/overview.h"
#include "kessel/picture.h"
#include "kessel/shrink.h"
#include "kessel/summary.h"
#include "kessel/verify.h"

namespace Velkstep {

/// The product structure of `input`. Needs the interpreter's lock.
pybind11::dict tree_dict(const Kessel::Assembly& assembly, const std::string& input);

/// What differs between `a` and `b`. Needs the interpreter's lock.
pybind11::dict diff_dict(const Kessel::Difference& difference, const std::string& a,
                         const std::string& b);

/// What is wrong with the split of `input` in `outdir`. Needs the interpreter's lock.
pybind11::dict verify_dict(const Kessel::Verification& verification, const std::string& input,
                           const std::string& outdir);

/// How much of `input` is left in `output`. Needs the interpreter's lock.
pybind11::dict shrink_dict(const Kessel::Shrunk& shrunk,
                           const std::vector<Kessel::Finding>& warnings, const std::string& input,
                           const std::string& output);

/// What was joined into `output` from `root` on. Needs the interpreter's lock.
pybind11::dict join_dict(const Kessel::Joined& joined, const std::string& root,
                         const std::string& output);

/// What can be extracted, one of it. Needs the interpreter's lock.
pybind11::dict named_part_dict(const Kessel::NamedPart& part);

/// What was extracted from `input` into `output`. Needs the interpreter's lock.
pybind11::dict extract_dict(const std::vector<Kessel::ExtractedFile>& files,
                            const std::string& input, const std::string& output);

/// What was drawn of `input` into `output`. Needs the interpreter's lock.
pybind11::dict picture_dict(const Kessel::Picture& picture, const std::string& view,
                            const std::string& input, const std::string& output);

/// The lines and placed components of `input`. Needs the interpreter's lock.
pybind11::dict drawing_dict(const Kessel::Drawing& drawing, const std::string& input);

/// What is wrong with `input`. Needs the interpreter's lock.
pybind11::dict check_dict(const std::vector<Kessel::Finding>& findings, const std::string& input);

/// All that there is to tell of `input`. Needs the interpreter's lock.
pybind11::dict overview_dict(const Kessel::Overview& overview, const std::string& input);

/// Header and counts of `input`. Needs the interpreter's lock.
pybind11::dict info_dict(const Kessel::Summary& summary, const std::string& input);

}  // namespace Velkstep
