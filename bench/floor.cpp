// The floors under every whole-run figure: what copying the input costs at least.
//
//     copy_floor IN OUT
//     copy_floor IN FOLDER SIZES
//
// Reads IN twice in blocks of 1 MiB and finds every ";" both times. The first form writes as many
// bytes as were read once into one file; the second creates a file in FOLDER for each number in the
// file SIZES, of so many bytes. Prints the number of ";" found, so that no search can be left out.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t BLOCK_SIZE = 1024 * 1024;

/// A file descriptor that closes itself.
class Descriptor {
 public:
  Descriptor(const char* path, int flags) : number_(::open(path, flags, 0644)) {
    if (number_ < 0) throw std::runtime_error(std::string("cannot open ") + path);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { ::close(number_); }
  operator int() const { return number_; }

 private:
  int number_;
};

std::size_t count_semicolons(const char* block, std::size_t size) {
  std::size_t count = 0;
  const char* p = block;
  const char* const end = block + size;
  while (const void* found = std::memchr(p, ';', static_cast<std::size_t>(end - p))) {
    p = static_cast<const char*>(found) + 1;
    ++count;
  }
  return count;
}

/// Reads the file once; passes every block to `use(block, size)`.
template <class Use>
void read_blocks(const char* path, char* block, Use use) {
  const Descriptor in(path, O_RDONLY);
  for (;;) {
    const ssize_t size = ::read(in, block, BLOCK_SIZE);
    if (size < 0) throw std::runtime_error("cannot read");
    if (size == 0) return;
    use(block, static_cast<std::size_t>(size));
  }
}

void write_all(int out, const char* text, std::size_t size) {
  if (::write(out, text, size) != static_cast<ssize_t>(size)) {
    throw std::runtime_error("cannot write");
  }
}

std::vector<std::uint64_t> read_sizes(const char* path) {
  std::ifstream in(path);
  std::vector<std::uint64_t> sizes;
  for (std::uint64_t size = 0; in >> size;) sizes.push_back(size);
  if (sizes.empty()) throw std::runtime_error(std::string("no sizes in ") + path);
  return sizes;
}

/// Files of given sizes, which are created and filled one after the other.
class Files {
 public:
  Files(std::string folder, std::vector<std::uint64_t> sizes)
      : folder_(std::move(folder)), sizes_(std::move(sizes)) {}

  bool full() const { return next_ == sizes_.size() && left_ == 0; }

  /// Puts `text` into as many files as it fills; what is too much is left out.
  void write(const char* text, std::size_t size) {
    while (size > 0 && !full()) {
      if (left_ == 0) {
        file_.emplace((folder_ + "/" + std::to_string(next_)).c_str(), O_WRONLY | O_CREAT | O_EXCL);
        left_ = sizes_[next_++];
      }
      const std::size_t piece = std::min<std::uint64_t>(left_, size);
      write_all(*file_, text, piece);
      left_ -= piece;
      text += piece;
      size -= piece;
    }
  }

 private:
  std::string folder_;
  std::vector<std::uint64_t> sizes_;
  std::size_t next_ = 0;
  std::uint64_t left_ = 0;
  std::optional<Descriptor> file_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 && argc != 4) {
    std::fputs("usage: copy_floor IN OUT\n       copy_floor IN FOLDER SIZES\n", stderr);
    return 2;
  }
  try {
    const auto block = std::make_unique<char[]>(BLOCK_SIZE);
    std::size_t count = 0;
    read_blocks(argv[1], block.get(),
                [&](const char* text, std::size_t size) { count += count_semicolons(text, size); });
    if (argc == 3) {
      const Descriptor out(argv[2], O_WRONLY | O_CREAT | O_TRUNC);
      read_blocks(argv[1], block.get(), [&](const char* text, std::size_t size) {
        count += count_semicolons(text, size);
        write_all(out, text, size);
      });
    } else {
      Files files(argv[2], read_sizes(argv[3]));
      std::size_t last_size = 0;
      read_blocks(argv[1], block.get(), [&](const char* text, std::size_t size) {
        count += count_semicolons(text, size);
        files.write(text, last_size = size);
      });
      // Together the files may hold more than the input.
      while (last_size > 0 && !files.full()) files.write(block.get(), last_size);
    }
    std::printf("%zu\n", count);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "copy_floor: %s\n", error.what());
    return 1;
  }
  return 0;
}
