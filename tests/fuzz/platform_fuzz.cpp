// The two files that identify the platform: any content gives a known code or the one exception.
#include "app/platform.h"
#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string bytes = Bytes(data, size);
  const InputFile file(bytes);
  const bool is_too_short = bytes.substr(0, 99).find('\0') < 8 || bytes.size() < 8;
  try {
    const PlatformRecord record = IdentifyPlatform("/nowhere", file.Path().c_str());
    CHECK_PROPERTY(!is_too_short && record.valid && record.image_id.size() == 8);
    CHECK_PROPERTY(record.platform_code >= 1 && record.platform_code <= 8);
    CHECK_PROPERTY(record.architecture_class == 1 || record.architecture_class == 2);
  } catch (const ImageIDException &) {
    CHECK_PROPERTY(is_too_short);
  }
  try {
    const PlatformRecord record = IdentifyPlatform(file.Path().c_str(), "/nowhere");
    CHECK_PROPERTY(record.valid && record.image_id.empty());
    CHECK_PROPERTY(record.platform_code >= 5 && record.platform_code <= 9);
  } catch (const ImageIDException &) {
    // The file decides nothing, and there is no image id file either.
  }
  return 0;
}
