// The assembly that most forms are variations of.
#pragma once

#include <string>
#include <vector>

#include "assemblies/form_maker.h"

namespace Kessel::test {

/// A root, a sub-assembly in it, and two parts, one in both of them.
struct Nest {
  FormProduct root, sub, one, two;
};

struct NestUsages {
  FormUsage sub;      ///< of the sub-assembly in the root
  FormUsage one;      ///< of the part one in the root
  FormUsage sub_one;  ///< and in the sub-assembly
  FormUsage sub_two;
};

/// The products; the assemblies are not finished.
Nest make_nest(FormMaker& form);

NestUsages place_all(FormMaker& form, Nest& nest);

/// Finishes the assemblies, and gives both parts colours.
void finish_coloured(FormMaker& form, const Nest& nest);

/// The lists that assembly_forms() is made of.
std::vector<AssemblyForm> forms_of_structure();
std::vector<AssemblyForm> forms_of_usages();
std::vector<AssemblyForm> forms_of_styles();
std::vector<AssemblyForm> forms_of_remarks();
std::vector<AssemblyForm> forms_of_notes();

}  // namespace Kessel::test
