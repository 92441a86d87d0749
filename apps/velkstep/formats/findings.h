// How commands print findings, and what they mean for the exit code.
#pragma once

#include <string>
#include <vector>

#include "kessel/finding.h"

namespace Velkstep {

/// One line, as compilers print it: `name`, which is made fit for terminals, line and column
/// where there are any, how bad it is, what it is.
std::string finding_text(const std::string& name, const Kessel::Finding& finding);

/// "error" or "warning".
const char* word_of(Kessel::Severity severity);

/// EXIT_FAILED for errors, EXIT_WARNINGS for warnings only, EXIT_DONE for nothing.
int exit_code_of(const std::vector<Kessel::Finding>& findings);

}  // namespace Velkstep
