// From a shape definition to the product definition behind it.
#include "structure/definition_search.h"

#include <gtest/gtest.h>

#include "structure/record_graph.h"

namespace Kessel::test {
namespace {

std::string definition(const RecordGraph& graph, std::uint32_t start) {
  ReachabilitySearch search(graph.slots());
  return outcome_of([&] { return find_definition(search, start); });
}

TEST(DefinitionSearch, ProductDefinitionComesFirstHoweverFarItIs) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 3});
  graph.add(2, "MAPPED_ITEM");
  graph.add(3, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS", {4});
  graph.add(4, "PRODUCT_DEFINITION");
  EXPECT_EQ(definition(graph, 1), "4");
}

TEST(DefinitionSearch, DefinitionWithDocumentsComesBeforeMappedItem) {
  RecordGraph graph(10);
  graph.add(1, "", {2});
  graph.add(2, "MAPPED_ITEM", {3});
  graph.add(3, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS");
  EXPECT_EQ(definition(graph, 1), "3");
}

TEST(DefinitionSearch, MappedItemIsTheLastResort) {
  RecordGraph graph(10);
  graph.add(1, "", {2});
  graph.add(2, "MAPPED_ITEM");
  EXPECT_EQ(definition(graph, 1), "2");
  EXPECT_EQ(definition(graph, 2), "2");
}

TEST(DefinitionSearch, OtherTypesAreNoDefinitions) {
  RecordGraph graph(10);
  graph.add(1, "PRODUCT_DEFINITION_SHAPE", {2});
  graph.add(2, "PRODUCT");
  EXPECT_EQ(definition(graph, 1), "0");
  EXPECT_EQ(definition(graph, 0), "0");
}

TEST(DefinitionSearch, NumberBeyondTheStoreThrows) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 10});
  graph.add(2, "MAPPED_ITEM");
  EXPECT_EQ(definition(graph, 1), "out of range: invalid vector subscript");
}

}  // namespace
}  // namespace Kessel::test
