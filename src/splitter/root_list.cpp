// The file that tells a host which of the files is the root's.
#include "splitter/root_list.h"

#include <cerrno>
#include <fstream>

#include "findings/write_failure.h"

namespace Kessel {

void list_root(const Store& store) {
  if (store.root == nullptr) return;
  errno = 0;
  std::ofstream roots_file(ROOT_LIST);
  roots_file << store.root->get_utf8_filepath() << '\n';
  roots_file.close();
  if (roots_file.fail()) note_write_failure(ROOT_LIST);
}

}  // namespace Kessel
