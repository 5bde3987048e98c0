// Tells whether a file is mapped into the memory of this process.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

// `path` is that of the file, or of a directory for any file in it.
inline bool IsMapped(const std::string &path) {
  std::ifstream mappings("/proc/self/maps");
  const std::string text(std::istreambuf_iterator<char>(mappings), {});
  return text.find(path) != std::string::npos;
}
