// System calls that fail on demand, by a filter in the kernel.
#pragma once

#include <seccomp.h>

#include <cstdlib>
#include <vector>

// From here on the kernel answers the calling thread's `call`, if its arguments are these, with
// `error`; the same holds for whatever the thread starts. It cannot be undone.
inline void RefuseCall(int call, int error, const std::vector<scmp_arg_cmp> &arguments = {}) {
  const scmp_filter_ctx filter = seccomp_init(SCMP_ACT_ALLOW);
  if (seccomp_rule_add_array(filter, SCMP_ACT_ERRNO(static_cast<unsigned>(error)), call,
                             static_cast<unsigned>(arguments.size()), arguments.data()) != 0 ||
      seccomp_load(filter) != 0) {
    std::abort();
  }
  seccomp_release(filter);
}
