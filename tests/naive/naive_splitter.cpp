// Splits an exchange file in memory with the plainest containers and searches that give the right
// bytes. Nothing here is tuned: where the library is quick, this code is short.

#include "naive_splitter.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <iterator>
#include <memory>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "naive/kept_types.h"

namespace naive {
namespace {

constexpr std::size_t kNowhere = std::string::npos;

// ---------------------------------------------------------------------------------------------
// Characters and plain text

/// White space of the "C" locale.
bool is_space(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

void trim(std::string& text) {
  while (!text.empty() && is_space(text.back())) text.pop_back();
  while (!text.empty() && is_space(text.front())) text.erase(0, 1);
}

bool contains(const std::string& text, const std::string& piece) {
  return text.find(piece) != kNowhere;
}

bool ends_with(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The character at `pos`, or NUL past the end.
char char_at(const std::string& text, std::size_t pos) {
  return pos < text.size() ? text[pos] : '\0';
}

/// The value of a run of digits; 0 for no digits and for values over 32 bits.
std::uint32_t to_number(const std::string& digits) {
  std::uint64_t value = 0;
  for (const char digit : digits) {
    value = value * 10 + static_cast<std::uint64_t>(digit - '0');
    if (value > 4294967295U) return 0;
  }
  return static_cast<std::uint32_t>(value);
}

/// The number of the next reference at or after `pos` that stands outside string literals; `pos`
/// then stands behind its digits (kNowhere when they are the last characters). 0 when there is none
/// or its number is no good.
std::uint32_t next_reference(std::size_t& pos, const std::string& text) {
  if (pos == kNowhere) return 0;
  while (char_at(text, pos) != '#') {
    if (char_at(text, pos) == '\'') {
      pos = text.find('\'', pos + 1);
      if (pos == kNowhere) return 0;
    }
    pos = text.find_first_of("'#", pos + 1);
    if (pos == kNowhere) return 0;
  }
  const std::size_t first = pos + 1;
  pos = text.find_first_not_of("0123456789", first);
  return to_number(pos == kNowhere ? text.substr(first) : text.substr(first, pos - first));
}

// ---------------------------------------------------------------------------------------------
// Names and paths as text

/// UTF-16 code units of UTF-8 text; std::system_error when the bytes are no UTF-8.
std::vector<std::uint32_t> utf16_units(const std::string& utf8) {
  const auto refuse = [] {
    throw std::system_error(std::make_error_code(std::errc::illegal_byte_sequence));
  };
  std::vector<std::uint32_t> units;
  std::size_t pos = 0;
  while (pos < utf8.size()) {
    const std::uint32_t lead = static_cast<unsigned char>(utf8[pos++]);
    std::uint32_t value = lead;
    std::size_t more = 0;
    std::uint32_t least = 0;
    if (lead >= 0xF0 && lead <= 0xF4) {
      value = lead & 0x07U;
      more = 3;
      least = 0x10000;
    } else if (lead >= 0xE0 && lead < 0xF0) {
      value = lead & 0x0FU;
      more = 2;
      least = 0x800;
    } else if (lead >= 0xC0 && lead < 0xE0) {
      value = lead & 0x1FU;
      more = 1;
      least = 0x80;
    } else if (lead >= 0x80) {
      refuse();
    }
    for (; more > 0; --more) {
      if (pos >= utf8.size()) refuse();
      const std::uint32_t next = static_cast<unsigned char>(utf8[pos++]);
      if ((next & 0xC0U) != 0x80) refuse();
      value = (value << 6U) | (next & 0x3FU);
    }
    if (value < least || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) refuse();
    if (value > 0xFFFF) {
      units.push_back(0xD800 + ((value - 0x10000) >> 10U));
      units.push_back(0xDC00 + ((value - 0x10000) & 0x3FFU));
    } else {
      units.push_back(value);
    }
  }
  return units;
}

/// The bytes of a path, which must be UTF-8.
std::string path_to_utf8(const std::filesystem::path& path) {
  utf16_units(path.string());
  return path.string();
}

/// UTF-8 text as the body of a string literal (ISO 10303-21, string encoding).
std::string encode_to_step(const std::string& utf8) {
  std::string out;
  bool wide = false;
  for (const std::uint32_t unit : utf16_units(utf8)) {
    if (unit > 255) {
      if (!wide) out += "\\X2\\";
      wide = true;
      std::string digits;
      for (std::uint32_t rest = unit; rest != 0; rest /= 16) {
        digits.insert(digits.begin(), "0123456789ABCDEF"[rest % 16]);
      }
      // A value of three digits is filled up behind them, with a zero byte: files depend on it.
      digits.resize(4, '\0');
      out += digits;
    } else {
      if (wide) out += "\\X0\\";
      wide = false;
      if (unit == '\\') {
        out += "\\\\";
      } else if (unit == '\'') {
        out += "''";
      } else {
        out += static_cast<char>(static_cast<unsigned char>(unit));
      }
    }
  }
  if (wide) out += "\\X0\\";
  return out;
}

// ---------------------------------------------------------------------------------------------
// Reading

/// Reads a text as std::getline reads a stream, end-of-file and failure flags included.
class Cursor {
 public:
  explicit Cursor(std::string_view text) : text_(text) {}

  /// Takes the characters up to `delimiter`, which is consumed but not delivered. Leaves `line` as
  /// it is when a flag is already up.
  void get_line(std::string& line, char delimiter) {
    if (flagged()) {
      fail_ = true;
      return;
    }
    line.clear();
    bool took_any = false;
    while (pos_ < text_.size()) {
      const char c = text_[pos_++];
      took_any = true;
      if (c == delimiter) return;
      line += c;
    }
    eof_ = true;
    if (!took_any) fail_ = true;
  }

  /// Whether the end-of-file or the failure flag is up.
  bool flagged() const { return eof_ || fail_; }

  /// Lowers the flags and goes back to the first character.
  void rewind() {
    eof_ = false;
    fail_ = false;
    pos_ = 0;
  }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
  bool eof_ = false;
  bool fail_ = false;
};

/// The next data record without its ";", or an empty text at the end of the data.
std::string read_record(Cursor& in) {
  std::string record = "A";
  if (in.flagged()) return record;
  while (!in.flagged()) {
    if (record.empty()) break;
    if (record.front() == '#') break;
    in.get_line(record, ';');
    trim(record);
  }
  while (!in.flagged() && !record.empty()) {
    if (record.back() == ')') return record;
    std::string more;
    in.get_line(more, ';');
    trim(more);
    record += more;
  }
  return record;
}

/// `read_record` for a loop that runs until it gets an empty text. Once a flag is up that text
/// never comes, so the loop would spin for ever.
std::string read_record_or_give_up(Cursor& in) {
  if (in.flagged()) throw std::logic_error("endless");
  return read_record(in);
}

/// The keyword of a simple instance, or the whole inner text of a complex one; empty when there is
/// none. `from` is the position behind the instance name.
std::string record_type(std::size_t from, const std::string& record) {
  std::size_t begin = record.find('=', from);
  if (begin == kNowhere) return "";
  ++begin;
  while (begin < record.size() && is_space(record[begin])) ++begin;
  if (begin == record.size()) return "";
  const std::size_t open = record.find('(', begin);
  if (open == kNowhere) return "";
  std::size_t end = open;
  while (end > begin && is_space(record[end - 1])) --end;
  if (end > begin) return record.substr(begin, end - begin);

  ++begin;
  while (begin < record.size() && is_space(record[begin])) ++begin;
  end = record.rfind(')');
  if (end == kNowhere) return "";
  while (end > begin && is_space(record[end - 1])) --end;
  return end > begin ? record.substr(begin, end - begin) : "";
}

/// Whether the store remembers the type of such records, so that passes can ask for it.
bool keeps_type(const std::string& type) {
  // These also keep a text attribute, which no output depends on; it is left out here.
  static const std::set<std::string> with_text = {
      "PRODUCT",
      "PRODUCT_DEFINITION",
      "PRODUCT_RELATED_PRODUCT_CATEGORY",
      "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS",
      "MAPPED_ITEM",
  };
  static const std::set<std::string> exact(std::begin(KEPT_TYPES), std::end(KEPT_TYPES));
  return with_text.count(type) != 0 || exact.count(type) != 0 ||
         contains(type, "CONVERSION_BASED_UNIT") ||
         contains(type, "GEOMETRIC_REPRESENTATION_CONTEXT") ||
         contains(type, "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION") ||
         contains(type, "SHAPE_REPRESENTATION");
}

// ---------------------------------------------------------------------------------------------
// The model

/// One instance of the input. A part is the instance of its product definition (or mapped item).
struct Instance {
  std::string type;  ///< empty when the store keeps no type for it
  std::vector<std::uint32_t> references;
  /// Its number in the file of each part that holds it, by the part's position in the parts list.
  std::map<std::size_t, std::uint32_t> part_numbers;

  // The rest has a meaning for parts only.
  bool is_part = false;
  std::size_t position = 0;     ///< in the parts list
  std::uint32_t part_kind = 0;  ///< 1 assembly, 2 leaf
  std::uint32_t last_instance_number = 0;
  std::filesystem::path path;
  std::vector<Instance*> parents;
  std::vector<Instance*> children;
};

using TypeSet = std::set<std::string>;

/// Which parts a propagation rule moves.
enum Filter : std::uint32_t { kAll = 0, kAssemblies = 1, kLeaves = 2 };

/// Which children `propagate_to_typed_children` goes into.
enum class Children { kOfOtherTypes = 0, kOfTheseTypes = 1 };

/// One run over one input.
class Splitter {
 public:
  Splitter(std::string_view input, const std::string& outdir, const std::string& now)
      : input_(input), outdir_(outdir), now_(now) {}

  void run();

  Outcome outcome;

 private:
  // Instances.
  Instance* at(std::uint32_t id) const;
  std::vector<Instance*> get(const std::string& type) const;
  std::set<std::uint32_t> get_ids(const std::string& type) const;
  TypeSet types_containing(const std::string& name) const;
  TypeSet types_ending_with(const std::string& name) const;
  std::uint32_t get_reference(const Instance& instance, std::size_t index);
  std::uint32_t find_reachable(std::uint32_t start, const std::string& type) const;

  // Reading.
  void parse();
  void parse_record(const std::string& record);
  void make_room(std::uint32_t id);

  // Product structure.
  void build_structure();
  void find_and_create_parts();
  void link_parts();
  void find_parts_types();
  void find_parts_with_geometry();
  void resolve_name(Instance& part);
  void generate_root();

  // Association.
  void associate_entities();
  void initiate_recognition();
  void associate_others();
  bool adopt_parts(Instance* source, Instance* target, std::uint32_t filter);
  bool propagate_down(Instance* source, Instance* start, std::uint32_t filter);
  void propagate_from_child(const TypeSet& types, std::size_t n, Filter filter);
  void propagate_from_children(const TypeSet& types, Filter filter);
  void propagate_to_descendants(const std::string& type, Filter filter);
  void propagate_both_ways(const std::string& type, Filter filter);
  void gather_and_spread(const TypeSet& types, Filter filter);
  void propagate_from_child_and_down(const TypeSet& types, std::size_t n, Filter filter);
  void propagate_to_typed_children(const TypeSet& types, const TypeSet& child_types, Children mode,
                                   Filter filter);
  void propagate_through_relationships(const std::string& relationship, const std::string& node,
                                       std::size_t n);
  void propagate_through_usages(const std::string& relationship, const std::string& node,
                                std::size_t n);

  // Writing.
  void write_parts();
  void write_frame_start();
  void write_records();
  void write_record(const std::string& record);
  void write_frame_end();
  std::string make_file_header(const std::string& file_name) const;
  std::string* output(Instance& part, const std::string& text);
  void renumber_reference(const Instance& part, std::uint32_t id, std::size_t& pos,
                          std::string& text) const;
  std::string rewrite_references(std::string text, const Instance& part) const;
  std::string rewrite_presentation_items(const Instance& part, const std::string& record,
                                         std::uint32_t id) const;
  std::string make_external_reference(Instance& target, Instance& shape_definition);
  void list_results();

  Cursor input_;
  std::filesystem::path outdir_;
  std::string now_;

  std::string first_line_;
  std::string header_;
  TypeSet types_;
  std::uint64_t store_size_ = kBlock;  ///< the slots that the store would have
  std::map<std::uint32_t, std::unique_ptr<Instance>> instances_;
  std::map<std::string, std::vector<std::uint32_t>> ids_by_type_;
  std::unique_ptr<Instance> generated_root_;
  std::vector<Instance*> parts_;
  Instance* root_ = nullptr;
  bool only_one_part_ = false;
  std::map<std::string, std::uint32_t> file_names_;

  static constexpr std::uint64_t kBlock = 1048576;
  static constexpr std::uint64_t kMostSlots = 1U << 30U;
};

// ---------------------------------------------------------------------------------------------
// Instances

Instance* Splitter::at(std::uint32_t id) const {
  if (id >= store_size_) throw std::out_of_range("invalid vector subscript");
  const auto found = instances_.find(id);
  return found == instances_.end() ? nullptr : found->second.get();
}

std::vector<Instance*> Splitter::get(const std::string& type) const {
  std::vector<Instance*> found;
  const auto ids = ids_by_type_.find(type);
  if (ids == ids_by_type_.end()) return found;
  for (const std::uint32_t id : ids->second) found.push_back(at(id));
  return found;
}

std::set<std::uint32_t> Splitter::get_ids(const std::string& type) const {
  const auto ids = ids_by_type_.find(type);
  if (ids == ids_by_type_.end()) return {};
  return {ids->second.begin(), ids->second.end()};
}

TypeSet Splitter::types_containing(const std::string& name) const {
  TypeSet found;
  for (const std::string& type : types_) {
    if (contains(type, name)) found.insert(type);
  }
  return found;
}

TypeSet Splitter::types_ending_with(const std::string& name) const {
  TypeSet found;
  for (const std::string& type : types_) {
    if (ends_with(type, name)) found.insert(type);
  }
  return found;
}

/// The reference at `index`; a message and 0 when there are fewer.
std::uint32_t Splitter::get_reference(const Instance& instance, std::size_t index) {
  if (index < instance.references.size()) return instance.references[index];
  outcome.messages +=
      "Got an out of range in 'get_child' while fetching child nb " + std::to_string(index) + "\n";
  return 0;
}

/// Breadth first, the first record of exactly `type` that references lead to; 0 when there is none.
std::uint32_t Splitter::find_reachable(std::uint32_t start, const std::string& type) const {
  std::set<std::uint32_t> examined;
  std::deque<std::uint32_t> queue = {start};
  while (!queue.empty()) {
    const std::uint32_t id = queue.front();
    const Instance* instance = at(id);
    if (examined.insert(id).second && instance != nullptr) {
      if (instance->type == type) return id;
      queue.insert(queue.end(), instance->references.begin(), instance->references.end());
    }
    queue.pop_front();
  }
  return 0;
}

// ---------------------------------------------------------------------------------------------
// Reading

void Splitter::parse() {
  input_.get_line(first_line_, '\n');
  trim(first_line_);

  std::string line;
  while (!ends_with(header_, "ENDSEC;\n")) {
    // No line is left that could end the header.
    if (input_.flagged()) throw std::logic_error("endless");
    input_.get_line(line, '\n');
    trim(line);
    header_ += line + "\n";
  }

  while (true) {
    const std::string record = read_record_or_give_up(input_);
    if (record.empty()) break;
    parse_record(record);
  }
}

void Splitter::parse_record(const std::string& record) {
  std::size_t pos = 0;
  const std::uint32_t id = next_reference(pos, record);
  if (id == 0) return;
  const std::string type = record_type(pos, record);
  if (type.empty()) return;

  make_room(id);
  auto instance = std::make_unique<Instance>();
  if (keeps_type(type)) {
    instance->type = type;
    types_.insert(type);
    ids_by_type_[type].push_back(id);
  }
  for (std::uint32_t r = next_reference(pos, record); r != 0; r = next_reference(pos, record)) {
    instance->references.push_back(r);
  }
  instances_[id] = std::move(instance);
}

void Splitter::make_room(std::uint32_t id) {
  if (id < store_size_) return;
  store_size_ += kBlock + (id - store_size_) / kBlock * kBlock;
  if (store_size_ > kMostSlots) throw std::logic_error("store too large");
}

// ---------------------------------------------------------------------------------------------
// Product structure

void Splitter::build_structure() {
  find_and_create_parts();
  if (parts_.size() == 1) {
    only_one_part_ = true;
    outcome.messages +=
        "Only one part was found in the file !\n"
        "Impossible to proceed with the splitting algorithm.\n";
    return;
  }
  link_parts();
  find_parts_types();
}

void Splitter::find_and_create_parts() {
  std::set<std::uint32_t> candidates;
  candidates.merge(get_ids("PRODUCT_DEFINITION"));
  candidates.merge(get_ids("PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS"));
  candidates.merge(get_ids("MAPPED_ITEM"));
  for (const std::uint32_t id : candidates) {
    if (find_reachable(id, "PRODUCT") == 0 &&
        find_reachable(id, "ADVANCED_BREP_SHAPE_REPRESENTATION") == 0 &&
        find_reachable(id, "GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION") == 0) {
      continue;
    }
    Instance* part = at(id);
    part->is_part = true;
    part->position = parts_.size();
    parts_.push_back(part);
  }
}

void Splitter::link_parts() {
  for (const std::string type : {"NEXT_ASSEMBLY_USAGE_OCCURRENCE", "ASSEMBLY_COMPONENT_USAGE",
                                 "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"}) {
    for (const Instance* usage : get(type)) {
      if (usage->references.size() < 2) {
        outcome.messages += "Got a malformed " + type + "\nIt does not have two childs.\n";
        continue;
      }
      Instance* parent = at(usage->references[0]);
      Instance* child = at(usage->references[1]);
      if (child == nullptr || !child->is_part || parent == nullptr || !parent->is_part) continue;
      parent->children.push_back(child);
      child->parents.push_back(parent);
    }
  }
}

void Splitter::find_parts_types() {
  std::vector<Instance*> roots;
  for (Instance* part : parts_) {
    if (part->parents.empty()) roots.push_back(part);
    part->part_kind = part->children.empty() ? kLeaves : kAssemblies;
  }
  find_parts_with_geometry();
  for (Instance* part : parts_) resolve_name(*part);

  if (roots.empty()) {
    outcome.messages +=
        "No root part found. It implies not part in the file or a cyclic part tree.\n"
        "Stopping the algorithm.\n";
    return;
  }
  if (roots.size() == 1 && roots.front()->part_kind != kLeaves) {
    root_ = roots.front();
  } else {
    generate_root();
  }
  outcome.roots_txt = path_to_utf8(root_->path) + "\n";
}

/// An assembly whose own shape holds more than placements and contexts counts as a leaf.
void Splitter::find_parts_with_geometry() {
  TypeSet no_geometry = types_containing("GEOMETRIC_REPRESENTATION_CONTEXT");
  no_geometry.insert("AXIS2_PLACEMENT_3D");

  for (const Instance* link : get("SHAPE_DEFINITION_REPRESENTATION")) {
    const std::uint32_t start = get_reference(*link, 0);
    std::uint32_t found = find_reachable(start, "PRODUCT_DEFINITION");
    if (found == 0) found = find_reachable(start, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS");
    if (found == 0) found = find_reachable(start, "MAPPED_ITEM");
    Instance* part = at(found);
    if (part == nullptr || !part->is_part) continue;

    const Instance* representation = at(get_reference(*link, 1));
    if (representation == nullptr) continue;
    for (const std::uint32_t r : representation->references) {
      const Instance* item = at(r);
      if (item == nullptr || no_geometry.count(item->type) != 0) continue;
      part->part_kind = kLeaves;
      break;
    }
  }
}

void Splitter::resolve_name(Instance& part) {
  const Instance* formation = at(get_reference(part, 0));
  if (formation == nullptr) return;
  const std::uint32_t product = get_reference(*formation, 0);
  if (at(product) == nullptr) return;

  const std::string base = "#" + std::to_string(product) + "_part";
  std::string name = base;
  const std::uint32_t asked_before = file_names_[base]++;
  if (asked_before != 0) name += "_(" + std::to_string(asked_before + 1) + ")_";
  part.path = name + ".stp";
}

void Splitter::generate_root() {
  generated_root_ = std::make_unique<Instance>();
  root_ = generated_root_.get();
  root_->type = "PRODUCT_DEFINITION";
  root_->is_part = true;
  root_->path = "Root.stp";
  root_->part_kind = kAssemblies;
  root_->position = parts_.size();
  parts_.push_back(root_);
}

// ---------------------------------------------------------------------------------------------
// Association: propagation rules

/// Gives `target` a new number in every part of `source` that passes the filter and does not hold
/// it yet. Returns whether there was one.
bool Splitter::adopt_parts(Instance* source, Instance* target, std::uint32_t filter) {
  if (source == nullptr || target == nullptr) return false;
  bool added = false;
  for (const auto& [position, number] : source->part_numbers) {
    Instance& part = *parts_[position];
    if (filter != kAll && part.part_kind != filter) continue;
    ++part.last_instance_number;
    if (target->part_numbers.emplace(position, part.last_instance_number).second) {
      added = true;
    } else {
      --part.last_instance_number;
    }
  }
  return added;
}

/// Spreads the parts of `source` to `start` and all below it, stopping where nothing is gained.
bool Splitter::propagate_down(Instance* source, Instance* start, std::uint32_t filter) {
  if (source == nullptr || start == nullptr) return false;
  bool added = false;
  std::deque<Instance*> queue = {start};
  while (!queue.empty()) {
    Instance* instance = queue.front();
    queue.pop_front();
    if (!adopt_parts(source, instance, filter)) continue;
    added = true;
    for (const std::uint32_t r : instance->references) queue.push_back(at(r));
  }
  return added;
}

void Splitter::propagate_from_child(const TypeSet& types, std::size_t n, Filter filter) {
  for (const std::string& type : types) {
    for (Instance* instance : get(type)) {
      if (instance->references.size() > n) {
        adopt_parts(at(instance->references[n]), instance, filter);
      } else {
        outcome.messages +=
            "Got an out of range in 'propagate_from_child' while fetching child nb " +
            std::to_string(n) + "\n";
      }
    }
  }
}

void Splitter::propagate_from_children(const TypeSet& types, Filter filter) {
  for (const std::string& type : types) {
    for (Instance* instance : get(type)) {
      for (const std::uint32_t r : instance->references) adopt_parts(at(r), instance, filter);
    }
  }
}

void Splitter::propagate_to_descendants(const std::string& type, Filter filter) {
  for (Instance* instance : get(type)) {
    for (const std::uint32_t r : instance->references) propagate_down(instance, at(r), filter);
  }
}

void Splitter::propagate_both_ways(const std::string& type, Filter filter) {
  for (Instance* instance : get(type)) {
    for (const std::uint32_t r : instance->references) adopt_parts(at(r), instance, filter);
    for (const std::uint32_t r : instance->references) adopt_parts(instance, at(r), filter);
  }
}

void Splitter::gather_and_spread(const TypeSet& types, Filter filter) {
  for (const std::string& type : types) {
    for (Instance* instance : get(type)) {
      for (const std::uint32_t r : instance->references) adopt_parts(at(r), instance, filter);
      for (const std::uint32_t r : instance->references) propagate_down(instance, at(r), filter);
    }
  }
}

void Splitter::propagate_from_child_and_down(const TypeSet& types, std::size_t n, Filter filter) {
  for (const std::string& type : types) {
    for (Instance* instance : get(type)) {
      if (instance->references.size() > n) {
        adopt_parts(at(instance->references[n]), instance, filter);
      } else {
        outcome.messages +=
            "Got an out of range in 'propagate_from_child' while fetching child nb " +
            std::to_string(n) + "\n";
      }
      for (const std::uint32_t r : instance->references) propagate_down(instance, at(r), filter);
    }
  }
}

void Splitter::propagate_to_typed_children(const TypeSet& types, const TypeSet& child_types,
                                           Children mode, Filter filter) {
  for (const std::string& type : types) {
    for (Instance* instance : get(type)) {
      for (const std::uint32_t r : instance->references) {
        Instance* child = at(r);
        if (child == nullptr) continue;
        const bool listed = child_types.count(child->type) != 0;
        if (listed == (mode == Children::kOfTheseTypes)) propagate_down(instance, child, filter);
      }
    }
  }
}

void Splitter::propagate_through_relationships(const std::string& relationship,
                                               const std::string& node, std::size_t n) {
  std::deque<Instance*> queue;
  for (Instance* instance : get(node)) {
    if (!instance->part_numbers.empty()) queue.push_back(instance);
  }
  while (!queue.empty()) {
    Instance* from = queue.front();
    queue.pop_front();
    for (Instance* link : get(relationship)) {
      if (at(get_reference(*link, n)) != from || !adopt_parts(from, link, kAll)) continue;
      for (const std::uint32_t r : link->references) {
        if (adopt_parts(from, at(r), kAll)) queue.push_back(at(r));
      }
    }
  }
}

void Splitter::propagate_through_usages(const std::string& relationship, const std::string& node,
                                        std::size_t n) {
  std::deque<Instance*> queue;
  for (Instance* instance : get(node)) {
    if (!instance->part_numbers.empty()) queue.push_back(instance);
  }
  while (!queue.empty()) {
    Instance* from = queue.front();
    queue.pop_front();
    for (Instance* link : get(relationship)) {
      if (at(get_reference(*link, n)) != from || !adopt_parts(from, link, kAll)) continue;
      for (const std::uint32_t r : link->references) {
        Instance* end = at(r);
        if (end == nullptr || !end->part_numbers.empty()) continue;
        if (propagate_down(from, end, kAll)) queue.push_back(end);
      }
    }
  }
}

// ---------------------------------------------------------------------------------------------
// Association: passes

void Splitter::associate_entities() {
  initiate_recognition();

  // Product definitions and what is composed of them.
  propagate_to_descendants("PRODUCT_DEFINITION", kAll);
  gather_and_spread({"PLY_LAMINATE_TABLE", "COMPOSITE_ASSEMBLY_TABLE", "THICKNESS_LAMINATE_TABLE",
                     "PERCENTAGE_LAMINATE_TABLE", "SMEARED_MATERIAL_DEFINITION"},
                    kAll);
  gather_and_spread({"PLY_LAMINATE_SEQUENCE_DEFINITION", "COMPOSITE_ASSEMBLY_SEQUENCE_DEFINITION",
                     "PERCENTAGE_PLY_DEFINITION"},
                    kAll);
  propagate_from_child_and_down({"ASSEMBLY_COMPONENT_USAGE", "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
                                 "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"},
                                0, kAssemblies);
  gather_and_spread({"MAKE_FROM_USAGE_OPTION"}, kAll);
  propagate_through_usages("NEXT_ASSEMBLY_USAGE_OCCURRENCE", "PRODUCT_DEFINITION", 0);
  propagate_from_children({"MULTI_LEVEL_REFERENCE_DESIGNATOR"}, kAll);
  propagate_from_children({"APPLICATION_PROTOCOL_DEFINITION"}, kAll);
  propagate_from_child_and_down({"PRODUCT_DEFINITION_CONTEXT_ASSOCIATION"}, 0, kAll);
  propagate_from_children({"PRODUCT_RELATED_PRODUCT_CATEGORY"}, kAll);
  propagate_through_relationships("PRODUCT_CATEGORY_RELATIONSHIP",
                                  "PRODUCT_RELATED_PRODUCT_CATEGORY", 1);

  // Shapes, documents and properties.
  propagate_from_child({"PRODUCT_DEFINITION_SHAPE"}, 0, kAll);
  propagate_from_child({"SHAPE_ASPECT"}, 0, kLeaves);
  propagate_from_children({"SHAPE_ASPECT_RELATIONSHIP"}, kAll);
  gather_and_spread({"APPLIED_DOCUMENT_REFERENCE"}, kAll);
  propagate_both_ways("ROLE_ASSOCIATION", kAll);
  propagate_both_ways("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT", kAll);
  propagate_from_children({"DOCUMENT_REPRESENTATION_TYPE"}, kAll);
  propagate_from_child({"PROPERTY_DEFINITION", "MATERIAL_PROPERTY"}, 0, kAll);
  propagate_both_ways("SHAPE_DEFINITION_REPRESENTATION", kAll);

  // Representations and geometry.
  TypeSet shape_representations = types_ending_with("SHAPE_REPRESENTATION");
  shape_representations.insert({"BEVELED_SHEET_REPRESENTATION", "COMPOSITE_SHEET_REPRESENTATION",
                                "GEOMETRICALLY_BOUNDED_2D_WIREFRAME_REPRESENTATION",
                                "NEUTRAL_SKETCH_REPRESENTATION", "SHAPE_DIMENSION_REPRESENTATION"});
  TypeSet placements_and_contexts = types_containing("GEOMETRIC_REPRESENTATION_CONTEXT");
  placements_and_contexts.insert("AXIS2_PLACEMENT_3D");
  propagate_to_typed_children(shape_representations, placements_and_contexts,
                              Children::kOfTheseTypes, kAll);
  propagate_to_typed_children(shape_representations, placements_and_contexts,
                              Children::kOfOtherTypes, kLeaves);
  propagate_both_ways("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", kAll);
  propagate_to_typed_children(types_containing("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION"),
                              shape_representations, Children::kOfOtherTypes, kAll);
  gather_and_spread({"SHAPE_REPRESENTATION_RELATIONSHIP"}, kAll);
  gather_and_spread({"CONSTRUCTIVE_GEOMETRY_REPRESENTATION"}, kLeaves);
  propagate_from_children({"CONSTRUCTIVE_GEOMETRY_REPRESENTATION_RELATIONSHIP"}, kLeaves);
  propagate_from_children({"ITEM_IDENTIFIED_REPRESENTATION_USAGE", "GEOMETRIC_ITEM_SPECIFIC_USAGE"},
                          kLeaves);
  gather_and_spread({"PROPERTY_DEFINITION_REPRESENTATION", "MATERIAL_PROPERTY_REPRESENTATION"},
                    kAll);
  propagate_both_ways("GENERAL_PROPERTY_ASSOCIATION", kAll);
  propagate_through_relationships("GENERAL_PROPERTY_RELATIONSHIP", "GENERAL_PROPERTY", 0);

  // Presentation.
  gather_and_spread({"STYLED_ITEM"}, kAll);
  gather_and_spread({"OVER_RIDING_STYLED_ITEM"}, kAll);
  gather_and_spread({"CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"}, kAll);
  propagate_from_children(
      {"MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION", "DRAUGHTING_MODEL"}, kLeaves);

  // Management data. Document references go a second time, for the parts gained since.
  gather_and_spread({"APPLIED_DOCUMENT_REFERENCE"}, kAll);
  gather_and_spread({"APPLIED_SECURITY_CLASSIFICATION_ASSIGNMENT"}, kAll);
  gather_and_spread({"APPLIED_CERTIFICATION_ASSIGNMENT"}, kAll);
  gather_and_spread({"APPLIED_EVENT_OCCURRENCE_ASSIGNMENT"}, kAll);
  gather_and_spread({"APPLIED_DATE_ASSIGNMENT"}, kAll);
  gather_and_spread({"APPLIED_APPROVAL_ASSIGNMENT"}, kAll);
  gather_and_spread({"APPLIED_ORGANIZATION_ASSIGNMENT"}, kAll);
  gather_and_spread({"APPLIED_PERSON_AND_ORGANIZATION_ASSIGNMENT"}, kAll);
  propagate_from_children(
      {"PERSONAL_ADDRESS", "ORGANIZATIONAL_ADDRESS", "PERSON_AND_ORGANIZATION_ADDRESS"}, kAll);
  gather_and_spread({"APPROVAL_PERSON_ORGANIZATION"}, kAll);
  gather_and_spread({"APPLIED_DATE_AND_TIME_ASSIGNMENT"}, kAll);
  gather_and_spread({"APPROVAL_DATE_TIME"}, kAll);
  propagate_from_children({"PRESENTATION_LAYER_ASSIGNMENT"}, kAll);
  propagate_from_children({"INVISIBILITY"}, kAll);
  propagate_from_children({"ID_ATTRIBUTE"}, kAll);

  // Composite materials and units.
  gather_and_spread({"PLY_ORIENTATION_ANGLE", "LAID_ORIENTATION_ANGLE", "DRAPED_ORIENTATION_ANGLE"},
                    kAll);
  gather_and_spread(types_containing("CONVERSION_BASED_UNIT"), kAll);

  associate_others();
}

/// Seeds the parts: the root holds every part's instance, a leaf its own.
void Splitter::initiate_recognition() {
  for (Instance* part : parts_) {
    // A number that turns out not to be needed is not given back; outputs depend on the gap.
    if (root_ != nullptr) {
      ++root_->last_instance_number;
      part->part_numbers.emplace(root_->position, root_->last_instance_number);
    }
    if (part->part_kind != kAssemblies) {
      ++part->last_instance_number;
      part->part_numbers.emplace(part->position, part->last_instance_number);
    }
  }
}

/// Lets instances that no pass reached join the parts of what they reference, with five visits per
/// such instance to spend.
void Splitter::associate_others() {
  std::deque<std::uint32_t> queue;
  for (const auto& [id, instance] : instances_) {
    if (instance->part_numbers.empty()) queue.push_back(id);
  }
  std::size_t budget = 5 * queue.size();
  while (!queue.empty() && budget > 0) {
    const std::uint32_t id = queue.front();
    Instance* instance = at(id);
    if (instance->part_numbers.empty()) {
      for (const std::uint32_t r : instance->references) adopt_parts(at(r), instance, kAll);
      if (instance->part_numbers.empty()) queue.push_back(id);
    }
    queue.pop_front();
    --budget;
  }
}

// ---------------------------------------------------------------------------------------------
// Writing: one record's text

/// Cuts out the reference whose digits run from `start` to `pos`, with one comma beside it.
void drop_reference(std::string& text, std::size_t& pos, std::size_t start) {
  std::size_t from = text.find_last_of(",(", start);
  if (from == kNowhere) return;
  if (text[from] == '(') ++from;
  if (pos <= from) return;
  std::size_t length = pos - from;
  pos = from;
  if (char_at(text, from) != ',' && char_at(text, from + length) == ',') ++length;
  text.erase(from, length);
}

/// Puts the number that `id` has in the part's file in place of the digits that end at `pos`, or
/// cuts the reference out when the part does not hold the instance.
void Splitter::renumber_reference(const Instance& part, std::uint32_t id, std::size_t& pos,
                                  std::string& text) const {
  // The digits of the value, not of the text: leading zeros stay in front of the new number.
  const std::size_t digits = static_cast<std::size_t>(std::log10(id)) + 1;
  if (pos <= digits) return;
  const std::size_t start = pos - digits;
  const Instance* instance = at(id);
  if (instance == nullptr || instance->part_numbers.count(part.position) == 0) {
    drop_reference(text, pos, start);
    return;
  }
  const std::string number = std::to_string(instance->part_numbers.at(part.position));
  text.replace(start, digits, number);
  pos = pos + number.size() - digits;
}

std::string Splitter::rewrite_references(std::string text, const Instance& part) const {
  std::size_t pos = 0;
  std::uint32_t id = next_reference(pos, text);
  while (id != 0) {
    renumber_reference(part, id, pos, text);
    id = next_reference(pos, text);
  }
  return text;
}

/// Rewrites a presentation record: its item list names every instance of the part that the record
/// references, the context too.
std::string Splitter::rewrite_presentation_items(const Instance& part, const std::string& record,
                                                 std::uint32_t id) const {
  std::string text = record;
  std::size_t pos = 0;
  const std::uint32_t own = next_reference(pos, text);
  if (own == 0) return "";
  renumber_reference(part, own, pos, text);
  pos = text.rfind('#');
  const std::uint32_t last = next_reference(pos, text);
  if (last != 0) renumber_reference(part, last, pos, text);

  std::string items;
  for (const std::uint32_t r : at(id)->references) {
    const Instance* item = at(r);
    if (item == nullptr || item->part_numbers.count(part.position) == 0) continue;
    if (!items.empty()) items += ",";
    items += "#" + std::to_string(item->part_numbers.at(part.position));
  }

  const std::size_t outer = text.find('(');
  const std::size_t open = outer == kNowhere ? kNowhere : text.find('(', outer + 1);
  const std::size_t close = text.find(')');
  if (open == kNowhere || close == kNowhere || close < open) {
    return rewrite_references(record, part);
  }
  text.replace(open + 1, close - open - 1, items);
  return text;
}

/// Marks a shared context record as one that other files define as well.
std::string make_context_external(std::string text) {
  const std::size_t first = text.find(',');
  if (first == kNowhere) return text;
  const std::size_t second = text.find(',', first + 1);
  if (second == kNowhere) return text;
  text.replace(first + 1, second - first - 1, "'external'");
  return text;
}

/// The records that point from the target's file at the file of a component, for a shape definition
/// representation that both hold.
std::string Splitter::make_external_reference(Instance& target, Instance& shape_definition) {
  std::string name;
  for (const auto& [position, number] : shape_definition.part_numbers) {
    if (parts_[position]->part_kind != kLeaves) continue;
    name = encode_to_step(path_to_utf8(parts_[position]->path.filename()));
    break;
  }
  const auto new_number = [&target] { return "#" + std::to_string(++target.last_instance_number); };
  const auto number_in_target = [&target](const Instance* instance) {
    if (instance == nullptr || instance->part_numbers.count(target.position) == 0) {
      throw std::out_of_range("invalid map<K, T> key");
    }
    return "#" + std::to_string(instance->part_numbers.at(target.position));
  };

  const std::string id1 = new_number();
  const std::string id2 = new_number();
  const std::string id3 = new_number();
  const std::string id4 = new_number();
  const std::string id5 = new_number();
  const std::string id6 = new_number();
  const std::string id7 = new_number();
  const std::string id8 = new_number();
  const std::string representation = number_in_target(at(get_reference(shape_definition, 1)));

  const std::string id9 = new_number();
  const std::uint32_t start = get_reference(shape_definition, 0);
  const Instance* found = at(find_reachable(start, "PRODUCT_DEFINITION"));
  if (found == nullptr) {
    found = at(find_reachable(start, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS"));
  }
  if (found == nullptr) found = at(find_reachable(start, "MAPPED_ITEM"));
  const std::string definition = number_in_target(found);

  const std::string id10 = new_number();
  const std::string id11 = new_number();

  std::string block;
  block += id1 + "=DOCUMENT_TYPE('geometry');\n";
  block += id2 + "=DOCUMENT_FILE('" + name + "','',''," + id1 + ",'',$);\n";
  block += id3 + "=DOCUMENT_REPRESENTATION_TYPE('digital'," + id2 + ");\n";
  block += id4 + "=EXTERNAL_SOURCE(IDENTIFIER(''));\n";
  block += id5 + "=IDENTIFICATION_ROLE('external document id and location',$);\n";
  block += id6 + "=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('" + name + "'," + id5 + "," + id4 +
           ",(" + id2 + "));\n";
  block += id7 + "=PROPERTY_DEFINITION('external definition',''," + id2 + ");\n";
  block += id8 + "=PROPERTY_DEFINITION_REPRESENTATION(" + id7 + "," + representation + ");\n";
  block += id9 + "=APPLIED_DOCUMENT_REFERENCE(" + id2 + ",'',(" + definition + "));\n";
  block += id10 + "=OBJECT_ROLE('mandatory',$);\n";
  block += id11 + "=ROLE_ASSOCIATION(" + id10 + "," + id9 + ");\n";
  return block;
}

// ---------------------------------------------------------------------------------------------
// Writing: files

/// Appends to the part's file and returns its text for more insertions; null when the file cannot
/// be opened, which is said once per call. A single part has no file at all.
std::string* Splitter::output(Instance& part, const std::string& text) {
  if (only_one_part_) return nullptr;
  if (!part.path.has_filename()) {
    outcome.messages += "Could not open " + path_to_utf8(part.path) + "\n";
    return nullptr;
  }
  std::string& file = outcome.files[part.path.string()];
  file += text;
  return &file;
}

void Splitter::write_parts() {
  input_.rewind();
  for (Instance* part : parts_) part->path = outdir_ / part->path;
  write_frame_start();
  write_records();
  write_frame_end();
  for (Instance* part : parts_) {
    const std::string path = part->path.string();
    const std::size_t separator = path.find_last_of("\\/");
    part->path = separator == kNowhere ? path : path.substr(separator + 1);
  }
}

/// The input's header with the name and the time stamp of FILE_NAME replaced. A search that starts
/// one past a quote that was not found starts at the beginning, since kNowhere + 1 is 0; outputs
/// depend on that.
std::string Splitter::make_file_header(const std::string& file_name) const {
  std::string text = header_;
  const std::size_t entity = text.find("FILE_NAME");
  const std::size_t name_open = text.find('\'', entity);
  std::size_t name_close = text.find('\'', name_open + 1);
  if (name_open != kNowhere && name_close != kNowhere) {
    text.replace(name_open + 1, name_close - name_open - 1, file_name);
    name_close = name_open + 1 + file_name.size();
  }
  const std::size_t time_open = text.find('\'', name_close + 1);
  const std::size_t time_close = text.find('\'', time_open + 1);
  if (time_open == kNowhere || time_close == kNowhere) return text;
  text.replace(time_open + 1, time_close - time_open - 1, now_);
  return text;
}

void Splitter::write_frame_start() {
  for (Instance* part : parts_) {
    std::string* file = output(*part, first_line_);
    if (file != nullptr) *file += "\n";
    const std::string header = make_file_header(encode_to_step(path_to_utf8(part->path)));
    if (file != nullptr) *file += header + "\nDATA;\n";
  }
}

void Splitter::write_records() {
  while (true) {
    const std::string record = read_record_or_give_up(input_);
    if (record.empty()) break;
    write_record(record);
  }
}

void Splitter::write_record(const std::string& record) {
  std::size_t pos = 0;
  const std::uint32_t id = next_reference(pos, record);
  if (id == 0) return;
  Instance* instance = at(id);
  if (instance == nullptr) return;
  const bool presentation =
      contains(instance->type, "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION");

  for (const auto& [position, number] : instance->part_numbers) {
    Instance& part = *parts_[position];
    std::string text = record;
    if (part.part_kind != kLeaves && instance->part_numbers.size() > 1) {
      if (instance->type == "GEOMETRIC_REPRESENTATION_CONTEXT") {
        text = make_context_external(text);
      } else if (instance->type == "SHAPE_DEFINITION_REPRESENTATION") {
        output(part, make_external_reference(part, *instance));
      }
    }
    text =
        presentation ? rewrite_presentation_items(part, text, id) : rewrite_references(text, part);
    std::string* file = output(part, text);
    if (file != nullptr) *file += ";\n";
  }
}

void Splitter::write_frame_end() {
  const std::string text = "ENDSEC;\nEND-" + first_line_ + "\n";
  for (Instance* part : parts_) output(*part, text);
}

// ---------------------------------------------------------------------------------------------
// The run

void Splitter::list_results() {
  if (only_one_part_) return;
  for (const Instance* part : parts_) {
    std::filesystem::path path = part->path;
    if (path.parent_path().empty()) path = outdir_ / path;
    const std::string normal = path.lexically_normal().string();
    if (part == root_) {
      outcome.result.insert(outcome.result.begin(), normal);
    } else {
      outcome.result.push_back(normal);
    }
  }
}

void Splitter::run() {
  try {
    parse();
    build_structure();
    associate_entities();
    write_parts();
    list_results();
  } catch (const std::out_of_range& error) {
    outcome.exception = std::string("out_of_range: ") + error.what();
  } catch (const std::system_error& error) {
    outcome.exception = std::string("system_error: ") + error.what();
  }
}

}  // namespace

Outcome split(std::string_view input, const std::string& outdir, const std::string& now) {
  Splitter splitter(input, outdir, now);
  splitter.run();
  return splitter.outcome;
}

}  // namespace naive
