// The tokens of the parser, and the steps of its scanner.
#include "settings/xml/simple_xml_tokens.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/settings/xml/xml_support.h"

namespace {

// Every token as its code, a colon and its text, separated by blanks. The end is its code alone,
// followed by the error when there is one.
std::string Tokens(std::string_view text) {
  const GuardedText source(text);
  SimpleXML xml{};
  xml.xml = source.Get();
  xml.length = static_cast<int32_t>(text.size());
  std::string tokens;
  for (;;) {
    const Token token = ReadToken(&xml);
    tokens += std::to_string(static_cast<int>(token.kind));
    if (token.kind == TokenKind::kEnd) {
      return xml.error == 0 ? tokens : tokens + " error " + std::to_string(xml.error);
    }
    tokens += ":" + std::string(text.substr(static_cast<std::size_t>(token.begin),
                                            static_cast<std::size_t>(token.length)));
    tokens += " ";
  }
}

TEST(Tokens, HaveTheirCodes) {
  EXPECT_EQ(Tokens("word"), "0:word 8");
  EXPECT_EQ(Tokens("\"quoted\""), "1:\"quoted\" 8");
  EXPECT_EQ(Tokens("'quoted'"), "1:'quoted' 8");
  EXPECT_EQ(Tokens("<"), "2:< 8");
  EXPECT_EQ(Tokens("</"), "3:</ 8");
  EXPECT_EQ(Tokens(">"), "4:> 8");
  EXPECT_EQ(Tokens("="), "5:= 8");
  EXPECT_EQ(Tokens("<?"), "6:<? 8");
  EXPECT_EQ(Tokens("/>"), "7:/> 8");
  EXPECT_EQ(Tokens(""), "8");
}

TEST(Tokens, AreSeparatedByTabLineFeedCarriageReturnAndBlankOnly) {
  EXPECT_EQ(Tokens("\ta\nb\rc d\t\n\r "), "0:a 0:b 0:c 0:d 8");
  EXPECT_EQ(Tokens("a\vb\fc\xa0"), "0:a\vb\fc\xa0 8");
  EXPECT_EQ(Tokens(std::string_view("a\0b", 3)), "0:" + std::string("a\0b", 3) + " 8");
}

TEST(Tokens, AWordEndsAtMarkup) {
  EXPECT_EQ(Tokens("a<b"), "0:a 2:< 0:b 8");
  EXPECT_EQ(Tokens("a=b"), "0:a 5:= 0:b 8");
  EXPECT_EQ(Tokens("a>b"), "0:a 4:> 0:b 8");
  EXPECT_EQ(Tokens("a/>b"), "0:a 7:/> 0:b 8");
}

TEST(Tokens, AWordHoldsEverythingElse) {
  EXPECT_EQ(Tokens("a/b / c/"), "0:a/b 0:/ 0:c/ 8");
  EXPECT_EQ(Tokens("don't a\"b\""), "0:don't 0:a\"b\" 8");
  EXPECT_EQ(Tokens("? !-- &amp;"), "0:? 0:!-- 0:&amp; 8");
  EXPECT_EQ(Tokens("caf\xc3\xa9"), "0:caf\xc3\xa9 8");
}

TEST(Tokens, AQuoteRunsToTheNextQuoteOfItsKind) {
  EXPECT_EQ(Tokens("\"it's <a/> = \"b"), "1:\"it's <a/> = \" 0:b 8");
  EXPECT_EQ(Tokens("'\"'\"'\""), "1:'\"' 1:\"'\" 8");
  EXPECT_EQ(Tokens("''\"\""), "1:'' 1:\"\" 8");
}

TEST(Tokens, AQuoteThatIsNotClosedIsTheEndAndAnError) {
  EXPECT_EQ(Tokens("a \"b"), "0:a 8 error 5");
  EXPECT_EQ(Tokens("'b\""), "8 error 5");
  EXPECT_EQ(Tokens("\""), "8 error 5");
}

TEST(Tokens, TheReadPositionStaysAtTheEnd) {
  for (const char *text : {"ab", "a 'b", "  "}) {
    SimpleXML xml{};
    xml.xml = text;
    xml.length = static_cast<int32_t>(std::strlen(text));
    Token token;
    do {
      token = ReadToken(&xml);
    } while (token.kind != TokenKind::kEnd);
    EXPECT_EQ(xml.position, 2) << text;
    EXPECT_EQ(token.begin, 2) << text;
  }
}

TEST(Tokens, AnOpeningNeedsNoSpaceAfterIt) {
  EXPECT_EQ(Tokens("<?a</b<c"), "6:<? 0:a 3:</ 0:b 2:< 0:c 8");
  EXPECT_EQ(Tokens("< / ?"), "2:< 0:/ 0:? 8");
}

TEST(SimpleFindNonWhiteSpace, StopsAtTheFirstOtherByteOrTheEnd) {
  SimpleXML xml{};
  xml.xml = " \t\r\n x  ";
  xml.length = 7;
  SimpleFindNonWhiteSpace(&xml);
  EXPECT_EQ(xml.position, 5);
  SimpleFindNonWhiteSpace(&xml);
  EXPECT_EQ(xml.position, 5);
  xml.position = 6;
  SimpleFindNonWhiteSpace(&xml);
  EXPECT_EQ(xml.position, 7);
}

TEST(SimpleFindEndOfText, LeavesOutTheWhiteSpaceAtTheEnd) {
  SimpleXML xml{};
  xml.xml = "ab c \t\r\n<";
  xml.length = 9;
  xml.position = 8;
  EXPECT_EQ(SimpleFindEndOfText(&xml, 0), 4);
  EXPECT_EQ(SimpleFindEndOfText(&xml, 6), 6);
  EXPECT_EQ(xml.position, 8);
}

TEST(ScannerDeathTest, NamesTheParameterAtFault) {
  SimpleXML xml{};
  EXPECT_STOPS(SimpleFindNonWhiteSpace(&xml), "inXML->xml");
  EXPECT_STOPS(SimpleFindEndOfText(&xml, 0), "inXML->xml");
  EXPECT_STOPS(SimpleFindNonWhiteSpace(nullptr), "inXML");
  EXPECT_STOPS(SimpleFindEndOfText(nullptr, 0), "inXML");
}

TEST(ScannerDeathTest, NamesAPositionBeforeTheText) {
  SimpleXML xml{};
  xml.xml = "text";
  xml.length = 4;
  EXPECT_STOPS(SimpleFindEndOfText(&xml, -1), "begin");
  xml.position = -1;
  EXPECT_STOPS(SimpleFindNonWhiteSpace(&xml), "inXML->position");
}

}  // namespace
