// What a person sees and can do while the program works and its main loop stands.
#pragma once

#include <gtk/gtk.h>

// While one of these lives, the pointer over the window is the watch. At its end all that was typed
// and clicked meanwhile is dropped, so that it reaches neither the window nor a message that comes
// next. Everything else that has come meanwhile is dealt with then, for up to a second: the window
// can be closed, and what assistive tools have pressed is pressed.
//
// A window of the X server does it, because the toolkit shows another pointer only once its main
// loop runs again.
class Busy {
 public:
  // The window is the one that `inside` is in.
  explicit Busy(GtkWidget *inside);
  ~Busy();
  Busy(const Busy &) = delete;
  Busy &operator=(const Busy &) = delete;

 private:
  GdkWindow *cover_;
};
