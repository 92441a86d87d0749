// The order of the passes.
#include <cerrno>
#include <fstream>
#include <memory>
#include <utility>

#include "kessel/file.h"
#include "model/messages.h"
#include "splitter/root_list.h"

namespace Kessel {

void File::process_parts(std::string (*decode)(std::string_view)) {
  find_and_create_parts();
  if (parts_.size() == 1) {
    messages() << "Only one part was found in the file !\n"
                  "Impossible to proceed with the splitting algorithm.\n";
    return;
  }
  link_parts();
  find_parts_types(decode);
  if (name_style_ != NameStyle::record) name_after_products(decode);
}

/// Leaves the name of the root's file to the host, in the working directory.
void File::list_root() const {
  errno = 0;
  std::ofstream roots_file(ROOT_LIST);
  roots_file << root_->get_utf8_filepath() << '\n';
  roots_file.close();
  if (roots_file.fail()) Part::note_failure(ROOT_LIST);
}

File* File::from(std::filesystem::path in, std::string (*decode)(std::string_view)) {
  return from(std::move(in), decode, Options());
}

File* File::from(std::filesystem::path in, std::string (*decode)(std::string_view),
                 const Options& options) {
  std::unique_ptr<File> file(parse_file(std::move(in), options));
  file->process_parts(decode);
  if (file->root_ != nullptr) file->list_root();
  return file.release();
}

void File::extract_parts(std::filesystem::path outdir) {
  extract_parts(std::move(outdir), Options());
}

void File::extract_parts(std::filesystem::path outdir, const Options& options) {
  associate_entities(options);
  write_parts(std::move(outdir), options);
}

}  // namespace Kessel
