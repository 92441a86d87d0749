#include "exchange/event_log.h"

#include <optional>
#include <span>
#include <sstream>

#include "instances/laid_out_input.h"
#include "instances/text_layout.h"

namespace Kessel::test {

namespace {

using namespace Exchange;

std::string numbers_in(std::span<const Mention> mentions) {
  std::string text;
  for (const Mention& mention : mentions) {
    // The digits say the number, zeros in front apart.
    std::string_view digits(mention.begin, static_cast<std::size_t>(mention.end - mention.begin));
    while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
    const std::string number = std::to_string(mention.number);
    text += ' ' + (digits == number ? number : number + '?' + std::string(digits));
  }
  return text;
}

std::string name_of(Section section) {
  switch (section) {
    case Section::header:
      return "HEADER";
    case Section::anchor:
      return "ANCHOR";
    case Section::reference:
      return "REFERENCE";
    case Section::data:
      break;
  }
  return "DATA";
}

std::string place(std::uint64_t offset) {
  return " @" + std::to_string(offset) + ' ';
}

class Log final : public Listener {
 public:
  void header_entity(const Statement& entity) override {
    add("header" + place(entity.offset) + std::string(entity.lead) + '|' +
        std::string(entity.text));
  }
  void begin_section(Section section, std::string_view parameters) override {
    add("begin " + name_of(section) + ' ' + std::string(parameters));
  }
  void record(const Record& record) override {
    add("record" + place(record.offset) + std::to_string(record.number) + '|' +
        std::string(record.lead) + '|' + std::string(record.text) + '|' + std::string(record.body) +
        '|' + numbers_in(record.mentions));
    if (!record.keyword.empty()) add("keyword " + std::string(record.keyword));
  }
  void entry(Section section, const Statement& entry, std::span<const Mention> mentions) override {
    add("entry " + name_of(section) + place(entry.offset) + std::string(entry.lead) + '|' +
        std::string(entry.text) + '|' + numbers_in(mentions));
  }
  void end_section(Section section, std::uint64_t end) override {
    add("end " + name_of(section) + place(end));
  }
  void warning(const Finding& finding) override {
    add("warning " + std::string(Kessel::name_of(finding.kind)) + place(finding.offset) + '#' +
        std::to_string(finding.instance));
  }

  void add(std::string line) { lines.push_back(std::move(line)); }
  std::vector<std::string> lines;
};

/// Logs records and entries as a layout has them, and notes them there.
class LaidOut final : public Listener {
 public:
  void record(const Record& record) override {
    layout.add_counted(record);
    sections.emplace_back();
    log_record(record);
  }
  void entry(Section section, const Statement& entry, std::span<const Mention> mentions) override {
    layout.add_entry(entry, mentions);
    sections.emplace_back(section);
    log_entry(section, entry, mentions);
  }

  void log_record(Record record) {
    record.lead = {};
    record.keyword = {};
    log.record(record);
    log.add(record.is_plain ? "plain" : "not plain");
  }
  void log_entry(Section section, Statement entry, std::span<const Mention> mentions) {
    entry.lead = {};
    log.entry(section, entry, mentions);
  }

  Log log;
  TextLayout layout;
  std::vector<std::optional<Section>> sections;  // of entries
};

class Telling final : public Listener {
 public:
  void header_entity(const Statement& entity) override {
    add("header " + std::string(entity.text));
  }
  void begin_section(Section section, std::string_view parameters) override {
    if (section != Section::header) add(name_of(section) + std::string(parameters));
  }
  void record(const Record& record) override {
    add('#' + std::to_string(record.number) + ' ' + std::string(record.body) +
        arrow(record.mentions));
  }
  void entry(Section, const Statement& entry, std::span<const Mention> mentions) override {
    add(std::string(entry.text) + arrow(mentions));
  }
  void end_section(Section section, std::uint64_t /*end*/) override {
    if (section != Section::header) add("end");
  }
  void warning(const Finding& finding) override {
    add("warning " + std::string(Kessel::name_of(finding.kind)));
  }

  void add(std::string line) { lines.push_back(std::move(line)); }
  std::vector<std::string> lines;

 private:
  static std::string arrow(std::span<const Mention> mentions) {
    return mentions.empty() ? "" : " ->" + numbers_in(mentions);
  }
};

}  // namespace

std::vector<std::string> event_log(std::string_view file, std::size_t block_size,
                                   Scrutiny scrutiny) {
  std::istringstream in{std::string(file)};
  Log log;
  Limits limits;
  limits.block_size = block_size;
  limits.scrutiny = scrutiny;
  const Ending ending = read_exchange_file(in, limits, log);
  if (ending.error) {
    log.add("error " + std::string(Kessel::name_of(ending.error->kind)) +
            place(ending.error->offset));
  }
  return std::move(log.lines);
}

LaidOutLog laid_out_log(std::string_view file, std::size_t block_size) {
  std::istringstream in{std::string(file)};
  LaidOut log;
  read_exchange_file(in, {}, log);
  LaidOutLog logs{std::move(log.log.lines), {}};
  log.log.lines.clear();
  LaidOutInput input(in, log.layout, block_size);
  for (const std::optional<Section> section : log.sections) {
    input.next();
    if (section) {
      const LaidOutInput::Entry entry = input.take_entry();
      log.log_entry(*section, entry.statement, entry.mentions);
    } else {
      log.log_record(input.take_record(input.take_count()));
    }
  }
  if (!input.is_at_end()) log.log.add("and more");
  logs.second = std::move(log.log.lines);
  return logs;
}

std::vector<std::string> told(std::string_view file) {
  std::istringstream in{std::string(file)};
  Telling telling;
  const Ending ending = read_exchange_file(in, {}, telling);
  if (ending.error) telling.add("error " + std::string(Kessel::name_of(ending.error->kind)));
  return std::move(telling.lines);
}

}  // namespace Kessel::test
