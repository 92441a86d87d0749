#include "exchange/variants/meaning.h"

#include <cstddef>
#include <sstream>

#include "exchange/lexer.h"
#include "exchange/string_value.h"
#include "instances/loader.h"

namespace Kessel::test {

namespace {

using namespace Exchange;

constexpr char REFERENCE[] = "#";

/// The words of a text; for a reference REFERENCE.
std::vector<std::string> words_of(std::string_view text) {
  std::vector<std::string> words;
  Lexer lexer(text);
  for (Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
    if (word.kind == WordKind::instance) {
      words.emplace_back(REFERENCE);
    } else if (word.kind == WordKind::string) {
      words.push_back("'" + string_value(word.text));
    } else {
      words.emplace_back(word.text);
    }
  }
  return words;
}

/// Keeps the words of all records.
class WordLoader final : public InstanceLoader {
 public:
  using InstanceLoader::InstanceLoader;
  std::map<Index, std::vector<std::string>> words;

 protected:
  void added(Index index, const Record& record) override { words[index] = words_of(record.body); }
};

}  // namespace

Meaning meaning_of(const std::string& file,
                   const std::map<std::string, std::string>& plain_numbers) {
  std::istringstream in(file);
  Instances instances;
  const Options options;
  WordLoader loader(instances, options);
  load_with(in, loader, options);

  const auto plain = [&](Index record) {
    const std::string number = std::to_string(instances.number(record));
    const auto found = plain_numbers.find(number);
    return found == plain_numbers.end() ? number : found->second;
  };
  Meaning meaning;
  for (const std::string& entity : instances.header()) meaning.header.push_back(words_of(entity));
  for (auto& [record, words] : loader.words) {
    if (instances.type(record) == TypeTable::REPEATED) continue;
    std::size_t next = 0;
    for (std::string& word : words) {
      if (word != REFERENCE) continue;
      const Reference reference = instances.references(record)[next++];
      word += reference.record() == NO_RECORD ? "?" : plain(reference.record());
      if (reference.is_listed()) word += '!';
    }
    words.insert(words.begin(), std::string(instances.types().name(instances.type(record))));
    meaning.records[plain(record)] = std::move(words);
  }
  return meaning;
}

}  // namespace Kessel::test
