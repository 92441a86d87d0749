#include "shrink/shrunk_writer.h"

#include <array>
#include <charconv>
#include <span>
#include <string>
#include <string_view>

#include "exchange/reader.h"
#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "kessel/errors.h"
#include "output/buffered_text.h"

namespace Kessel::Shrink {

namespace {

using Exchange::Section;

class ShrunkWriter final : public Exchange::Listener {
 public:
  ShrunkWriter(std::istream& in, const Instances& instances, Survivors& survivors,
               std::ostream& out, const Options& options)
      : instances_(instances),
        survivors_(survivors),
        out_(out),
        reporter_(options, Stage::writing, size_for_progress(in, options)) {
    out_.text() += "ISO-10303-21;\nHEADER;\n";
    for (const std::string& entity : instances.header()) out_.text().append(entity).append(";\n");
  }

  void begin_section(Section section, std::string_view parameters) override {
    if (section == Section::header) return;
    out_.text() += "ENDSEC;\n";
    switch (section) {
      case Section::anchor:
        out_.text() += "ANCHOR;\n";
        break;
      case Section::reference:
        out_.text() += "REFERENCE;\n";
        break;
      default:
        out_.text().append("DATA").append(parameters).append(";\n");
    }
  }

  void record(const Exchange::Record& record) override {
    const Index index = next_++;
    const auto references = references_of(index, record.mentions.size(), record.offset);
    if (instances_.number(index) != record.number) throw InputError(input_changed(record.offset));
    if (reporter_.is_due(record.offset)) reporter_.report(record.offset);
    if (!survivors_.stays(index)) return;
    const std::uint64_t number = survivors_.number(index);
    if (number != 0) {
      out_.text() += '#';
      append_number(number);
    } else {  // "#0", or more digits than a number has
      out_.text().append(record.text.data(), record.behind_number);
    }
    out_.text() += '=';
    append(record.body, record.mentions, references);
    out_.text() += ";\n";
    out_.flush_if_long();
  }

  void entry(Section section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention> mentions) override {
    const Index index = next_++;
    std::string_view text = entry.text;
    if (section == Section::reference && Exchange::begins_with_name(entry, mentions)) {
      text.remove_prefix(static_cast<std::size_t>(mentions.front().end - text.data()));
      mentions = mentions.subspan(1);
      out_.text() += '#';
      append_number(survivors_.number(index));
    }
    append(text, mentions, references_of(index, mentions.size(), entry.offset));
    out_.text() += ";\n";
    out_.flush_if_long();
  }

  void finish() {
    if (next_ != instances_.size()) throw InputError(input_changed(0));
    out_.text() += "ENDSEC;\nEND-ISO-10303-21;\n";
    out_.flush();
    reporter_.report_end();
  }

 private:
  std::span<const Reference> references_of(Index index, std::size_t mentions,
                                           std::uint64_t offset) const {
    if (index >= instances_.size() || instances_.references(index).size() != mentions) {
      throw InputError(input_changed(offset));
    }
    return instances_.references(index);
  }

  void append_number(std::uint64_t number) {
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out_.text().append(digits.data(), end);
  }

  void append(std::string_view text, std::span<const Exchange::Mention> mentions,
              std::span<const Reference> references) {
    const char* at = text.data();
    for (std::size_t i = 0; i < mentions.size(); ++i) {
      const Exchange::Mention& mention = mentions[i];
      const Index to = references[i].record();
      const std::uint64_t number =
          to != NO_RECORD ? survivors_.number(to) : survivors_.of_missing(mention.number);
      if (number == mention.number) continue;  // Stays as it is spelt.
      out_.text().append(at, mention.begin);
      append_number(number);
      at = mention.end;
    }
    out_.text().append(at, text.data() + text.size());
  }

  const Instances& instances_;
  Survivors& survivors_;
  BufferedText out_;
  ProgressReporter reporter_;
  Index next_ = 0;
};

}  // namespace

void write_shrunk(std::istream& in, const Instances& instances, Survivors& survivors,
                  std::ostream& out, const Options& options) {
  ShrunkWriter writer(in, instances, survivors, out, options);
  const Exchange::Limits limits{options.memory_limit, Exchange::Scrutiny::none};
  try {
    const Exchange::Ending ending = read_exchange_file(in, limits, writer);
    if (ending.error || in.bad()) throw InputError(input_changed(ending.bytes));
    writer.finish();
  } catch (const OutputFailed&) {
    // The stream says so.
  }
}

}  // namespace Kessel::Shrink
