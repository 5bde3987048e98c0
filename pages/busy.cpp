// What a person sees and can do while the program is busy.
#include "pages/busy.h"

#include <gdk/gdkx.h>

namespace {

constexpr gint64 kLongestDrop = G_USEC_PER_SEC;

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

void HandleUnlessInput(GdkEvent *event, gpointer) {
  switch (event->type) {
    case GDK_KEY_PRESS:
    case GDK_KEY_RELEASE:
    case GDK_BUTTON_PRESS:
    case GDK_2BUTTON_PRESS:
    case GDK_3BUTTON_PRESS:
    case GDK_BUTTON_RELEASE:
    case GDK_SCROLL:
      break;
    default:
      gtk_main_do_event(event);
  }
}

void HandleAnyEvent(GdkEvent *event, gpointer) {
  gtk_main_do_event(event);
}

// With a time limit: what the main loop finds to do, with a slow refresh for example, may never
// end.
void DropInput() {
  const gint64 end = g_get_monotonic_time() + kLongestDrop;
  gdk_event_handler_set(HandleUnlessInput, nullptr, nullptr);
  while (gtk_events_pending() == TRUE && g_get_monotonic_time() < end) {
    gtk_main_iteration_do(FALSE);
  }
  gdk_event_handler_set(HandleAnyEvent, nullptr, nullptr);
}

}  // namespace

Busy::Busy(GtkWidget *inside)
    : cover_(NewCover(gtk_widget_get_window(gtk_widget_get_toplevel(inside)))) {
  gdk_display_sync(gdk_window_get_display(cover_));
}

Busy::~Busy() {
  GdkDisplay *display = gdk_window_get_display(cover_);
  gdk_window_destroy(cover_);
  gdk_display_sync(display);  // everything typed until now has arrived
  DropInput();
}
