// Small exchange files in a folder of their own, and what they join to.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "join/joined_data.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

/// A whole exchange file.
inline std::string whole_file(std::string_view data, std::string_view schema = "AP",
                              std::string_view sections = "") {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
         "FILE_NAME('in.stp','2026-01-01T00:00:00+00:00',('me'),(''),'','','');\n"
         "FILE_SCHEMA(('" +
         std::string(schema) + "'));\nENDSEC;\n" + std::string(sections) + "DATA;\n" +
         std::string(data) + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// What stands behind "DATA;" in files of the split 0123456789abcdef.
inline const std::string MARKED =
    "/* velkstep split 0123456789abcdef: the number in front of a record is its number in the file "
    "that was split */\n";

class JoinedFolder {
 public:
  /// Writes the file `name` with these records.
  void file(std::string_view name, std::string_view data, std::string_view schema = "AP") const {
    folder_.write(name, whole_file(data, schema));
  }
  const ScratchFolder& folder() const { return folder_; }

  /// Joins "root.stp" and what it refers to, and returns the records of the result. What
  /// comparisons are given in place of the result must be the same.
  std::string data() {
    joined_ = join(folder_ / "root.stp", folder_ / "out.stp", options);
    EXPECT_EQ(difference_of_data(folder_ / "root.stp", folder_ / "out.stp", options), "");
    const std::string text = read_file(folder_ / "out.stp");
    const std::size_t begin = text.find("DATA;\n") + 6;
    return text.substr(begin, text.find("ENDSEC;\n", begin) - begin);
  }

  /// What data() found besides.
  const Joined& joined() const { return joined_; }

  /// Why "root.stp" cannot be joined: the file that the finding is about, ": " and its sentence.
  std::string refusal() const {
    try {
      join(folder_ / "root.stp", folder_ / "out.stp", options);
    } catch (const InputError& error) {
      return error.finding().file + ": " + error.finding().sentence;
    } catch (const OutputError& error) {
      return error.path().filename().string() + ": " + error.reason().message();
    }
    return "joined";
  }

  JoinOptions options;

 private:
  ScratchFolder folder_;
  Joined joined_;
};

/// The records by which a file says that `shape`, the shape of `definition`, is in the file `name`,
/// numbered from `number` on.
inline std::string reference_block(int number, std::string_view name, std::string_view shape,
                                   std::string_view definition) {
  const auto at = [number](int i) { return "#" + std::to_string(number + i); };
  const std::string file = "'" + std::string(name) + "'";
  return at(0) + "=DOCUMENT_TYPE('geometry');\n" + at(1) + "=DOCUMENT_FILE(" + file + ",'',''," +
         at(0) + ",'',$);\n" + at(2) + "=DOCUMENT_REPRESENTATION_TYPE('digital'," + at(1) + ");\n" +
         at(3) + "=EXTERNAL_SOURCE(IDENTIFIER(''));\n" + at(4) +
         "=IDENTIFICATION_ROLE('external document id and location',$);\n" + at(5) +
         "=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT(" + file + "," + at(4) + "," + at(3) + ",(" +
         at(1) + "));\n" + at(6) + "=PROPERTY_DEFINITION('external definition',''," + at(1) +
         ");\n" + at(7) + "=PROPERTY_DEFINITION_REPRESENTATION(" + at(6) + "," +
         std::string(shape) + ");\n" + at(8) + "=APPLIED_DOCUMENT_REFERENCE(" + at(1) + ",'',(" +
         std::string(definition) + "));\n" + at(9) + "=OBJECT_ROLE('mandatory',$);\n" + at(10) +
         "=ROLE_ASSOCIATION(" + at(9) + "," + at(8) + ");\n";
}

/// The same, with the mark of records that a split made in front of each.
inline std::string made_block(int number, std::string_view name, std::string_view shape,
                              std::string_view definition) {
  std::string text;
  const std::string block = reference_block(number, name, shape, definition);
  for (std::size_t at = 0; at < block.size();) {
    const std::size_t end = block.find('\n', at) + 1;
    text += "/*~*/" + block.substr(at, end - at);
    at = end;
  }
  return text;
}

/// A product whose definition is #n, version #n+1, product #n+2, shape #n+3, link #n+4 and
/// representation #n+5, with the items `items` in the context `context`; the definition's context
/// is #1.
inline std::string product(int n, std::string_view name, std::string_view items,
                           std::string_view context) {
  const auto at = [n](int i) { return "#" + std::to_string(n + i); };
  const std::string quoted = "'" + std::string(name) + "'";
  return at(0) + "=PRODUCT_DEFINITION('design',''," + at(1) + ",#1);\n" + at(1) +
         "=PRODUCT_DEFINITION_FORMATION('',''," + at(2) + ");\n" + at(2) + "=PRODUCT(" + quoted +
         "," + quoted + ",'',());\n" + at(3) + "=PRODUCT_DEFINITION_SHAPE('',''," + at(0) + ");\n" +
         at(4) + "=SHAPE_DEFINITION_REPRESENTATION(" + at(3) + "," + at(5) + ");\n" + at(5) +
         "=SHAPE_REPRESENTATION(''," + std::string(items) + "," + std::string(context) + ");\n";
}

}  // namespace Kessel::test
