// What differs between two files as JSON.
#include "json/documents.h"
#include "json/json_line.h"

namespace Velkstep {

namespace {

using Kessel::ChangedRecord;
using Kessel::Difference;
using Kessel::ProductDifference;
using Kessel::TypeDifference;

Json number_or_null(std::uint64_t number) {
  return number == 0 ? Json(nullptr) : Json(number);
}

Json record_json(const ChangedRecord& record) {
  Json json = {{"in_a", number_or_null(record.in_a)},
               {"in_b", number_or_null(record.in_b)},
               {"parameters", Json::array()}};
  for (const Kessel::ChangedParameter& parameter : record.parameters) {
    json["parameters"].push_back({{"keyword", parameter.keyword},
                                  {"place", parameter.place},
                                  {"in_a", parameter.in_a},
                                  {"in_b", parameter.in_b}});
  }
  return json;
}

Json type_json(const TypeDifference& type, bool summary) {
  if (summary) {
    return {{"type", type.type},
            {"only_in_a", type.only_in_a.size()},
            {"only_in_b", type.only_in_b.size()},
            {"changed", type.changed.size()}};
  }
  Json json = {{"type", type.type},
               {"only_in_a", type.only_in_a},
               {"only_in_b", type.only_in_b},
               {"changed", Json::array()}};
  for (const ChangedRecord& record : type.changed) json["changed"].push_back(record_json(record));
  return json;
}

Json product_json(const ProductDifference& product, bool summary) {
  Json json = {{"id", product.id},
               {"name", product.name},
               {"definition_in_a", number_or_null(product.definition_in_a)},
               {"definition_in_b", number_or_null(product.definition_in_b)},
               {"types", Json::array()}};
  for (const TypeDifference& type : product.types) {
    json["types"].push_back(type_json(type, summary));
  }
  return json;
}

}  // namespace

std::string diff_json(const Difference& difference, const std::string& a, const std::string& b,
                      bool summary) {
  Json json = {
      {"format", JSON_FORMAT},
      {"a", a},
      {"b", b},
      {"same", difference.is_same},
      {"certain", difference.is_certain},
      {"schemas_in_a", difference.schemas_in_a},
      {"schemas_in_b", difference.schemas_in_b},
      {"records_in_a", difference.records_in_a},
      {"records_in_b", difference.records_in_b},
      {"products", Json::array()},
  };
  for (const ProductDifference& product : difference.products) {
    json["products"].push_back(product_json(product, summary));
  }
  return json_line(json);
}

}  // namespace Velkstep
