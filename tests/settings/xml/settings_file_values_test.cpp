// Random values in a settings file: set, saved and loaded, each is the same.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "settings/xml/settings_file.h"
#include "tests/support/temp_dir.h"

namespace {

constexpr int kValues = 50;  // in one document, so that one value can damage another

// Values without white space around them, which would be lost, and without an entity, which would
// come back decoded.
class RandomValues {
 public:
  explicit RandomValues(std::vector<const char *> pieces) : pieces_(std::move(pieces)) {}

  std::vector<std::string> Make() {
    std::vector<std::string> values;
    while (values.size() < kValues) {
      std::string value = MakeOne();
      if (IsPlain(value)) {
        values.push_back(std::move(value));
      }
    }
    return values;
  }

 private:
  std::string MakeOne() {
    std::string value;
    for (std::size_t i = 1 + random_() % 8; i > 0; --i) {
      value += pieces_[random_() % pieces_.size()];
    }
    return value;
  }

  static bool IsPlain(const std::string &value) {
    for (const char *entity : {"&amp;", "&lt;", "&gt;", "&apos;", "&quot;"}) {
      if (value.find(entity) != std::string::npos) {
        return false;
      }
    }
    return std::strchr(" \n", value.front()) == nullptr &&
           std::strchr(" \n", value.back()) == nullptr;
  }

  std::vector<const char *> pieces_;
  std::mt19937 random_{20240229};
};

class SettingsFileValues : public testing::Test {
 protected:
  ~SettingsFileValues() override { SaveSettingsFile(0); }

  void Load() { ASSERT_EQ(LoadSettingsFile(path_.c_str()), 0); }

  static void Save() { ASSERT_EQ(SaveSettingsFile(1), 0); }

  static std::string ElementPath(std::size_t index) { return "/Agent/e" + std::to_string(index); }

  // Sets each value in an element of its own.
  static void SetAll(const std::vector<std::string> &values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      SimpleXmlParserSet(ElementPath(i).c_str(), strdup(values[i].c_str()));
    }
  }

  void ExpectAll(const std::vector<std::string> &values) const {
    for (std::size_t i = 0; i < values.size(); ++i) {
      EXPECT_STREQ(SimpleXmlParserGet(ElementPath(i).c_str()), values[i].c_str())
          << directory_.Read("settings.xml");
    }
  }

 private:
  static std::string EmptyElements() {
    std::string document = "<Agent>";
    for (int i = 0; i < kValues; ++i) {
      document += "<e" + std::to_string(i) + "/>";
    }
    return document + "</Agent>";
  }

  TempDir directory_;
  std::string path_ = directory_.Write("settings.xml", EmptyElements());
};

TEST_F(SettingsFileValues, SurviveSavingAndLoading) {
  RandomValues random({"<", ">", "/>", "</", "&", "'", "\"", "=", "?", ";", " ", "\n", "x", "lt"});
  for (int i = 0; i < 40; ++i) {
    const std::vector<std::string> values = random.Make();
    Load();
    SetAll(values);
    Save();
    Load();
    ExpectAll(values);
  }
}

// Getting a value decodes it in the document. A "<" is left out: it is markup in the file then.
TEST_F(SettingsFileValues, SurviveGettingSavingAndLoading) {
  RandomValues random({">", "/>", "&", "'", "\"", "=", "?", ";", " ", "\n", "x", "lt"});
  for (int i = 0; i < 40; ++i) {
    const std::vector<std::string> values = random.Make();
    Load();
    SetAll(values);
    for (int round = 0; round < 3; ++round) {
      ExpectAll(values);
      Save();
      Load();
    }
    ExpectAll(values);
  }
}

}  // namespace
