// Opens what is closed of standard input, output and error.
#include "app/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

void OpenStandardDescriptors() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) < 0) {
      open("/dev/null", O_RDWR);  // takes the lowest free number, which is this one
    }
  }
}
