// A folder of its own for the program under test, removed at the end.
#pragma once

#include <string>
#include <string_view>

namespace support {

class ProgramFolder {
 public:
  ProgramFolder();
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  void Put(std::string_view name, std::string_view bytes) const;

  // Nothing can write a file of a folder's name, not even root.
  void PutFolder(std::string_view name) const;

  // The file's content, empty when there is none.
  std::string Get(std::string_view name) const;

  // The names of all files, sorted, one blank between two.
  std::string Names() const;

  std::string Path(std::string_view name) const;

 private:
  std::string path_;
};

}  // namespace support
