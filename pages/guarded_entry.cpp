// The guard of the entries for gateways, group names and group values.
#include "pages/guarded_entry.h"

#include <cstring>
#include <string_view>

#include "text/heap_text.h"

namespace {

// What the user has done to an entry in one turn of the main loop. Typing and pasting over a
// selection first delete it and then insert; when the insertion is refused, the deletion is taken
// back.
struct Turn {
  HeapText deleted;                            // not yet replaced by an insertion
  gint deleted_at = 0, caret = 0, anchor = 0;  // characters, before the deletion
  gint active = -1;                            // the combo box's row, likewise before the deletion
  bool refused = false;
  void (*when_settled)() = nullptr;
};

struct Guard {
  bool lets_pass = false;  // the program is setting the text
  Turn turn;
  guint end_of_turn = 0;  // the idle source that settles the turn, or 0
};

constexpr char kGuardKey[] = "guard";

Guard *GuardOf(gpointer entry) {
  return static_cast<Guard *>(g_object_get_data(G_OBJECT(entry), kGuardKey));
}

void FreeGuard(gpointer data) {
  delete static_cast<Guard *>(data);
}

// Nothing is settled any more.
void OnDestroyed(GtkEntry *entry) {
  Guard &guard = *GuardOf(entry);
  if (guard.end_of_turn != 0) {
    g_source_remove(guard.end_of_turn);
    guard.end_of_turn = 0;
  }
}

// The combo box around the entry, or null.
GtkComboBox *ComboAround(gpointer entry) {
  GtkWidget *parent = gtk_widget_get_parent(GTK_WIDGET(entry));
  return GTK_IS_COMBO_BOX(parent) ? GTK_COMBO_BOX(parent) : nullptr;
}

bool CannotBeStored(const gchar *text, gint length) {
  const std::string_view bytes = length < 0
                                     ? std::string_view(text)
                                     : std::string_view(text, static_cast<std::size_t>(length));
  return bytes.find_first_of("'\n\r") != std::string_view::npos;
}

// A combo box puts the text of the row that becomes active into its emptied entry: that text is the
// program's, not the user's.
bool ComesFromActiveRow(GtkEntry *entry, const gchar *text) {
  GtkComboBox *combo = ComboAround(entry);
  GtkTreeIter row;
  if (combo == nullptr || gtk_entry_get_text_length(entry) != 0 ||
      gtk_combo_box_get_active_iter(combo, &row) == FALSE) {
    return false;
  }
  gchar *row_text = nullptr;
  gtk_tree_model_get(gtk_combo_box_get_model(combo), &row,
                     gtk_combo_box_get_entry_text_column(combo), &row_text, -1);
  const HeapText owner = HeapText::Adopt(row_text);
  return std::strcmp(text, owner.OrEmpty()) == 0;
}

void BringBackDeleted(GtkEditable *entry, Guard &guard) {
  const Turn &turn = guard.turn;
  guard.lets_pass = true;
  if (turn.active >= 0) {
    gtk_combo_box_set_active(ComboAround(entry), turn.active);
  } else {
    gint position = turn.deleted_at;
    gtk_editable_insert_text(entry, turn.deleted.Get(), -1, &position);
  }
  guard.lets_pass = false;
  gtk_editable_select_region(entry, turn.anchor, turn.caret);
}

gboolean OnEndOfTurn(gpointer entry) {
  Guard &guard = *GuardOf(entry);
  const bool is_taken_back = guard.turn.refused && guard.turn.deleted;
  if (is_taken_back) {
    BringBackDeleted(GTK_EDITABLE(entry), guard);
  }
  const auto when_settled = is_taken_back ? nullptr : guard.turn.when_settled;
  guard.turn = Turn();
  guard.end_of_turn = 0;
  if (when_settled != nullptr) {
    when_settled();
  }
  return FALSE;
}

// Before the main loop looks for further events, so that no later key press finds the entry without
// its selection.
void SettleAtEndOfTurn(gpointer entry, Guard &guard) {
  if (guard.end_of_turn == 0) {
    guard.end_of_turn = g_idle_add_full(G_PRIORITY_HIGH, OnEndOfTurn, entry, nullptr);
  }
}

void OnDeleteText(GtkEditable *entry, gint start, gint end, gpointer) {
  Guard &guard = *GuardOf(entry);
  if (guard.lets_pass || gtk_entry_get_text_length(GTK_ENTRY(entry)) == 0) {
    return;  // setting a text first empties the entry, even one that is empty
  }
  Turn &turn = guard.turn;
  turn.refused = false;  // an earlier refusal has nothing to do with this deletion
  turn.deleted = HeapText::Adopt(gtk_editable_get_chars(entry, start, end));
  turn.deleted_at = start;
  turn.caret = gtk_editable_get_position(entry);
  gint first = 0;
  gint last = 0;
  gtk_editable_get_selection_bounds(entry, &first, &last);
  turn.anchor = turn.caret == first ? last : first;
  GtkComboBox *combo = ComboAround(entry);
  turn.active = combo != nullptr ? gtk_combo_box_get_active(combo) : -1;
  SettleAtEndOfTurn(entry, guard);
}

void OnInsertText(GtkEditable *entry, const gchar *text, gint length, const gint *position,
                  gpointer) {
  Guard &guard = *GuardOf(entry);
  if (guard.lets_pass) {
    return;
  }
  if (!CannotBeStored(text, length) || ComesFromActiveRow(GTK_ENTRY(entry), text)) {
    guard.turn.deleted.Reset();
    return;
  }
  g_signal_stop_emission_by_name(entry, "insert-text");
  gtk_widget_error_bell(GTK_WIDGET(entry));
  if (*position != guard.turn.deleted_at) {
    guard.turn.deleted.Reset();  // deleted on its own, not to make room
  }
  guard.turn.refused = true;
  SettleAtEndOfTurn(entry, guard);
}

// The place that the text was dragged from must learn that the drop has failed: otherwise it
// deletes the text there, since it counts as moved.
void OnDragDataReceived(GtkWidget *entry, GdkDragContext *context, gint, gint,
                        GtkSelectionData *data, guint, guint time, gpointer) {
  const HeapText text =
      HeapText::Adopt(reinterpret_cast<char *>(gtk_selection_data_get_text(data)));
  if (CannotBeStored(text.OrEmpty(), -1)) {
    g_signal_stop_emission_by_name(entry, "drag-data-received");
    gtk_widget_error_bell(entry);
    gtk_drag_finish(context, FALSE, FALSE, time);
  }
}

}  // namespace

void GuardEntry(GtkEntry *entry) {
  g_object_set_data_full(G_OBJECT(entry), kGuardKey, new Guard, FreeGuard);
  g_signal_connect(entry, "destroy", G_CALLBACK(OnDestroyed), nullptr);
  g_signal_connect(entry, "delete-text", G_CALLBACK(OnDeleteText), nullptr);
  g_signal_connect(entry, "insert-text", G_CALLBACK(OnInsertText), nullptr);
  g_signal_connect(entry, "drag-data-received", G_CALLBACK(OnDragDataReceived), nullptr);
}

void SetTextUnguarded(GtkEntry *entry, const char *text) {
  Guard &guard = *GuardOf(entry);
  guard.turn.deleted.Reset();
  guard.lets_pass = true;
  gtk_entry_set_text(entry, text);
  guard.lets_pass = false;
}

void WhenSettled(GtkEntry *entry, void (*handler)()) {
  Guard &guard = *GuardOf(entry);
  if (guard.end_of_turn == 0) {
    handler();
  } else {
    guard.turn.when_settled = handler;
  }
}
