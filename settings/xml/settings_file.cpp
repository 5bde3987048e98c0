// The one settings document of the process, and the file that it is loaded from and saved to.
#include "settings/xml/settings_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "settings/xml/entities.h"
#include "settings/xml/simple_xml.h"

namespace {

// The values that the agent itself uses by default. The gateway is an address reserved for
// documentation: each site sets its own.
constexpr char kDefaultDocument[] =
    "<Agent>\n"
    "  <CurrentGateway>198.51.100.10</CurrentGateway>\n"
    "  <BackupGateway/>\n"
    "  <Interval_min>1440</Interval_min>\n"
    "  <LogLevel>2</LogLevel>\n"
    "  <DelayScope_min>0</DelayScope_min>\n"
    "  <GetGroupsFromDHCP>1</GetGroupsFromDHCP>\n"
    "  <PreAssignGroups/>\n"
    "</Agent>\n";
constexpr size_t kDefaultDocumentSize = sizeof kDefaultDocument - 1;
static_assert(kDefaultDocumentSize == 247);

SimpleXMLElement *document = nullptr;
std::string file_path;  // empty before the first load

// Makes the missing directories of the path, from the top down.
bool MakeDirectories(const std::string &path) {
  for (size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
    const std::string directory = path.substr(0, end);
    struct stat status;
    if (stat(directory.c_str(), &status) != 0 && mkdir(directory.c_str(), 0777) != 0) {
      return false;
    }
  }
  return true;
}

bool CreateDefaultFile(const char *path) {
  const int file = open(path, O_RDWR | O_CREAT | O_DSYNC | O_CLOEXEC, 0666);
  if (file < 0) {
    return false;
  }
  const bool written = write(file, kDefaultDocument, kDefaultDocumentSize) >= 1;
  return close(file) == 0 && written;
}

// Maps the first `length` bytes, shared and writable, and always closes the file. Null on failure,
// and for a length of 0.
char *MapAndClose(int file, size_t length) {
  void *mapping = mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  const bool closed = close(file) == 0;
  if (mapping == MAP_FAILED) {
    return nullptr;
  }
  if (!closed) {
    munmap(mapping, length);
    return nullptr;
  }
  return static_cast<char *>(mapping);
}

void ReleaseDocument() {
  if (document != nullptr) {
    SimpleDeleteElement(document);
    document = nullptr;
  }
}

bool HasElement() {
  int32_t index = 0;
  return document != nullptr && SimpleEnumElements(document, &index) != nullptr;
}

SimpleXMLElement *Find(const char *path) {
  return document == nullptr ? nullptr : SimpleFindElement(document, path);
}

// Null when the element has no text.
SimpleXMLText *FirstText(const SimpleXMLElement *element) {
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumNodes(element, &index)) {
    if (node->kind == kSimpleXMLTextNode) {
      return node->object.text;
    }
  }
  return nullptr;
}

// Takes over `text`.
void StoreText(SimpleXMLElement *element, char *text) {
  if (element->node_count == 0) {
    SimpleAddText(element, text, 1);
  } else if (SimpleXMLText *first = FirstText(element)) {
    free(first->text);
    first->text = text;
  } else {
    free(text);
  }
}

void MakeTextsReadable(const SimpleXMLElement *element) {
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumNodes(element, &index)) {
    if (node->kind == kSimpleXMLTextNode) {
      MakeTextReadable(&node->object.text->text);
    } else if (node->kind == kSimpleXMLElementNode) {
      MakeTextsReadable(node->object.element);
    }
  }
}

// Makes `text` the whole content of an empty file, and always closes the file. The space is
// reserved first because a full disk would otherwise leave a hole in the file: writing to a hole,
// and on some file systems reading it, ends the program with a signal.
bool WriteAndClose(int file, const char *text, size_t length) {
  const off_t file_length = static_cast<off_t>(length);
  if (posix_fallocate(file, 0, file_length) != 0 || ftruncate(file, file_length) != 0) {
    close(file);
    return false;
  }
  char *mapping = MapAndClose(file, length);
  if (mapping == nullptr) {
    return false;
  }
  memcpy(mapping, text, length);
  const bool flushed = msync(mapping, length, MS_SYNC) == 0;
  return munmap(mapping, length) == 0 && flushed;
}

bool WriteDocument() {
  if (!HasElement()) {
    return false;
  }
  const int file = open(file_path.c_str(), O_RDWR | O_TRUNC | O_CLOEXEC);
  if (file < 0) {
    return false;
  }
  MakeTextsReadable(document);
  size_t length = 0;
  char *text = SimpleCreateXMLString(document, 1, &length);
  const bool written = WriteAndClose(file, text, length);
  free(text);
  return written;
}

}  // namespace

int EnsureSettingsFile(const char *path) {
  const bool names_a_file = path != nullptr && path[0] == '/' && path[strlen(path) - 1] != '/';
  if (!names_a_file || !MakeDirectories(path)) {
    return -1;
  }
  const int file = open(path, O_RDWR | O_CLOEXEC);
  if (file >= 0) {
    close(file);
    return 0;
  }
  return CreateDefaultFile(path) ? 0 : -1;
}

int LoadSettingsFile(const char *path) {
  const int file = path == nullptr ? -1 : open(path, O_RDWR | O_CLOEXEC);
  if (file < 0) {
    return -1;
  }
  struct stat status;
  if (fstat(file, &status) != 0 || status.st_size > INT32_MAX) {
    close(file);
    return -1;
  }
  const size_t length = static_cast<size_t>(status.st_size);
  char *mapping = MapAndClose(file, length);
  if (mapping == nullptr) {
    return -1;
  }
  file_path = path;
  ReleaseDocument();
  int32_t error = kSimpleXMLNoError;
  document = SimpleParseXML(mapping, static_cast<int32_t>(length), &error);
  return munmap(mapping, length) == 0 ? 0 : -1;
}

const char *SimpleXmlParserGet(const char *path) {
  const SimpleXMLElement *element = Find(path);
  SimpleXMLText *text = element == nullptr ? nullptr : FirstText(element);
  if (text == nullptr) {
    return nullptr;
  }
  DecodeEntities(&text->text);
  return text->text;
}

void SimpleXmlParserSet(const char *path, char *value) {
  if (value == nullptr) {
    return;
  }
  SimpleXMLElement *element = Find(path);
  if (element == nullptr) {
    free(value);
    return;
  }
  EncodeEntities(&value);
  StoreText(element, value);
}

int SaveSettingsFile(int save_flag) {
  if (save_flag == 1 && !WriteDocument()) {
    return -1;
  }
  ReleaseDocument();
  return 0;
}
