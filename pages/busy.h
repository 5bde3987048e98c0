// What a person sees and can do while the program is busy and its main loop does not run.
#pragma once

#include <gtk/gtk.h>

// While one of these lives, the pointer over the window is the watch. At its end everything that
// was typed and clicked in the meantime is dropped, so that it reaches neither the window nor the
// next message. All other events of the X server are then handled, so the window can be closed; its
// widgets may be gone afterwards. Timers and assistive tools wait until the main loop runs again.
//
// The pointer is that of a window made on the X server, because the toolkit would show another
// pointer only once its main loop runs again.
class Busy {
 public:
  // The window is the one that `inside` is in. It is on the screen, or at least realized.
  explicit Busy(GtkWidget *inside);
  ~Busy();
  Busy(const Busy &) = delete;
  Busy &operator=(const Busy &) = delete;

 private:
  GdkDisplay *display_;
  unsigned long cover_;  // a window of the X server
};
