// A disk that is soon full.
#pragma once

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <filesystem>
#include <string>
#include <utility>

#undef BLOCK_SIZE  // Linux puts a macro of that name beside mount().

namespace Kessel::test {

/// A small disk in a folder while the object lives.
class SmallDisk {
 public:
  /// `options` are those of a tmpfs.
  SmallDisk(std::filesystem::path folder, const std::string& options) : folder_(std::move(folder)) {
    std::filesystem::create_directories(folder_);
    there_ = ::mount("none", folder_.c_str(), "tmpfs", 0, options.c_str()) == 0;
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    if (there_) {
      EXPECT_EQ(::umount(folder_.c_str()), 0);
    }
  }
  /// Only root may have one.
  bool is_there() const { return there_; }

 private:
  std::filesystem::path folder_;
  bool there_ = false;
};

}  // namespace Kessel::test
