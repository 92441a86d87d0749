// Output files, opened on demand and limited in number.
#include <cerrno>
#include <iostream>

#include "kessel/encoding.h"
#include "kessel/part.h"

namespace Kessel {

std::queue<Part*> Part::_opened_files;
std::optional<Part::Failure> Part::_failure;

void Part::note_failure(const std::filesystem::path& path) {
  const int reason = errno != 0 ? errno : EIO;
  if (!_failure) _failure = Failure{path, {reason, std::generic_category()}};
}

bool Part::open() {
  if (stream.is_open()) return true;
  if (_opened_files.size() >= MAX_OPENED_FILE) {
    if (Part* oldest = _opened_files.front()) oldest->close();
    _opened_files.pop();
  }
  errno = 0;
  stream.open(path, std::ios::out | std::ios::app | std::ios::binary);
  if (!stream.is_open()) {
    note_failure(path);
    return false;
  }
  _opened_files.push(this);
  return true;
}

std::ostream& Part::output(const std::string& text) {
  if (!open()) {
    std::cerr << "Could not open " << fspath_to_utf8(path) << '\n';
    return stream;
  }
  return stream << text;
}

void Part::close() {
  errno = 0;
  stream.close();
  if (stream.fail()) note_failure(path);
}

void Part::close_opened() {
  for (; !_opened_files.empty(); _opened_files.pop()) {
    if (Part* part = _opened_files.front()) part->close();
  }
}

void Part::free_statics() {
  close_opened();
  _filenames.clear();
  _failure.reset();
}

Part::~Part() {
  // Where an exception ended the run, the queue must not keep a pointer to this part.
  for (std::size_t count = _opened_files.size(); count > 0; --count) {
    if (_opened_files.front() != this) _opened_files.push(_opened_files.front());
    _opened_files.pop();
  }
}

}  // namespace Kessel
