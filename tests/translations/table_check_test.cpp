// The check of the string tables finds each fault that a table can have.
#include "tests/translations/table_check.h"

#include <gmock/gmock.h>

#include <clocale>

#include "tests/support/temp_dir.h"
#include "tests/support/utf8_locale.h"
#include "text/string_table.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A small program with two messages, whose translation is good until a test spoils it. The rows of
// the choice lists are the program's own English ones unless the table has others.
class TableCheckTest : public Utf8LocaleTest {
 protected:
  TableCheckTest() {
    english_ = {{"Message", "First", "first"}, {"Message", "Second", "two\rlines"}};
    translation_ = {{"Message", "First", "érste"}, {"Message", "Second", "zwei\rZeilen"}};
  }

  std::vector<std::string> FaultsOf(const std::string &table) {
    return TableFaults(directory_.Write("table.prop", table), translation_, english_);
  }
  // Faults of a table that says `text` for the first message, as the translator wrote it.
  std::vector<std::string> FaultsOfFirst(const std::string &text) {
    translation_[0].text = text;
    return FaultsOf("[Message]\nFirst = " + text + "\nSecond = zwei\rZeilen\n");
  }
  // Faults of a table with this text of the General page besides.
  std::vector<std::string> FaultsWith(const std::string &key, const std::string &text) {
    std::vector<WrittenText> english = english_;
    std::vector<WrittenText> translation = translation_;
    english.push_back({"Page_General", key, "English"});
    translation.push_back({"Page_General", key, text});
    const std::string table = kGood + ("[Page_General]\n" + key + " = " + text + "\n");
    return TableFaults(directory_.Write("table.prop", table), translation, english);
  }

  static constexpr char kGood[] = "[Message]\nFirst = érste\nSecond = zwei\rZeilen\n";

  TempDir directory_;
  std::vector<WrittenText> english_;
  std::vector<WrittenText> translation_;
};

TEST_F(TableCheckTest, AGoodTableHasNoFault) {
  EXPECT_THAT(FaultsOf(kGood), IsEmpty());
  EXPECT_THAT(FaultsOf(std::string("# a comment\r\n\r\n") + kGood), IsEmpty());
}

TEST_F(TableCheckTest, RefusesATableThatCannotBeOpened) {
  EXPECT_THAT(TableFaults(directory_.Path("missing.prop"), translation_, english_),
              ElementsAre("the table cannot be opened"));
}

TEST_F(TableCheckTest, RefusesAMissingKey) {
  EXPECT_THAT(FaultsOf("[Message]\nFirst = érste\n"), ElementsAre("[Message] Second is missing"));
}

TEST_F(TableCheckTest, RefusesAKeyThatTheTranslatorForgot) {
  translation_.pop_back();
  EXPECT_THAT(FaultsOf(kGood), ElementsAre("[Message] Second is not translated"));
}

TEST_F(TableCheckTest, RefusesAKeyInAnotherSection) {
  EXPECT_THAT(
      FaultsOf("[Message]\nFirst = érste\n[Messages]\nSecond = zwei\rZeilen\n"),
      ElementsAre("[Messages] Second is unknown to the program", "[Message] Second is missing"));
}

TEST_F(TableCheckTest, RefusesAnUnknownKey) {
  EXPECT_THAT(FaultsOf(std::string(kGood) + "Third = drei\n"),
              ElementsAre("[Message] Third is unknown to the program"));
}

TEST_F(TableCheckTest, RefusesAKeyThatIsThereTwice) {
  EXPECT_THAT(FaultsOf(std::string(kGood) + "First = noch eine\n"),
              ElementsAre("[Message] First is there twice"));
}

TEST_F(TableCheckTest, RefusesPercentSigns) {
  EXPECT_THAT(FaultsOfFirst("50 %"), ElementsAre("[Message] First holds a percent sign"));
}

TEST_F(TableCheckTest, RefusesBytesThatAreNotOfTheCharset) {
  EXPECT_THAT(FaultsOfFirst("\xE9rste"),
              ElementsAre("[Message] First holds bytes that are not of the charset"));
  std::setlocale(LC_ALL, "C");
  EXPECT_THAT(FaultsOf(kGood),
              ElementsAre("[Message] First holds bytes that are not of the charset"));
}

TEST_F(TableCheckTest, RefusesAnEmptyText) {
  EXPECT_THAT(FaultsOfFirst(""), ElementsAre("[Message] First is empty"));
}

TEST_F(TableCheckTest, RefusesEscapes) {
  EXPECT_THAT(FaultsOfFirst("a\\tb"),
              ElementsAre("[Message] First is shown as \"a\tbb\", but written as \"a\\tb\""));
}

TEST_F(TableCheckTest, RefusesWhatIsNotShownAsWritten) {
  EXPECT_THAT(FaultsOf("[Message]\nFirst = érste\nSecond = zwei Zeilen\n"),
              ElementsAre("[Message] Second is shown as \"zwei Zeilen\", "
                          "but written as \"zwei\rZeilen\""));
  EXPECT_THAT(FaultsOfFirst("\ta"), ElementsAre(HasSubstr("is shown as \"a\", but written as")));
}

TEST_F(TableCheckTest, TakesBackslashesThatMakeNoEscape) {
  EXPECT_THAT(FaultsOfFirst("a \\ b\" \\< \\"), IsEmpty());
}

TEST_F(TableCheckTest, RefusesALineBreakWhereTheEnglishTextHasNone) {
  EXPECT_THAT(FaultsOfFirst("a\rb"),
              ElementsAre("[Message] First breaks its line, which the English text does not"));
}

TEST_F(TableCheckTest, RefusesALineThatTheReaderCuts) {
  EXPECT_THAT(FaultsOfFirst(std::string(1022 - 8, 'x')), IsEmpty());
  EXPECT_THAT(FaultsOfFirst(std::string(1023 - 8, 'x')),
              ElementsAre("line 2 is longer than 1022 bytes", HasSubstr("is shown as")));
}

TEST_F(TableCheckTest, RefusesALineThatTheReaderSkips) {
  EXPECT_THAT(FaultsOf("[Message]\nFirst = érste\nSecond = zwei\rZeilen\nund noch eine\n"),
              ElementsAre("line 4 is neither a section, a text nor a comment"));
  EXPECT_THAT(FaultsOf(std::string("[General\n") + kGood),
              ElementsAre("line 1 is neither a section, a text nor a comment"));
}

TEST_F(TableCheckTest, TheEnglishTableMayLackWhatNoTableCanHold) {
  english_[0].text = translation_[0].text = "no \\\" here";
  EXPECT_THAT(FaultsOf("[Message]\nSecond = zwei\rZeilen\n"), IsEmpty());
  translation_[0].text = "kein \\\" hier";
  EXPECT_THAT(FaultsOf("[Message]\nSecond = zwei\rZeilen\n"),
              ElementsAre(HasSubstr("no table can hold \"kein \\\" hier\"")));
}

TEST_F(TableCheckTest, RefusesTwoEqualTextsInOneList) {
  EXPECT_THAT(FaultsWith("PullInterval_Store_Item2", "1 hour"),
              ElementsAre("[Page_General] PullInterval_Store_Item3 is the same as "
                          "[Page_General] PullInterval_Store_Item2"));
  EXPECT_THAT(FaultsWith("LogLevel_Store_Item3", "Warning"), Contains(HasSubstr("is the same as")));
  EXPECT_THAT(FaultsWith("DelayScope_Store_Item5", "No Delay"),
              Contains(HasSubstr("is the same as")));
}

TEST_F(TableCheckTest, RefusesARowOfMoreThan50Characters) {
  std::string text;
  for (int i = 0; i < 50; ++i) {
    text += "é";
  }
  EXPECT_THAT(FaultsWith("PullInterval_Store_Item1", text), IsEmpty());
  EXPECT_THAT(FaultsWith("PullInterval_Store_Item1", text + "x"),
              Contains("[Page_General] PullInterval_Store_Item1 is longer than 50 characters"));
}

TEST_F(TableCheckTest, RefusesARowThatIsAnotherRowsNumber) {
  EXPECT_THAT(FaultsWith("DelayScope_Store_Item1", "60"),
              ElementsAre("[Page_General] DelayScope_Store_Item1 is the number of "
                          "[Page_General] DelayScope_Store_Item5"));
}

TEST_F(TableCheckTest, TakesARowThatIsItsOwnNumber) {
  EXPECT_THAT(FaultsWith("DelayScope_Store_Item5", "60"), IsEmpty());
}

TEST_F(TableCheckTest, RefusesARowThatAnotherDurationIsShownAs) {
  EXPECT_THAT(FaultsWith("PullInterval_Store_Item3", "59 minutes"),
              ElementsAre("[Page_General] PullInterval_Store_Item3 is how 59 minutes are shown"));
  EXPECT_THAT(FaultsWith("DelayScope_Store_Item2", "5 minutes"),
              Contains("[Page_General] DelayScope_Store_Item2 is how 5 minutes are shown"));
}

TEST_F(TableCheckTest, RefusesUnitWordsThatMakeTooLongATextForTheEntry) {
  EXPECT_THAT(FaultsWith("Time_Days", std::string(48, 'x')), Contains(HasSubstr("50 characters")));
}

TEST(ReadTranslation, GivesTheTextsAsTheyAreWritten) {
  const TempDir directory;
  const std::vector<WrittenText> texts = ReadTranslation(
      directory.Write("xx.txt", "# k = no text\n[A]\n\nk = a \\\" = b<br>c<br>d \n[B]\nk=x\n"));
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0].section, "A");
  EXPECT_EQ(texts[0].key, "k");
  EXPECT_EQ(texts[0].text, "a \\\" = b\rc\rd");
  EXPECT_EQ(texts[1].section, "B");
  EXPECT_EQ(texts[1].text, "x");
}

TEST(ReadTranslation, GivesNothingOfAMissingFile) {
  EXPECT_THAT(ReadTranslation("/nonexistent"), IsEmpty());
}

}  // namespace
