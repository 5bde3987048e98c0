#include "pages/groups/group_dialog.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "pages/accessible.h"
#include "pages/groups/group_list.h"
#include "pages/groups/group_rules.h"
#include "pages/ok_button.h"
#include "pages/quote_guard.h"
#include "text/message_dialogs.h"
#include "text/to_utf8.h"

std::string edited_group_name;
std::string edited_group_value;
bool value_typed = false;
bool duplicate_found = false;

namespace {

// Both limits are characters to the entries themselves and bytes to the key handlers.
constexpr int kNameLimit = 50;
constexpr int kValueLimit = 255;

// The open dialog. Empty when none is open, also after it was destroyed from outside.
struct GroupDialog {
  GtkWidget *window = nullptr;
  GtkWidget *name_combo = nullptr;
  GtkWidget *name_entry = nullptr;  // inside the combo
  GtkWidget *value_entry = nullptr;
  std::vector<std::string> choices;  // the names that the combo offers, in its order
};
GroupDialog dialog;

void OnDestroyed() {
  dialog = GroupDialog();
}

const char *TextOf(GtkWidget *entry) {
  return gtk_entry_get_text(GTK_ENTRY(entry));
}

// Typing leaves no choice active; a choice is held as its bytes, which need not be what it shows.
std::string TypedName() {
  const gint choice = gtk_combo_box_get_active(GTK_COMBO_BOX(dialog.name_combo));
  return choice < 0 ? TextOf(dialog.name_entry) : dialog.choices[static_cast<std::size_t>(choice)];
}

// The field is null after a message during which the dialog was destroyed. One that has the focus
// keeps its caret: focused anew, all its text would be selected, and the next key would empty it.
void FocusField(GtkWidget *field) {
  if (field != nullptr && !gtk_widget_is_focus(field)) {
    gtk_widget_grab_focus(field);
  }
}

// A listed group's name brings its value along, even over one that the user has typed.
void ShowValueOfName() {
  const std::string name = UpperName(TypedName().c_str());
  const std::vector<GroupRow> rows = GroupRows();
  if (name.empty() || rows.empty()) {
    return;
  }
  const std::optional<std::size_t> row = FindRow(rows, RowName(name));
  if (row.has_value()) {
    FillGuardedEntry(GTK_ENTRY(dialog.value_entry), rows[*row].value.c_str());
  } else if (!value_typed) {
    FillGuardedEntry(GTK_ENTRY(dialog.value_entry), "");
  }
}

void OnNameChanged() {
  WhenSettled(GTK_ENTRY(dialog.name_entry), ShowValueOfName);
}

// A full field refuses every key but those that shorten it: Tab, Enter and the arrows too. A text
// longer than the limit, which wide characters make possible, is not full.
bool IsRefused(const GdkEventKey *event, GtkWidget *entry, std::size_t limit) {
  return event->keyval != GDK_KEY_Delete && event->keyval != GDK_KEY_BackSpace &&
         std::strlen(TextOf(entry)) == limit;
}

gboolean OnNameKey(gpointer, const GdkEventKey *event) {
  if (!IsRefused(event, dialog.name_entry, kNameLimit)) {
    return FALSE;
  }
  ShowMessage(ShownText("The max group name size can not exceed 50 characters.",
                        "Msg_DlgGroup_Err1", "Message")
                  .Get());
  FocusField(dialog.name_entry);
  return TRUE;
}

gboolean OnValueKey(gpointer, const GdkEventKey *event) {
  value_typed = true;
  if (!IsRefused(event, dialog.value_entry, kValueLimit)) {
    return FALSE;
  }
  ShowMessage(ShownText("The max group value size can not exceed 255 characters.",
                        "Msg_DlgGroup_Err5", "Message")
                  .Get());
  FocusField(dialog.value_entry);
  return TRUE;
}

GtkWidget *NewDialog(GroupMode mode) {
  const HeapText title = mode == kAddGroup ? ShownText("Add New Group", "Title_Add", "Dialog_Group")
                                           : ShownText("Edit Group", "Title_Edit", "Dialog_Group");
  constexpr int kFlags = GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT;
  GtkWidget *window = gtk_dialog_new_with_buttons(
      title.Get(), nullptr, static_cast<GtkDialogFlags>(kFlags), GTK_STOCK_OK, GTK_RESPONSE_ACCEPT,
      GTK_STOCK_CANCEL, GTK_RESPONSE_REJECT, nullptr);
  gtk_window_set_resizable(GTK_WINDOW(window), FALSE);
  gtk_window_set_position(GTK_WINDOW(window), GTK_WIN_POS_CENTER);
  g_signal_connect_swapped(window, "destroy", G_CALLBACK(OnDestroyed), nullptr);
  return window;
}

GtkWidget *AddColumn(GtkWidget *box) {
  GtkWidget *column = gtk_vbox_new(FALSE, 10);
  gtk_container_set_border_width(GTK_CONTAINER(column), 5);
  gtk_box_pack_start(GTK_BOX(box), column, TRUE, TRUE, 10);
  return column;
}

void AddNameCombo(GtkWidget *column) {
  dialog.name_combo = gtk_combo_box_text_new_with_entry();
  dialog.choices = NameChoices(GroupRows());
  for (const std::string &name : dialog.choices) {
    gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(dialog.name_combo),
                                   ShowableBytes(name.c_str()).OrEmpty());
  }
  dialog.name_entry = gtk_bin_get_child(GTK_BIN(dialog.name_combo));
  gtk_entry_set_max_length(GTK_ENTRY(dialog.name_entry), kNameLimit);
  GuardEntry(GTK_ENTRY(dialog.name_entry));
  IgnoreWheel(dialog.name_combo);
  gtk_container_add(GTK_CONTAINER(column), dialog.name_combo);
}

void AddValueEntry(GtkWidget *column) {
  dialog.value_entry = gtk_entry_new();
  gtk_entry_set_max_length(GTK_ENTRY(dialog.value_entry), kValueLimit);
  GuardEntry(GTK_ENTRY(dialog.value_entry));
  gtk_container_add(GTK_CONTAINER(column), dialog.value_entry);
}

void AddLabel(GtkWidget *column, GtkWidget *field, const HeapText &text) {
  GtkWidget *label = gtk_label_new(text.Get());
  LabelField(label, field);
  gtk_container_add(GTK_CONTAINER(column), label);
}

void AddContent() {
  GtkWidget *box = gtk_hbox_new(FALSE, 10);
  gtk_container_set_border_width(GTK_CONTAINER(box), 5);
  gtk_box_pack_start(GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(dialog.window))), box, TRUE,
                     TRUE, 0);
  GtkWidget *labels = AddColumn(box);
  GtkWidget *fields = AddColumn(box);
  AddNameCombo(fields);  // the fields first: each label is tied to its own
  AddValueEntry(fields);
  AddLabel(labels, dialog.name_combo, ShownText("Group Name", "Label_GroupName", "Dialog_Group"));
  AddLabel(labels, dialog.value_entry, ShownText("Value", "Label_Value", "Dialog_Group"));
  gtk_widget_show_all(box);
}

// Enter in the value field neither checks nor closes: it readies the window's OK button for the
// time after the dialog.
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
  FillGuardedEntry(GTK_ENTRY(dialog.value_entry), edited_group_value.c_str());
  gtk_widget_grab_focus(dialog.value_entry);
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
      return ShownText("The group name can not be empty.", "Msg_DlgGroup_Err2", "Message");
    case GroupFault::kNameCharacter:
      return ShownText("The group name can not contain ^=;\\\".", "Msg_DlgGroup_Err6", "Message");
    case GroupFault::kValueEmpty:
      return ShownText("The group value can not be empty.", "Msg_DlgGroup_Err7", "Message");
    case GroupFault::kManualValueCharacter:
      return ShownText("The group value can not contain \"=;\"\\<>*?|:\"&.", "Msg_DlgGroup_Err3",
                       "Message");
    case GroupFault::kValueCharacter:
      return ShownText("The group value can not contain \"=;\"\\<>*?|:\"&/.", "Msg_DlgGroup_Err8",
                       "Message");
    case GroupFault::kDuplicate:  // has no key: it is the same in every language
      return HeapText::Copy(
          "The group has already existed(notes: \"MG = Manual Group\"),please retry!");
  }
  return HeapText();
}

void ApplyGroup(GroupMode mode) {
  const GroupRow row = {RowName(UpperName(TypedName().c_str())),
                        GuardedText(GTK_ENTRY(dialog.value_entry))};
  if (mode == kAddGroup) {
    AppendGroup(row);
  } else if (const auto index = FindRow(GroupRows(), edited_group_name)) {
    ReplaceGroup(*index, row);
  }
}

// True when the input was good and is now in the list; else the focus is where the fault is.
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
  GroupInput input = {TypedName(), GuardedText(GTK_ENTRY(dialog.value_entry)), std::nullopt};
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
