// Building, searching and enumerating a tree.
#include <gtest/gtest.h>

#include <string>

#include "settings/xml/simple_xml.h"
#include "tests/settings/xml/xml_support.h"

namespace {

char *Copy(const char *text) {
  return SimpleStrdup(text, 0);
}

TEST(SimpleAllocNodes, AddsRoomAndKeepsWhatIsThere) {
  const XmlTree tree = Parse("<a/><b/>");
  const SimpleXMLElement *b = tree->nodes[1].object.element;
  SimpleAllocNodes(tree.get(), 3);
  EXPECT_EQ(tree->node_capacity, 8);
  EXPECT_EQ(tree->node_count, 2);
  EXPECT_EQ(tree->nodes[1].object.element, b);
  EXPECT_EQ(tree->nodes[1].position, 4);
}

TEST(SimpleAdd, GrowsByTheGivenAmountOnlyWhenFull) {
  const XmlTree tree = EmptyTree();
  SimpleAddText(tree.get(), Copy("t"), 1);
  EXPECT_EQ(tree->node_capacity, 1);
  SimpleAddElement(tree.get(), Copy("e"), 0, 3);
  EXPECT_EQ(tree->node_capacity, 4);
  SimpleAddAttribute(tree.get(), Copy("a"), nullptr, 7);
  EXPECT_EQ(tree->node_capacity, 4);
}

TEST(SimpleAdd, AddsAtTheEndAndGivesTheNewNode) {
  const XmlTree tree = EmptyTree();
  SimpleXMLElement *element = SimpleAddElement(tree.get(), Copy("e"), 1, 5);
  const SimpleXMLText *text = SimpleAddText(element, Copy("t"), 5);
  const SimpleXMLAttribute *attribute = SimpleAddAttribute(element, Copy("a"), Copy("v"), 5);
  const SimpleXMLElement *child = SimpleAddElement(element, Copy("f"), 0, 5);
  EXPECT_EQ(element->parent, tree.get());
  EXPECT_EQ(element->nodes[0].object.text, text);
  EXPECT_EQ(element->nodes[1].object.attribute, attribute);
  EXPECT_EQ(element->nodes[2].object.element, child);
  EXPECT_EQ(Outline(tree.get()), "{?e{[t] @a=v f{}}}");
  EXPECT_EQ(element->nodes[2].position, 0);
}

TEST(SimpleAdd, TakesTheTextsOver) {
  const XmlTree tree = EmptyTree();
  char *name = Copy("name");
  char *value = Copy("value");
  const SimpleXMLAttribute *attribute = SimpleAddAttribute(tree.get(), name, value, 5);
  EXPECT_EQ(attribute->name, name);
  EXPECT_EQ(attribute->value, value);
}

class FindElement : public testing::Test {
 protected:
  // The element at the path in one line, or "none".
  std::string Found(const char *path) const {
    const SimpleXMLElement *element = SimpleFindElement(tree_.get(), path);
    return element == nullptr ? "none" : Outline(element);
  }

  XmlTree tree_ = Parse(
      "<Agent><LogLevel>2</LogLevel><LogLevel>3</LogLevel><Log><Deep>4</Deep></Log></Agent>"
      "<Agent><Later/></Agent>");
};

TEST_F(FindElement, FollowsThePath) {
  EXPECT_EQ(Found("/Agent/Log/Deep"), "Deep{[4]}");
  EXPECT_EQ(Found("Agent/Log/Deep"), "Deep{[4]}");
  EXPECT_EQ(Found("/Agent/Log/Deep/"), "Deep{[4]}");
}

TEST_F(FindElement, TakesTheFirstOfAName) {
  EXPECT_EQ(Found("/Agent/LogLevel"), "LogLevel{[2]}");
  EXPECT_EQ(Found("/Agent/Later"), "none");
}

TEST_F(FindElement, ComparesWholeNames) {
  EXPECT_EQ(Found("/Agent/LogLev"), "none");
  EXPECT_EQ(Found("/Agent/LogLevels"), "none");
  EXPECT_EQ(Found("/agent"), "none");
  EXPECT_EQ(Found("/LogLevel"), "none");
}

TEST_F(FindElement, AnEmptyNameFindsNothing) {
  EXPECT_EQ(Found(""), "none");
  EXPECT_EQ(Found("/"), "none");
  EXPECT_EQ(Found("//Agent"), "none");
  EXPECT_EQ(Found("/Agent//LogLevel"), "none");
  EXPECT_EQ(Found("/Agent//"), "none");
  SimpleAddElement(tree_.get(), SimpleStrdup("", 0), 0, 5);
  EXPECT_EQ(Found("/"), "none");
}

TEST_F(FindElement, LooksIntoNamespaceAndBrindleReg) {
  tree_ = Parse(
      "<Namespace><Agent><BrindleRegX><LogLevel>2</LogLevel></BrindleRegX></Agent>"
      "</Namespace>");
  EXPECT_EQ(Found("/Agent/LogLevel"), "LogLevel{[2]}");
  tree_ = Parse("<NamespaceOne><BrindleReg><Agent/></BrindleReg></NamespaceOne>");
  EXPECT_EQ(Found("/Agent"), "Agent{}");
}

TEST_F(FindElement, DoesNotGoOnAfterATransparentElement) {
  tree_ = Parse("<Namespace><Other/></Namespace><Agent/>");
  EXPECT_EQ(Found("/Agent"), "none");
  tree_ = Parse("<Agent>1</Agent><Namespace><Agent>2</Agent></Namespace>");
  EXPECT_EQ(Found("/Agent"), "Agent{[1]}");
}

TEST_F(FindElement, NeverFindsATransparentElementItself) {
  tree_ = Parse("<Namespace><a/></Namespace>");
  EXPECT_EQ(Found("/Namespace"), "none");
  EXPECT_EQ(Found("/Namespace/a"), "none");
  tree_ = Parse("<XNamespace/><namespace/>");
  EXPECT_EQ(Found("/XNamespace"), "XNamespace{}");
  EXPECT_EQ(Found("/namespace"), "namespace{}");
}

TEST(SimpleEnum, GivesTheSlotsInOrder) {
  const XmlTree tree = Parse("<a x y>t<b/>u<c/></a>");
  const SimpleXMLElement *a = Top(tree);
  int32_t index = 0;
  for (int32_t i = 0; i < 6; ++i) {
    EXPECT_EQ(SimpleEnumNodes(a, &index), &a->nodes[i]);
    EXPECT_EQ(index, i + 1);
  }
  EXPECT_EQ(SimpleEnumNodes(a, &index), nullptr);
  EXPECT_EQ(index, 6);
}

TEST(SimpleEnum, SkipsToTheNextSlotOfItsKind) {
  const XmlTree tree = Parse("<a x y>t<b/>u<c/></a>");
  const SimpleXMLElement *a = Top(tree);
  int32_t index = 0;
  EXPECT_EQ(SimpleEnumElements(a, &index), &a->nodes[3]);
  EXPECT_EQ(index, 4);
  EXPECT_EQ(SimpleEnumElements(a, &index), &a->nodes[5]);
  EXPECT_EQ(SimpleEnumElements(a, &index), nullptr);
  index = 1;
  EXPECT_EQ(SimpleEnumAttributes(a, &index), &a->nodes[1]);
  EXPECT_EQ(index, 2);
  EXPECT_EQ(SimpleEnumAttributes(a, &index), nullptr);
}

TEST(SimpleCheckAttribute, TellsWhetherThereIsOne) {
  const XmlTree tree = Parse("<a x='1' yy>z<w/></a>");
  EXPECT_TRUE(SimpleCheckAttribute(Top(tree), "x"));
  EXPECT_TRUE(SimpleCheckAttribute(Top(tree), "yy"));
  EXPECT_FALSE(SimpleCheckAttribute(Top(tree), "y"));
  EXPECT_FALSE(SimpleCheckAttribute(Top(tree), "z"));
  EXPECT_FALSE(SimpleCheckAttribute(Top(tree), "w"));
  EXPECT_FALSE(SimpleCheckAttribute(tree.get(), "x"));
}

TEST(TreeDeathTest, NamesTheParameterAtFault) {
  const XmlTree tree = EmptyTree();
  int32_t index = -1;
  EXPECT_STOPS(SimpleAllocNodes(tree.get(), 0), "growBy > 0");
  EXPECT_STOPS(SimpleAllocNodes(tree.get(), -5), "growBy > 0");
  EXPECT_STOPS(SimpleAllocNodes(nullptr, 1), "element");
  EXPECT_STOPS(SimpleAddText(tree.get(), nullptr, 1), "text");
  EXPECT_STOPS(SimpleAddElement(tree.get(), nullptr, 0, 1), "name");
  EXPECT_STOPS(SimpleAddAttribute(tree.get(), nullptr, nullptr, 1), "name");
  std::string text = "text";
  EXPECT_STOPS(SimpleAddText(nullptr, text.data(), 1), "element");
  EXPECT_STOPS(SimpleAddElement(nullptr, text.data(), 0, 1), "element");
  EXPECT_STOPS(SimpleAddAttribute(nullptr, text.data(), nullptr, 1), "element");
  EXPECT_STOPS(SimpleFindElement(nullptr, "/a"), "element");
  EXPECT_STOPS(SimpleFindElement(tree.get(), nullptr), "path");
  EXPECT_STOPS(SimpleEnumNodes(nullptr, &index), "element");
  EXPECT_STOPS(SimpleEnumNodes(tree.get(), nullptr), "index");
  EXPECT_STOPS(SimpleEnumNodes(tree.get(), &index), "*index >= 0");
  EXPECT_STOPS(SimpleCheckAttribute(tree.get(), nullptr), "name");
  EXPECT_STOPS(SimpleDeleteElement(nullptr), "element");
  EXPECT_STOPS(SimpleDeleteAttribute(nullptr), "attribute");
  EXPECT_STOPS(SimpleDeleteText(nullptr), "text");
}

TEST(TreeDeathTest, NeverCountsSlotsBeyond31Bits) {
  SimpleXMLElement element{};
  element.node_capacity = INT32_MAX;
  EXPECT_STOPS(SimpleAllocNodes(&element, 1), "growBy <= INT32_MAX - nodeCapacity");
}

}  // namespace
