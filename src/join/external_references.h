// What in a file refers to other files.
#pragma once

#include <string>
#include <vector>

#include "instances/instances.h"
#include "products/products.h"

namespace Kessel {

/// A document that stands for a product's own file (external document reference, ISO 10303-41).
struct ExternalReference {
  /// Where the file may be, seen from the folder of the file that refers to it, UTF-8; the first
  /// that is there counts. Never empty.
  std::vector<std::string> names;
  Index document = NO_RECORD;
  /// The product definition whose file it is, and the representations of its shape that are to be
  /// found there. One of both may be unknown.
  Index definition = NO_RECORD;
  std::vector<Index> representations;
};

/// The references of a file, in the order of their documents. Known are
/// - documents of which a representation is the 'external definition', or to which an applied
///   document reference ties a definition if they are called as exchange files are;
/// - documents of the type 'cad_filename' that a definition has (AP203).
std::vector<ExternalReference> find_external_references(const Instances& instances,
                                                        const Products& products);

}  // namespace Kessel
