// Decides which instances each part's file receives, and under which numbers.
#include "association/passes.h"
#include "kessel/file.h"

namespace Kessel {

void File::associate_entities() const {
  associate_entities(AssemblyStyle::classic);
}

void File::associate_entities(AssemblyStyle style) const {
  if (style == AssemblyStyle::nested) {
    recognise_own_files();
  } else {
    initiate_recognition();
  }
  for (const Pass& pass : association_passes(style)) run_pass(*this, pass);
  associate_others();
}

}  // namespace Kessel
