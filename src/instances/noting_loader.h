// Loads a file, and notes what it is warned of.
#pragma once

#include "findings/finding_list.h"
#include "instances/loader.h"

namespace Kessel {

/// Fills Instances, and adds to `warnings`, which must outlive it, what the reading warns of.
class NotingLoader final : public InstanceLoader {
 public:
  NotingLoader(Instances& instances, const Options& options, FindingList& warnings,
               std::uint64_t total = 0)
      : InstanceLoader(instances, options, total), warnings_(warnings) {}
  void warning(const Finding& finding) override { warnings_.add(finding); }

 private:
  FindingList& warnings_;
};

}  // namespace Kessel
