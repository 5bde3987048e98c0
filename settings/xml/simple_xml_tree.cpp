// Building, searching and freeing a tree.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "settings/xml/allocate.h"
#include "settings/xml/require.h"
#include "settings/xml/simple_xml.h"

namespace {

SimpleXMLNode *AddNode(SimpleXMLElement *element, SimpleXMLNodeKind kind, int32_t grow_by) {
  if (element->node_count == element->node_capacity) {
    SimpleAllocNodes(element, grow_by);
  }
  SimpleXMLNode *node = &element->nodes[element->node_count++];
  *node = {kind, {}, 0};
  return node;
}

SimpleXMLNode *EnumNodesOfKind(const SimpleXMLElement *element, SimpleXMLNodeKind kind,
                               int32_t *index) {
  SimpleXMLNode *node = nullptr;
  do {
    node = SimpleEnumNodes(element, index);
  } while (node != nullptr && node->kind != kind);
  return node;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

bool IsTransparent(std::string_view name) {
  return StartsWith(name, "BrindleReg") || StartsWith(name, "Namespace");
}

// The first child element that has this name or is transparent.
SimpleXMLElement *FindChild(const SimpleXMLElement *element, std::string_view name) {
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumElements(element, &index)) {
    SimpleXMLElement *child = node->object.element;
    if (child->name == name || IsTransparent(child->name)) {
      return child;
    }
  }
  return nullptr;
}

void DeleteNode(const SimpleXMLNode &node) {
  switch (node.kind) {
    case kSimpleXMLAttributeNode:
      SimpleDeleteAttribute(node.object.attribute);
      break;
    case kSimpleXMLElementNode:
      SimpleDeleteElement(node.object.element);
      break;
    default:
      SimpleDeleteText(node.object.text);
  }
}

}  // namespace

void SimpleAllocNodes(SimpleXMLElement *element, int32_t grow_by) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(grow_by > 0, "growBy > 0");
  REQUIRE(grow_by <= INT32_MAX - element->node_capacity, "growBy <= INT32_MAX - nodeCapacity");
  const int32_t capacity = element->node_capacity + grow_by;
  void *nodes = reallocarray(element->nodes, static_cast<size_t>(capacity), sizeof(SimpleXMLNode));
  REQUIRE(nodes != nullptr, "nodes");
  element->nodes = static_cast<SimpleXMLNode *>(nodes);
  element->node_capacity = capacity;
}

SimpleXMLElement *SimpleAddElement(SimpleXMLElement *element, char *name,
                                   int32_t processing_instruction, int32_t grow_by) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(name != nullptr, "name");
  SimpleXMLNode *node = AddNode(element, kSimpleXMLElementNode, grow_by);
  SimpleXMLElement *child = Allocate<SimpleXMLElement>();
  child->name = name;
  child->processing_instruction = processing_instruction;
  child->parent = element;
  node->object.element = child;
  return child;
}

SimpleXMLAttribute *SimpleAddAttribute(SimpleXMLElement *element, char *name, char *value,
                                       int32_t grow_by) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(name != nullptr, "name");
  SimpleXMLNode *node = AddNode(element, kSimpleXMLAttributeNode, grow_by);
  node->object.attribute = Allocate<SimpleXMLAttribute>();
  *node->object.attribute = {name, value};
  return node->object.attribute;
}

SimpleXMLText *SimpleAddText(SimpleXMLElement *element, char *text, int32_t grow_by) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(text != nullptr, "text");
  SimpleXMLNode *node = AddNode(element, kSimpleXMLTextNode, grow_by);
  node->object.text = Allocate<SimpleXMLText>();
  *node->object.text = {text};
  return node->object.text;
}

SimpleXMLElement *SimpleFindElement(SimpleXMLElement *element, const char *path) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(path != nullptr, "path");
  std::string_view rest = path;
  if (StartsWith(rest, "/")) {
    rest.remove_prefix(1);
  }
  for (;;) {
    const std::string_view segment = rest.substr(0, rest.find('/'));
    element = segment.empty() ? nullptr : FindChild(element, segment);
    if (element == nullptr) {
      return nullptr;
    }
    if (IsTransparent(element->name)) {
      continue;
    }
    rest.remove_prefix(std::min(segment.size() + 1, rest.size()));
    if (rest.empty()) {
      return element;
    }
  }
}

SimpleXMLNode *SimpleEnumNodes(const SimpleXMLElement *element, int32_t *index) {
  REQUIRE(element != nullptr, "element");
  REQUIRE(index != nullptr, "index");
  REQUIRE(*index >= 0, "*index >= 0");
  return *index < element->node_count ? &element->nodes[(*index)++] : nullptr;
}

SimpleXMLNode *SimpleEnumElements(const SimpleXMLElement *element, int32_t *index) {
  return EnumNodesOfKind(element, kSimpleXMLElementNode, index);
}

SimpleXMLNode *SimpleEnumAttributes(const SimpleXMLElement *element, int32_t *index) {
  return EnumNodesOfKind(element, kSimpleXMLAttributeNode, index);
}

bool SimpleCheckAttribute(const SimpleXMLElement *element, const char *name) {
  REQUIRE(name != nullptr, "name");
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumAttributes(element, &index)) {
    if (strcmp(node->object.attribute->name, name) == 0) {
      return true;
    }
  }
  return false;
}

void SimpleDeleteElement(SimpleXMLElement *element) {
  REQUIRE(element != nullptr, "element");
  for (int32_t i = 0; i < element->node_count; ++i) {
    DeleteNode(element->nodes[i]);
  }
  free(element->nodes);
  free(element->name);
  free(element);
}

void SimpleDeleteAttribute(SimpleXMLAttribute *attribute) {
  REQUIRE(attribute != nullptr, "attribute");
  free(attribute->name);
  free(attribute->value);
  free(attribute);
}

void SimpleDeleteText(SimpleXMLText *text) {
  REQUIRE(text != nullptr, "text");
  free(text->text);
  free(text);
}
