// From a tree to a text, formatted and compact.
#include <gtest/gtest.h>

#include <string>

#include "settings/xml/simple_xml.h"
#include "tests/settings/xml/xml_support.h"

namespace {

std::string Formatted(std::string_view text) {
  return Written(Parse(text).get(), 1);
}

std::string Compact(std::string_view text) {
  return Written(Parse(text).get(), 0);
}

TEST(Writer, FormattedPutsElementsOnLinesABlankDeeperEachLevel) {
  EXPECT_EQ(Formatted("<a><b>x</b></a>"), "<a>\n <b>x</b>\n</a>\n");
  EXPECT_EQ(Formatted("<a><b><c/><d>x</d></b></a>"),
            "<a>\n <b>\n  <c/>\n  <d>x</d>\n </b>\n</a>\n");
  EXPECT_EQ(Formatted("<a/><b/>"), "<a/>\n<b/>\n");
}

TEST(Writer, CompactAddsNoWhiteSpaceOnAnyLevel) {
  EXPECT_EQ(Compact("<a>\n <b>\n  <c> <d/> x </c></b> </a> <e/>"),
            "<a><b><c><d/>x</c></b></a><e/>");
}

TEST(Writer, AnElementWithoutContentIsAnEmptyTag) {
  EXPECT_EQ(Compact("<a/>"), "<a/>");
  EXPECT_EQ(Compact("<a></a>"), "<a/>");
  EXPECT_EQ(Compact("<a x=\"1\" y='2'></a>"), "<a x=\"1\" y='2'/>");
}

TEST(Writer, AttributesAreWrittenInTheTagAsTheyWereRead) {
  EXPECT_EQ(Compact("<a  x = \"1\"  y='2' z=3 w ><b/></a>"), "<a x=\"1\" y='2' z=3 w><b/></a>");
}

TEST(Writer, AnAttributeAddedAfterATextIsWrittenInTheTag) {
  const XmlTree tree = Parse("<a>t</a>");
  SimpleAddAttribute(Top(tree), SimpleStrdup("x", 0), SimpleStrdup("'1'", 0), 5);
  EXPECT_EQ(Written(tree.get(), 1), "<a x='1'>t</a>\n");
}

TEST(Writer, SkipsAttributesWithAnEmptyNameAndEmptyValues) {
  EXPECT_EQ(Compact("<?p x ?>t</p>"), "<p x>t</p>");
  EXPECT_EQ(Compact("<?p x=?>t</p>"), "<p x>t</p>");
  const XmlTree tree = Parse("<?p x ?>");
  SimpleAddAttribute(Top(tree), SimpleStrdup("y", 0), nullptr, 5);
  EXPECT_EQ(Written(tree.get(), 0), "<p x y/>");
}

TEST(Writer, AnInstructionIsWrittenAsAnElement) {
  EXPECT_EQ(Compact("<?xml version=\"1.0\"?><a/>"), "<xml version=\"1.0\"><a/></xml>");
}

TEST(Writer, ATextThatComesFirstIsDirectlyAfterTheStartTag) {
  EXPECT_EQ(Formatted("<a>x<b/></a>"), "<a>x <b/>\n</a>\n");
}

TEST(Writer, ATextAfterAnElementLeavesTheLineFeedBeforeIt) {
  EXPECT_EQ(Formatted("<a><b/>x</a>"), "<a>\n <b/>\nx</a>\n");
  EXPECT_EQ(Formatted("<a><b/>x<c/>y</a>"), "<a>\n <b/>\nx <c/>\ny</a>\n");
}

TEST(Writer, ATextAfterATextIsNotCutOff) {
  const XmlTree tree = Parse("<a>one</a>");
  SimpleAddText(Top(tree), SimpleStrdup("two", 0), 5);
  EXPECT_EQ(Written(tree.get(), 1), "<a>onetwo</a>\n");
}

TEST(Writer, AnElementWithATextHasNoIndentBeforeItsEndTag) {
  EXPECT_EQ(Formatted("<r><a>x<b/></a></r>"), "<r>\n <a>x  <b/>\n</a>\n</r>\n");
  EXPECT_EQ(Formatted("<r><a><b/>x<b/></a></r>"), "<r>\n <a>\n  <b/>\nx  <b/>\n</a>\n</r>\n");
}

TEST(Writer, AnEmptyTextIsContentToo) {
  const XmlTree tree = Parse("<a/>");
  SimpleAddText(Top(tree), SimpleStrdup("", 0), 5);
  EXPECT_EQ(Written(tree.get(), 1), "<a></a>\n");
  EXPECT_EQ(Written(tree.get(), 0), "<a></a>");
}

TEST(Writer, ATextOutsideEveryElementIsWrittenWithoutALineFeed) {
  EXPECT_EQ(Formatted("x"), "x");
  EXPECT_EQ(Formatted("x<a/>y"), "x<a/>\ny");
  EXPECT_EQ(Compact("x<a/>y"), "x<a/>y");
}

TEST(Writer, WritesEntitiesAsTheyAreStored) {
  EXPECT_EQ(Compact("<a>&lt;&amp;</a>"), "<a>&lt;&amp;</a>");
}

TEST(Writer, AnElementInsideATreeIsWrittenAlone) {
  const XmlTree tree = Parse("<a><b><c/></b></a>");
  EXPECT_EQ(Written(Top(tree)->nodes[0].object.element, 1), "<b>\n <c/>\n</b>\n");
}

TEST(Writer, TheTextIsTerminatedAtItsSize) {
  const XmlTree tree = Parse("<a/>");
  std::size_t size = 0;
  const XmlText text(SimpleCreateXMLString(tree.get(), 0, &size));
  EXPECT_EQ(size, 4U);
  EXPECT_STREQ(text.get(), "<a/>");
}

TEST(SimpleCreateXMLStringR, MeasuresWithoutABufferWhatItWritesIntoOne) {
  const XmlTree tree = Parse("<a x='1'>t<b><c/></b>u</a>");
  for (const int32_t indent : {-1, 0, 3}) {
    const std::size_t size = SimpleCreateXMLStringR(tree.get(), nullptr, indent);
    std::string buffer(size + 1, '#');
    EXPECT_EQ(SimpleCreateXMLStringR(tree.get(), buffer.data(), indent), size);
    EXPECT_EQ(buffer.find('#'), size) << buffer;
  }
}

TEST(SimpleCreateXMLStringR, BeginsAtTheGivenIndent) {
  const XmlTree tree = Parse("<a><b/></a>");
  std::string buffer(SimpleCreateXMLStringR(tree.get(), nullptr, 2), '#');
  SimpleCreateXMLStringR(tree.get(), buffer.data(), 2);
  EXPECT_EQ(buffer, "  <a>\n   <b/>\n  </a>\n");
}

TEST(WriterDeathTest, NamesTheParameterAtFault) {
  const XmlTree tree = EmptyTree();
  std::size_t size = 0;
  EXPECT_STOPS(SimpleCreateXMLString(tree.get(), 1, &size), "size != 0");
  EXPECT_STOPS(SimpleCreateXMLString(nullptr, 1, &size), "element");
  EXPECT_STOPS(SimpleCreateXMLString(tree.get(), 1, nullptr), "size");
  EXPECT_STOPS(SimpleCreateXMLStringR(nullptr, nullptr, 0), "element");
  EXPECT_STOPS(SimpleCreateXMLStringR(tree.get(), nullptr, -2), "indent >= -1");
}

}  // namespace
