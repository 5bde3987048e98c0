// Runs a fuzz target, without a fuzzer, once for each file in the given directories: the kept
// inputs.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/fuzz/fuzz.h"

int main(int argc, char **argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file),
                              std::istreambuf_iterator<char>()};
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::printf("%d inputs\n", count);
  return count == 0 ? 1 : 0;
}
