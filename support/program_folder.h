// A folder of its own for the program under test, removed at the end.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "core/files_native.h"

namespace support {

class ProgramFolder {
 public:
  ProgramFolder() : path_((std::filesystem::temp_directory_path() / "quillon-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) std::abort();
    core::SetProgramDirectory(path_);
  }
  ~ProgramFolder() { std::filesystem::remove_all(path_); }
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  std::string Path(std::string_view name) const { return path_ + "/" + std::string(name); }

  void Put(std::string_view name, std::string_view bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }

  // In place of a file. Nothing can write a file of a folder's name, not even root.
  void PutFolder(std::string_view name) const {
    std::filesystem::remove(Path(name));
    std::filesystem::create_directory(Path(name));
  }

  // The file's content, empty when there is none.
  std::string Get(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_;
};

}  // namespace support
