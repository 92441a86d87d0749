#include "split_list/program.h"

namespace Kessel {

const char* program_name() {
  return "velkstep " VELKSTEP_VERSION;
}

}  // namespace Kessel
