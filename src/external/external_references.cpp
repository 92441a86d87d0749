#include "external/external_references.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>

#include "exchange/parameters.h"
#include "exchange/string_value.h"
#include "external/resource.h"
#include "naming/exchange_endings.h"
#include "products/structure.h"

namespace Kessel {

namespace {

bool is_called_as_exchange_file(const std::string& name) {
  return without_exchange_ending(name).size() != name.size();
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

/// What a text means if it is none of this system's paths: a URI, or a path with the separators of
/// Windows that is seen from a folder. Empty where it can be nothing else.
std::string meant_elsewhere(const std::string& text) {
  if (text.starts_with("file:/")) return file_of_uri(text);
  const bool is_seen_from_nowhere = text.starts_with('\\') || text.find(':') == 1;
  if (is_seen_from_nowhere || text.find('\\') == std::string::npos) return {};
  std::string path = text;
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

/// Adds what a text says, and what else it may mean; `file` is the name that stands elsewhere where
/// the text is a folder, and empty where it says all.
void add_name(std::vector<FileName>& names, const FileName& said, const std::string& file = {}) {
  for (const std::string& text : {said.text, meant_elsewhere(said.text)}) {
    if (text.empty()) continue;
    FileName& name = names.emplace_back(said);
    name.text = text;
    name.name = file.empty() ? text : text.ends_with('/') ? text + file : text + "/" + file;
  }
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
    if (!documents_.empty()) {
      for (const Index record : instances_.kept()) look_at(record);
      for (const Index record : instances_.kept_with(DOCUMENTED)) look_at_managed_files(record);
    }
    std::vector<ExternalReference> references;
    for (auto& [document, found] : documents_) {
      if (auto reference = reference_of(document, found); !reference.names.empty()) {
        references.push_back(std::move(reference));
      }
    }
    return references;
  }

 private:
  static constexpr std::string_view IDENTIFICATION = "APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT";
  static constexpr std::string_view DOCUMENTED = "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS";

  struct Found {
    std::vector<FileName> names;  // as identifications say
    std::vector<Index> representations;
    std::vector<Index> managing;
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
    } else if (instances_.is(record, IDENTIFICATION)) {
      look_at_identification(record);
    } else if (instances_.is(record, DOCUMENTED)) {
      look_at_definition(record);
    } else if (instances_.is(record, "DOCUMENT_PRODUCT_EQUIVALENCE")) {
      look_at_equivalence(record);
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

  /// A managed document is what a product, version or definition says about it.
  void look_at_equivalence(Index record) {
    const auto references = instances_.references(record);
    if (references.size() < 2 || references[1].record() == NO_RECORD) return;
    const Index document = references[0].record();
    if (found(document) != nullptr) managed_[references[1].record()] = document;
  }

  /// The files of a managed document belong to what that is tied to.
  void look_at_managed_files(Index record) {
    std::vector<Index> managing{record};
    const Index version = first_reference(instances_, record, "PRODUCT_DEFINITION_FORMATION");
    if (version != NO_RECORD) {
      managing.push_back(version);
      managing.push_back(first_reference(instances_, version, "PRODUCT"));
    }
    for (std::size_t level = 0; level < managing.size(); ++level) {
      const auto equivalent = managed_.find(managing[level]);
      if (equivalent == managed_.end()) continue;
      managing.push_back(equivalent->second);
      std::erase(managing, NO_RECORD);
      for (const Reference reference : instances_.references(record)) {
        Found* const file = found(reference.record());
        if (file == nullptr || file->definition != NO_RECORD) continue;
        file->definition = documents_[equivalent->second].definition;
        file->managing = managing;
      }
      return;
    }
  }

  /// The name of the file, and where that is: (name, role, source, documents).
  void look_at_identification(Index record) {
    const std::string name = text(record, IDENTIFICATION, 0);
    std::vector<FileName> names;
    std::vector<FileName> of_sources;
    for (const Reference reference : instances_.references(record)) {
      const Index at = reference.record();
      if (at == NO_RECORD || !instances_.is(at, "EXTERNAL_SOURCE")) continue;
      const std::string source = text(at, "EXTERNAL_SOURCE", 0);
      if (!name.empty() && !source.empty() && source != name) {
        add_name(names, {{}, source, at, "EXTERNAL_SOURCE", 0}, name);
      }
      if (is_called_as_exchange_file(source) || (!source.empty() && source == name)) {
        add_name(of_sources, {{}, source, at, "EXTERNAL_SOURCE", 0});
      }
    }
    if (!name.empty()) add_name(names, {{}, name, record, IDENTIFICATION, 0});
    names.insert(names.end(), of_sources.begin(), of_sources.end());
    for (const Reference reference : instances_.references(record)) {
      Found* const document = reference.is_listed() ? found(reference.record()) : nullptr;
      if (document != nullptr) {
        document->names.insert(document->names.end(), names.begin(), names.end());
      }
    }
  }

  ExternalReference reference_of(Index document, const Found& found) const {
    ExternalReference reference;
    reference.document = document;
    reference.definition = found.definition;
    reference.representations = found.representations;
    reference.managing = found.managing;
    if (reference.definition == NO_RECORD && !found.representations.empty()) {
      const auto shown = shown_.find(found.representations.front());
      if (shown != shown_.end()) reference.definition = shown->second;
    }
    reference.names = found.names;
    add_own_names(document, found.is_cad_file, reference.names);
    const bool is_exchange_file =
        std::any_of(reference.names.begin(), reference.names.end(),
                    [](const FileName& one) { return is_called_as_exchange_file(one.name); });
    const bool is_definition_of_shape = !found.representations.empty();
    if (!is_definition_of_shape && !found.is_cad_file &&
        (found.definition == NO_RECORD || !is_exchange_file)) {
      reference.names.clear();
    }
    return reference;
  }

  /// The document's id, and its name where that can be a file's.
  void add_own_names(Index document, bool is_cad_file, std::vector<FileName>& names) const {
    // In a complex instance it is the document that has them.
    const std::string_view keyword = instances_.types().is_complex(instances_.type(document)) ||
                                             !instances_.is(document, "DOCUMENT_FILE")
                                         ? "DOCUMENT"
                                         : "DOCUMENT_FILE";
    const std::string id = text(document, keyword, 0);
    if (!id.empty()) add_name(names, {{}, id, document, keyword, 0});
    const std::string name = text(document, keyword, 1);
    if (is_called_as_exchange_file(name) || (is_cad_file && !name.empty())) {
      add_name(names, {{}, name, document, keyword, 1});
    }
  }

  const Instances& instances_;
  std::map<Index, Index> shown_;  // definitions by their representations
  std::map<Index, Found> documents_;
  std::map<Index, Index> managed_;  // documents by what they are equivalent to
};

/// The reference in a line of a reference section; without names where it names no file's anchor.
ExternalReference reference_of_entry(const Instances& instances, Index entry) {
  ExternalReference reference;
  const Resource resource = resource_in(instances.kept_body(entry));
  if (resource.anchor.empty() || resource.path.empty()) return reference;
  reference.document = entry;
  reference.anchor = decoded_uri(resource.anchor);
  reference.names.push_back({decoded_uri(resource.path), std::string(resource.path), entry, {}, 0});
  return reference;
}

}  // namespace

std::vector<ExternalReference> find_external_references(const Instances& instances,
                                                        const Products& products) {
  std::vector<ExternalReference> references = DocumentSearch(instances, products).search();
  std::vector<ExternalReference> of_entries;
  for (const Index entry : instances.kept()) {
    if (instances.type(entry) != TypeTable::REFERENCE_ENTRY) continue;
    ExternalReference reference = reference_of_entry(instances, entry);
    if (!reference.names.empty()) of_entries.push_back(std::move(reference));
  }
  references.insert(references.begin(), std::make_move_iterator(of_entries.begin()),
                    std::make_move_iterator(of_entries.end()));
  return references;
}

}  // namespace Kessel
