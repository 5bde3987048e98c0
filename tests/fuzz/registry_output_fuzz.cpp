// The output of the registry's client: each line gives one entry, with the bytes of the line.
#include <algorithm>

#include "settings/registry_client.h"
#include "tests/fuzz/fuzz.h"

namespace {

std::size_t CountLines(const std::string &bytes) {
  const auto feeds = std::count(bytes.begin(), bytes.end(), '\n');
  return static_cast<std::size_t>(feeds) + (!bytes.empty() && bytes.back() != '\n' ? 1 : 0);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string bytes = Bytes(data, size);
  std::FILE *output = OpenBytes(bytes);
  const std::vector<RegistryEntry> entries = ReadEntries(output);
  std::fclose(output);
  CHECK_PROPERTY(entries.size() == CountLines(bytes));
  for (const RegistryEntry &entry : entries) {
    const QByteArray text = entry.text.toLatin1();
    CHECK_PROPERTY(entry.kind != RegistryEntry::kOther || entry.text.isEmpty());
    CHECK_PROPERTY(!text.endsWith('\n') && !text.endsWith('\r'));
    CHECK_PROPERTY(bytes.find(text.constData()) != std::string::npos);
  }
  return 0;
}
