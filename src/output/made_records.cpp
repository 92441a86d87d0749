#include "output/made_records.h"

#include "exchange/parameters.h"
#include "products/products.h"

namespace Kessel {

std::string MadeRecords::add(std::string_view keyword, std::string_view parameters) {
  std::string name = "#" + std::to_string(numbers_.take(file_));
  text_.append(MARK).append(name).append("=").append(keyword);
  text_.append("(").append(parameters).append(");\n");
  return name;
}

std::string MadeRecords::add_complex(std::string_view partial_records) {
  return add("", partial_records);
}

std::string placement_at_origin(MadeRecords& made) {
  const std::string origin = made.add("CARTESIAN_POINT", "'',(0.,0.,0.)");
  const std::string axis = made.add("DIRECTION", "'',(0.,0.,1.)");
  const std::string direction = made.add("DIRECTION", "'',(1.,0.,0.)");
  return made.add("AXIS2_PLACEMENT_3D", "''," + origin + "," + axis + "," + direction);
}

std::string renumbered(const MentioningText& text, const FileNumbers& numbers, FileId file) {
  std::string out(renumbering_room(text), '\0');
  out.resize(static_cast<std::size_t>(renumbered(text, numbers, file, out.data()) - out.data()));
  return out;
}

namespace {

constexpr std::string_view IN_ORDER = ",";

/// The placements among the items that stand in the file, as "#1,#2".
std::string placements_of(const MentioningText& items, const Instances& instances,
                          const FileNumbers& numbers, FileId file) {
  std::string list;
  for (const Reference reference : items.references) {
    const Index record = reference.record();
    if (record == NO_RECORD || !is_placement(instances, record)) continue;
    const std::uint32_t number = numbers.of(record, file);
    if (number == 0) continue;
    if (!list.empty()) list += IN_ORDER;
    list.append("#").append(std::to_string(number));
  }
  return list;
}

/// `body` with the parameter `parameter`, a view into it, replaced.
std::string with_other(const MentioningText& body, std::string_view parameter,
                       std::string_view text, const FileNumbers& numbers, FileId file) {
  const auto at = static_cast<std::size_t>(parameter.data() - body.text.data());
  return renumbered(body.cut(body.text.substr(0, at)), numbers, file) + std::string(text) +
         renumbered(body.cut(body.text.substr(at + parameter.size())), numbers, file);
}

}  // namespace

std::string placeholder_body(const MentioningText& body, const Instances& instances,
                             const FileNumbers& numbers, FileId file, MadeRecords& made) {
  const Exchange::Parameters parameters = Exchange::parameters_of(body.text, "REPRESENTATION");
  const auto text_of = [&](std::size_t i) -> std::string {
    const std::string_view parameter = Exchange::parameter(parameters, i);
    return parameter.empty() ? "$" : renumbered(body.cut(parameter), numbers, file);
  };
  std::string items;
  if (const std::string_view list = Exchange::parameter(parameters, 1); !list.empty()) {
    items = placements_of(body.cut(list), instances, numbers, file);
  }
  if (items.empty()) items = placement_at_origin(made);
  return "SHAPE_REPRESENTATION(" + text_of(0) + ",(" + items + ")," + text_of(2) + ")";
}

std::string external_context_body(const MentioningText& body, const FileNumbers& numbers,
                                  FileId file) {
  const std::string_view type =
      Exchange::parameter(Exchange::parameters_of(body.text, "REPRESENTATION_CONTEXT"), 1);
  if (!type.starts_with('\'')) return renumbered(body, numbers, file);
  return with_other(body, type, "'external'", numbers, file);
}

std::string documented_definition_body(const MentioningText& body, const FileNumbers& numbers,
                                       FileId file, std::string_view document) {
  constexpr std::string_view PLAIN = "PRODUCT_DEFINITION";
  constexpr std::string_view DOCUMENTED = "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS";
  const auto records = Exchange::partial_records(body.text);
  if (records.size() == 1 && records.front().keyword == PLAIN) {
    const std::string_view list = records.front().list;
    const std::string parameters = renumbered(body.cut(list), numbers, file);
    return std::string(DOCUMENTED) + parameters.substr(0, parameters.size() - 1) + ",(" +
           std::string(document) + "))";
  }
  if (records.size() == 1 && records.front().keyword == DOCUMENTED) {
    const std::string_view documents =
        Exchange::parameter(Exchange::items_of(records.front().list), 4);
    std::string list = renumbered(body.cut(documents), numbers, file);
    const bool is_empty = Exchange::items_of(documents).empty();
    if (list.starts_with('(')) {
      // Readers take the first of them for the file.
      list.insert(1, std::string(document) + (is_empty ? "" : ","));
      return with_other(body, documents, list, numbers, file);
    }
  }
  return renumbered(body, numbers, file);
}

}  // namespace Kessel
