// Brings the window of the running instance to the front, for an instance that came second.
#pragma once

#include <cstdint>

// Raises and focuses every window of the default display that names the process `pid` in
// _NET_WM_PID. Before that, a window manager is asked to bring the window to the user: onto the
// current workspace, unrolled, not minimised, and active; it gets up to two seconds to show it. A
// window without the property counts as process 0, so that pid 0 is the root window and nothing
// else.
//
// On return everything asked for has reached the X server. What the server refuses on the way is
// passed over, and the process's X error handler is the one it was before. Without a reachable
// display nothing happens; where the server has never heard of the property, "failed" is printed.
// The connection stays open for later calls.
void RaiseRunningInstance(std::int32_t pid);
