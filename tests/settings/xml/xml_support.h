// Helpers that the tests of the XML document share.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "settings/xml/simple_xml.h"

// The call stops the program, with a message that names the function and the parameter at fault.
#define EXPECT_STOPS(call, parameter) EXPECT_DEATH(call, StopMessage(#call, parameter))

inline auto StopMessage(std::string_view call, const std::string &parameter) {
  const std::string function(call.substr(0, call.find('(')));
  return testing::HasSubstr(function + ": Assertion `" + parameter + "' failed.");
}

struct XmlDeleter {
  void operator()(SimpleXMLElement *element) const { SimpleDeleteElement(element); }
  void operator()(char *text) const { std::free(text); }
};
using XmlTree = std::unique_ptr<SimpleXMLElement, XmlDeleter>;
using XmlText = std::unique_ptr<char, XmlDeleter>;

// A text without a terminator at the end of readable memory, so that reading past it is a crash.
class GuardedText {
 public:
  explicit GuardedText(std::string_view text) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t readable = (text.size() / page + 1) * page;
    size_ = readable + page;
    base_ = static_cast<char *>(
        mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    mprotect(base_ + readable, page, PROT_NONE);
    text_ = base_ + readable - text.size();
    std::memcpy(text_, text.data(), text.size());
  }
  ~GuardedText() { munmap(base_, size_); }
  GuardedText(const GuardedText &) = delete;
  GuardedText &operator=(const GuardedText &) = delete;

  const char *Get() const { return text_; }

 private:
  std::size_t size_;
  char *base_;
  char *text_;
};

inline XmlTree Parse(std::string_view text, int32_t *error) {
  const GuardedText source(text);
  return XmlTree(SimpleParseXML(source.Get(), static_cast<int32_t>(text.size()), error));
}

inline XmlTree Parse(std::string_view text) {
  int32_t error = 0;
  return Parse(text, &error);
}

inline XmlTree EmptyTree() {
  return Parse("");
}

// The first child element.
inline SimpleXMLElement *Top(const XmlTree &tree) {
  int32_t index = 0;
  SimpleXMLNode *node = SimpleEnumElements(tree.get(), &index);
  return node == nullptr ? nullptr : node->object.element;
}

inline std::string Written(const SimpleXMLElement *element, int32_t formatted) {
  std::size_t size = 0;
  const XmlText text(SimpleCreateXMLString(element, formatted, &size));
  return std::string(text.get(), size);
}

// The tree in one line. An element is its name (after "?" for an instruction) followed by its nodes
// in braces; an attribute is @name or @name=value; a text is in square brackets.
inline std::string Outline(const SimpleXMLElement *element) {
  std::string outline = element->processing_instruction != 0 ? "?" : "";
  outline += element->name == nullptr ? "" : element->name;
  outline += '{';
  for (int32_t i = 0; i < element->node_count; ++i) {
    const SimpleXMLNode &node = element->nodes[i];
    outline += i == 0 ? "" : " ";
    switch (node.kind) {
      case kSimpleXMLAttributeNode:
        outline += std::string("@") + node.object.attribute->name;
        if (node.object.attribute->value != nullptr) {
          outline += std::string("=") + node.object.attribute->value;
        }
        break;
      case kSimpleXMLElementNode:
        outline += Outline(node.object.element);
        break;
      case kSimpleXMLTextNode:
        outline += std::string("[") + node.object.text->text + "]";
        break;
      default:
        outline += "unknown";
    }
  }
  return outline + '}';
}
