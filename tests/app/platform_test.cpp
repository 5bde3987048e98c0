// Platform identification, from both files and over every row of both tables. The product data can
// be replaced, so that rows are named here by their number, never by what they hold.
#include "app/platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/temp_dir.h"
#include PRODUCT_DATA_HEADER

namespace {

using std::string_literals::operator""s;

std::string FamilyOfRow(std::size_t row) {
  return {kFamilyLetters.at(row - 1)};
}

std::string ModelOfRow(std::size_t row) {
  return std::string(std::data(kModelCodes)[row - 1]);
}

std::string FamilyInNoRow() {
  char letter = 'A';
  while (std::count(kFamilyLetters.begin(), kFamilyLetters.end(), letter) > 0) {
    ++letter;
  }
  return {letter};
}

// A model code of as many digits that is in no row.
std::string ModelInNoRow(std::size_t length) {
  std::string code(length, '0');
  while (std::count(std::begin(kModelCodes), std::end(kModelCodes), code) > 0) {
    code = std::to_string(std::stoi("1" + code) + 1).substr(1);
  }
  return code;
}

// An image id of the families of rows 1 and 2; the number has four characters.
std::string ShortModelId(const std::string &family, const std::string &model,
                         const std::string &number) {
  return family + "-" + model + number;
}

// An image id of any other family; the number has two characters.
std::string LongModelId(const std::string &family, const std::string &model,
                        const std::string &number) {
  return family + "--" + model + number;
}

int CodeOf(const std::string &image_id) {
  return PlatformCode(ParseImageId(image_id.c_str()));
}

std::int32_t NumberIn(const std::string &text) {
  return ParseImageId(ShortModelId(FamilyOfRow(1), "--", text).c_str()).number;
}

SystemInfo ReadText(std::string text) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE *)> stream(std::tmpfile(), std::fclose);
  std::fwrite(text.data(), 1, text.size(), stream.get());
  std::rewind(stream.get());
  return ReadSystemInfo(stream.get());
}

struct ModelBounds {
  std::size_t row;
  std::int32_t lowest;
  std::int32_t highest;
  std::int32_t platform_code;
};

const std::vector<ModelBounds> kModelBounds = {
    {1, 0, 19, 1},     {2, 20, 10000, 4}, {3, 0, 10, 1},     {4, 11, 10000, 4}, {5, 0, 4, 1},
    {6, 5, 10000, 4},  {7, 0, 10000, 2},  {8, 0, 10000, 3},  {9, 0, 10000, 4},  {10, 0, 10000, 5},
    {11, 0, 10000, 5}, {12, 0, 10000, 5}, {13, 0, 10000, 5}, {14, 0, 10000, 5}, {15, 0, 10000, 5},
    {16, 0, 10000, 5}, {17, 0, 10000, 7}, {18, 0, 10000, 6},
};

TEST(PlatformRecordTest, AFreshRecordKnowsNothing) {
  const PlatformRecord record;
  EXPECT_EQ(record.image_id, "");
  EXPECT_EQ(record.family, "");
  EXPECT_EQ(record.model_code, "");
  EXPECT_EQ(record.number, 0);
  EXPECT_EQ(PlatformCode(record), 9);
  EXPECT_FALSE(record.valid);
}

TEST(ImageIdTest, CutsAnIdOfTheFirstTwoFamilies) {
  for (const std::size_t row : {1U, 2U}) {
    const std::string id = ShortModelId(FamilyOfRow(row), "-m", "0012");
    const PlatformRecord record = ParseImageId((id + "and more\n").c_str());
    EXPECT_EQ(record.image_id, id);
    EXPECT_EQ(record.family, FamilyOfRow(row));
    EXPECT_NE(record.family_row, nullptr);
    EXPECT_EQ(record.model_code, "-m");
    EXPECT_EQ(record.number, 12);
    EXPECT_TRUE(record.valid);
  }
}

TEST(ImageIdTest, CutsAnIdOfAnyOtherFamilyLikeTheThird) {
  for (const std::string &family : {FamilyOfRow(3), FamilyOfRow(4), FamilyInNoRow()}) {
    const PlatformRecord record = ParseImageId(LongModelId(family, "-m-", "12").c_str());
    EXPECT_EQ(record.family, family);
    EXPECT_EQ(record.model_code, "-m-");
    EXPECT_EQ(record.number, 12);
    EXPECT_TRUE(record.valid);
  }
  EXPECT_EQ(ParseImageId(LongModelId(FamilyInNoRow(), "-m-", "12").c_str()).family_row,
            ParseImageId(LongModelId(FamilyOfRow(3), "-m-", "12").c_str()).family_row);
}

TEST(ImageIdTest, TheNumberIsDecimalToTheEndOrMinusOne) {
  EXPECT_EQ(NumberIn("9999"), 9999);
  EXPECT_EQ(NumberIn("0010"), 10);
  EXPECT_EQ(NumberIn("  +7"), 7);
  EXPECT_EQ(NumberIn("-012"), -12);
  EXPECT_EQ(NumberIn("12x4"), -1);
  EXPECT_EQ(NumberIn("x234"), -1);
  EXPECT_EQ(NumberIn("0x12"), -1);
  EXPECT_EQ(NumberIn("123 "), -1);
  EXPECT_EQ(NumberIn("123\n"), -1);
  EXPECT_EQ(NumberIn("    "), -1);
}

TEST(ImageIdTest, TheThirdCharacterDecidesTheArchitectureClass) {
  const std::string family = FamilyOfRow(3);
  EXPECT_EQ(ParseImageId((family + "-A00000").c_str()).architecture_class, 1);
  EXPECT_EQ(ParseImageId((family + "-a00000").c_str()).architecture_class, 1);
  EXPECT_EQ(ParseImageId((family + "-B00000").c_str()).architecture_class, 2);
  EXPECT_EQ(ParseImageId((family + "A-A0000").c_str()).architecture_class, 2);
  EXPECT_EQ(ParseImageId((FamilyOfRow(1) + "-Ax0000").c_str()).architecture_class, 1);
}

TEST(ImageIdTest, FewerThanEightCharactersAreInvalid) {
  for (const char *text : {"", "1234567"}) {
    try {
      ParseImageId(text);
      FAIL() << "accepted: " << text;
    } catch (const std::exception &fault) {
      EXPECT_NE(dynamic_cast<const ImageIDException *>(&fault), nullptr);
      EXPECT_STREQ(fault.what(), "Invalid Image ID");
    }
  }
  EXPECT_EQ(ParseImageId("12345678").image_id, "12345678");
}

// The third family's own code, 8, is the result of no model row and shows which rows match.
TEST(ModelTableTest, EveryRowMatchesWithinItsBounds) {
  const FamilyLayout *family =
      ParseImageId(LongModelId(FamilyOfRow(3), "000", "00").c_str()).family_row;
  for (const ModelBounds &model : kModelBounds) {
    const std::string code = ModelOfRow(model.row);
    EXPECT_EQ(PlatformCodeOf(family, code, model.lowest), model.platform_code) << model.row;
    EXPECT_EQ(PlatformCodeOf(family, code, model.highest), model.platform_code) << model.row;
    EXPECT_EQ(PlatformCodeOf(family, code, -1), 8) << model.row;
    EXPECT_EQ(PlatformCodeOf(family, code, 10001), 8) << model.row;
  }
  EXPECT_EQ(PlatformCodeOf(family, ModelInNoRow(3), 0), 8);
}

TEST(ModelTableTest, EveryRowIsReachedByAnImageId) {
  for (const ModelBounds &model : kModelBounds) {
    const std::string code = ModelOfRow(model.row);
    const bool is_short = model.row <= 12;
    const std::string number = std::to_string(10000 + model.lowest).substr(is_short ? 1 : 3);
    for (const std::size_t row : {1U, 2U}) {
      if (is_short) {
        EXPECT_EQ(CodeOf(ShortModelId(FamilyOfRow(row), code, number)), model.platform_code)
            << model.row;
      }
    }
    for (const std::string &family : {FamilyOfRow(3), FamilyInNoRow()}) {
      if (!is_short) {
        EXPECT_EQ(CodeOf(LongModelId(family, code, number)), model.platform_code) << model.row;
      }
    }
  }
}

TEST(FamilyTableTest, DecidesWhereNoModelRowMatches) {
  EXPECT_EQ(CodeOf(ShortModelId(FamilyOfRow(1), ModelInNoRow(2), "0000")), 5);
  EXPECT_EQ(CodeOf(ShortModelId(FamilyOfRow(2), ModelInNoRow(2), "0000")), 5);
  EXPECT_EQ(CodeOf(LongModelId(FamilyOfRow(3), ModelInNoRow(3), "00")), 8);
  EXPECT_EQ(CodeOf(LongModelId(FamilyOfRow(4), ModelInNoRow(3), "00")), 6);
  EXPECT_EQ(CodeOf(LongModelId(FamilyInNoRow(), ModelInNoRow(3), "00")), 5);
}

TEST(FamilyTableTest, DecidesWhereTheNumberIsNone) {
  EXPECT_EQ(CodeOf(ShortModelId(FamilyOfRow(1), ModelOfRow(7), "00x0")), 5);
  EXPECT_EQ(CodeOf(LongModelId(FamilyOfRow(3), ModelOfRow(17), "0x")), 8);
}

TEST(FamilyTableTest, TheFourthFamilyHasOneCodeWhateverTheModel) {
  for (std::size_t row = 13; row <= 18; ++row) {
    EXPECT_EQ(CodeOf(LongModelId(FamilyOfRow(4), ModelOfRow(row), "00")), 6) << row;
  }
}

TEST(SystemInfoTest, ReadsTheThreeValues) {
  const SystemInfo info = ReadText(
      "OTHER=\"x\"\nPRODUCT_NAME=\"Pellion\"\nPRODUCT_CONFIG=\"vaskin\"\n"
      "PRODUCT_VERSION=\"5.1\"\n");
  EXPECT_EQ(info.product_name, "Pellion");
  EXPECT_EQ(info.edition, "vaskin");
  EXPECT_EQ(info.version, "5.1");
}

TEST(SystemInfoTest, TakesTheValueByItsPositionInTheLine) {
  const std::string longest(1023 - 16, 'n');
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"PRODUCT_NAME=\"\"\n", ""},
      {"PRODUCT_NAME=Pellion\n", "ellio"},     // no quotes
      {"PRODUCT_NAME=\"Pellion\"", "Pellio"},  // no line end
      {"PRODUCT_NAME=\"Pellion\"\r\n", "Pellion\""},
      {"PRODUCT_NAME=\"Pellion\" \n", "Pellion\""},
      {" PRODUCT_NAME=\"Pellion\"\n", "\"Pellion"},  // the key further right
      {"export PRODUCT_NAME=\"Pellion\"\n", "_NAME=\"Pellion"},
      {"PRODUCT_NAME=\"Pell\0ion\"\n"s, "Pe"},  // the text of the line ends at a zero byte
      {"PRODUCT_NAME=\"Pellion\"\nPRODUCT_NAME=\"Aveline\"\n", "Aveline"},
      {"PRODUCT_NAME=\"Pellion\"\nPRODUCT_NAME=\"Ave\"\n", "Ave"},
      {"PRODUCT_NAME=\"Pellion\"\nPRODUCT_NAME=\"\"\n", ""},
      {"PRODUCT_NAME=\"" + longest + "\"\n", longest},
  };
  for (const auto &[text, value] : cases) {
    EXPECT_EQ(ReadText(text).product_name, value) << text;
  }
  EXPECT_EQ(ReadText("PRODUCT_CONFIG=ostrel\n").edition, "stre");
  EXPECT_EQ(ReadText("PRODUCT_VERSION=5.1.0\n").version, ".1.");
}

TEST(SystemInfoTest, IgnoresALineTooShortForItsKey) {
  for (const std::string text : {"PRODUCT_NAME=", "PRODUCT_NAME=\n", "PRODUCT_NAME=\"\n",
                                 "PRODUCT_CONFIG=\"", "PRODUCT_VERSION=5"}) {
    const SystemInfo info = ReadText("PRODUCT_NAME=\"p\"\n" + text);
    EXPECT_EQ(info.product_name, "p") << text;
    EXPECT_EQ(info.edition, "") << text;
    EXPECT_EQ(info.version, "") << text;
  }
}

TEST(SystemInfoTest, TheFirstKeyInTheirOrderTakesTheLine) {
  const SystemInfo info =
      ReadText("PRODUCT_VERSION=PRODUCT_CONFIG=PRODUCT_NAME=x\nPRODUCT_VERSION=PRODUCT_CONFIG=x\n");
  EXPECT_EQ(info.product_name, "N=PRODUCT_CONFIG=PRODUCT_NAME=");
  EXPECT_EQ(info.edition, "PRODUCT_CONFIG=");
  EXPECT_EQ(info.version, "");
}

TEST(SystemInfoTest, AnOverlongLineIsReadInPieces) {
  // The second piece begins after 1023 characters and is a line of its own.
  const SystemInfo info = ReadText(std::string(1023, '-') + "PRODUCT_NAME=\"Pellion\"\n" +
                                   "PRODUCT_CONFIG=\"vaskin\"\n");
  EXPECT_EQ(info.product_name, "Pellion");
  EXPECT_EQ(info.edition, "vaskin");
}

struct SystemInfoCase {
  SystemInfo info;
  int platform_code;  // 0: nothing decided
  std::size_t family_row;
};

TEST(SystemInfoTest, ProductEditionAndVersionDecide) {
  const std::vector<SystemInfoCase> cases = {
      {{"Pellion", "", "3"}, 5, 3},         {{"Pellion", "", "4.2"}, 7, 3},
      {{"Pellion", "", "5.1"}, 8, 3},       {{"Pellion", "", "6"}, 9, 3},
      {{"Pellion", "", "2"}, 0, 3},         {{"Pellion", "", "7"}, 0, 3},
      {{"Pellion", "", ""}, 0, 3},          {{"Pellion", "", " 5"}, 0, 3},
      {{"Pellion", "ostrel", "3"}, 5, 3},   {{"Pellion", "OSTREL", "4"}, 7, 3},
      {{"Pellion", "Ostrel", "50"}, 8, 3},  {{"Pellion", "ostrel", "6"}, 9, 3},
      {{"Pellion", "ostrel", "x"}, 0, 3},   {{"Pellion", "vaskin", "5"}, 8, 3},
      {{"Pellion", "VasKin", "6.9"}, 9, 3}, {{"Pellion", "vaskin", "4"}, 6, 4},
      {{"Pellion", "vaskin", "3"}, 6, 4},   {{"Pellion", "vaskin", ""}, 6, 4},
      {{"Pellion", "vaskin2", "5"}, 0, 0},  {{"Pellion", "ostre", "5"}, 0, 0},
      {{"pellion", "", "5"}, 8, 3},         {{"PELLION", "vaskin", "5"}, 8, 3},
      {{"Pellion 5", "", "5"}, 0, 0},       {{"", "", "5"}, 0, 0},
      {{"Aveline", "ostrel", "5"}, 0, 0},
  };
  for (const auto &[info, platform_code, family_row] : cases) {
    SCOPED_TRACE(info.product_name + "/" + info.edition + "/" + info.version);
    const PlatformRecord record = PlatformOf(info);
    EXPECT_EQ(record.valid, platform_code != 0);
    EXPECT_EQ(PlatformCode(record), platform_code == 0 ? 9 : platform_code);
    EXPECT_EQ(record.model_code, family_row == 0 ? "" : FamilyOfRow(family_row));
    EXPECT_EQ(record.architecture_class, 2);
    EXPECT_EQ(record.image_id, "");
  }
}

// The two files, in a directory of the test's own; a file that was not written is missing.
class PlatformFilesTest : public testing::Test {
 protected:
  PlatformRecord Identify() const {
    return IdentifyPlatform(directory_.Path("systeminfo").c_str(),
                            directory_.Path("imageid").c_str());
  }

  TempDir directory_;
};

TEST_F(PlatformFilesTest, TheSystemInformationComesFirst) {
  directory_.Write("systeminfo", "PRODUCT_NAME=\"pellion\"\nPRODUCT_VERSION=\"5.1\"\n");
  directory_.Write("imageid", LongModelId(FamilyOfRow(4), "000", "00"));
  const PlatformRecord record = Identify();
  EXPECT_EQ(PlatformCode(record), 8);
  EXPECT_EQ(record.image_id, "");
  EXPECT_EQ(record.architecture_class, 2);
}

TEST_F(PlatformFilesTest, ValidSystemInformationNeedsNoImageId) {
  directory_.Write("systeminfo",
                   "PRODUCT_NAME=\"Pellion\"\nPRODUCT_CONFIG=\"vaskin\"\nPRODUCT_VERSION=\"4\"\n");
  EXPECT_EQ(PlatformCode(Identify()), 6);
}

TEST_F(PlatformFilesTest, WithoutSystemInformationTheImageIdDecides) {
  directory_.Write("imageid", LongModelId(FamilyOfRow(3), ModelOfRow(17), "42") + "\n");
  EXPECT_EQ(PlatformCode(Identify()), 7);
  EXPECT_EQ(Identify().architecture_class, 2);
}

TEST_F(PlatformFilesTest, SystemInformationThatDecidesNothingLeavesNoTrace) {
  directory_.Write("systeminfo", "PRODUCT_NAME=\"Pellion\"\nPRODUCT_VERSION=\"7\"\n");
  directory_.Write("imageid", FamilyOfRow(3) + "-A" + ModelInNoRow(3) + "01");
  const PlatformRecord record = Identify();
  EXPECT_EQ(PlatformCode(record), 8);
  EXPECT_EQ(record.model_code, ModelInNoRow(3));
  EXPECT_EQ(record.architecture_class, 1);
}

TEST_F(PlatformFilesTest, ADirectoryInPlaceOfTheSystemInformationDecidesNothing) {
  directory_.MakeDirectory("systeminfo");
  directory_.Write("imageid", LongModelId(FamilyOfRow(4), "000", "00"));
  EXPECT_EQ(PlatformCode(Identify()), 6);
}

TEST_F(PlatformFilesTest, AMissingOrShortImageIdIsInvalid) {
  EXPECT_THROW(Identify(), ImageIDException);
  for (const std::string &content : {""s, "1234567"s, "1234567\0"s, "1234\0 6789"s}) {
    directory_.Write("imageid", content);
    EXPECT_THROW(Identify(), ImageIDException) << content;
  }
}

TEST_F(PlatformFilesTest, ADirectoryInPlaceOfTheImageIdIsInvalid) {
  directory_.MakeDirectory("imageid");
  EXPECT_THROW(Identify(), ImageIDException);
}

TEST_F(PlatformFilesTest, OnlyTheFirstEightCharactersOfTheImageIdCount) {
  const std::string id = LongModelId(FamilyOfRow(3), ModelOfRow(17), "99");
  for (const std::string &rest : {""s, "\0"s, "12\n"s, std::string(500, '7')}) {
    directory_.Write("imageid", id + rest);
    EXPECT_EQ(Identify().image_id, id);
    EXPECT_EQ(PlatformCode(Identify()), 7);
  }
}

}  // namespace
