// Reading texts line by line, as fgets into a bounded buffer does.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

// Reads at most `limit` bytes of `stream`, up to and including the line feed, and makes the bytes
// before the first NUL the text of `line`: a longer physical line is read in several pieces, and
// what follows a NUL within one read is lost. False, with `line` empty, when the stream ended or
// failed before any byte.
bool ReadLine(std::FILE *stream, std::size_t limit, std::string &line);
