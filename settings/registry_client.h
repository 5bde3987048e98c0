// The platform's registry, reached only through its command-line client `regmux`.
//
// Keys are slash-separated paths. Keys and values go through Latin-1 in both directions, so every
// byte except NUL and those of line ends comes back unchanged, UTF-8 included; a QString that holds
// characters above U+00FF by itself reaches the registry with question marks in their place.
//
// The command lines put keys and values between single quotes and escape nothing: callers never
// pass a key or value that holds a single quote. Every operation blocks until its command has
// finished, the gets until that command's output has ended; a client that is missing or fails shows
// only in the result.
#pragma once

#include <QString>
#include <cstdio>
#include <vector>

// One line of the client's output.
struct RegistryEntry {
  enum Kind { kOther = -1, kKey = 0, kDir = 1, kValue = 2 };
  Kind kind = kOther;
  QString text;  // after the word and one more byte, without CR and LF at its end; otherwise empty
};

// Reads what the client printed to its end: one entry for each line, whatever it holds.
std::vector<RegistryEntry> ReadEntries(std::FILE *output);

class RegistryClient {
 public:
  // One entry for each line that the client printed, errors included; none when it printed nothing.
  std::vector<RegistryEntry> GetEntries(const QString &key) const;

  // The text of the first line, of whatever kind. False, with `value` untouched, when there was
  // none. A client that is missing or complains gives true and an empty text: treat it as unset.
  bool GetValue(const QString &key, QString &value) const;

  // As GetValue; a text that is not a decimal number gives 0, and still true.
  bool GetIntValue(const QString &key, int &value) const;

  // Creates the key, whatever the result, then sets it. True when the set succeeded. A value that
  // makes the command line longer than CommandRunner takes is not set: the cut leaves a quote open,
  // which the shell refuses.
  bool SetValue(const QString &key, const QString &value) const;
  bool SetIntValue(const QString &key, int value) const;

  bool DeleteKey(const QString &key) const;
  bool Commit() const;
  bool Apply() const;
};
