// A folder of its own for a test that writes files.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

/// Empty at the start and gone at the end. Files are named within it. No two that live at a time
/// are the same, though other processes run the same test.
class ScratchFolder {
 public:
  explicit ScratchFolder(const std::string& name, const fs::path& in = fs::temp_directory_path()) {
    const fs::path base = in / ("kelvanor_" + name + "_");
    int number = 0;
    do {
      path_ = base;
      path_ += std::to_string(number++);
    } while (!fs::create_directory(path_));
  }
  ~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  std::string Read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
  }

  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return *this / name;
  }

  std::size_t Count() const {
    using Files = fs::directory_iterator;
    return static_cast<std::size_t>(std::distance(Files(path_), Files()));
  }

 private:
  fs::path path_;
};
