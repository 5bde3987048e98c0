// The input of a fuzz target as a file or a stream.
#include "tests/fuzz/fuzz.h"

#include <sys/mman.h>
#include <unistd.h>

InputFile::InputFile(const std::string &bytes)
    : descriptor_(memfd_create("input", MFD_CLOEXEC)),
      path_("/proc/self/fd/" + std::to_string(descriptor_)) {
  CHECK_PROPERTY(write(descriptor_, bytes.data(), bytes.size()) ==
                 static_cast<ssize_t>(bytes.size()));
}

InputFile::~InputFile() {
  close(descriptor_);
}

std::FILE *OpenBytes(const std::string &bytes) {
  std::FILE *stream = std::tmpfile();
  CHECK_PROPERTY(stream != nullptr);
  std::fwrite(bytes.data(), 1, bytes.size(), stream);
  std::rewind(stream);
  return stream;
}
