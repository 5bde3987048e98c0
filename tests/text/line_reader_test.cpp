// Lines as they are read: their limit, zero bytes, and the end of the stream.
#include "text/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/temp_dir.h"

namespace {

using Lines = std::vector<std::string>;

Lines ReadAll(std::string_view content, std::size_t limit) {
  const TempDir directory;
  std::FILE *file = std::fopen(directory.Write("text", content).c_str(), "rb");
  Lines lines;
  for (std::string line; ReadLine(file, limit, line);) {
    lines.push_back(line);
  }
  std::fclose(file);
  return lines;
}

TEST(ReadLine, KeepsLineFeedsAndTakesALastLineWithoutOne) {
  EXPECT_EQ(ReadAll("one\n\r\ntwo", 99), (Lines{"one\n", "\r\n", "two"}));
}

TEST(ReadLine, ReadsALongLineInPieces) {
  EXPECT_EQ(ReadAll("abcdefg\nh", 3), (Lines{"abc", "def", "g\n", "h"}));
}

TEST(ReadLine, TheLineFeedCountsForTheLimit) {
  EXPECT_EQ(ReadAll("abc\nd", 3), (Lines{"abc", "\n", "d"}));
  EXPECT_EQ(ReadAll("abc\nd", 4), (Lines{"abc\n", "d"}));
}

TEST(ReadLine, ANulEndsTheTextOfItsRead) {
  EXPECT_EQ(ReadAll(std::string_view("a\0b\nc", 5), 99), (Lines{"a", "c"}));
  EXPECT_EQ(ReadAll(std::string_view("\0b\n", 3), 99), (Lines{""}));
}

TEST(ReadLine, AnEmptyFileHasNoLine) {
  EXPECT_EQ(ReadAll("", 99), Lines{});
}

}  // namespace
