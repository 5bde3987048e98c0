// Standard input, output and error of a program that was started without them.
#pragma once

// Opens /dev/null on those of the descriptors 0, 1 and 2 that are closed. Otherwise the next files
// opened would take these numbers, and what is printed would end up in the pid file or at the X
// server.
void OpenStandardDescriptors();
