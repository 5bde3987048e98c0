// Makes and removes the directory, and reads and writes files in it.
#include "tests/support/temp_dir.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

TempDir::TempDir() {
  std::string pattern = "/tmp/korv-XXXXXX";  // no blank: command lines have paths of tests in them
  if (mkdtemp(pattern.data()) == nullptr) {
    std::abort();
  }
  path_ = pattern;
}

TempDir::~TempDir() {
  std::filesystem::remove_all(path_);
}

std::string TempDir::Path(std::string_view name) const {
  return path_ + "/" + std::string(name);
}

void TempDir::MakeDirectory(std::string_view name) const {
  std::filesystem::create_directory(Path(name));
}

std::string TempDir::Write(std::string_view name, std::string_view content, unsigned mode) const {
  const std::string path = Path(name);
  std::ofstream(path, std::ios::binary) << content;
  chmod(path.c_str(), mode);
  return path;
}

std::string TempDir::Read(std::string_view name) const {
  std::ifstream file(Path(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
