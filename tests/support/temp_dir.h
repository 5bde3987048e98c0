// A directory of the test's own, removed with everything in it.
#pragma once

#include <string>
#include <string_view>

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir &) = delete;
  TempDir &operator=(const TempDir &) = delete;

  // The absolute path of a name in the directory.
  std::string Path(std::string_view name = "") const;

  void MakeDirectory(std::string_view name) const;

  // Writes a file and returns its path.
  std::string Write(std::string_view name, std::string_view content, unsigned mode = 0644) const;

  // The content of a file; empty when there is none.
  std::string Read(std::string_view name) const;

 private:
  std::string path_;
};
