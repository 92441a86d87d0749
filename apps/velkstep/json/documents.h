// What commands print as JSON, one function for each document. Only this folder's sources read the
// JSON library's headers, which take long to compile.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "kessel/assembly.h"
#include "kessel/diff.h"
#include "kessel/extract.h"
#include "kessel/finding.h"
#include "kessel/join.h"
#include "kessel/options.h"
#include "kessel/picture.h"
#include "kessel/shrink.h"
#include "kessel/summary.h"
#include "kessel/verify.h"
#include "run/split_arguments.h"
#include "run/split_run.h"

namespace Velkstep {

// Each is one line; `input` is what the user called the file.

/// The findings about an input.
std::string check_json(const std::vector<Kessel::Finding>& findings, const std::string& input);

/// How many files and records were compared, and the findings, each with its file.
std::string verify_json(const Kessel::Verification& verification, const std::string& input,
                        const std::filesystem::path& outdir);

/// What was joined from which files, and what about it deserves a look; `root` is what the user
/// called the file.
std::string join_json(const Kessel::Joined& joined, const std::string& root,
                      const std::filesystem::path& out);

/// How much of a file is left, and what about it deserves a look; `input` is what the user called
/// it.
std::string shrink_json(const Kessel::Shrunk& shrunk, const std::vector<Kessel::Finding>& warnings,
                        const std::string& input, const std::filesystem::path& out);

/// What was extracted into which files.
std::string extract_json(const std::vector<Kessel::ExtractedFile>& files, const std::string& input,
                         const std::filesystem::path& out);

/// What can be extracted.
std::string parts_json(const std::vector<Kessel::NamedPart>& parts, const std::string& input);

/// What was drawn, and where.
std::string picture_json(const Kessel::Picture& picture, Kessel::View view,
                         const std::string& input, const std::filesystem::path& out);

/// What differs between two files, with counts in place of records where it is a summary.
std::string diff_json(const Kessel::Difference& difference, const std::string& a,
                      const std::string& b, bool summary);

/// The header and the counts, in which nothing is left out.
std::string info_json(const Kessel::Summary& summary, const std::string& input);

/// The product structure.
std::string tree_json(const Kessel::Assembly& assembly, const std::string& input);

/// The input, how it was split, the root's file, and each file with its part; and the name of the
/// page about it, unless that is empty. Reads the input again; throws as `Kessel::read_assembly`.
std::string split_json(const FinishedSplit& split, const SplitArguments& arguments,
                       const std::string& page = {});

/// What the scripts of the report page read: a split's parts and files, as JSON that no name in it
/// can end as an element of a page. Reads the input again; throws as `Kessel::read_assembly`.
std::string report_json(const FinishedSplit& split, const SplitArguments& arguments);

}  // namespace Velkstep
