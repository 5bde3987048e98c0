// The parser's tokens. Internal to the XML module.
#pragma once

#include "settings/xml/simple_xml.h"

enum class TokenKind : int32_t {
  kWord = 0,
  kQuoted = 1,           // with its quotes
  kTagOpen = 2,          // <
  kEndTagOpen = 3,       // </
  kTagClose = 4,         // >
  kEquals = 5,           // =
  kInstructionOpen = 6,  // <?
  kEmptyTagClose = 7,    // />
  kEnd = 8,              // the end of the text; or a quote that is not closed, with the error set
};

struct Token {
  TokenKind kind;
  int32_t begin;  // in bytes from the start of the source
  int32_t length;
};

// Skips white space and reads one token. The read position is then after it.
Token ReadToken(SimpleXML *xml);

// Moves the read position to the next "<", or to the end of the source.
void SkipToTag(SimpleXML *xml);

// Whether a text between tags can begin with the token.
bool BeginsText(const Token &token);
