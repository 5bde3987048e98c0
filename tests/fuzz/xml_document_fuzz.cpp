// An XML text is parsed, searched, written, parsed again and freed. A tree that was written can be
// parsed and is then written the same, except for the few that the written text does not describe.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "settings/xml/simple_xml.h"
#include "tests/fuzz/fuzz.h"

namespace {

// A slash at the end would close the tag in which it is written.
bool KeepsItsPlaceInTag(const char *text) {
  const std::size_t length = std::strlen(text);
  return length == 0 || text[length - 1] != '/';
}

// "< ?a>" and "< /a>" are elements called "?a" and "/a"; written without the blank, they are not.
bool IsPlainName(const char *name) {
  return name[0] != '?' && name[0] != '/' && KeepsItsPlaceInTag(name);
}

bool IsPlain(const SimpleXMLElement *element);

bool IsPlain(const SimpleXMLNode &node) {
  switch (node.kind) {
    case kSimpleXMLAttributeNode:
      return KeepsItsPlaceInTag(node.object.attribute->name) &&
             (node.object.attribute->value == nullptr ||
              KeepsItsPlaceInTag(node.object.attribute->value));
    case kSimpleXMLElementNode:
      return IsPlain(node.object.element);
    default:
      return true;
  }
}

// An instruction is written as an element.
bool IsPlain(const SimpleXMLElement *element) {
  if (element->processing_instruction != 0 ||
      (element->name != nullptr && !IsPlainName(element->name))) {
    return false;
  }
  return std::all_of(element->nodes, element->nodes + element->node_count,
                     [](const SimpleXMLNode &node) { return IsPlain(node); });
}

std::string Write(const SimpleXMLElement *root, int32_t formatted) {
  std::size_t size = 0;
  char *text = SimpleCreateXMLString(root, formatted, &size);
  CHECK_PROPERTY(std::strlen(text) == size);
  std::string written(text, size);
  std::free(text);
  return written;
}

SimpleXMLElement *Parse(const std::string &text) {
  int32_t error = kSimpleXMLNoError;
  SimpleXMLElement *root = SimpleParseXML(text.data(), static_cast<int32_t>(text.size()), &error);
  CHECK_PROPERTY((root == nullptr) == (error != kSimpleXMLNoError));
  CHECK_PROPERTY(error == 0 || (error >= 3 && error <= 8));
  return root;
}

void CheckRoundTrip(const SimpleXMLElement *root, int32_t formatted) {
  const std::string written = Write(root, formatted);
  SimpleXMLElement *again = Parse(written);
  CHECK_PROPERTY(again != nullptr);
  CHECK_PROPERTY(Write(again, formatted) == written);
  SimpleDeleteElement(again);
}

// The first element is found by its name, unless that is not a path of one name: it may be empty
// because of a NUL, for example.
void CheckFind(SimpleXMLElement *root) {
  int32_t index = 0;
  const SimpleXMLNode *node = SimpleEnumElements(root, &index);
  if (node == nullptr) {
    return;
  }
  const std::string_view name = node->object.element->name;
  const SimpleXMLElement *found = SimpleFindElement(root, node->object.element->name);
  if (!name.empty() && name.find('/') == std::string_view::npos &&
      name.substr(0, 10) != "BrindleReg" && name.substr(0, 9) != "Namespace") {
    CHECK_PROPERTY(found == node->object.element);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string text = Bytes(data, size);
  SimpleXMLElement *root = Parse(text);
  if (root == nullptr) {
    return 0;
  }
  CheckFind(root);
  if (root->node_count > 0 && text.find('\0') == std::string::npos && IsPlain(root)) {
    CheckRoundTrip(root, 0);
    CheckRoundTrip(root, 1);
  }
  SimpleDeleteElement(root);
  return 0;
}
