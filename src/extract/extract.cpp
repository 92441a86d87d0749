// The entry points of hosts.
#include "kessel/extract.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "extract/extraction.h"
#include "extract/fresh_folder.h"
#include "extract/part_names.h"
#include "findings/named_errors.h"
#include "inspection/inspected_file.h"

namespace Kessel {

namespace fs = std::filesystem;

namespace {

std::vector<NamedPart> parts_of(const fs::path& in, const ExtractOptions& options) {
  Options reading;
  reading.memory_limit = options.memory_limit;
  const std::unique_ptr<FollowedInput> followed = followed_input(in, options);
  const InspectedFile file(followed ? followed->path() : in, reading);
  const PartNames names(file.instances, file.products);
  std::vector<NamedPart> parts;
  for (ProductId product = 0; product < file.products.products.size(); ++product) {
    parts.push_back(names[product]);
  }
  return parts;
}

std::vector<ExtractedFile> extract_into(const fs::path& in, const std::vector<std::string>& parts,
                                        const fs::path& outdir, const ExtractOptions& options) {
  std::optional<FreshFolder> folder;  // Goes behind the files in it.
  Extraction extraction(in, options);
  std::vector<ProductId> products;
  for (const std::string& part : parts) {
    const ProductId product = extraction.find(part);
    if (std::find(products.begin(), products.end(), product) == products.end()) {
      products.push_back(product);
    }
  }
  if (options.bodies) {
    for (const ProductId product : products) extraction.require_bodies(product);
  }
  folder.emplace(outdir);
  for (const ProductId product : products) {
    if (options.bodies) {
      extraction.ask_bodies(product, outdir);
    } else {
      extraction.ask(product, outdir / extraction.file_name(product));
    }
  }
  return extraction.write();
}

}  // namespace

std::vector<NamedPart> read_parts(const fs::path& in, const ExtractOptions& options) {
  return with_named_errors(in, [&] { return parts_of(in, options); });
}

ExtractedFile extract(const fs::path& in, const std::string& part, const fs::path& out,
                      const ExtractOptions& options) {
  return with_named_errors(in, [&] {
    Extraction extraction(in, options);
    extraction.ask(extraction.find(part), out);
    return extraction.write().front();
  });
}

std::vector<ExtractedFile> extract_each(const fs::path& in, const std::vector<std::string>& parts,
                                        const fs::path& outdir, const ExtractOptions& options) {
  return with_named_errors(in, [&] { return extract_into(in, parts, outdir, options); });
}

}  // namespace Kessel
