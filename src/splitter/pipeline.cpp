// The order of the passes.
#include <iostream>
#include <memory>
#include <utility>

#include "kessel/file.h"

namespace Kessel {

void File::process_parts(std::string (*decode)(std::string_view)) {
  find_and_create_parts();
  if (parts_.size() == 1) {
    std::cerr << "Only one part was found in the file !\n"
                 "Impossible to proceed with the splitting algorithm.\n";
    return;
  }
  link_parts();
  find_parts_types(decode);
}

File* File::from(std::filesystem::path in, std::string (*decode)(std::string_view)) {
  std::unique_ptr<File> file(parse_file(std::move(in)));
  file->process_parts(decode);
  return file.release();
}

void File::extract_parts(std::filesystem::path outdir) {
  extract_parts(std::move(outdir), Options());
}

void File::extract_parts(std::filesystem::path outdir, const Options& options) {
  associate_entities(options.assemblies);
  write_parts(std::move(outdir), options.assemblies);
}

}  // namespace Kessel
