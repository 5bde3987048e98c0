// Platform identification: the tables' bounds and results, and what reads the two files.
#include "app/platform.h"

#include <strings.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "app/checked_product_data.h"
#include "text/line_reader.h"

// How the image id of a family is cut. Positions count from 0; the number runs to the end.
struct FamilyLayout {
  char letter;
  std::size_t number_at;
  std::size_t model_code_at;
  std::size_t model_code_length;
  std::int32_t platform_code;  // when no row of the model table matches
};

namespace {

constexpr std::array<FamilyLayout, 4> kFamilyLayouts = {{
    {kFamilyLetters[0], 4, 2, 2, 5},
    {kFamilyLetters[1], 4, 2, 2, 5},
    {kFamilyLetters[2], 6, 3, 3, kPellion5Code},
    {kFamilyLetters[3], 6, 3, 3, 6},
}};
constexpr const FamilyLayout &kOstrelLayout = kFamilyLayouts[2];
constexpr const FamilyLayout &kVaskinLayout = kFamilyLayouts[3];
constexpr std::int32_t kUnknownFamilyCode = 5;

// Matches when the model code is this one and the number lies within the bounds, both inclusive.
struct ModelRow {
  std::string_view code;
  std::int32_t lowest;
  std::int32_t highest;
  std::int32_t platform_code;
};

// Searched in order.
constexpr std::array<ModelRow, 18> kModels = {{
    {kModelCodes[0], 0, 19, 1},
    {kModelCodes[1], 20, 10000, 4},
    {kModelCodes[2], 0, 10, 1},
    {kModelCodes[3], 11, 10000, 4},
    {kModelCodes[4], 0, 4, 1},
    {kModelCodes[5], 5, 10000, 4},
    {kModelCodes[6], 0, 10000, 2},
    {kModelCodes[7], 0, 10000, 3},
    {kModelCodes[8], 0, 10000, 4},
    {kModelCodes[9], 0, 10000, 5},
    {kModelCodes[10], 0, 10000, 5},
    {kModelCodes[11], 0, 10000, 5},
    {kModelCodes[12], 0, 10000, 5},
    {kModelCodes[13], 0, 10000, 5},
    {kModelCodes[14], 0, 10000, 5},
    {kModelCodes[15], 0, 10000, 5},
    {kModelCodes[16], 0, 10000, 7},
    {kModelCodes[17], 0, 10000, 6},
}};

constexpr std::size_t kImageIdLength = 8;
constexpr std::size_t kImageIdReadLimit = 99;
constexpr std::size_t kSystemInfoLineLimit = 1023;

// Where a line of the system information puts its value.
struct SystemInfoKey {
  std::string_view text;
  std::string SystemInfo::*value;
};

// Searched in order: the first key that a line contains takes the line.
constexpr std::array<SystemInfoKey, 3> kSystemInfoKeys = {{
    {"PRODUCT_NAME=", &SystemInfo::product_name},
    {"PRODUCT_CONFIG=", &SystemInfo::edition},
    {"PRODUCT_VERSION=", &SystemInfo::version},
}};

// The value is taken by position, not by looking for quotes: the key counts as standing at the
// start of the line, a quote on either side of the value and the line end after it, wherever they
// really are. A line without its line end thus loses the last character of its value, and a value
// before CR LF keeps its closing quote. A line too short for that is ignored.
void TakeValue(const std::string &line, std::size_t key_length, std::string &value) {
  const std::size_t around = key_length + 3;
  if (line.size() >= around) {
    value.assign(line, key_length + 1, line.size() - around);
  }
}

void TakeLine(const std::string &line, SystemInfo &info) {
  for (const SystemInfoKey &key : kSystemInfoKeys) {
    if (line.find(key.text) != std::string::npos) {
      TakeValue(line, key.text.size(), info.*key.value);
      return;
    }
  }
}

bool EqualsIgnoringCase(const std::string &text, const char *other) {
  return strcasecmp(text.c_str(), other) == 0;
}

void DecideOstrel(char version, PlatformRecord &record) {
  record.model_code.assign(1, kOstrelLayout.letter);
  switch (version) {
    case '3':
      record.platform_code = 5;
      break;
    case '4':
      record.platform_code = 7;
      break;
    case '5':
      record.platform_code = kPellion5Code;
      break;
    case '6':
      record.platform_code = 9;
      break;
    default:
      return;
  }
  record.valid = true;
}

// From version 5 on the editions are one platform; every other version is the older one.
void DecideVaskin(char version, PlatformRecord &record) {
  if (version == '5' || version == '6') {
    DecideOstrel(version, record);
    return;
  }
  record.model_code.assign(1, kVaskinLayout.letter);
  record.platform_code = kVaskinLayout.platform_code;
  record.valid = true;
}

const FamilyLayout *FindLayout(char letter) {
  for (const FamilyLayout &layout : kFamilyLayouts) {
    if (layout.letter == letter) {
      return &layout;
    }
  }
  return nullptr;
}

// -1 unless the text, of two or four characters, is a decimal number to its end.
std::int32_t WholeNumber(const char *text) {
  char *end = nullptr;
  const long number = std::strtol(text, &end, 10);
  return *end == '\0' ? static_cast<std::int32_t>(number) : -1;
}

PlatformRecord ReadSystemInfoFile(const char *path) {
  std::FILE *stream = std::fopen(path, "r");
  if (stream == nullptr) {
    return {};
  }
  const SystemInfo info = ReadSystemInfo(stream);
  std::fclose(stream);
  return PlatformOf(info);
}

// A file that cannot be opened counts as an empty one, and a file of fewer than eight bytes gives a
// text that is too short: one check of the text is enough for all of these.
PlatformRecord ReadImageIdFile(const char *path) {
  std::string text;
  std::FILE *stream = std::fopen(path, "r");
  if (stream != nullptr) {
    text.resize(kImageIdReadLimit);
    text.resize(std::fread(text.data(), 1, text.size(), stream));
    std::fclose(stream);
  }
  return ParseImageId(text.c_str());
}

}  // namespace

ImageIDException::~ImageIDException() = default;

const char *ImageIDException::what() const noexcept {
  return message_;
}

SystemInfo ReadSystemInfo(std::FILE *stream) {
  SystemInfo info;
  std::string line;
  while (ReadLine(stream, kSystemInfoLineLimit, line)) {
    TakeLine(line, info);
  }
  return info;
}

PlatformRecord PlatformOf(const SystemInfo &info) {
  PlatformRecord record;
  record.architecture_class = 2;
  if (!EqualsIgnoringCase(info.product_name, "Pellion")) {
    return record;
  }
  const char version = *info.version.c_str();
  if (info.edition.empty() || EqualsIgnoringCase(info.edition, "ostrel")) {
    DecideOstrel(version, record);
  } else if (EqualsIgnoringCase(info.edition, "vaskin")) {
    DecideVaskin(version, record);
  }
  return record;
}

std::int32_t PlatformCodeOf(const FamilyLayout *layout, const std::string &model_code,
                            std::int32_t number) {
  if (layout == &kVaskinLayout) {
    return kVaskinLayout.platform_code;
  }
  for (const ModelRow &row : kModels) {
    if (row.code == model_code && row.lowest <= number && number <= row.highest) {
      return row.platform_code;
    }
  }
  return layout == nullptr ? kUnknownFamilyCode : layout->platform_code;
}

PlatformRecord ParseImageId(const char *text) {
  PlatformRecord record;
  record.image_id = std::string_view(text).substr(0, kImageIdLength);
  if (record.image_id.size() < kImageIdLength) {
    throw ImageIDException("Invalid Image ID");
  }
  record.family = record.image_id.substr(0, 1);
  const FamilyLayout *layout = FindLayout(record.image_id[0]);
  // A family in no row is cut like the third.
  record.family_row = layout == nullptr ? &kOstrelLayout : layout;
  record.number = WholeNumber(record.image_id.c_str() + record.family_row->number_at);
  record.model_code = record.image_id.substr(record.family_row->model_code_at,
                                             record.family_row->model_code_length);
  record.platform_code = PlatformCodeOf(layout, record.model_code, record.number);
  record.valid = true;
  const char architecture = record.image_id[2];
  record.architecture_class = architecture == 'A' || architecture == 'a' ? 1 : 2;
  return record;
}

PlatformRecord IdentifyPlatform(const char *systeminfo_path, const char *imageid_path) {
  const PlatformRecord record = ReadSystemInfoFile(systeminfo_path);
  return record.valid ? record : ReadImageIdFile(imageid_path);
}

int PlatformCode(const PlatformRecord &record) {
  return record.platform_code;
}
