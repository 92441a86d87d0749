// The product structure as a tree in box-drawing characters.
#include <string_view>
#include <utility>
#include <vector>

#include "formats/tree_formats.h"
#include "text/part_label.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

using Kessel::PartInfo;
using Kessel::PartUse;

/// Draws the components of one part after the other, with its own stack: a chain of parts may be
/// longer than the process's has room for.
class Drawing {
 public:
  Drawing(const Kessel::Assembly& assembly, std::size_t depth, const Colours& colours)
      : parts_(assembly.parts), colours_(colours), depth_(depth), drawn_(assembly.parts.size()) {
    for (const std::size_t root : assembly.roots) {
      add_line({}, {root, 1, false});
      while (!path_.empty()) draw_next();
    }
  }

  std::string text() && { return std::move(text_); }

 private:
  /// How a part's components were drawn so far.
  struct Drawn {
    std::size_t levels = 0;  // At most so many; 0 for not at all.
    bool cut = false;        // Some levels below were left out.
  };
  /// A part whose components are being drawn.
  struct Open {
    std::size_t part;
    std::size_t next;    // component
    std::size_t indent;  // size of the indentation in front of the part's own line
  };

  void draw_next() {
    Open& open = path_.back();
    const std::vector<PartUse>& uses = parts_[open.part].components;
    if (open.next == uses.size()) {
      indent_.resize(open.indent);
      path_.pop_back();
      return;
    }
    const PartUse& use = uses[open.next++];
    const bool last = open.next == uses.size();
    text_ += indent_;
    if (add_line(last ? "└─ " : "├─ ", use)) indent_ += last ? "   " : "│  ";
  }

  /// Adds a part's line, and opens the part where its components are to follow. Returns whether.
  bool add_line(std::string_view branch, const PartUse& use) {
    text_ += branch;
    text_ += label(use);
    const std::string_view note = why_closed(use);
    if (!note.empty()) {
      text_ += "  ";
      text_ += colours_.dim(note);
    }
    text_ += '\n';
    if (!note.empty() || parts_[use.part].components.empty()) return false;
    drawn_[use.part] = {depth_ - path_.size(), false};
    path_.push_back({use.part, 0, indent_.size()});
    return true;
  }

  /// Why a part's components do not follow; empty where they do, or where there are none.
  std::string_view why_closed(const PartUse& use) {
    const Drawn& drawn = drawn_[use.part];
    if (parts_[use.part].components.empty()) return {};
    if (use.closes_cycle) return "(contains itself)";
    const std::size_t levels = depth_ - path_.size();
    if (drawn.levels != 0 && (!drawn.cut || drawn.levels >= levels)) {
      if (drawn.cut) mark_cut();
      return "(see above)";
    }
    if (levels != 0) return {};
    mark_cut();
    return "(components not shown)";
  }

  /// Remembers of all open parts that not all is drawn.
  void mark_cut() {
    for (auto open = path_.rbegin(); open != path_.rend(); ++open) {
      if (drawn_[open->part].cut) break;  // So are those that it is in.
      drawn_[open->part].cut = true;
    }
  }

  std::string label(const PartUse& use) const {
    const PartInfo& part = parts_[use.part];
    const bool is_part = part.role == Kessel::PartRole::part;
    std::string text = is_part ? title_of(part) : colours_.bold(title_of(part));
    if (!part.id.empty() && !part.name.empty() && part.id != part.name) {
      text += " [" + printable(part.id) + "]";
    }
    if (use.count != 1) text += " ×" + std::to_string(use.count);
    std::string facts(role_name(part.role));
    if (part.record != 0) facts += ", " + record_of(part);
    if (!part.file.empty()) facts += ", " + file_of(part);
    if (!part.external_file.empty()) facts += ", shape in " + printable(part.external_file);
    return text + "  " + colours_.dim("(" + facts + ")");
  }

  const std::vector<PartInfo>& parts_;
  const Colours& colours_;
  const std::size_t depth_;
  std::vector<Drawn> drawn_;  // by part
  std::vector<Open> path_;
  std::string indent_;
  std::string text_;
};

}  // namespace

std::string tree_text(const Kessel::Assembly& assembly, std::size_t depth, const Colours& colours) {
  return Drawing(assembly, depth, colours).text();
}

}  // namespace Velkstep
