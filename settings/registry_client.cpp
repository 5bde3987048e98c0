// The commands of the registry's client, and what it prints.
#include "settings/registry_client.h"

#include <QByteArray>
#include <climits>
#include <cstdlib>
#include <string_view>

#include "settings/command_runner.h"

using CommandRunner::OpenCommandOutput;
using CommandRunner::RunCommand;

namespace {

// The line's text after its first `skipped` bytes, without any CR and LF at its end.
QString TextAfter(std::string_view line, std::size_t skipped) {
  line.remove_prefix(skipped < line.size() ? skipped : line.size());
  const std::size_t length = line.size() < INT_MAX ? line.size() : INT_MAX;
  QString text = QString::fromLatin1(line.data(), static_cast<int>(length));
  while (text.endsWith(QLatin1String("\n")) || text.endsWith(QLatin1String("\r"))) {
    text.chop(1);
  }
  return text;
}

// The byte after the word, normally a blank, is skipped whatever it is; and a word is a mere
// prefix, so "keyboard" counts as "key".
RegistryEntry ParseEntry(std::string_view line) {
  const auto begins_with = [line](std::string_view word) {
    return line.substr(0, word.size()) == word;
  };
  if (begins_with("key")) {
    return {RegistryEntry::kKey, TextAfter(line, 4)};
  }
  if (begins_with("dir")) {
    return {RegistryEntry::kDir, TextAfter(line, 4)};
  }
  if (begins_with("value")) {
    return {RegistryEntry::kValue, TextAfter(line, 6)};
  }
  return {};
}

}  // namespace

std::vector<RegistryEntry> ReadEntries(std::FILE *output) {
  std::vector<RegistryEntry> entries;
  char *line = nullptr;
  std::size_t capacity = 0;
  while (getline(&line, &capacity, output) != -1) {
    entries.push_back(ParseEntry(line));  // a NUL ends the line's text
  }
  std::free(line);
  return entries;
}

std::vector<RegistryEntry> RegistryClient::GetEntries(const QString &key) const {
  std::FILE *output = nullptr;
  pid_t child = -1;
  OpenCommandOutput(&output, &child, "regmux get '%s'", key.toLatin1().constData());
  if (output == nullptr) {
    return {};
  }
  std::vector<RegistryEntry> entries = ReadEntries(output);
  std::fclose(output);
  return entries;
}

bool RegistryClient::GetValue(const QString &key, QString &value) const {
  const std::vector<RegistryEntry> entries = GetEntries(key);
  if (entries.empty()) {
    return false;
  }
  value = entries.front().text;
  return true;
}

bool RegistryClient::GetIntValue(const QString &key, int &value) const {
  QString text;
  if (!GetValue(key, text)) {
    return false;
  }
  bool is_number = false;
  value = text.toInt(&is_number, 10);
  return true;
}

bool RegistryClient::SetValue(const QString &key, const QString &value) const {
  const QByteArray key_bytes = key.toLatin1();
  RunCommand("regmux create '%s'", key_bytes.constData());
  return RunCommand("regmux set '%s' '%s'", key_bytes.constData(), value.toLatin1().constData()) ==
         0;
}

bool RegistryClient::SetIntValue(const QString &key, int value) const {
  const QByteArray key_bytes = key.toLatin1();
  RunCommand("regmux create '%s'", key_bytes.constData());
  return RunCommand("regmux set '%s' '%d'", key_bytes.constData(), value) == 0;
}

bool RegistryClient::DeleteKey(const QString &key) const {
  return RunCommand("regmux delete '%s'", key.toLatin1().constData()) == 0;
}

bool RegistryClient::Commit() const {
  return RunCommand("regmux commit") == 0;
}

bool RegistryClient::Apply() const {
  return RunCommand("regmux apply") == 0;
}
