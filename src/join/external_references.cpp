#include "join/external_references.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>

#include "exchange/parameters.h"
#include "exchange/string_value.h"
#include "products/structure.h"

namespace Kessel {

namespace {

/// What exchange files' names end with, in small letters.
constexpr std::string_view ENDINGS[] = {".stp", ".step", ".p21"};

bool is_called_as_exchange_file(const std::string& name) {
  std::string small = name;
  std::transform(small.begin(), small.end(), small.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return std::any_of(std::begin(ENDINGS), std::end(ENDINGS),
                     [&](std::string_view ending) { return small.ends_with(ending); });
}

/// The text that a string parameter says; of a typed one such as IDENTIFIER('x') the text inside.
std::string text_of(std::string_view parameter) {
  if (!parameter.starts_with('\'')) {
    const auto partial = Exchange::partial_records(parameter);
    if (partial.size() != 1) return {};
    parameter = Exchange::parameter(Exchange::items_of(partial.front().list), 0);
  }
  return parameter.starts_with('\'') ? Exchange::string_value(parameter) : std::string();
}

/// Collects what is said about each document.
class DocumentSearch {
 public:
  DocumentSearch(const Instances& instances, const Products& products) : instances_(instances) {
    for (const Product& product : products.products) {
      for (const Index shown : product.representations) shown_.emplace(shown, product.definition);
    }
  }

  std::vector<ExternalReference> search() {
    for (const Index record : instances_.kept()) {
      if (is_document(record)) documents_[record];
    }
    if (documents_.empty()) return {};
    for (const Index record : instances_.kept()) look_at(record);
    std::vector<ExternalReference> references;
    for (auto& [document, found] : documents_) {
      if (auto reference = reference_of(document, found); !reference.names.empty()) {
        references.push_back(std::move(reference));
      }
    }
    return references;
  }

 private:
  struct Found {
    std::vector<std::string> places;  // as identifications say
    std::vector<Index> representations;
    Index definition = NO_RECORD;
    bool is_cad_file = false;  // said of a definition's document
  };

  bool is_document(Index record) const {
    return instances_.is(record, "DOCUMENT") || instances_.is(record, "DOCUMENT_FILE");
  }

  Exchange::Parameters parameters(Index record, std::string_view keyword) const {
    return Exchange::parameters_of(instances_.kept_body(record), keyword);
  }

  std::string text(Index record, std::string_view keyword, std::size_t place) const {
    return text_of(Exchange::parameter(parameters(record, keyword), place));
  }

  /// What `record` refers to first.
  Index subject_of(Index record) const {
    const auto references = instances_.references(record);
    return references.empty() ? NO_RECORD : references.front().record();
  }

  Found* found(Index document) {
    const auto place = documents_.find(document);
    return place == documents_.end() ? nullptr : &place->second;
  }

  void look_at(Index record) {
    if (instances_.is(record, "PROPERTY_DEFINITION_REPRESENTATION")) {
      look_at_property(record);
    } else if (instances_.is(record, "APPLIED_DOCUMENT_REFERENCE")) {
      look_at_reference(record);
    } else if (instances_.is(record, "APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT")) {
      look_at_identification(record);
    } else if (instances_.is(record, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS")) {
      look_at_definition(record);
    }
  }

  void look_at_property(Index record) {
    const auto references = instances_.references(record);
    if (references.size() < 2 || references[1].record() == NO_RECORD) return;
    const Index property = references[0].record();
    if (property == NO_RECORD || !instances_.is(property, "PROPERTY_DEFINITION")) return;
    Found* const document = found(subject_of(property));
    if (document == nullptr) return;
    if (text(property, "PROPERTY_DEFINITION", 0) != "external definition") return;
    document->representations.push_back(references[1].record());
  }

  void look_at_reference(Index record) {
    Found* const document = found(subject_of(record));
    if (document == nullptr) return;
    for (const Reference reference : instances_.references(record)) {
      Index definition = reference.record();
      if (!reference.is_listed() || definition == NO_RECORD) continue;
      if (instances_.is(definition, "PRODUCT_DEFINITION_SHAPE"))
        definition = subject_of(definition);
      if (definition == NO_RECORD || !is_definition(instances_, definition)) continue;
      if (document->definition == NO_RECORD) document->definition = definition;
    }
  }

  void look_at_definition(Index record) {
    for (const Reference reference : instances_.references(record)) {
      Found* const document = found(reference.record());
      if (document == nullptr) continue;
      const Index type = subject_of(reference.record());
      if (type == NO_RECORD || text(type, "DOCUMENT_TYPE", 0) != "cad_filename") continue;
      document->definition = record;
      document->is_cad_file = true;
    }
  }

  /// The name of the file, and where that is: (name, role, source, documents).
  void look_at_identification(Index record) {
    constexpr std::string_view KEYWORD = "APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT";
    const std::string name = text(record, KEYWORD, 0);
    std::string source;
    for (const Reference reference : instances_.references(record)) {
      if (reference.record() != NO_RECORD && instances_.is(reference.record(), "EXTERNAL_SOURCE")) {
        source = text(reference.record(), "EXTERNAL_SOURCE", 0);
      }
    }
    for (const Reference reference : instances_.references(record)) {
      Found* const document = reference.is_listed() ? found(reference.record()) : nullptr;
      if (document == nullptr) continue;
      if (!name.empty() && !source.empty() && source != name) {
        document->places.push_back(source.ends_with('/') ? source + name : source + "/" + name);
      }
      if (!name.empty()) document->places.push_back(name);
      if (is_called_as_exchange_file(source)) document->places.push_back(source);
    }
  }

  ExternalReference reference_of(Index document, const Found& found) const {
    ExternalReference reference;
    reference.document = document;
    reference.definition = found.definition;
    reference.representations = found.representations;
    if (reference.definition == NO_RECORD && !found.representations.empty()) {
      const auto shown = shown_.find(found.representations.front());
      if (shown != shown_.end()) reference.definition = shown->second;
    }
    reference.names = found.places;
    const bool is_file = instances_.is(document, "DOCUMENT_FILE");
    std::string name = text(document, is_file ? "DOCUMENT_FILE" : "DOCUMENT", 0);
    // In a complex instance it is the document that has the name.
    if (name.empty()) name = text(document, "DOCUMENT", 0);
    if (!name.empty()) reference.names.push_back(std::move(name));
    const bool is_exchange_file =
        std::any_of(reference.names.begin(), reference.names.end(), is_called_as_exchange_file);
    const bool is_definition_of_shape = !found.representations.empty();
    if (!is_definition_of_shape && !found.is_cad_file &&
        (found.definition == NO_RECORD || !is_exchange_file)) {
      reference.names.clear();
    }
    remove_repeats(reference.names);
    return reference;
  }

  static void remove_repeats(std::vector<std::string>& names) {
    std::vector<std::string> once;
    for (std::string& name : names) {
      if (std::find(once.begin(), once.end(), name) == once.end()) once.push_back(std::move(name));
    }
    names = std::move(once);
  }

  const Instances& instances_;
  std::map<Index, Index> shown_;  // definitions by their representations
  std::map<Index, Found> documents_;
};

}  // namespace

std::vector<ExternalReference> find_external_references(const Instances& instances,
                                                        const Products& products) {
  return DocumentSearch(instances, products).search();
}

}  // namespace Kessel
