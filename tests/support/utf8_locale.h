// A test in a UTF-8 locale, and with a string table of its own, which starts empty.
#pragma once

#include <gtest/gtest.h>

#include <clocale>

#include "text/string_table.h"

// The unit tests know only the locales that every Debian has.
class Utf8LocaleTest : public testing::Test {
 protected:
  Utf8LocaleTest() { std::setlocale(LC_ALL, "C.UTF-8"); }
  ~Utf8LocaleTest() override {
    GlobalStringTable() = StringTable();
    std::setlocale(LC_ALL, "C");
  }
};
