#include "join/numbering.h"

namespace Kessel {

Numbering::Numbering(const FileSet& files, const Records& records)
    : records_(records), numbers_(records.size()) {
  for (std::size_t file = 0; file < files.size(); ++file) {
    const Instances& instances = files[file].instances;
    for (Index record = 0; record < instances.size(); ++record) {
      const Node node = records.node(file, record);
      if (instances.type(record) == TypeTable::ANCHOR_ENTRY || !records.is_written(node)) continue;
      numbers_[node] = static_cast<std::uint32_t>(++last_);
    }
  }
}

}  // namespace Kessel
