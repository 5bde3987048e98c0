#include "pages/quote_guard.h"

#include <string_view>

#include "text/heap_text.h"
#include "text/to_utf8.h"

namespace {

// What the guard knows of its entry. Typing and pasting over a selection first delete it and then
// insert: when the insertion is refused, what was deleted in the same turn of the main loop is
// brought back.
struct Guard {
  std::string filled;                           // what the program has filled in last
  bool filling = false;                         // it is doing so now
  bool refused = false;                         // an insertion was refused in this turn
  HeapText deleted;                             // last in this turn
  gint deleted_at = 0;                          // characters
  gint selection_start = 0, selection_end = 0;  // characters, as they were before the deletion
  guint end_of_turn = 0;                        // the idle source that settles the turn, or 0
};

constexpr char kGuardKey[] = "quote-guard";

Guard *GuardOf(gpointer entry) {
  return static_cast<Guard *>(g_object_get_data(G_OBJECT(entry), kGuardKey));
}

void FreeGuard(gpointer data) {
  auto *guard = static_cast<Guard *>(data);
  if (guard->end_of_turn != 0) {
    g_source_remove(guard->end_of_turn);
  }
  delete guard;
}

bool CannotBeStored(const gchar *text, gint length) {
  const std::string_view bytes = length < 0
                                     ? std::string_view(text)
                                     : std::string_view(text, static_cast<std::size_t>(length));
  return bytes.find_first_of("'\n\r") != std::string_view::npos;
}

// A combo box puts the text of the row that becomes active into its emptied entry: that text is the
// program's, not the user's. Typing leaves no row active.
bool ComesFromActiveRow(GtkWidget *entry) {
  GtkWidget *combo = gtk_widget_get_parent(entry);
  return GTK_IS_COMBO_BOX(combo) && gtk_combo_box_get_active(GTK_COMBO_BOX(combo)) >= 0 &&
         gtk_entry_get_text_length(GTK_ENTRY(entry)) == 0;
}

void BringBackDeleted(GtkEditable *entry, Guard &guard) {
  gint position = guard.deleted_at;
  guard.filling = true;
  gtk_editable_insert_text(entry, guard.deleted.Get(), -1, &position);
  guard.filling = false;
  gtk_editable_select_region(entry, guard.selection_start, guard.selection_end);
}

gboolean OnEndOfTurn(gpointer entry) {
  Guard &guard = *GuardOf(entry);
  guard.end_of_turn = 0;
  if (guard.refused && guard.deleted) {
    BringBackDeleted(GTK_EDITABLE(entry), guard);
  }
  guard.refused = false;
  guard.deleted.Reset();
  return FALSE;
}

// Before any further event: no key press, and no timer, sees the entry without its selection.
void SettleAtEndOfTurn(gpointer entry, Guard &guard) {
  if (guard.end_of_turn == 0) {
    guard.end_of_turn = g_idle_add_full(G_PRIORITY_HIGH, OnEndOfTurn, entry, nullptr);
  }
}

void OnDeleteText(GtkEditable *entry, gint start, gint end, gpointer) {
  Guard &guard = *GuardOf(entry);
  if (guard.filling) {
    return;
  }
  guard.deleted = HeapText::Adopt(gtk_editable_get_chars(entry, start, end));
  guard.deleted_at = start;
  gtk_editable_get_selection_bounds(entry, &guard.selection_start, &guard.selection_end);
  SettleAtEndOfTurn(entry, guard);
}

void OnInsertText(GtkEditable *entry, const gchar *text, gint length, gint *, gpointer) {
  Guard &guard = *GuardOf(entry);
  if (guard.filling || !CannotBeStored(text, length) || ComesFromActiveRow(GTK_WIDGET(entry))) {
    return;
  }
  g_signal_stop_emission_by_name(entry, "insert-text");
  gtk_widget_error_bell(GTK_WIDGET(entry));
  guard.refused = true;
  SettleAtEndOfTurn(entry, guard);
}

}  // namespace

void GuardEntry(GtkEntry *entry) {
  g_object_set_data_full(G_OBJECT(entry), kGuardKey, new Guard, FreeGuard);
  g_signal_connect(entry, "delete-text", G_CALLBACK(OnDeleteText), nullptr);
  g_signal_connect(entry, "insert-text", G_CALLBACK(OnInsertText), nullptr);
}

void FillGuardedEntry(GtkEntry *entry, const char *bytes) {
  Guard &guard = *GuardOf(entry);
  guard.filled = bytes;
  guard.filling = true;
  gtk_entry_set_text(entry, ShowableBytes(bytes).OrEmpty());
  guard.filling = false;
}

std::string GuardedText(GtkEntry *entry) {
  const std::string &filled = GuardOf(entry)->filled;
  const std::string text = gtk_entry_get_text(entry);
  return text == ShowableBytes(filled.c_str()).OrEmpty() ? filled : text;
}
