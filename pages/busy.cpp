// What a person sees and can do while the program is busy.
#include "pages/busy.h"

#include <gdk/gdkx.h>

namespace {

// Invisible, over the whole window. The toolkit's own windows are unknown to the X server, and one
// that it is told of (gdk_window_ensure_native) leaves memory behind: so it is the server's alone.
Window NewCover(GdkWindow *window) {
  Display *server = GDK_WINDOW_XDISPLAY(window);
  GdkCursor *watch = gdk_cursor_new_for_display(gdk_window_get_display(window), GDK_WATCH);
  XSetWindowAttributes attributes = {};
  attributes.cursor = gdk_x11_cursor_get_xcursor(watch);
  const Window cover = XCreateWindow(server, GDK_WINDOW_XID(window), 0, 0,
                                     static_cast<unsigned>(gdk_window_get_width(window)),
                                     static_cast<unsigned>(gdk_window_get_height(window)), 0, 0,
                                     InputOnly, nullptr, CWCursor, &attributes);
  XMapRaised(server, cover);
  gdk_cursor_unref(watch);
  return cover;
}

bool IsInput(const GdkEvent *event) {
  switch (event->type) {
    case GDK_KEY_PRESS:
    case GDK_BUTTON_PRESS:
    case GDK_2BUTTON_PRESS:
    case GDK_3BUTTON_PRESS:
    case GDK_SCROLL:
      return true;
    default:
      return false;  // a release may end what a press began before
  }
}

// Not by letting the main loop run: a refresh or an assistive tool would have its turn then, and
// could open a dialog in the middle of this.
void DropInput() {
  while (GdkEvent *event = gdk_event_get()) {
    if (!IsInput(event)) {
      gtk_main_do_event(event);
    }
    gdk_event_free(event);
  }
}

}  // namespace

// Other programs can destroy the window at any time: what the server refuses is passed over.
Busy::Busy(GtkWidget *inside) : display_(gtk_widget_get_display(inside)) {
  gdk_error_trap_push();
  cover_ = NewCover(gtk_widget_get_window(gtk_widget_get_toplevel(inside)));
  gdk_display_sync(display_);
  gdk_error_trap_pop();
}

Busy::~Busy() {
  gdk_error_trap_push();
  XDestroyWindow(GDK_DISPLAY_XDISPLAY(display_), cover_);
  gdk_display_sync(display_);  // all that was typed until now has arrived
  gdk_error_trap_pop();
  DropInput();
}
