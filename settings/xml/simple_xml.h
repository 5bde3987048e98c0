// A small XML document: records in a tree, and the functions that parse, search, change, write and
// free it.
//
// Ownership: everything that a record owns, the record included, comes from the C library's
// allocator (malloc and its family) and is freed with its owner. "Takes over" means that the caller
// passes such a text and no longer frees it. Where memory runs out, SimpleStrdup and strrep give
// none and everything else stops the program.
//
// Texts are bytes; no charset is assumed beyond ASCII for the markup. Entities are neither decoded
// nor encoded here: a text or a value is kept as it was written, a quoted value with its quotes. A
// NUL is an ordinary byte to the parser, and ends the text, name or value that it is copied into.
//
// An argument that only a programming error can get wrong stops the program with a message that
// names it. Bad XML never does: it is an error code.
#pragma once

#include <cstddef>
#include <cstdint>

enum SimpleXMLNodeKind : int32_t {
  kSimpleXMLAttributeNode = 1,
  kSimpleXMLElementNode = 2,
  kSimpleXMLTextNode = 3,
};

enum SimpleXMLError : int32_t {
  kSimpleXMLNoError = 0,
  kSimpleXMLNoElementName = 3,    // "<" or "<?" not followed by an element name
  kSimpleXMLNoEndTagName = 4,     // "</" not followed by a name and ">"
  kSimpleXMLUnclosedQuote = 5,    // a quoted token without its closing quote
  kSimpleXMLUnmatchedEndTag = 6,  // an end tag that matches no open element
  kSimpleXMLMisplacedToken = 7,   // a token that is not allowed where it stands
  kSimpleXMLTooDeep = 8,          // more than kSimpleXMLMaxLevels elements inside each other
};

// Parsing, writing and freeing recurse once a level; a hostile document must not use up the stack.
constexpr int32_t kSimpleXMLMaxLevels = 1000;

struct SimpleXMLElement;

struct SimpleXMLAttribute {
  char *name;   // owned; empty for the "?" that stood alone before the ">" of an instruction
  char *value;  // owned, with the quotes that it was written with; or none
};

struct SimpleXMLText {
  char *text;  // owned
};

// One slot of an element.
struct SimpleXMLNode {
  int32_t kind;  // a SimpleXMLNodeKind
  union Object {
    SimpleXMLAttribute *attribute;
    SimpleXMLElement *element;
    SimpleXMLText *text;
  } object;          // owned; the member that the kind tells
  int32_t position;  // where the node began in the source, in bytes; 0 if it was added later
};

struct SimpleXMLElement {
  char *name;                      // owned; none for the container at the root
  int32_t node_count;              // slots in use: attributes count as nodes
  int32_t node_capacity;           // slots allocated
  int32_t processing_instruction;  // 1 when the element was opened with "<?"
  SimpleXMLNode *nodes;            // owned slots, in the order of the document
  SimpleXMLElement *parent;        // none for the root
};

// A parser at work on one text, which it borrows.
struct SimpleXML {
  const char *xml;      // not terminated: nothing at or after `length` is ever read
  int32_t length;       // in bytes
  int32_t position;     // the next byte to read
  int32_t error;        // a SimpleXMLError
  const char *end_tag;  // name of an end tag, inside `xml`, that is still to close its element
  int32_t end_tag_length;
  const char *start_tag;  // name of a start tag, inside `xml`, whose element is still to be added
  int32_t start_tag_length;
  bool inside_content;  // false between an element's name and the ">" or "/>" of its tag
};

// --- Parsing

// Parses a whole text of `length` bytes into a new tree, whose root is a nameless container, and
// sets `error`. None when the error is not kSimpleXMLNoError. The end of the text is no error
// wherever it comes: what was open is kept as far as it was read.
//
// A text between tags runs to the next "<". It cannot begin with ">" or "/>", nor with a quote that
// is closed nowhere; one that is closed may hold a "<" up to there.
//
// Kept on purpose: an element opened with "<?" ends, like any other, only by its end tag or with
// the text, so what follows an XML declaration becomes its content.
SimpleXMLElement *SimpleParseXML(const char *text, int32_t length, int32_t *error);

// Parses on from the read position into `element`. 1 when the element was completed, by its own end
// tag or by one of an element around it, which is then still pending in `end_tag`; 0 when parsing
// stopped at an error, left in `error`, or at the end of the text.
int32_t SimpleParseXMLElement(SimpleXML *in_xml, SimpleXMLElement *element);

// Moves the read position over white space: tab, line feed, carriage return and blank.
void SimpleFindNonWhiteSpace(SimpleXML *in_xml);

// Where the text that began at `begin` and runs up to the read position ends, the white space at
// its end left out.
int32_t SimpleFindEndOfText(const SimpleXML *in_xml, int32_t begin);

// --- Building

// Makes room for `grow_by` more slots, more than 0.
void SimpleAllocNodes(SimpleXMLElement *element, int32_t grow_by);

// Add a node at the end, growing by `grow_by` slots when none is left. What they return stays owned
// by the element. The names and the text are taken over; a value too, or it is none.
SimpleXMLElement *SimpleAddElement(SimpleXMLElement *element, char *name,
                                   int32_t processing_instruction, int32_t grow_by);
SimpleXMLAttribute *SimpleAddAttribute(SimpleXMLElement *element, char *name, char *value,
                                       int32_t grow_by);
SimpleXMLText *SimpleAddText(SimpleXMLElement *element, char *text, int32_t grow_by);

// --- Searching

// The element at a path of names separated by "/", below `element`; or none. One "/" before the
// path and one after it are skipped; an empty name between finds nothing. Elements whose name
// begins with "BrindleReg" or "Namespace" do not count as a level: the first one that stands before
// a match is searched in the match's place, and what it does not hold is not looked for after it.
SimpleXMLElement *SimpleFindElement(SimpleXMLElement *element, const char *path);

// The slot at `*index`, with the index moved behind it; none when there is no more. The second and
// third skip slots of another kind.
SimpleXMLNode *SimpleEnumNodes(const SimpleXMLElement *element, int32_t *index);
SimpleXMLNode *SimpleEnumElements(const SimpleXMLElement *element, int32_t *index);
SimpleXMLNode *SimpleEnumAttributes(const SimpleXMLElement *element, int32_t *index);

bool SimpleCheckAttribute(const SimpleXMLElement *element, const char *name);

// --- Writing

// The tree as a new text, which the caller frees, and its length without the terminator. Formatted
// (not 0) puts elements on lines of their own, a blank deeper each level; compact (0) adds no white
// space. An instruction is written as an ordinary element. There must be something to write.
char *SimpleCreateXMLString(const SimpleXMLElement *element, int32_t formatted, size_t *size);

// Writes the tree at `indent` blanks (-1: compact) without a terminator, or only measures it when
// there is no buffer; the length.
size_t SimpleCreateXMLStringR(const SimpleXMLElement *element, char *buffer, int32_t indent);

// --- Freeing

// Free the record and what it owns, for an element its whole subtree. The slot that held it is the
// caller's business.
void SimpleDeleteElement(SimpleXMLElement *element);
void SimpleDeleteAttribute(SimpleXMLAttribute *attribute);
void SimpleDeleteText(SimpleXMLText *text);

// --- Texts

// A new copy of the first `text_count` bytes, or of the whole text for 0; the text may end earlier.
// None when memory runs out.
char *SimpleStrdup(const char *text, int32_t text_count);

// A new text in which every occurrence of `find_text`, found from left to right and not
// overlapping, is replaced. None when there is no occurrence, as for an empty `find_text`, or when
// memory runs out. `old_text` stays the caller's.
// NOLINTNEXTLINE(readability-identifier-naming): named like the C library's functions on texts
char *strrep(const char *old_text, const char *find_text, const char *replace_text);
