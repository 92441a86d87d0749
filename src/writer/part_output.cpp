// Output files, opened on demand and limited in number.
#include <iostream>

#include "kessel/encoding.h"
#include "kessel/part.h"

namespace Kessel {

std::queue<Part*> Part::_opened_files;

std::ostream& Part::output(const std::string& text) {
  if (!stream.is_open()) {
    if (_opened_files.size() >= MAX_OPENED_FILE) {
      if (Part* oldest = _opened_files.front()) oldest->close();
      _opened_files.pop();
    }
    stream.open(path, std::ios::out | std::ios::app | std::ios::binary);
    if (!stream.is_open()) {
      std::cerr << "Could not open " << fspath_to_utf8(path) << '\n';
      return stream;
    }
    _opened_files.push(this);
  }
  return stream << text;
}

void Part::close() {
  stream.close();
}

void Part::free_statics() {
  for (; !_opened_files.empty(); _opened_files.pop()) {
    if (Part* part = _opened_files.front()) part->close();
  }
  _filenames.clear();
}

Part::~Part() {
  // Where an exception ended the run, the queue must not keep a pointer to this part.
  for (std::size_t count = _opened_files.size(); count > 0; --count) {
    if (_opened_files.front() != this) _opened_files.push(_opened_files.front());
    _opened_files.pop();
  }
}

}  // namespace Kessel
