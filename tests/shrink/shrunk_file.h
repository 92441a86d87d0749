// Small exchange files, and what shrinking makes of them.
#pragma once

#include <string>
#include <string_view>

#include "kessel/shrink.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

class ShrunkFile {
 public:
  /// Shrinks a file whose sections behind the header are `sections` and returns those of the
  /// result.
  std::string sections(std::string_view sections) {
    const std::string head =
        "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
        "FILE_NAME('a.stp','2026-01-01T00:00:00+00:00',('me'),(''),'','','');\n"
        "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\n";
    const std::string tail = "END-ISO-10303-21;\n";
    folder_.write("in.stp", head + std::string(sections) + tail);
    options.replace = true;
    figures = shrink("in.stp", "out.stp", options);
    std::string text = read_file("out.stp");
    if (!text.starts_with(head) || !text.ends_with(tail)) return "another frame: " + text;
    return text.substr(head.size(), text.size() - head.size() - tail.size());
  }

  /// The same for the records of the one data section.
  std::string records(std::string_view records) {
    const std::string text = sections("DATA;\n" + std::string(records) + "ENDSEC;\n");
    if (!text.starts_with("DATA;\n") || !text.ends_with("ENDSEC;\n")) return text;
    return text.substr(6, text.size() - 14);
  }

  ShrinkOptions options;
  Shrunk figures;

 private:
  ScratchFolder folder_;
};

}  // namespace Kessel::test
