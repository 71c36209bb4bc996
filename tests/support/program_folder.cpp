#include "tests/support/program_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "core/files_native.h"

namespace support {

namespace fs = std::filesystem;

ProgramFolder::ProgramFolder() : path_((fs::temp_directory_path() / "quillon-XXXXXX").string()) {
  if (::mkdtemp(path_.data()) == nullptr) std::abort();
  core::SetProgramDirectory(path_);
}

ProgramFolder::~ProgramFolder() { fs::remove_all(path_); }

void ProgramFolder::Put(std::string_view name, std::string_view bytes) const {
  std::ofstream(Path(name), std::ios::binary) << bytes;
}

void ProgramFolder::PutFolder(std::string_view name) const { fs::create_directory(Path(name)); }

std::string ProgramFolder::Get(std::string_view name) const {
  std::ifstream file(Path(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string ProgramFolder::Names() const {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(path_)) names.insert(entry.path().filename().string());
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

std::string ProgramFolder::Path(std::string_view name) const { return path_ + "/" + std::string(name); }

}  // namespace support
