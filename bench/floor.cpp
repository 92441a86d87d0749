// The floor under every whole-run figure: what copying the input costs at least.
//
//     copy_floor IN OUT
//
// Reads IN twice in blocks of 1 MiB and finds every ";" both times, then writes as many bytes as
// were read once. Prints the number of ";" found, so that no search can be left out.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

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

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: copy_floor IN OUT\n", stderr);
    return 2;
  }
  try {
    const auto block = std::make_unique<char[]>(BLOCK_SIZE);
    std::size_t count = 0;
    read_blocks(argv[1], block.get(),
                [&](const char* text, std::size_t size) { count += count_semicolons(text, size); });
    const Descriptor out(argv[2], O_WRONLY | O_CREAT | O_TRUNC);
    read_blocks(argv[1], block.get(), [&](const char* text, std::size_t size) {
      count += count_semicolons(text, size);
      if (::write(out, text, size) != static_cast<ssize_t>(size)) {
        throw std::runtime_error("cannot write");
      }
    });
    std::printf("%zu\n", count);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "copy_floor: %s\n", error.what());
    return 1;
  }
  return 0;
}
