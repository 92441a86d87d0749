// Decides which instances each part's file receives, and under which numbers.
#include "association/passes.h"
#include "kessel/file.h"

namespace Kessel {

void File::associate_entities() const {
  initiate_recognition();
  for (const Pass& pass : association_passes()) run_pass(*this, pass);
  associate_others();
}

}  // namespace Kessel
