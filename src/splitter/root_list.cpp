// The file that tells a host which of the files is the root's.
#include "splitter/root_list.h"

#include <cerrno>
#include <fstream>

#include "findings/write_failure.h"

namespace Kessel {

bool write_root_list(const std::string& name) {
  errno = 0;
  std::ofstream list(ROOT_LIST);
  list << name << '\n';
  list.close();
  return !list.fail();
}

void list_root(const Store& store) {
  if (store.root == nullptr) return;
  if (!write_root_list(store.root->get_utf8_filepath())) note_write_failure(ROOT_LIST);
}

}  // namespace Kessel
