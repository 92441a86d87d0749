// Which of many records lead to a record of some types?
#include <gtest/gtest.h>

#include <numeric>

#include "structure/reachability.h"
#include "structure/record_graph.h"

namespace Kessel::test {
namespace {

using Starts = std::vector<std::uint32_t>;
using Types = std::vector<std::string_view>;

/// Answers as text, such as "yes no ", or the text of the exception.
template <class Answer>
std::string answers_of(const Starts& starts, Answer answer) {
  try {
    std::string text;
    const std::vector<char> answers = answer();
    for (const char yes : answers) text += yes ? "yes " : "no ";
    EXPECT_EQ(answers.size(), starts.size());
    return text;
  } catch (const std::out_of_range& error) {
    return std::string("out of range: ") + error.what();
  }
}

std::string lead(const RecordGraph& graph, const Starts& starts, const Types& types) {
  return answers_of(starts, [&] { return lead_to_any(graph.slots(), starts, types); });
}

/// One plain search per start and type, in order, until one succeeds.
std::string plainly_lead(const RecordGraph& graph, const Starts& starts, const Types& types) {
  return answers_of(starts, [&] {
    std::vector<char> answers;
    for (const std::uint32_t start : starts) {
      answers.push_back(0);
      for (const std::string_view type : types) {
        if (plain_search(graph.slots(), start, type) == 0) continue;
        answers.back() = 1;
        break;
      }
    }
    return answers;
  });
}

TEST(LeadToAny, AnswersInTheOrderOfTheStarts) {
  RecordGraph graph(10);
  graph.add(1, "", {3});
  graph.add(2, "", {});
  graph.add(3, "A");
  EXPECT_EQ(lead(graph, {1, 2, 3}, {"A"}), "yes no yes ");
  EXPECT_EQ(lead(graph, {3, 2, 1, 2}, {"A"}), "yes no yes no ");
}

TEST(LeadToAny, AnyOfTheTypesWillDo) {
  RecordGraph graph(10);
  graph.add(1, "", {4});
  graph.add(2, "", {5});
  graph.add(3, "", {6});
  graph.add(4, "A");
  graph.add(5, "B");
  graph.add(6, "C");
  EXPECT_EQ(lead(graph, {1, 2, 3}, {"A", "B"}), "yes yes no ");
}

TEST(LeadToAny, FarRecordIsReachedThroughSharedAndWantedRecords) {
  RecordGraph graph(10);
  graph.add(1, "", {3});
  graph.add(2, "", {3});
  graph.add(3, "", {4});
  graph.add(4, "A", {5});
  graph.add(5, "");
  EXPECT_EQ(lead(graph, {1, 2, 3, 4, 5}, {"A"}), "yes yes yes yes no ");
}

TEST(LeadToAny, CyclesWithoutAWantedRecordLeadNowhere) {
  RecordGraph graph(10);
  graph.add(1, "", {2});
  graph.add(2, "", {1});
  graph.add(3, "", {4, 1});
  graph.add(4, "", {3, 5});
  graph.add(5, "A");
  EXPECT_EQ(lead(graph, {1, 2, 3, 4}, {"A"}), "no no yes yes ");
}

TEST(LeadToAny, EmptySlotsLeadNowhere) {
  RecordGraph graph(10);
  graph.add(1, "", {0, 9});
  graph.add(2, "", {9, 3});
  graph.add(3, "A");
  EXPECT_EQ(lead(graph, {1, 2}, {"A"}), "no yes ");
}

TEST(LeadToAny, WithoutStartsThereAreNoAnswers) {
  EXPECT_EQ(lead(RecordGraph(10), {}, {"A"}), "");
}

TEST(LeadToAny, NumberBeyondTheStoreThrowsWhenASearchComesToIt) {
  RecordGraph graph(10);
  graph.add(1, "", {10});
  graph.add(2, "A", {10});
  graph.add(3, "", {2, 10});
  graph.add(4, "", {10, 2});
  EXPECT_EQ(lead(graph, {1}, {"A"}), "out of range: invalid vector subscript");
  EXPECT_EQ(lead(graph, {2}, {"A"}), "yes ");
  EXPECT_EQ(lead(graph, {3, 2, 3}, {"A"}), "yes yes yes ");
  EXPECT_EQ(lead(graph, {3, 4}, {"A"}), "out of range: invalid vector subscript");
}

TEST(LeadToAny, NumberBeyondTheStoreBehindARecordOfALaterTypeThrows) {
  // The search for "A" passes through the record of type "B" and comes to the bad number.
  RecordGraph graph(10);
  graph.add(1, "", {2});
  graph.add(2, "B", {10});
  EXPECT_EQ(lead(graph, {1}, {"A", "B"}), "out of range: invalid vector subscript");
}

TEST(LeadToAny, EarlierTypeSparesTheSearchThatWouldThrow) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 10});
  graph.add(2, "A");
  EXPECT_EQ(lead(graph, {1}, {"A", "B"}), "yes ");
  EXPECT_EQ(lead(graph, {1}, {"B", "A"}), "out of range: invalid vector subscript");
}

TEST(LeadToAny, AnswersAsOnePlainSearchPerStartAndTypeDoes) {
  std::mt19937 random(42);
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(round);
    const RecordGraph graph = random_graph(random, round % 2 == 1);
    Starts starts;
    for (std::uint32_t number = 0; number < graph.slots().size(); ++number) {
      if (graph.slots()[number] != nullptr && random() % 3 == 0) starts.push_back(number);
    }
    for (const Types& types : {Types{"A"}, Types{"C", "A"}, Types{"A", "B", "C"}}) {
      ASSERT_EQ(lead(graph, starts, types), plainly_lead(graph, starts, types))
          << types.size() << " types";
    }
  }
}

}  // namespace
}  // namespace Kessel::test
