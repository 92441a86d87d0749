// The cutter beside a plain one that reads the stream piece by piece.
#pragma once

#include <string>
#include <vector>

namespace Kessel::test {

/// `lines` lines of `text`, then records until well behind the end, then whether it ended.
std::vector<std::string> cut(const std::string& text, int lines);

namespace plain {

/// The same without RecordCutter.
std::vector<std::string> cut(const std::string& text, int lines);

}  // namespace plain

}  // namespace Kessel::test
