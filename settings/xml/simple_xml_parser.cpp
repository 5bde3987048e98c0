// From a text to a tree, by recursive descent over the tokens.
#include <cstring>

#include "settings/xml/allocate.h"
#include "settings/xml/require.h"
#include "settings/xml/simple_xml.h"
#include "settings/xml/simple_xml_tokens.h"

namespace {

constexpr int32_t kGrowBy = 5;

bool ParseElement(SimpleXML *xml, SimpleXMLElement *element, int32_t level);

// Sets the error for a token that is not allowed where it is. The end of the text is not an error.
bool Refuse(SimpleXML *xml, const Token &token, SimpleXMLError error) {
  if (token.kind != TokenKind::kEnd) {
    xml->error = error;
  }
  return false;
}

char *Copy(const SimpleXML *xml, const Token &token) {
  return SimpleStrdup(xml->xml + token.begin, token.length);
}

// Where the node that was just added began.
void SetPosition(SimpleXMLElement *element, int32_t position) {
  element->nodes[element->node_count - 1].position = position;
}

bool ParseAttribute(SimpleXML *xml, SimpleXMLElement *element, const Token &name) {
  SimpleXMLAttribute *attribute = SimpleAddAttribute(element, Copy(xml, name), nullptr, kGrowBy);
  SetPosition(element, name.begin);
  const int32_t after_name = xml->position;
  if (ReadToken(xml).kind != TokenKind::kEquals) {
    xml->position = after_name;
    return true;
  }
  const Token value = ReadToken(xml);
  if (value.kind != TokenKind::kWord && value.kind != TokenKind::kQuoted) {
    return Refuse(xml, value, kSimpleXMLMisplacedToken);
  }
  attribute->value = Copy(xml, value);
  REQUIRE(attribute->value != nullptr, "memory");
  return true;
}

// Reads up to the end of a start tag. Returns how it ended: kTagClose, kEmptyTagClose, or kEnd when
// parsing stopped inside it.
TokenKind ParseTag(SimpleXML *xml, SimpleXMLElement *element) {
  for (;;) {
    const Token token = ReadToken(xml);
    if (token.kind == TokenKind::kTagClose || token.kind == TokenKind::kEmptyTagClose) {
      xml->inside_content = true;  // of this element or, after "/>", of the one around it
      return token.kind;
    }
    if (token.kind != TokenKind::kWord) {
      Refuse(xml, token, kSimpleXMLMisplacedToken);
      return TokenKind::kEnd;
    }
    if (!ParseAttribute(xml, element, token)) {
      return TokenKind::kEnd;
    }
  }
}

// The "?" of an instruction's "?>" was read as part of the last name or value, or as a name of its
// own, of which an attribute with an empty name is left.
void DropQuestionMark(SimpleXMLElement *element) {
  if (element->processing_instruction == 0 || element->node_count == 0) {
    return;
  }
  const SimpleXMLNode &last = element->nodes[element->node_count - 1];
  if (last.kind != kSimpleXMLAttributeNode) {
    return;
  }
  const SimpleXMLAttribute *attribute = last.object.attribute;
  char *text = attribute->value != nullptr ? attribute->value : attribute->name;
  const size_t length = strlen(text);
  if (length > 0 && text[length - 1] == '?') {
    text[length - 1] = '\0';
  }
}

// The first token of the text was just read. It alone is checked: a ">" or a quote further on is
// part of the text.
void ParseText(SimpleXML *xml, SimpleXMLElement *element, int32_t begin) {
  SkipToTag(xml);
  const int32_t length = SimpleFindEndOfText(xml, begin) - begin;
  SimpleAddText(element, SimpleStrdup(xml->xml + begin, length), kGrowBy);
  SetPosition(element, begin);
}

// Reads a token that must be of this kind.
bool ReadAs(TokenKind kind, SimpleXML *xml, SimpleXMLError error, Token *token) {
  *token = ReadToken(xml);
  return token->kind == kind || Refuse(xml, *token, error);
}

bool ReadStartTagName(SimpleXML *xml) {
  Token name;
  if (!ReadAs(TokenKind::kWord, xml, kSimpleXMLNoElementName, &name)) {
    return false;
  }
  xml->start_tag = xml->xml + name.begin;
  xml->start_tag_length = name.length;
  return true;
}

SimpleXMLElement *AddPendingElement(SimpleXML *xml, SimpleXMLElement *parent,
                                    const Token &opening) {
  const int32_t instruction = opening.kind == TokenKind::kInstructionOpen ? 1 : 0;
  char *name = SimpleStrdup(xml->start_tag, xml->start_tag_length);
  xml->start_tag = nullptr;
  xml->start_tag_length = 0;
  SimpleXMLElement *child = SimpleAddElement(parent, name, instruction, kGrowBy);
  SetPosition(parent, opening.begin);
  return child;
}

bool ParseChild(SimpleXML *xml, SimpleXMLElement *parent, const Token &opening, int32_t level) {
  if (!ReadStartTagName(xml)) {
    return false;
  }
  if (level > kSimpleXMLMaxLevels) {
    xml->error = kSimpleXMLTooDeep;
    return false;
  }
  xml->inside_content = false;
  return ParseElement(xml, AddPendingElement(xml, parent, opening), level);
}

// Leaves the name in `end_tag`, where it stays until the element of that name is reached.
bool ReadEndTag(SimpleXML *xml) {
  Token name;
  Token close;
  if (!ReadAs(TokenKind::kWord, xml, kSimpleXMLNoEndTagName, &name) ||
      !ReadAs(TokenKind::kTagClose, xml, kSimpleXMLNoEndTagName, &close)) {
    return false;
  }
  xml->end_tag = xml->xml + name.begin;
  xml->end_tag_length = name.length;
  return true;
}

// Ends the element at the pending end tag, which stays pending unless it is the element's own.
// Names are compared over the length of the element's name: "</abc>" is the end tag of an element
// "ab".
bool CloseAtEndTag(SimpleXML *xml, const SimpleXMLElement *element) {
  if (element->name == nullptr) {
    xml->error = kSimpleXMLUnmatchedEndTag;
    return false;
  }
  const size_t length = strlen(element->name);
  if (static_cast<size_t>(xml->end_tag_length) >= length &&
      memcmp(xml->end_tag, element->name, length) == 0) {
    xml->end_tag = nullptr;
    xml->end_tag_length = 0;
  }
  return true;
}

bool ParseContent(SimpleXML *xml, SimpleXMLElement *element, int32_t level) {
  while (xml->end_tag == nullptr) {
    const Token token = ReadToken(xml);
    bool parsed = true;
    if (BeginsText(token)) {
      ParseText(xml, element, token.begin);
    } else if (token.kind == TokenKind::kTagOpen || token.kind == TokenKind::kInstructionOpen) {
      parsed = ParseChild(xml, element, token, level + 1);
    } else if (token.kind == TokenKind::kEndTagOpen) {
      parsed = ReadEndTag(xml);
    } else {
      parsed = Refuse(xml, token, kSimpleXMLMisplacedToken);
    }
    if (!parsed) {
      return false;
    }
  }
  return CloseAtEndTag(xml, element);
}

// Returns whether the element was completed. `level` is 0 for the container at the root.
bool ParseElement(SimpleXML *xml, SimpleXMLElement *element, int32_t level) {
  if (!xml->inside_content) {
    const TokenKind ending = ParseTag(xml, element);
    DropQuestionMark(element);
    if (ending != TokenKind::kTagClose) {
      return ending == TokenKind::kEmptyTagClose;
    }
  }
  return ParseContent(xml, element, level);
}

}  // namespace

int32_t SimpleParseXMLElement(SimpleXML *in_xml, SimpleXMLElement *element) {
  REQUIRE(in_xml != nullptr, "inXML");
  REQUIRE(in_xml->xml != nullptr, "inXML->xml");
  REQUIRE(element != nullptr, "element");
  return ParseElement(in_xml, element, 0) ? 1 : 0;
}

SimpleXMLElement *SimpleParseXML(const char *text, int32_t length, int32_t *error) {
  REQUIRE(text != nullptr, "text");
  REQUIRE(error != nullptr, "error");
  REQUIRE(length >= 0, "length >= 0");
  SimpleXML xml{};
  xml.xml = text;
  xml.length = length;
  xml.inside_content = true;
  SimpleXMLElement *root = Allocate<SimpleXMLElement>();
  SimpleParseXMLElement(&xml, root);
  *error = xml.error;
  if (xml.error != kSimpleXMLNoError) {
    SimpleDeleteElement(root);
    return nullptr;
  }
  return root;
}
