// From a tree to a text.
#include <cstring>
#include <string_view>

#include "settings/xml/allocate.h"
#include "settings/xml/require.h"
#include "settings/xml/simple_xml.h"

namespace {

constexpr int32_t kCompact = -1;

// The text written so far; only its length when there is no buffer.
class Output {
 public:
  explicit Output(char *buffer) : buffer_(buffer) {}

  void Add(std::string_view text) {
    if (buffer_ != nullptr) {
      memcpy(buffer_ + length_, text.data(), text.size());
    }
    length_ += text.size();
  }

  void AddBlanks(int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
      Add(" ");
    }
  }

  size_t Length() const { return length_; }

 private:
  char *buffer_;
  size_t length_ = 0;
};

void WriteElement(const SimpleXMLElement *element, int32_t indent, Output *output);

// The kind of the first node that is not an attribute; 0 when there is none.
int32_t FirstContentKind(const SimpleXMLElement *element) {
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumNodes(element, &index)) {
    if (node->kind != kSimpleXMLAttributeNode) {
      return node->kind;
    }
  }
  return 0;
}

bool HasText(const SimpleXMLElement *element) {
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumNodes(element, &index)) {
    if (node->kind == kSimpleXMLTextNode) {
      return true;
    }
  }
  return false;
}

void WriteAttributes(const SimpleXMLElement *element, Output *output) {
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumAttributes(element, &index)) {
    const SimpleXMLAttribute *attribute = node->object.attribute;
    if (*attribute->name == '\0') {
      continue;
    }
    output->Add(" ");
    output->Add(attribute->name);
    if (attribute->value != nullptr && *attribute->value != '\0') {
      output->Add("=");
      output->Add(attribute->value);
    }
  }
}

void WriteContent(const SimpleXMLElement *element, int32_t indent, Output *output) {
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumNodes(element, &index)) {
    if (node->kind == kSimpleXMLElementNode) {
      WriteElement(node->object.element, indent, output);
    } else if (node->kind == kSimpleXMLTextNode) {
      output->Add(node->object.text->text);
    }
  }
}

// A text that comes first is written directly after the start tag. The end tag is not indented when
// the element contains a text anywhere.
void WriteContentAndEndTag(const SimpleXMLElement *element, int32_t indent, Output *output) {
  const bool formatted = indent != kCompact;
  output->Add(">");
  if (formatted && FirstContentKind(element) != kSimpleXMLTextNode) {
    output->Add("\n");
  }
  WriteContent(element, formatted ? indent + 1 : kCompact, output);
  if (!HasText(element)) {
    output->AddBlanks(indent);
  }
  output->Add("</");
  output->Add(element->name);
  output->Add(">");
}

void WriteElement(const SimpleXMLElement *element, int32_t indent, Output *output) {
  if (element->name == nullptr) {
    WriteContent(element, indent, output);
    return;
  }
  output->AddBlanks(indent);
  output->Add("<");
  output->Add(element->name);
  WriteAttributes(element, output);
  if (FirstContentKind(element) == 0) {
    output->Add("/>");
  } else {
    WriteContentAndEndTag(element, indent, output);
  }
  if (indent != kCompact) {
    output->Add("\n");
  }
}

}  // namespace

size_t SimpleCreateXMLStringR(const SimpleXMLElement *element, char *buffer, int32_t indent) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(indent >= kCompact, "indent >= -1");
  Output output(buffer);
  WriteElement(element, indent, &output);
  return output.Length();
}

char *SimpleCreateXMLString(const SimpleXMLElement *element, int32_t formatted, size_t *size) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(size != nullptr, "size");
  const int32_t indent = formatted != 0 ? 0 : kCompact;
  *size = SimpleCreateXMLStringR(element, nullptr, indent);
  REQUIRE(*size != 0, "size != 0");
  char *text = Allocate<char>(*size + 1);
  SimpleCreateXMLStringR(element, text, indent);
  return text;
}
