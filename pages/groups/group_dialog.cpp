// The modal dialog in which a group is added or edited.
#include "pages/groups/group_dialog.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "pages/filled_entry.h"
#include "pages/groups/group_list.h"
#include "pages/groups/group_names.h"
#include "pages/groups/group_rules.h"
#include "pages/guarded_entry.h"
#include "pages/ok_button.h"
#include "pages/widgets.h"
#include "text/message_dialogs.h"
#include "text/shown_text.h"

std::string edited_group_name;
std::string edited_group_value;

namespace {

// Both limits are characters to the entries themselves and bytes to the key handlers.
constexpr int kNameLimit = static_cast<int>(kMaxNameBytes);
constexpr int kValueLimit = 255;

// Whether the user has pressed a key in the value field. Until then a change of the name empties
// that field, unless the name is that of a listed group. Editing starts with true.
bool value_typed = false;

// What the last search for a duplicate found. Nothing else resets it, not even a new dialog: after
// a duplicate was refused, a value that is refused next sends the focus to the name.
bool duplicate_found = false;

// The open dialog. Empty when none is open, also after it was destroyed from outside.
struct GroupDialog {
  GtkWidget *window = nullptr;
  GtkWidget *name_combo = nullptr;
  GtkEntry *name_entry = nullptr;  // inside the combo
  GtkEntry *value_entry = nullptr;
  std::vector<std::string> choices;  // the names that the combo offers, in its order
};
GroupDialog dialog;

void OnDialogDestroyed() {
  dialog = GroupDialog();
}

// After typing, no choice is active. A choice stands for its bytes, which need not be what it
// shows.
std::string TypedName() {
  const gint choice = gtk_combo_box_get_active(GTK_COMBO_BOX(dialog.name_combo));
  return choice < 0 ? gtk_entry_get_text(dialog.name_entry)
                    : dialog.choices[static_cast<std::size_t>(choice)];
}

// The field is null after a message during which the dialog was destroyed.
void FocusField(GtkEntry *field) {
  if (field != nullptr) {
    FocusUnselected(GTK_WIDGET(field));
  }
}

// A listed group's name brings its value along, even over one that the user has typed.
void ShowValueOfName() {
  const std::string name = UpperName(TypedName());
  const std::vector<GroupRow> rows = GroupRows();
  if (name.empty() || rows.empty()) {
    return;
  }
  const std::optional<std::size_t> row = FindRow(rows, RowName(name));
  if (row.has_value()) {
    FillEntry(dialog.value_entry, rows[*row].value);
  } else if (!value_typed) {
    FillEntry(dialog.value_entry, "");
  }
}

void OnNameChanged() {
  WhenSettled(dialog.name_entry, ShowValueOfName);
}

// True when the field is full: the message has been shown, and the key goes no further. A text
// longer than the limit, which characters of several bytes make possible, is not full. `field` is
// the dialog's own slot, which is null when the message has outlived the dialog.
gboolean RefuseWhenFull(const GdkEventKey *event, GtkEntry *const &field, std::size_t limit,
                        const char *key, const char *english) {
  if (!IsRefusedWhenFull(event) || std::strlen(gtk_entry_get_text(field)) != limit) {
    return FALSE;
  }
  ShowMessage(ShownText("Message", key, english).Get());
  FocusField(field);
  return TRUE;
}

gboolean OnNameKey(gpointer, const GdkEventKey *event) {
  return RefuseWhenFull(event, dialog.name_entry, kNameLimit, "Msg_DlgGroup_Err1",
                        "The max group name size can not exceed 50 characters.");
}

gboolean OnValueKey(gpointer, const GdkEventKey *event) {
  value_typed = true;
  return RefuseWhenFull(event, dialog.value_entry, kValueLimit, "Msg_DlgGroup_Err5",
                        "The max group value size can not exceed 255 characters.");
}

GtkWidget *NewDialog(GroupMode mode) {
  const HeapText title = mode == kAddGroup ? ShownText("Dialog_Group", "Title_Add", "Add New Group")
                                           : ShownText("Dialog_Group", "Title_Edit", "Edit Group");
  constexpr int kFlags = GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT;
  GtkWidget *window = gtk_dialog_new_with_buttons(
      title.Get(), nullptr, static_cast<GtkDialogFlags>(kFlags), GTK_STOCK_OK, GTK_RESPONSE_ACCEPT,
      GTK_STOCK_CANCEL, GTK_RESPONSE_REJECT, nullptr);
  gtk_window_set_resizable(GTK_WINDOW(window), FALSE);
  gtk_window_set_position(GTK_WINDOW(window), GTK_WIN_POS_CENTER);
  g_signal_connect_swapped(window, "destroy", G_CALLBACK(OnDialogDestroyed), nullptr);
  return window;
}

void AddNameCombo(GtkWidget *column) {
  dialog.name_combo = gtk_combo_box_text_new_with_entry();
  dialog.choices = NameChoices(GroupRows());
  for (const std::string &name : dialog.choices) {
    gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(dialog.name_combo),
                                   ShowableBytes(name).OrEmpty());
  }
  dialog.name_entry = EntryOf(dialog.name_combo);
  gtk_entry_set_max_length(dialog.name_entry, kNameLimit);
  GuardEntry(dialog.name_entry);
  IgnoreWheel(dialog.name_combo);
  AddField(column, dialog.name_combo);
}

void AddValueEntry(GtkWidget *column) {
  dialog.value_entry = AddEntry(column, kValueLimit);
  GuardEntry(dialog.value_entry);
}

void AddContent() {
  GtkWidget *box = gtk_hbox_new(FALSE, 10);
  gtk_container_set_border_width(GTK_CONTAINER(box), 5);
  gtk_box_pack_start(GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(dialog.window))), box, TRUE,
                     TRUE, 0);
  GtkWidget *labels = AddColumn(box, 10);
  GtkWidget *fields = AddColumn(box, 10);
  AddNameCombo(fields);  // before the labels: each is tied to its field
  AddValueEntry(fields);
  AddLabel(labels, dialog.name_combo, ShownText("Dialog_Group", "Label_GroupName", "Group Name"));
  AddLabel(labels, GTK_WIDGET(dialog.value_entry),
           ShownText("Dialog_Group", "Label_Value", "Value"));
  gtk_widget_show(box);
}

// Enter in the value field neither checks nor closes: it focuses the window's OK button, for when
// the dialog is closed.
void ConnectFields() {
  g_signal_connect_swapped(dialog.name_combo, "changed", G_CALLBACK(OnNameChanged), nullptr);
  g_signal_connect_swapped(dialog.name_entry, "key-press-event", G_CALLBACK(OnNameKey), nullptr);
  g_signal_connect_swapped(dialog.value_entry, "activate", G_CALLBACK(FocusOkButton), nullptr);
  g_signal_connect_swapped(dialog.value_entry, "key-press-event", G_CALLBACK(OnValueKey), nullptr);
}

void FillFields() {
  const auto choice = std::find(dialog.choices.begin(), dialog.choices.end(), edited_group_name);
  gtk_combo_box_set_active(GTK_COMBO_BOX(dialog.name_combo),
                           static_cast<gint>(choice - dialog.choices.begin()));
  // Only now: the name has just brought the value of the first row of that name along.
  FillEntry(dialog.value_entry, edited_group_value);
  gtk_widget_grab_focus(GTK_WIDGET(dialog.value_entry));
}

void OpenDialog(GroupMode mode) {
  dialog.window = NewDialog(mode);
  AddContent();
  ConnectFields();
  value_typed = mode == kEditGroup;
  if (mode == kEditGroup) {
    FillFields();
  }
}

HeapText FaultText(GroupFault fault) {
  switch (fault) {
    case GroupFault::kNone:
      break;
    case GroupFault::kNameEmpty:
      return ShownText("Message", "Msg_DlgGroup_Err2", "The group name can not be empty.");
    case GroupFault::kNameCharacter:
      return ShownText("Message", "Msg_DlgGroup_Err6", "The group name can not contain ^=;\\\".");
    case GroupFault::kValueEmpty:
      return ShownText("Message", "Msg_DlgGroup_Err7", "The group value can not be empty.");
    case GroupFault::kManualValueCharacter:
      return ShownText("Message", "Msg_DlgGroup_Err3",
                       "The group value can not contain \"=;\"\\<>*?|:\"&.");
    case GroupFault::kValueCharacter:
      return ShownText("Message", "Msg_DlgGroup_Err8",
                       "The group value can not contain \"=;\"\\<>*?|:\"&/.");
    case GroupFault::kDuplicate:  // has no key: it is the same in every language
      return HeapText::Copy(
          "The group has already existed(notes: \"MG = Manual Group\"),please retry!");
  }
  return HeapText();
}

void ApplyGroup(GroupMode mode) {
  const GroupRow row = {RowName(UpperName(TypedName())), EntryBytes(dialog.value_entry)};
  if (mode == kAddGroup) {
    AppendGroup(row);
  } else if (const auto index = FindRow(GroupRows(), edited_group_name)) {
    ReplaceGroup(*index, row);
  }
}

// True when the input was good and is now in the list; otherwise the focus is where the fault is.
bool TakeInput(GroupMode mode) {
  const int verdict = ValidateGroup(mode);
  if (verdict == 1) {
    ApplyGroup(mode);
    return true;
  }
  FocusField(verdict == 0 && !duplicate_found ? dialog.value_entry : dialog.name_entry);
  return false;
}

}  // namespace

int ValidateGroup(GroupMode mode) {
  GroupInput input = {TypedName(), EntryBytes(dialog.value_entry), std::nullopt};
  if (mode == kEditGroup) {
    input.edited_name = edited_group_name;
  }
  const GroupFault fault = CheckGroup(input, GroupRows(), duplicate_found);
  if (fault != GroupFault::kNone) {
    ShowMessage(FaultText(fault).Get());
  }
  return VerdictOf(fault);
}

bool GroupDialogIsOpen() {
  return dialog.window != nullptr;
}

void RunGroupDialog(GroupMode mode) {
  if (GroupDialogIsOpen()) {
    return;
  }
  OpenDialog(mode);
  bool done = false;
  while (!done && GroupDialogIsOpen()) {
    const gint answer = gtk_dialog_run(GTK_DIALOG(dialog.window));
    done = answer != GTK_RESPONSE_ACCEPT || TakeInput(mode);
  }
  if (GroupDialogIsOpen()) {
    gtk_widget_destroy(dialog.window);
  }
}
