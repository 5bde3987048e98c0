// Whether the process still has a file in its memory.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

// `path`: of the file, or of a directory for any file in it.
inline bool IsMapped(const std::string &path) {
  std::ifstream mappings("/proc/self/maps");
  const std::string text(std::istreambuf_iterator<char>(mappings), {});
  return text.find(path) != std::string::npos;
}
