// From a text to a tree: what is accepted, and which error code is given for what is not.
#include <gtest/gtest.h>

#include <string>

#include "settings/xml/simple_xml.h"
#include "tests/settings/xml/xml_support.h"

namespace {

// The tree in one line, or the error.
std::string Parsed(std::string_view text) {
  int32_t error = 0;
  const XmlTree tree = Parse(text, &error);
  if (error != kSimpleXMLNoError) {
    EXPECT_EQ(tree, nullptr) << text;
    return "error " + std::to_string(error);
  }
  return Outline(tree.get());
}

std::string Repeated(std::string_view text, int count) {
  std::string repeated;
  for (int i = 0; i < count; ++i) {
    repeated += text;
  }
  return repeated;
}

TEST(Parser, ElementsNest) {
  EXPECT_EQ(Parsed("<a/>"), "{a{}}");
  EXPECT_EQ(Parsed("<a></a>"), "{a{}}");
  EXPECT_EQ(Parsed("<a><b>x</b></a>"), "{a{b{[x]}}}");
  EXPECT_EQ(Parsed("<a><b/><c/></a><d/>"), "{a{b{} c{}} d{}}");
}

TEST(Parser, WhiteSpaceBetweenTagsIsNotAText) {
  EXPECT_EQ(Parsed(" \n<a>\r\n\t<b/> \n</a>\n"), "{a{b{}}}");
  EXPECT_EQ(Parsed("< a >x</ a >"), "{a{[x]}}");
}

TEST(Parser, AfterABlankASlashOrQuestionMarkBelongsToTheName) {
  EXPECT_EQ(Parsed("< /a></ /a>< ?b/>"), "{/a{} ?b{}}");
}

TEST(Parser, AttributesKeepTheirQuotes) {
  EXPECT_EQ(Parsed("<a x=\"1\" y='2' z=3 w/>"), "{a{@x=\"1\" @y='2' @z=3 @w}}");
  EXPECT_EQ(Parsed("<a x = \"1\"y=2>t</a>"), "{a{@x=\"1\" @y=2 [t]}}");
  EXPECT_EQ(Parsed("<a x=\"<b> = />\"/>"), "{a{@x=\"<b> = />\"}}");
  EXPECT_EQ(Parsed("<a x=\"\"/>"), "{a{@x=\"\"}}");
  EXPECT_EQ(Parsed("<a x y=1 z></a>"), "{a{@x @y=1 @z}}");
}

TEST(Parser, ATextRunsFromItsFirstTokenToTheNextTag) {
  EXPECT_EQ(Parsed("<a> one  two\n</a>"), "{a{[one  two]}}");
  EXPECT_EQ(Parsed("<a>x=1</a>"), "{a{[x=1]}}");
  EXPECT_EQ(Parsed("<a>= x</a>"), "{a{[= x]}}");
  EXPECT_EQ(Parsed("<a>'one' \"two\" </a>"), "{a{['one' \"two\"]}}");
  EXPECT_EQ(Parsed("<a>one<b/>two<?c/>three</a>"), "{a{[one] b{} [two] ?c{} [three]}}");
  EXPECT_EQ(Parsed("one<a/>two"), "{[one] a{} [two]}");
}

TEST(Parser, ATextIsKeptAsWritten) {
  EXPECT_EQ(Parsed("<a>&lt;&amp;lt;</a>"), "{a{[&lt;&amp;lt;]}}");
  EXPECT_EQ(Parsed("<a>don't</a>"), "{a{[don't]}}");
  EXPECT_EQ(Parsed("<a>1/2</a>"), "{a{[1/2]}}");
}

TEST(Parser, ATextHoldsWhatCouldNotBeginOne) {
  EXPECT_EQ(Parsed("<a>x > y</a>"), "{a{[x > y]}}");
  EXPECT_EQ(Parsed("<a>x/></a>"), "{a{[x/>]}}");
  EXPECT_EQ(Parsed("<a>say \"hi</a>"), "{a{[say \"hi]}}");
  EXPECT_EQ(Parsed("<a>= '<b/>\"x\"></a>"), "{a{[= '] b{} [\"x\">]}}");
  EXPECT_EQ(Parsed("x > 'y"), "{[x > 'y]}");
}

TEST(Parser, OnlyAQuoteThatBeginsATextHidesTags) {
  EXPECT_EQ(Parsed("<a>\"</a>\"</a>"), "{a{[\"</a>\"]}}");
  EXPECT_EQ(Parsed("<a> '<b>' > \"y</a>"), "{a{['<b>' > \"y]}}");
  EXPECT_EQ(Parsed("<a>x '<b/>y'</a>"), "{a{[x '] b{} [y']}}");
}

TEST(Parser, AnInstructionEndsOnlyByItsEndTagOrTheEndOfTheText) {
  EXPECT_EQ(Parsed("<?xml version=\"1.0\"?><a/>"), "{?xml{@version=\"1.0\" @ a{}}}");
  EXPECT_EQ(Parsed("<?p x>t</p><a/>"), "{?p{@x [t]} a{}}");
  EXPECT_EQ(Parsed("<?p x/><a/>"), "{?p{@x} a{}}");
}

TEST(Parser, AnInstructionsLastNameOrValueLosesItsQuestionMark) {
  EXPECT_EQ(Parsed("<?p x=1?>"), "{?p{@x=1}}");
  EXPECT_EQ(Parsed("<?p x?>"), "{?p{@x}}");
  EXPECT_EQ(Parsed("<?p x?/>"), "{?p{@x}}");
  EXPECT_EQ(Parsed("<?p x?"), "{?p{@x}}");
  EXPECT_EQ(Parsed("<?p x?\?>"), "{?p{@x?}}");
  EXPECT_EQ(Parsed("<?p x? y=1? z>"), "{?p{@x? @y=1? @z}}");
  EXPECT_EQ(Parsed("<?p x='1?'>"), "{?p{@x='1?'}}");
}

TEST(Parser, AQuestionMarkAloneLeavesAnEmptyNameOrValue) {
  EXPECT_EQ(Parsed("<?p ?>the rest"), "{?p{@ [the rest]}}");
  EXPECT_EQ(Parsed("<?p x=?>the rest"), "{?p{@x= [the rest]}}");
}

TEST(Parser, AnOrdinaryElementKeepsItsQuestionMark) {
  EXPECT_EQ(Parsed("<a x?></a>"), "{a{@x?}}");
  EXPECT_EQ(Parsed("<a x=1?></a>"), "{a{@x=1?}}");
}

TEST(Parser, AnInstructionsOwnNameKeepsItsQuestionMark) {
  EXPECT_EQ(Parsed("<?p?></p?>"), "{?p?{}}");
}

TEST(Parser, AcceptsEveryByteThatIsNotMarkup) {
  EXPECT_EQ(Parsed("<a\xff>\xff\x01\x80</a\xff>"), "{a\xff{[\xff\x01\x80]}}");
}

TEST(Parser, ANulEndsTheNameValueOrTextThatHoldsIt) {
  EXPECT_EQ(Parsed(std::string("<a b\0c=d\0e>f\0g</a>h", 20)), "{a{@b=d [f]} [h]}");
}

TEST(Parser, AnEndTagClosesTheElementsInsideItsOwn) {
  EXPECT_EQ(Parsed("<a><b><c>x</a><d/>"), "{a{b{c{[x]}}} d{}}");
  EXPECT_EQ(Parsed("<a><b>x</a>y"), "{a{b{[x]}} [y]}");
}

TEST(Parser, AnEndTagIsComparedOverTheLengthOfTheElementsName) {
  EXPECT_EQ(Parsed("<ab></abc><d/>"), "{ab{} d{}}");
  EXPECT_EQ(Parsed("<ab></a>"), "error 6");
  EXPECT_EQ(Parsed("<a><ab></a><d/>"), "{a{ab{}} d{}}");
  EXPECT_EQ(Parsed("<a><b></ab><d/>"), "{a{b{}} d{}}");
}

TEST(Parser, GivesTheCodeOfTheError) {
  const struct {
    const char *text;
    int error;
  } cases[] = {
      {"<>", 3},       {"<\"a\">", 3},  {"<=", 3},        {"< <a>", 3},     {"<?>", 3},
      {"<? ='x'", 3},  {"<a></>", 4},   {"<a></'a'>", 4}, {"<a></a<", 4},   {"<a></a b>", 4},
      {"<a></a/>", 4}, {"<a></a=>", 4}, {"<a x=\"1>", 5}, {"<a \"x", 5},    {"<a>'x</a>", 5},
      {"x<a/>'x", 5},  {"<\"a", 5},     {"</'a", 5},      {"</a 'b", 5},    {"<a x='", 5},
      {"</a>", 6},     {"<a/></a>", 6}, {"<a></b>", 6},   {"x</a>", 6},     {">", 7},
      {"/>", 7},       {"<a>></a>", 7}, {"<a>/></a>", 7}, {"x<a/>>", 7},    {"x<a/> />", 7},
      {"<a <b>", 7},   {"<a </a>", 7},  {"<a <?b>", 7},   {"<a =1>", 7},    {"<a \"x\">", 7},
      {"<a x=>", 7},   {"<a x=/>", 7},  {"<a x==1>", 7},  {"<a x=1=2>", 7}, {"<a x=<b>", 7},
  };
  for (const auto &c : cases) {
    EXPECT_EQ(Parsed(c.text), "error " + std::to_string(c.error)) << c.text;
  }
}

TEST(Parser, StopsAtTheFirstError) {
  EXPECT_EQ(Parsed("<a ='"), "error 7");
  EXPECT_EQ(Parsed("<a x=='"), "error 7");
  EXPECT_EQ(Parsed("<a>>'"), "error 7");
  EXPECT_EQ(Parsed("<>'"), "error 3");
  EXPECT_EQ(Parsed("<a></>'"), "error 4");
  EXPECT_EQ(Parsed("</a>'"), "error 6");
}

TEST(Parser, TheTextMayEndAnywhere) {
  const struct {
    const char *text;
    const char *tree;
  } cases[] = {
      {"", "{}"},
      {" \n", "{}"},
      {"<", "{}"},
      {"<?", "{}"},
      {"</", "{}"},
      {"</a", "{}"},
      {"<a", "{a{}}"},
      {"<a ", "{a{}}"},
      {"<a/", "{a/{}}"},
      {"<a x", "{a{@x}}"},
      {"<a x=", "{a{@x}}"},
      {"<a x=1", "{a{@x=1}}"},
      {"<a x='1'", "{a{@x='1'}}"},
      {"<a>", "{a{}}"},
      {"<a>x ", "{a{[x]}}"},
      {"<a>x<", "{a{[x]}}"},
      {"<a><b/><?", "{a{b{}}}"},
      {"<a><b>x</", "{a{b{[x]}}}"},
      {"<a><b>x</b", "{a{b{[x]}}}"},
      {"<a><b>x</b></a", "{a{b{[x]}}}"},
  };
  for (const auto &c : cases) {
    EXPECT_EQ(Parsed(c.text), c.tree) << c.text;
  }
}

TEST(Parser, ReadsNothingAfterTheLength) {
  const std::string source = "<a>x</a><b/>'";
  int32_t error = -1;
  const XmlTree tree(SimpleParseXML(source.data(), 8, &error));
  EXPECT_EQ(error, 0);
  EXPECT_EQ(Outline(tree.get()), "{a{[x]}}");
}

TEST(Parser, RefusesMoreThanAThousandLevels) {
  const std::string thousand = Repeated("<a>", 1000);
  int32_t error = -1;
  const XmlTree tree = Parse(thousand + "x" + Repeated("</a>", 1000), &error);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(Written(tree.get(), 0), thousand + "x" + Repeated("</a>", 1000));
  EXPECT_EQ(Parsed(thousand + "<b/>"), "error 8");
  EXPECT_EQ(Parsed(thousand + "<?b"), "error 8");
  EXPECT_EQ(Parsed(thousand + "<>"), "error 3");
  EXPECT_EQ(Parsed(Repeated("<a>", 1000000)), "error 8");
}

TEST(Parser, CountsLevelsNotElements) {
  EXPECT_EQ(Parsed("<a>" + Repeated("<b><c/></b>", 1001) + "</a>").substr(0, 12), "{a{b{c{}} b{");
}

TEST(Parser, NodesTellWhereTheyBegan) {
  const XmlTree tree = Parse(" <a  x='1' y> text <b/><?c/></a>");
  EXPECT_EQ(tree->nodes[0].position, 1);
  const SimpleXMLElement *a = Top(tree);
  ASSERT_EQ(a->node_count, 5);
  EXPECT_EQ(a->nodes[0].position, 5);   // x
  EXPECT_EQ(a->nodes[1].position, 11);  // y
  EXPECT_EQ(a->nodes[2].position, 14);  // text
  EXPECT_EQ(a->nodes[3].position, 19);  // <b
  EXPECT_EQ(a->nodes[4].position, 23);  // <?c
}

TEST(Parser, NodesKnowTheirKindAndElementsTheirParent) {
  const XmlTree tree = Parse("<a x>t<?b/></a>");
  const SimpleXMLElement *a = Top(tree);
  EXPECT_EQ(tree->name, nullptr);
  EXPECT_EQ(tree->parent, nullptr);
  EXPECT_EQ(a->parent, tree.get());
  EXPECT_EQ(a->nodes[0].kind, 1);
  EXPECT_EQ(a->nodes[1].kind, 3);
  EXPECT_EQ(a->nodes[2].kind, 2);
  EXPECT_EQ(a->nodes[2].object.element->parent, a);
  EXPECT_EQ(a->processing_instruction, 0);
  EXPECT_EQ(a->nodes[2].object.element->processing_instruction, 1);
}

TEST(Parser, GrowsByFiveSlots) {
  EXPECT_EQ(Top(Parse("<a/>"))->node_capacity, 0);
  EXPECT_EQ(Top(Parse("<a x/>"))->node_capacity, 5);
  EXPECT_EQ(Top(Parse("<a x>t<b/>u<c/></a>"))->node_capacity, 5);
  EXPECT_EQ(Top(Parse("<a x>t<b/>u<c/>v</a>"))->node_capacity, 10);
}

// Parses a single element from the middle of a text.
class ElementParser : public testing::Test {
 protected:
  void Start(const char *text) {
    xml_.xml = text;
    xml_.length = static_cast<int32_t>(std::strlen(text));
  }

  SimpleXML xml_{};
  XmlTree tree_ = EmptyTree();
  SimpleXMLElement *element_ = SimpleAddElement(tree_.get(), SimpleStrdup("a", 0), 0, 1);
};

TEST_F(ElementParser, GivesOneForAnElementThatWasCompleted) {
  Start("x=1>text</a>rest");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 1);
  EXPECT_EQ(Outline(element_), "a{@x=1 [text]}");
  EXPECT_EQ(xml_.position, 12);
  EXPECT_EQ(xml_.error, 0);
  EXPECT_EQ(xml_.end_tag, nullptr);
  EXPECT_EQ(xml_.end_tag_length, 0);
}

TEST_F(ElementParser, GivesOneForAnEmptyTagAndStandsInTheContentAroundIt) {
  Start("/>rest");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 1);
  EXPECT_EQ(xml_.position, 2);
  EXPECT_TRUE(xml_.inside_content);
}

TEST_F(ElementParser, LeavesAnEndTagOfAnElementAroundItPending) {
  Start(">text</outer>rest");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 1);
  EXPECT_EQ(std::string(xml_.end_tag, static_cast<std::size_t>(xml_.end_tag_length)), "outer");
  EXPECT_EQ(xml_.error, 0);
}

TEST_F(ElementParser, GivesZeroAndTheCodeAtAnEndTagThatTheRootCannotClose) {
  Start("text</a>");
  xml_.inside_content = true;
  EXPECT_EQ(SimpleParseXMLElement(&xml_, tree_.get()), 0);
  EXPECT_EQ(xml_.error, 6);
}

TEST_F(ElementParser, GivesZeroAtTheEndOfTheText) {
  Start(">text");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 0);
  EXPECT_EQ(Outline(element_), "a{[text]}");
  EXPECT_EQ(xml_.error, 0);
}

TEST_F(ElementParser, GivesZeroAtTheEndOfTheTextInsideTheTag) {
  Start("x=1 y");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 0);
  EXPECT_EQ(Outline(element_), "a{@x=1 @y}");
  EXPECT_EQ(xml_.error, 0);
}

TEST_F(ElementParser, GivesZeroAndTheCodeAtAnErrorInsideTheTag) {
  Start("x <");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 0);
  EXPECT_EQ(xml_.error, 7);
}

TEST_F(ElementParser, DropsAQuestionMarkOnlyFromAnAttribute) {
  element_->processing_instruction = 1;
  SimpleAddText(element_, SimpleStrdup("text?", 0), 1);
  Start(">");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 0);
  EXPECT_EQ(Outline(element_), "?a{[text?]}");
}

TEST_F(ElementParser, LeavesAnEmptyNameThatWasThereBefore) {
  element_->processing_instruction = 1;
  SimpleAddAttribute(element_, SimpleStrdup("", 0), nullptr, 1);
  Start(">");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 0);
  EXPECT_EQ(Outline(element_), "?a{@}");
}

TEST_F(ElementParser, GivesZeroAndTheCodeAtAnError) {
  Start("><b>></b></a>");
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 0);
  EXPECT_EQ(xml_.error, 7);
}

TEST_F(ElementParser, StartsInContentWhenTheFlagIsSet) {
  Start("text<b/></a>");
  xml_.inside_content = true;
  EXPECT_EQ(SimpleParseXMLElement(&xml_, element_), 1);
  EXPECT_EQ(Outline(element_), "a{[text] b{}}");
  EXPECT_EQ(xml_.start_tag, nullptr);
  EXPECT_EQ(xml_.start_tag_length, 0);
}

TEST(ParserDeathTest, NamesTheParameterAtFault) {
  SimpleXML xml{};
  int32_t error = 0;
  const XmlTree tree = EmptyTree();
  EXPECT_STOPS(SimpleParseXMLElement(nullptr, tree.get()), "inXML");
  EXPECT_STOPS(SimpleParseXMLElement(&xml, tree.get()), "inXML->xml");
  EXPECT_STOPS(SimpleParseXML(nullptr, 0, &error), "text");
  EXPECT_STOPS(SimpleParseXML("", -1, &error), "length >= 0");
  EXPECT_STOPS(SimpleParseXML("", 0, nullptr), "error");
  xml.xml = "";
  EXPECT_STOPS(SimpleParseXMLElement(&xml, nullptr), "element");
}

}  // namespace
