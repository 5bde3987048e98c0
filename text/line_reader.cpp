// Reading texts line by line.
#include "text/line_reader.h"

bool ReadLine(std::FILE *stream, std::size_t limit, std::string &line) {
  line.clear();
  bool text_ended = false;
  std::size_t count = 0;
  while (count < limit) {
    const int byte = std::getc(stream);
    if (byte == EOF) {
      break;
    }
    ++count;
    text_ended = text_ended || byte == '\0';
    if (!text_ended) {
      line.push_back(static_cast<char>(byte));
    }
    if (byte == '\n') {
      break;
    }
  }
  return count > 0;
}
