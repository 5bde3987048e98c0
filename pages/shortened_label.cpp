// A label whose text comes from outside and must not make its window larger.
#include "pages/shortened_label.h"

#include <string>

namespace {

constexpr char kEllipsis[] = "\xE2\x80\xA6";

bool EndsLine(gunichar character) {
  switch (g_unichar_break_type(character)) {
    case G_UNICODE_BREAK_MANDATORY:
    case G_UNICODE_BREAK_CARRIAGE_RETURN:
    case G_UNICODE_BREAK_LINE_FEED:
    case G_UNICODE_BREAK_NEXT_LINE:
      return true;
    default:
      return character == '\t';  // a tab takes too much room
  }
}

std::string FirstLine(const char *text) {
  const char *end = text;
  while (*end != '\0' && !EndsLine(g_utf8_get_char(end))) {
    end = g_utf8_next_char(end);
  }
  return std::string(text, end);
}

gboolean OnQueryTooltip(GtkWidget *, gint, gint, gboolean, GtkTooltip *tooltip, gpointer text) {
  gtk_tooltip_set_custom(tooltip, GTK_WIDGET(text));
  return TRUE;
}

// The toolkit's own tooltip breaks lines at blanks only, and the text need not have any; one
// without blanks is broken anywhere, without hyphens, which would look like part of it.
void SetTooltip(GtkWidget *label, const char *whole) {
  GtkWidget *text = gtk_label_new(whole);
  gtk_label_set_line_wrap(GTK_LABEL(text), TRUE);
  gtk_label_set_line_wrap_mode(GTK_LABEL(text), PANGO_WRAP_WORD_CHAR);
  PangoAttrList *attributes = pango_attr_list_new();
  pango_attr_list_insert(attributes, pango_attr_insert_hyphens_new(FALSE));
  gtk_label_set_attributes(GTK_LABEL(text), attributes);
  pango_attr_list_unref(attributes);
  gtk_widget_show(text);
  g_object_ref_sink(text);
  g_signal_connect_data(
      label, "query-tooltip", G_CALLBACK(OnQueryTooltip), text,
      [](gpointer data, GClosure *) { g_object_unref(data); }, static_cast<GConnectFlags>(0));
  gtk_widget_set_has_tooltip(label, TRUE);
}

// The label's usual size, and all the width that its part of the page leaves unused.
GtkRequisition RoomFor(GtkWidget *label, GtkWidget *page) {
  GtkWidget *part = label;
  while (gtk_widget_get_parent(part) != page) {
    part = gtk_widget_get_parent(part);
  }
  GtkRequisition all, used, room;
  gtk_widget_size_request(page, &all);
  gtk_widget_size_request(part, &used);
  gtk_widget_size_request(label, &room);
  room.width += all.width - used.width;
  return room;
}

bool Fits(GtkWidget *label, const GtkRequisition &room) {
  GtkRequisition wanted;
  gtk_widget_size_request(label, &wanted);
  return wanted.width <= room.width && wanted.height <= room.height;
}

}  // namespace

void ShowShortened(GtkWidget *page, GtkLabel *label, const char *text, const char *usual_text) {
  GtkWidget *widget = GTK_WIDGET(label);
  gtk_label_set_text(label, usual_text);
  const GtkRequisition room = RoomFor(widget, page);
  gtk_label_set_text(label, text);
  if (Fits(widget, room)) {
    gtk_widget_set_size_request(widget, -1, room.height);
    return;
  }
  gtk_label_set_text(label, (FirstLine(text) + kEllipsis).c_str());
  gtk_label_set_ellipsize(label, PANGO_ELLIPSIZE_END);
  gtk_widget_set_size_request(widget, room.width, room.height);
  SetTooltip(widget, text);
  atk_object_set_name(gtk_widget_get_accessible(widget), text);
}
