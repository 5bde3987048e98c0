// Which generation and edition of the thin-client operating system this is, as a platform code. All
// texts are bytes in the locale's charset; they are only compared with ASCII.
#pragma once

#include <cstdint>
#include <cstdio>
#include <exception>
#include <string>

struct FamilyLayout;

// The one platform that changes what the program does: only one instance may run there.
inline constexpr int kPellion5Code = 8;

// What the identification found out. Starts fresh: nothing known, nothing decided.
struct PlatformRecord {
  std::string image_id;  // eight characters; empty when the system information decided
  std::string family;    // the first of them
  const FamilyLayout *family_row = nullptr;  // how the image id was cut: a constant
  std::int32_t number = 0;                   // -1: that part of the image id is not a number
  std::string model_code;               // up to three characters, or the edition's family letter
  std::int32_t platform_code = 9;       // also a real one's: ask `valid` first
  std::int32_t architecture_class = 0;  // 1 or 2
  bool valid = false;                   // a platform code has been decided
};

// The one fault that ends start-up: the image id is too short. Nothing catches it.
class ImageIDException : public std::exception {
 public:
  // Keeps the pointer: `message` outlives the exception.
  explicit ImageIDException(const char *message) : message_(message) {}
  ~ImageIDException() override;
  const char *what() const noexcept override;

 private:
  const char *message_;
};

// Asks /etc/systeminfo, and where that decides nothing /etc/imageid. The record is valid. Throws
// ImageIDException when it comes to the image id and that is too short or cannot be read.
PlatformRecord IdentifyPlatform(const char *systeminfo_path = "/etc/systeminfo",
                                const char *imageid_path = "/etc/imageid");

int PlatformCode(const PlatformRecord &record);

// The values of the system information that count; a value that was not given is empty.
struct SystemInfo {
  std::string product_name;
  std::string edition;
  std::string version;
};

// Reads `stream` to its end.
SystemInfo ReadSystemInfo(std::FILE *stream);

// A record that is not valid when the values name no product, edition or version known here.
PlatformRecord PlatformOf(const SystemInfo &info);

// The record of the text that begins with an image id. Always valid; throws ImageIDException when
// the text is shorter than eight characters.
PlatformRecord ParseImageId(const char *text);

// The platform code of an image id's parts; `layout` is null for a family that is in no row.
std::int32_t PlatformCodeOf(const FamilyLayout *layout, const std::string &model_code,
                            std::int32_t number);
