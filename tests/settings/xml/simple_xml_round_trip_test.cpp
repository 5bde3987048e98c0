// Random documents: a tree that is written and parsed again is the same.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "settings/xml/simple_xml.h"
#include "tests/settings/xml/xml_support.h"

namespace {

class RandomDocument {
 public:
  explicit RandomDocument(unsigned seed) : random_(seed) {}

  // A document that the parser accepts. Elements are closed, left open or closed by the end tag of
  // one around them, with and without attributes and texts.
  std::string Make() {
    document_.clear();
    AddContent(0);
    return document_;
  }

  // A random sequence of tokens, most of which the parser refuses.
  std::string MakeTokens() {
    document_.clear();
    for (unsigned i = 1 + Below(12); i > 0; --i) {
      document_ += Pick({"<", "<a", "</a>", "</", ">",  "/>", "=",   "<?",    "<?p",   "?>",
                         "?", "'",  "\"",   "b",  "c/", " ",  "'q'", "\"<\"", "&amp;", "\n"});
    }
    return document_;
  }

 private:
  unsigned Below(unsigned bound) { return static_cast<unsigned>(random_()) % bound; }

  const char *Pick(std::initializer_list<const char *> choices) {
    return choices.begin()[Below(static_cast<unsigned>(choices.size()))];
  }

  void AddSpace(bool needed) { document_ += Pick({needed ? "\t" : "", " ", "\n", " \r\n  "}); }

  void AddTag(const char *name) {
    document_ += std::string("<") + name;
    for (unsigned i = Below(4); i > 0; --i) {
      AddSpace(true);
      document_ += Pick({"x", "yy", "z-z", "w\"w\"", "v?"});
      document_ += Pick({"", "=1", " = 'two'", "=\"t'h <r> = ee\"", "=''", "=a/b", "=f'f'"});
    }
    AddSpace(false);
  }

  void AddText() {
    document_ += Pick({"x", "=", "one  two", "'<t>' u", "it's \"\n\"", "a/b", "/",
                       "= =", "&amp;lt;", "caf\xc3\xa9", "? !", "x > y'", "z/>"});
  }

  void AddContent(unsigned level) {
    for (unsigned i = Below(4); i > 0; --i) {
      AddSpace(false);
      if (Below(3) == 0) {
        AddText();
        AddSpace(false);
      }
      AddElement(level + 1);
    }
    AddSpace(false);
  }

  void AddElement(unsigned level) {
    const char *name = Pick({"a", "ab", "abc", "d:e", "!--"});
    AddTag(name);
    if (level > 6 || Below(4) == 0) {
      document_ += "/>";
      return;
    }
    document_ += ">";
    AddContent(level);
    if (level == 1 || Below(8) != 0) {
      document_ += std::string("</") + name + ">";
    }
  }

  std::mt19937 random_;
  std::string document_;
};

// Whether the name makes another kind of tag of the "<" that the writer puts before it.
bool OpensAnotherTag(std::string_view name) {
  return name.front() == '/' || name.front() == '?';
}

// Whether the element's name, or the last name or value of its start tag, makes an empty tag of the
// ">" that the writer puts after it.
bool EndsAsEmptyTag(const SimpleXMLElement *element) {
  const std::string_view name = element->name;
  std::string_view last = name;
  bool has_content = false;
  for (int32_t i = 0; i < element->node_count; ++i) {
    if (element->nodes[i].kind == kSimpleXMLAttributeNode) {
      const SimpleXMLAttribute *attribute = element->nodes[i].object.attribute;
      last = attribute->value != nullptr ? attribute->value : attribute->name;
    } else {
      has_content = true;
    }
  }
  return has_content && (last.back() == '/' || name.back() == '/');
}

// Whether the tree, written and parsed, is the same tree. It is not when it has an instruction,
// which is written as an element, nor when a "/" or "?" that stood apart from the markup becomes
// part of it.
bool ReadsBack(const SimpleXMLElement *element) {
  if (element->name != nullptr && (element->processing_instruction != 0 ||
                                   OpensAnotherTag(element->name) || EndsAsEmptyTag(element))) {
    return false;
  }
  int32_t index = 0;
  while (const SimpleXMLNode *node = SimpleEnumElements(element, &index)) {
    if (!ReadsBack(node->object.element)) {
      return false;
    }
  }
  return true;
}

void ExpectRoundTrip(const SimpleXMLElement *tree, const std::string &source) {
  for (const int32_t formatted : {0, 1}) {
    const std::string written = Written(tree, formatted);
    int32_t error = -1;
    const XmlTree again = Parse(written, &error);
    ASSERT_EQ(error, 0) << source << "\n---\n" << written;
    EXPECT_EQ(Outline(again.get()), Outline(tree)) << source;
    EXPECT_EQ(Written(again.get(), formatted), written) << source;
  }
}

TEST(RoundTrip, WritingParsingAndWritingGivesTheSameText) {
  RandomDocument document(20240229);
  int checked = 0;
  for (int i = 0; i < 1000; ++i) {
    const std::string source = document.Make();
    int32_t error = -1;
    const XmlTree tree = Parse(source, &error);
    ASSERT_EQ(error, 0) << source;
    ASSERT_TRUE(ReadsBack(tree.get())) << source;
    if (tree->node_count > 0) {
      ExpectRoundTrip(tree.get(), source);
      ++checked;
    }
  }
  EXPECT_GT(checked, 500);
}

TEST(RoundTrip, HoldsForADocumentCutOffAnywhere) {
  RandomDocument document(7);
  int checked = 0;
  for (int i = 0; i < 30; ++i) {
    const std::string source = document.Make().substr(0, 200);
    for (std::size_t length = 0; length < source.size(); ++length) {
      int32_t error = -1;
      const XmlTree tree = Parse(source.substr(0, length), &error);
      if (error != 0) {
        EXPECT_EQ(error, kSimpleXMLUnclosedQuote) << source.substr(0, length);
      } else if (tree->node_count > 0 && ReadsBack(tree.get())) {
        ExpectRoundTrip(tree.get(), source.substr(0, length));
        ++checked;
      }
    }
  }
  EXPECT_GT(checked, 1000);
}

TEST(RoundTrip, AnySequenceOfTokensGivesATreeOrAnError) {
  RandomDocument document(42);
  int trees = 0;
  int errors = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::string source = document.MakeTokens();
    int32_t error = -1;
    const XmlTree tree = Parse(source, &error);
    if (error != 0) {
      EXPECT_EQ(tree, nullptr) << source;
      EXPECT_TRUE(error >= kSimpleXMLNoElementName && error <= kSimpleXMLMisplacedToken) << source;
      ++errors;
    } else if (tree->node_count > 0 && ReadsBack(tree.get())) {
      ExpectRoundTrip(tree.get(), source);
      ++trees;
    }
  }
  EXPECT_GT(trees, 300);
  EXPECT_GT(errors, 300);
}

}  // namespace
