// Zeroed memory for the XML module's records and texts. Internal to the module.
#pragma once

#include <cstdlib>

#include "settings/xml/require.h"

// Memory for `count` objects, to be freed with free(). Stops the program when there is none left.
template <typename T>
T *Allocate(size_t count = 1) {
  T *memory = static_cast<T *>(calloc(count, sizeof(T)));
  REQUIRE(memory != nullptr, "memory");
  return memory;
}
