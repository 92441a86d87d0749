// Inputs, fresh folders, and what they cost.
#include "measure/workshop.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "measure/child.h"

namespace Kessel::bench {

namespace fs = std::filesystem;

namespace {

/// Counts the records of an exchange file: pieces between two ";" that begin with "#".
class RecordCounter {
 public:
  void add(const char* text, std::size_t size) {
    const char* const end = text + size;
    while (text != end) {
      if (at_beginning_) {
        while (text != end && std::strchr(" \t\r\n", *text) != nullptr) ++text;
        if (text == end) return;
        if (*text == '#') ++records_;
        at_beginning_ = false;
      }
      text = static_cast<const char*>(std::memchr(text, ';', static_cast<std::size_t>(end - text)));
      if (text == nullptr) return;
      ++text;
      at_beginning_ = true;
    }
  }
  std::uint64_t records() const { return records_; }

 private:
  bool at_beginning_ = true;
  std::uint64_t records_ = 0;
};

std::uint64_t count_records(const fs::path& path) {
  constexpr std::size_t BLOCK_SIZE = 64 * 1024;
  const auto block = std::make_unique<char[]>(BLOCK_SIZE);
  std::ifstream in(path, std::ios::binary);
  RecordCounter counter;
  while (in.read(block.get(), BLOCK_SIZE) || in.gcount() > 0) {
    counter.add(block.get(), static_cast<std::size_t>(in.gcount()));
  }
  return counter.records();
}

/// A place where files live in memory, or among temporary files when there is none with room.
fs::path place_for_temporary_folder() {
  constexpr std::uintmax_t ROOM = std::uintmax_t{3} * 1024 * 1024 * 1024;
  const fs::path in_memory = "/dev/shm";
  std::error_code error;
  const fs::space_info space = fs::space(in_memory, error);
  const bool usable = !error && space.available >= ROOM && ::access(in_memory.c_str(), W_OK) == 0;
  return usable ? in_memory : fs::temp_directory_path();
}

fs::path make_temporary_folder() {
  std::string name = (place_for_temporary_folder() / "measure-runs-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot create " + name);
  return name;
}

}  // namespace

Programs::Programs(const fs::path& folder)
    : generate_assembly(folder / "generate_assembly"),
      copy_floor(folder / "copy_floor"),
      split_once(folder / "split_once"),
      peer_split(folder / "peer_split") {
  for (const fs::path& program : {generate_assembly, copy_floor, split_once}) {
    if (!fs::exists(program)) throw std::runtime_error("missing: " + program.string());
  }
}

Workshop::Workshop(const fs::path& folder) : temporary_(folder.empty()) {
  if (temporary_) {
    folder_ = make_temporary_folder();
  } else {
    fs::create_directories(folder);
    folder_ = fs::canonical(folder);
  }
}

Workshop::~Workshop() {
  std::error_code ignored;
  if (temporary_) fs::remove_all(folder_, ignored);
}

fs::path Workshop::fresh(const std::string& name) const {
  fs::path path = folder_ / name;
  fs::remove_all(path);
  return path;
}

Input Workshop::input(const Programs& programs, std::string_view shape, std::uint32_t size) const {
  const std::string name = std::string(shape) + "-" + std::to_string(size) + ".stp";
  const fs::path path = folder_ / name;
  if (!fs::exists(path)) {
    const fs::path part = fresh(name + ".part");  // A run that is broken off leaves no half input.
    run_child({programs.generate_assembly, std::string(shape), std::to_string(size), "-o", part},
              folder_);
    fs::rename(part, path);
  }
  return {shape, size, path, fs::file_size(path), count_records(path)};
}

Written look_into(const fs::path& folder) {
  Written written;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    ++written.files;
    written.sizes.push_back(entry.file_size());
    written.bytes += written.sizes.back();
  }
  return written;
}

double seconds_to_create_a_file(const Workshop& workshop) {
  constexpr int COUNT = 2000;
  const fs::path folder = workshop.fresh("created");
  fs::create_directory(folder);
  const std::string text(4096, 'x');
  const auto before = std::chrono::steady_clock::now();
  for (int i = 0; i < COUNT; ++i) {
    const fs::path path = folder / std::to_string(i);
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    const bool written = ::write(file, text.data(), text.size()) == ssize_t{4096};
    ::close(file);
    if (!written) throw std::runtime_error("cannot write " + path.string());
  }
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - before;
  fs::remove_all(folder);
  return elapsed.count() / COUNT;
}

}  // namespace Kessel::bench
