// What a person sees and can do while the program is busy.
#include "pages/busy.h"

#include <gdk/gdkx.h>

namespace {

// Invisible, over the whole window. The X server would not know it otherwise, and the toolkit would
// show its pointer only once the main loop runs again: so it is made a window of the server and
// gets its pointer there.
GdkWindow *NewCover(GdkWindow *window) {
  GdkWindowAttr attributes = {};
  attributes.window_type = GDK_WINDOW_CHILD;
  attributes.wclass = GDK_INPUT_ONLY;
  attributes.width = gdk_window_get_width(window);
  attributes.height = gdk_window_get_height(window);
  GdkWindow *cover = gdk_window_new(window, &attributes, 0);
  gdk_window_ensure_native(cover);
  GdkCursor *watch = gdk_cursor_new_for_display(gdk_window_get_display(window), GDK_WATCH);
  XDefineCursor(GDK_WINDOW_XDISPLAY(cover), GDK_WINDOW_XID(cover),
                gdk_x11_cursor_get_xcursor(watch));
  gdk_cursor_unref(watch);
  gdk_window_show(cover);
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
Busy::Busy(GtkWidget *inside) {
  gdk_error_trap_push();
  cover_ = NewCover(gtk_widget_get_window(gtk_widget_get_toplevel(inside)));
  gdk_display_sync(gdk_window_get_display(cover_));
  gdk_error_trap_pop();
}

Busy::~Busy() {
  GdkDisplay *display = gdk_window_get_display(cover_);
  gdk_error_trap_push();
  gdk_window_destroy(cover_);
  gdk_display_sync(display);  // all that was typed until now has arrived
  gdk_error_trap_pop();
  DropInput();
}
