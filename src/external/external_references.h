// What in a file refers to other files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "instances/instances.h"
#include "products/products.h"

namespace Kessel {

/// A text in a record that says where a file is.
struct FileName {
  /// Where the file may be, seen from the folder of the file that refers to it, UTF-8.
  std::string name;
  /// What the text itself says: the same, or the folder in front of a name that stands elsewhere.
  /// One with backslashes, and a URI of a file, stand twice: as they are, and as the path that they
  /// mean elsewhere.
  std::string text;
  // Where it stands: which parameter, from 0, of the record or of its part `keyword`. Of a line in
  // a reference section it is the resource, and `keyword` is empty.
  Index record = NO_RECORD;
  std::string_view keyword = {};  // lives as long as the program
  std::size_t parameter = 0;
};

/// What stands for something that another file holds.
struct ExternalReference {
  /// The first whose file is there counts. Never empty.
  std::vector<FileName> names;
  /// The document (external document reference, ISO 10303-41), or the line of a reference section
  /// (ISO 10303-21, 11).
  Index document = NO_RECORD;
  /// The product definition whose file it is, and the representations of its shape that are to be
  /// found there. One of both may be unknown.
  Index definition = NO_RECORD;
  std::vector<Index> representations;
  /// Records that are there for the document alone: the managed document that it is a file of, and
  /// that document's version and product.
  std::vector<Index> managing;
  /// Of a line of a reference section: the anchor in the other file that it names. No other member
  /// but names and document is set then.
  std::string anchor;

  bool is_to_anchor() const { return !anchor.empty(); }
};

/// The references of a file, in the order of their documents. Known are
/// - documents of which a representation is the 'external definition', or to which an applied
///   document reference ties a definition if they are called as exchange files are;
/// - files of a managed document to which an applied document reference ties a definition, where a
///   DOCUMENT_PRODUCT_EQUIVALENCE says which product the document is;
/// - documents of the type 'cad_filename' that a definition has (AP203);
/// - lines of reference sections that name an anchor in a file.
std::vector<ExternalReference> find_external_references(const Instances& instances,
                                                        const Products& products);

}  // namespace Kessel
