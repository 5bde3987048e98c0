// The walk over the X server's windows that finds and raises those of the running instance.
#include "app/raise_window.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "app/print_now.h"

namespace {

// Two seconds in all.
constexpr int kMostMapWaits = 200;
constexpr useconds_t kMapWaitMicroseconds = 10000;

// What requests to window managers are made of. That they come from a pager, for the user, is said
// because some refuse what a program asks for itself; and the second start is the user's wish.
constexpr long kForUser = 2;
constexpr long kRemoveState = 0;
constexpr std::int32_t kAllWorkspaces = -1;

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

Atom AtomNamed(const char *name) {
  return XInternAtom(display, name, False);
}

// A window manager notes in WM_STATE, whose type has the same name, in which state it has a window.
bool IsManaged(Window window) {
  const Atom wm_state = AtomNamed("WM_STATE");
  return FirstItem(window, wm_state, wm_state) != WithdrawnState;
}

void Ask(Window window, const char *request, const std::array<long, 4> &data) {
  XClientMessageEvent message = {};
  message.type = ClientMessage;
  message.window = window;
  message.message_type = AtomNamed(request);
  message.format = 32;
  std::copy(data.begin(), data.end(), message.data.l);
  XEvent event;
  event.xclient = message;
  XSendEvent(display, DefaultRootWindow(display), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

// Activation alone would have openbox and metacity only draw attention to the window, and icewm
// take the user to its workspace; xfwm4 brings it. A window that is on all workspaces stays there.
void AskForCurrentWorkspace(Window window) {
  const std::int32_t current =
      FirstItem(DefaultRootWindow(display), AtomNamed("_NET_CURRENT_DESKTOP"), XA_CARDINAL);
  const std::int32_t workspace = FirstItem(window, AtomNamed("_NET_WM_DESKTOP"), XA_CARDINAL);
  if (workspace != current && workspace != kAllWorkspaces) {
    Ask(window, "_NET_WM_DESKTOP", {current, kForUser});
  }
}

// Activation unrolls a window, too, except under xfwm4, and under openbox while a message is open.
void AskForUnrolling(Window window) {
  const auto shaded = static_cast<long>(AtomNamed("_NET_WM_STATE_SHADED"));
  Ask(window, "_NET_WM_STATE", {kRemoveState, shaded, 0, kForUser});
}

// To map a minimised window is to ask for it back. Openbox takes that for activation, which it
// hands on to a message that is open, and leaves the window minimised; it knows a request for the
// normal state, which brings both, and which metacity and xfwm4 do not have.
void AskForNormalState(Window window) {
  Ask(window, "WM_CHANGE_STATE", {NormalState});
  XMapRaised(display, window);
}

// It is the window manager that maps the window, in its own time, and a focus request that comes
// before is refused. Waits for it, but not forever: it may hang, or the window may be gone.
void WaitUntilViewable(Window window) {
  XWindowAttributes attributes = {};
  for (int wait = 0; wait < kMostMapWaits; ++wait) {
    if (XGetWindowAttributes(display, window, &attributes) == 0 ||
        attributes.map_state == IsViewable) {
      return;
    }
    usleep(kMapWaitMicroseconds);
  }
}

// To the user, from wherever the window manager has put the window. Each request does nothing where
// nothing needs to be done.
void BringBack(Window window) {
  AskForCurrentWorkspace(window);
  AskForUnrolling(window);
  AskForNormalState(window);
  // Some keep a raised window below the one in use unless it is activated.
  Ask(window, "_NET_ACTIVE_WINDOW", {kForUser, CurrentTime});
  WaitUntilViewable(window);
}

// Refused for a window that is not mapped, such as the one that the toolkit keeps beside the real
// one under the same process id.
void RaiseAndFocus(Window window) {
  if (IsManaged(window)) {
    BringBack(window);
  }
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
