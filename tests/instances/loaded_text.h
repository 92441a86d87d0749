// Loads what stands in a test.
#pragma once

#include <string>
#include <vector>

#include "support/loaded_text.h"

namespace Kessel::test {

/// An exchange file with that data section; what stands in it begins in the second line.
inline std::string file_with(const std::string& data) {
  return "ISO-10303-21;HEADER;FILE_SCHEMA(('S'));ENDSEC;DATA;\n" + data +
         "ENDSEC;END-ISO-10303-21;";
}

inline LoadedText load_file(const std::string& file, const Options& options = {}) {
  return {file, options};
}

inline LoadedText load(const std::string& data, const Options& options = {}) {
  return load_file(file_with(data), options);
}

/// What a record refers to: "#2", "#3!" where it is listed, "?" for a missing one.
inline std::vector<std::string> references_of(const Instances& instances, Index record) {
  std::vector<std::string> texts;
  for (const Reference reference : instances.references(record)) {
    std::string text = reference.record() == NO_RECORD
                           ? "?"
                           : "#" + std::to_string(instances.number(reference.record()));
    texts.push_back(text + (reference.is_listed() ? "!" : ""));
  }
  return texts;
}

/// "KIND LINE #INSTANCE" of each.
inline std::vector<std::string> lines_of(const std::vector<Finding>& findings) {
  std::vector<std::string> lines;
  for (const Finding& finding : findings) {
    lines.push_back(std::string(name_of(finding.kind)) + ' ' + std::to_string(finding.line) + " #" +
                    std::to_string(finding.instance));
  }
  return lines;
}

}  // namespace Kessel::test
