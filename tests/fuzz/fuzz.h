// What the fuzz targets share. Each has the entry point below, which the fuzzer and the replay of
// the kept inputs call. A target accepts any bytes and stops the process when a property does not
// hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

// Unlike assert(), it is checked in every build.
#define CHECK_PROPERTY(holds)                                                         \
  do {                                                                                \
    if (!(holds)) {                                                                   \
      std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #holds); \
      std::abort();                                                                   \
    }                                                                                 \
  } while (false)

inline std::string Bytes(const std::uint8_t *data, std::size_t size) {
  return {reinterpret_cast<const char *>(data), size};
}

// A file with these bytes, for functions that take a path.
class InputFile {
 public:
  explicit InputFile(const std::string &bytes);
  ~InputFile();
  InputFile(const InputFile &) = delete;
  InputFile &operator=(const InputFile &) = delete;

  const std::string &Path() const { return path_; }

 private:
  int descriptor_;
  std::string path_;
};

// A stream of these bytes, to be closed with fclose().
std::FILE *OpenBytes(const std::string &bytes);
