// The walk over the X server's windows that finds and raises those of the running instance.
#include "app/raise_window.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <unistd.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "app/print_now.h"

namespace {

// Two seconds in all.
constexpr int kMostMapWaits = 200;
constexpr useconds_t kMapWaitMicroseconds = 10000;

Display *display = nullptr;
Atom pid_atom = None;

struct Free {
  void operator()(void *data) const { XFree(data); }
};

// The first 32-bit item of a window's property, or 0 where there is none: no such window or
// property, another type, items of another size, no item at all.
std::int32_t FirstItem(Window window, Atom property, Atom wanted_type) {
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long bytes_left = 0;
  unsigned char *data = nullptr;
  const int status = XGetWindowProperty(display, window, property, 0, 1, False, wanted_type, &type,
                                        &format, &count, &bytes_left, &data);
  const std::unique_ptr<unsigned char, Free> owner(data);
  if (status != Success || data == nullptr || format != 32 || count == 0) {
    return 0;
  }
  // Xlib hands out 32-bit items as longs.
  return static_cast<std::int32_t>(*reinterpret_cast<const long *>(data));
}

// A window manager that has minimised a window says so in WM_STATE, whose type has the same name.
bool IsIconic(Window window) {
  const Atom wm_state = XInternAtom(display, "WM_STATE", True);
  return wm_state != None && FirstItem(window, wm_state, wm_state) == IconicState;
}

// It is the window manager that maps a minimised window, in its own time, and a focus request that
// comes before is refused. Waits for it, but not for ever: it may hang, or the window may be gone.
void Unminimise(Window window) {
  XMapRaised(display, window);
  XWindowAttributes attributes = {};
  for (int wait = 0; wait < kMostMapWaits; ++wait) {
    if (XGetWindowAttributes(display, window, &attributes) == 0 ||
        attributes.map_state == IsViewable) {
      return;
    }
    usleep(kMapWaitMicroseconds);
  }
}

// Some window managers keep a raised window below the one in use unless it is the user who asks, as
// with a pager. The second start is the user's wish, so it is said to come from one (source 2).
void AskWindowManager(Window window) {
  XClientMessageEvent message = {};
  message.type = ClientMessage;
  message.window = window;
  message.message_type = XInternAtom(display, "_NET_ACTIVE_WINDOW", False);
  message.format = 32;
  message.data.l[0] = 2;
  message.data.l[1] = CurrentTime;
  XEvent event;
  event.xclient = message;
  XSendEvent(display, DefaultRootWindow(display), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

// Refused for a window that is not mapped, such as the one that the toolkit keeps beside the real
// one under the same process id.
void RaiseAndFocus(Window window) {
  if (IsIconic(window)) {
    Unminimise(window);
  }
  AskWindowManager(window);
  XRaiseWindow(display, window);
  XSetInputFocus(display, window, RevertToNone, CurrentTime);
}

// Puts a window's children on top of the stack of those to visit, the first of them uppermost.
void PushChildren(Window window, std::vector<Window> &pending) {
  Window root = None;
  Window parent = None;
  Window *children = nullptr;
  unsigned int count = 0;
  if (XQueryTree(display, window, &root, &parent, &children, &count) != 0) {
    const std::unique_ptr<Window, Free> owner(children);
    while (count > 0) {
      pending.push_back(children[--count]);
    }
  }
}

// Depth first, a window before its children and those from the first to the last. The children of
// a match are not searched; its siblings are.
void RaiseWindowsOf(std::int32_t pid) {
  std::vector<Window> pending = {DefaultRootWindow(display)};
  while (!pending.empty()) {
    const Window window = pending.back();
    pending.pop_back();
    if (FirstItem(window, pid_atom, XA_CARDINAL) == pid) {
      RaiseAndFocus(window);
    } else {
      PushChildren(window, pending);
    }
  }
}

// Windows come and go during the walk.
int IgnoreError(Display *, XErrorEvent *) {
  return 0;
}

}  // namespace

void RaiseRunningInstance(std::int32_t pid) {
  if (display == nullptr) {
    display = XOpenDisplay(nullptr);
  }
  if (display == nullptr) {
    return;
  }
  pid_atom = XInternAtom(display, "_NET_WM_PID", True);
  if (pid_atom == None) {
    PrintNow("failed");
    return;
  }
  const XErrorHandler handler = XSetErrorHandler(IgnoreError);
  RaiseWindowsOf(pid);
  // The process may end right away, and the last answers are to come while they are ignored.
  XSync(display, False);
  XSetErrorHandler(handler);
}
