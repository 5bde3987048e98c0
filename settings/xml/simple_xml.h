// A small XML document: a tree of plain records, and the functions that parse, search, change,
// write and free it.
//
// Ownership: a record and everything it owns come from the C library's allocator (malloc and its
// family), and are freed together. "Takes over" means that the caller passes a text from that
// allocator and must not free it any more. When memory runs out, SimpleStrdup and strrep return
// null and everything else stops the program.
//
// Texts are bytes; only the markup has to be ASCII. Entities are neither decoded nor encoded here:
// a text or value is kept as it was written, a quoted value with its quotes. The parser treats a
// NUL like any other byte, but the text, name or value that holds it ends there when it is copied.
//
// An argument that only a programming error can get wrong stops the program, with a message that
// names the function and the argument. Bad XML is never such an error; it gives an error code.
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

// Parsing, writing and freeing recurse into each level; no document may use up the stack.
constexpr int32_t kSimpleXMLMaxLevels = 1000;

struct SimpleXMLElement;

struct SimpleXMLAttribute {
  char *name;   // owned; empty for the "?" of an instruction's "?>" after a blank
  char *value;  // owned, with its quotes if it was quoted; null for an attribute without "="
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
  } object;          // owned; `kind` says which member is in use
  int32_t position;  // where the node began in the source, in bytes; 0 if it was added later
};

struct SimpleXMLElement {
  char *name;                      // owned; null for the container at the root
  int32_t node_count;              // slots in use, those of attributes included
  int32_t node_capacity;           // slots allocated
  int32_t processing_instruction;  // 1 when the element was opened with "<?"
  SimpleXMLNode *nodes;            // owned slots, in document order
  SimpleXMLElement *parent;        // null for the root
};

// The state of a parser over one source text, which it borrows.
struct SimpleXML {
  const char *xml;      // need not be terminated: nothing at or after `length` is read
  int32_t length;       // in bytes
  int32_t position;     // the next byte to read
  int32_t error;        // a SimpleXMLError
  const char *end_tag;  // in `xml`: the name of an end tag whose element is still open, or null
  int32_t end_tag_length;
  const char *start_tag;  // in `xml`: the name of a start tag not yet added, or null
  int32_t start_tag_length;
  bool inside_content;  // false between an element's name and the ">" or "/>" of its tag
};

// --- Parsing

// Parses a whole text of `length` bytes into a new tree, whose root is a nameless container. Sets
// `error`, and returns null when it is not kSimpleXMLNoError. The text may end anywhere without an
// error: elements still open are kept as far as they were read.
//
// A text between tags runs to the next "<". It must not begin with ">", "/>" or a quote that is not
// closed. If it begins with a quote that is closed, the quoted part may contain "<".
//
// Kept on purpose: an element opened with "<?" ends like any other, by its end tag or with the
// text. What follows an XML declaration therefore becomes its content.
SimpleXMLElement *SimpleParseXML(const char *text, int32_t length, int32_t *error);

// Parses from the read position into `element`. Returns 1 when the element was completed, by its
// own end tag or by that of an element around it, which is then left in `end_tag`. Returns 0 when
// parsing stopped, at an error, which is left in `error`, or at the end of the text.
int32_t SimpleParseXMLElement(SimpleXML *in_xml, SimpleXMLElement *element);

// Moves the read position over white space: tab, line feed, carriage return and blank.
void SimpleFindNonWhiteSpace(SimpleXML *in_xml);

// The end of the text from `begin` to the read position without its trailing white space.
int32_t SimpleFindEndOfText(const SimpleXML *in_xml, int32_t begin);

// --- Building

// Makes room for `grow_by` more slots, more than 0.
void SimpleAllocNodes(SimpleXMLElement *element, int32_t grow_by);

// Add a node at the end, and first make room for `grow_by` slots if none is free. The element owns
// what they return. Names and texts are taken over, and so is the value, which may be null.
SimpleXMLElement *SimpleAddElement(SimpleXMLElement *element, char *name,
                                   int32_t processing_instruction, int32_t grow_by);
SimpleXMLAttribute *SimpleAddAttribute(SimpleXMLElement *element, char *name, char *value,
                                       int32_t grow_by);
SimpleXMLText *SimpleAddText(SimpleXMLElement *element, char *text, int32_t grow_by);

// --- Searching

// The element below `element` at a path of names separated by "/", or null. One "/" before the path
// and one after it are ignored; an empty name finds nothing. An element whose name begins with
// "BrindleReg" or "Namespace" is not a level of its own: if it comes before an element of the name
// that is looked for, the search goes on inside it, and nowhere else.
SimpleXMLElement *SimpleFindElement(SimpleXMLElement *element, const char *path);

// The slot at `*index`, which is then advanced, or null after the last one. SimpleEnumElements and
// SimpleEnumAttributes skip slots of other kinds.
SimpleXMLNode *SimpleEnumNodes(const SimpleXMLElement *element, int32_t *index);
SimpleXMLNode *SimpleEnumElements(const SimpleXMLElement *element, int32_t *index);
SimpleXMLNode *SimpleEnumAttributes(const SimpleXMLElement *element, int32_t *index);

bool SimpleCheckAttribute(const SimpleXMLElement *element, const char *name);

// --- Writing

// The tree as a new text, which the caller frees; `*size` is its length without the terminator.
// With `formatted` other than 0, each element is on a line of its own, indented by one blank per
// level; with 0, no white space is added. An instruction is written as an ordinary element. A tree
// without anything to write is a programming error.
char *SimpleCreateXMLString(const SimpleXMLElement *element, int32_t formatted, size_t *size);

// Writes the tree to `buffer`, indented by `indent` blanks (-1: compact), without a terminator.
// Returns the length. When `buffer` is null, only the length is computed.
size_t SimpleCreateXMLStringR(const SimpleXMLElement *element, char *buffer, int32_t indent);

// --- Freeing

// Free the record and everything it owns, for an element its whole subtree. The slot that pointed
// to it is not changed.
void SimpleDeleteElement(SimpleXMLElement *element);
void SimpleDeleteAttribute(SimpleXMLAttribute *attribute);
void SimpleDeleteText(SimpleXMLText *text);

// --- Texts

// A new copy of the first `text_count` bytes; of the whole text if the count is 0 or the text is
// shorter. Null when memory runs out.
char *SimpleStrdup(const char *text, int32_t text_count);

// A new text in which every occurrence of `find_text`, from left to right without overlaps, is
// replaced. Null when there is no occurrence (an empty `find_text` has none) or memory runs out.
// The caller still owns `old_text`.
// NOLINTNEXTLINE(readability-identifier-naming): named like the C library's functions on texts
char *strrep(const char *old_text, const char *find_text, const char *replace_text);
