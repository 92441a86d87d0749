#include "join/joined_writer.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

#include "exchange/parameters.h"
#include "exchange/reader.h"
#include "findings/refusals.h"
#include "join/joined_text.h"
#include "kessel/errors.h"
#include "output/buffered_text.h"
#include "output/file_frame.h"

namespace Kessel {

namespace {

[[noreturn]] void throw_changed(const JoinedFile& file, std::uint64_t offset) {
  Finding finding = input_changed(offset);
  finding.file = file.name;
  throw InputError(finding);
}

/// One of the data sections of the joined file.
struct JoinedSection {
  const std::vector<std::string>& all;  ///< the parameters of each
  std::size_t which;

  /// Whether what stands in a section with these parameters belongs here: it is called and obeys
  /// the same, or where no section is, there is none such in front that obeys the same schema.
  bool takes(std::string_view parameters) const {
    if (all.size() == 1) return true;
    const auto like = [&](auto part) {
      return std::find_if(all.begin(), all.end(), [&](const std::string& one) {
        return part(std::string_view(one)) == part(parameters);
      });
    };
    auto place = like([](std::string_view text) { return text; });
    if (place == all.end()) {
      place = like(
          [](std::string_view text) { return Exchange::parameter(Exchange::items_of(text), 1); });
    }
    return static_cast<std::size_t>(place == all.end() ? 0 : place - all.begin()) == which;
  }
};

/// Rewrites the records of one file as they are read again.
class JoinedReading final : public Exchange::Listener {
 public:
  JoinedReading(const FileSet& files, std::size_t file, const Records& records,
                const JoinedLists& lists, Numbering& numbering, JoinedSection section,
                BufferedText& out, const std::function<void(std::uint64_t)>& progress)
      : file_(files[file]),
        position_(file),
        records_(records),
        numbering_(numbering),
        section_(section),
        out_(out),
        progress_(progress),
        text_(files, file, records, lists, numbering) {}

  void begin_section(Exchange::Section section, std::string_view parameters) override {
    if (section == Exchange::Section::data) is_here_ = section_.takes(parameters);
  }

  void record(const Exchange::Record& record) override {
    const Index index = next_++;
    if (index >= file_.instances.size() ||
        record.mentions.size() != file_.instances.references(index).size() ||
        record.number != file_.instances.number(index)) {
      throw_changed(file_, record.offset);
    }
    if (record.offset >= due_) tell(record.offset);
    const Node node = records_.node(position_, index);
    if (!is_here_ || !records_.is_written(node)) return;
    std::string& out = out_.text();
    out += '#';
    append_digits(numbering_.of(node), out);
    out += record.has_equals ? '=' : ' ';
    text_.append_body(index, record.text, record.body, record.mentions, out);
    out += ";\n";
    out_.flush_if_long();
  }

  void entry(Exchange::Section, const Exchange::Statement&,
             std::span<const Exchange::Mention>) override {
    ++next_;
  }

  /// How many records and entries there were.
  Index count() const { return next_; }

 private:
  static constexpr std::uint64_t STEP = std::uint64_t{1} << 20;

  void tell(std::uint64_t offset) {
    progress_(offset);
    due_ = offset + STEP;
  }

  const JoinedFile& file_;
  const std::size_t position_;
  const Records& records_;
  Numbering& numbering_;
  const JoinedSection section_;
  bool is_here_ = true;
  BufferedText& out_;
  const std::function<void(std::uint64_t)>& progress_;
  JoinedText text_;
  Index next_ = 0;
  std::uint64_t due_ = 0;
};

/// Writes the joined file part by part.
class JoinedWriter {
 public:
  JoinedWriter(const FileSet& files, const Records& records, const JoinedLists& lists,
               Numbering& numbering, std::ostream& out)
      : files_(files), records_(records), lists_(lists), numbering_(numbering), out_(out) {}

  void write(const JoinedName& name, const std::function<void(std::uint64_t)>& progress) {
    const Instances& root = files_.root().instances;
    const std::vector<std::string> sections = sections_of(root);
    const bool become_one = sections.size() == 1 && root.data_sections().size() != 1;
    out_.text() += HeaderForm(root.header(), name.time_stamp, become_one).with_name(name.name);
    write_entries(TypeTable::ANCHOR_ENTRY, "ANCHOR;\n");
    write_entries(TypeTable::REFERENCE_ENTRY, "REFERENCE;\n");
    for (std::size_t section = 0; section < sections.size(); ++section) {
      out_.text().append("DATA").append(sections[section]).append(";\n");
      std::uint64_t before = 0;
      for (std::size_t i = 0; i < files_.size(); ++i) {
        // Each section is a reading of its own; the first one tells how far it is.
        write_records(i, {sections, section}, [&](std::uint64_t offset) {
          if (section == 0) progress(before + offset);
        });
        before += files_[i].bytes;
      }
      out_.text() += "ENDSEC;\n";
    }
    out_.text() += "END-ISO-10303-21;\n";
    out_.flush();
  }

 private:
  /// The parameters of the joined file's data sections: the root's, or where all of several obey
  /// one schema, one without a name.
  static std::vector<std::string> sections_of(const Instances& root) {
    const auto& sections = root.data_sections();
    if (sections.size() == 1) return {sections.front().parameters};
    return section_parameters(root);
  }

  void write_entries(TypeId type, std::string_view begin) {
    std::set<std::string> written;
    for (std::size_t file = 0; file < files_.size(); ++file) {
      const Instances& instances = files_[file].instances;
      JoinedText text(files_, file, records_, lists_, numbering_);
      for (const Index entry : instances.kept()) {
        if (instances.type(entry) != type) continue;
        if (!records_.is_written(records_.node(file, entry))) continue;
        std::string line;
        text.append_entry(entry, line);
        const auto [place, is_new] = written.insert(std::move(line));
        if (!is_new) continue;
        if (written.size() == 1) out_.text() += begin;
        out_.text().append(*place).append(";\n");
        out_.flush_if_long();
      }
    }
    if (!written.empty()) out_.text() += "ENDSEC;\n";
  }

  void write_records(std::size_t i, JoinedSection section,
                     const std::function<void(std::uint64_t)>& progress) {
    const JoinedFile& file = files_[i];
    std::ifstream in(file.path, std::ios::in | std::ios::binary);
    std::error_code unknown;
    if (!in || std::filesystem::file_size(file.path, unknown) != file.bytes ||
        std::filesystem::last_write_time(file.path, unknown) != file.written) {
      throw_changed(file, 0);
    }
    JoinedReading reading(files_, i, records_, lists_, numbering_, section, out_, progress);
    const Exchange::Limits limits{.scrutiny = Exchange::Scrutiny::none};
    const Exchange::Ending ending = read_exchange_file(in, limits, reading);
    if (ending.error || in.bad() || reading.count() != file.instances.size()) {
      throw_changed(file, ending.bytes);
    }
  }

  const FileSet& files_;
  const Records& records_;
  const JoinedLists& lists_;
  Numbering& numbering_;
  BufferedText out_;
};

}  // namespace

void write_joined(const FileSet& files, const Records& records, const JoinedLists& lists,
                  Numbering& numbering, const JoinedName& name, std::ostream& out,
                  const std::function<void(std::uint64_t)>& progress) {
  try {
    JoinedWriter(files, records, lists, numbering, out).write(name, progress);
  } catch (const OutputFailed&) {
    // The stream says so.
  }
}

}  // namespace Kessel
