// From a text to tokens.
#include "settings/xml/simple_xml_tokens.h"

#include <cstring>

#include "settings/xml/require.h"

namespace {

constexpr int kEndOfText = -1;  // unlike NUL, no byte of the text

int ByteAt(const SimpleXML *xml, int32_t position) {
  return position < xml->length ? static_cast<unsigned char>(xml->xml[position]) : kEndOfText;
}

bool IsWhiteSpace(int byte) {
  return byte == '\t' || byte == '\n' || byte == '\r' || byte == ' ';
}

bool IsEmptyTagClose(const SimpleXML *xml, int32_t position) {
  return ByteAt(xml, position) == '/' && ByteAt(xml, position + 1) == '>';
}

bool EndsWord(const SimpleXML *xml, int32_t position) {
  const int byte = ByteAt(xml, position);
  return byte == kEndOfText || IsWhiteSpace(byte) || byte == '<' || byte == '=' || byte == '>' ||
         IsEmptyTagClose(xml, position);
}

Token Word(const SimpleXML *xml, int32_t begin) {
  int32_t end = begin;
  while (!EndsWord(xml, end)) {
    ++end;
  }
  return {TokenKind::kWord, begin, end - begin};
}

Token Quoted(SimpleXML *xml, int32_t begin) {
  const char *quote = xml->xml + begin;
  const void *closing = memchr(quote + 1, *quote, static_cast<size_t>(xml->length - begin - 1));
  if (closing == nullptr) {
    xml->error = kSimpleXMLUnclosedQuote;
    return {TokenKind::kEnd, begin, 0};
  }
  const auto length = static_cast<const char *>(closing) + 1 - quote;
  return {TokenKind::kQuoted, begin, static_cast<int32_t>(length)};
}

Token Opening(const SimpleXML *xml, int32_t begin) {
  switch (ByteAt(xml, begin + 1)) {
    case '/':
      return {TokenKind::kEndTagOpen, begin, 2};
    case '?':
      return {TokenKind::kInstructionOpen, begin, 2};
    default:
      return {TokenKind::kTagOpen, begin, 1};
  }
}

Token TokenAt(SimpleXML *xml, int32_t begin) {
  switch (ByteAt(xml, begin)) {
    case kEndOfText:
      return {TokenKind::kEnd, begin, 0};
    case '<':
      return Opening(xml, begin);
    case '>':
      return {TokenKind::kTagClose, begin, 1};
    case '=':
      return {TokenKind::kEquals, begin, 1};
    case '"':
    case '\'':
      return Quoted(xml, begin);
    default:
      return IsEmptyTagClose(xml, begin) ? Token{TokenKind::kEmptyTagClose, begin, 2}
                                         : Word(xml, begin);
  }
}

}  // namespace

void SimpleFindNonWhiteSpace(SimpleXML *in_xml) {
  REQUIRE(in_xml != nullptr, "inXML");
  REQUIRE(in_xml->xml != nullptr, "inXML->xml");
  REQUIRE(in_xml->position >= 0, "inXML->position");
  while (IsWhiteSpace(ByteAt(in_xml, in_xml->position))) {
    ++in_xml->position;
  }
}

int32_t SimpleFindEndOfText(const SimpleXML *in_xml, int32_t begin) {
  REQUIRE(in_xml != nullptr, "inXML");
  REQUIRE(in_xml->xml != nullptr, "inXML->xml");
  REQUIRE(begin >= 0, "begin");
  int32_t end = in_xml->position;
  while (end > begin && IsWhiteSpace(ByteAt(in_xml, end - 1))) {
    --end;
  }
  return end;
}

Token ReadToken(SimpleXML *xml) {
  SimpleFindNonWhiteSpace(xml);
  const Token token = TokenAt(xml, xml->position);
  xml->position = token.begin + token.length;
  return token;
}

void SkipToTag(SimpleXML *xml) {
  while (xml->position < xml->length && xml->xml[xml->position] != '<') {
    ++xml->position;
  }
}

bool BeginsText(const Token &token) {
  return token.kind == TokenKind::kWord || token.kind == TokenKind::kQuoted ||
         token.kind == TokenKind::kEquals;
}
