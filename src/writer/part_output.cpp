// Output files, opened on demand and limited in number.
#include <cerrno>
#include <iostream>

#include "findings/write_failure.h"
#include "kessel/encoding.h"
#include "writer/part_stream.h"

namespace Kessel {

std::queue<Part*> Part::_opened_files;

bool open_stream(Part& part) {
  if (part.stream.is_open()) return true;
  if (Part::_opened_files.size() >= Part::MAX_OPENED_FILE) {
    if (Part* oldest = Part::_opened_files.front()) oldest->close();
    Part::_opened_files.pop();
  }
  errno = 0;
  part.stream.open(part.path, std::ios::out | std::ios::app | std::ios::binary);
  if (!part.stream.is_open()) {
    note_write_failure(part.path);
    return false;
  }
  Part::_opened_files.push(&part);
  return true;
}

void close_opened_streams() {
  for (; !Part::_opened_files.empty(); Part::_opened_files.pop()) {
    if (Part* part = Part::_opened_files.front()) part->close();
  }
}

std::ostream& Part::output(const std::string& text) {
  if (!open_stream(*this)) {
    std::cerr << "Could not open " << fspath_to_utf8(path) << '\n';
    return stream;
  }
  return stream << text;
}

void Part::close() {
  errno = 0;
  stream.close();
  if (stream.fail()) note_write_failure(path);
}

void Part::free_statics() {
  close_opened_streams();
  _filenames.clear();
  forget_write_failure();
}

Part::~Part() {
  // Where an exception ended the run, the queue must not keep a pointer to this part.
  for (std::size_t count = _opened_files.size(); count > 0; --count) {
    if (_opened_files.front() != this) _opened_files.push(_opened_files.front());
    _opened_files.pop();
  }
}

}  // namespace Kessel
