// A temporary folder, removed at the end.
#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace support {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    path_ = (std::filesystem::temp_directory_path() / ("quillon-" + std::to_string(now))).string();
    // Tests may run concurrently, so try another name when one is taken.
    while (!std::filesystem::create_directory(path_)) path_ += "x";
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }

  std::string Path(std::string_view name) const {
    return path_ + static_cast<char>(std::filesystem::path::preferred_separator) + std::string(name);
  }

  void Put(std::string_view name, std::string_view bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }

  // In place of a file, which then cannot be written, not even by root.
  void PutFolder(std::string_view name) const {
    std::filesystem::remove(Path(name));
    std::filesystem::create_directory(Path(name));
  }

  // The file's content, empty when there is none.
  std::string Get(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // The number of files and folders in it.
  auto Count() const {
    return std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator());
  }

 private:
  std::string path_;
};

}  // namespace support
