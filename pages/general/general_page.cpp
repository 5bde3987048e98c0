// The first page of the notebook, built from top to bottom.
#include "pages/general/general_page.h"

#include "pages/filled_entry.h"
#include "pages/general/choice_list.h"
#include "pages/general/general_page_widgets.h"
#include "pages/general/log_level.h"
#include "pages/guarded_entry.h"
#include "pages/shortened_label.h"
#include "pages/widgets.h"
#include "text/message_dialogs.h"
#include "text/shown_text.h"

GeneralPage general_page;

namespace {

HeapText PageText(const char *key, const char *english) {
  return ShownText("Page_General", key, english);
}

void Align(GtkWidget *label, GtkJustification justification) {
  gtk_label_set_justify(GTK_LABEL(label), justification);
  gtk_misc_set_alignment(GTK_MISC(label), 0.0F, 0.0F);
}

// The label for the version, which is shown when the page is finished.
GtkLabel *AddVersion() {
  GtkWidget *row =
      AddBox(AddBox(general_page.box, gtk_vbox_new(FALSE, 0)), gtk_hbox_new(FALSE, 10));
  GtkWidget *version = gtk_label_new(nullptr);
  Align(AddLabel(row, version, PageText("Label_AgentVer", "Agent Version :")), GTK_JUSTIFY_CENTER);
  Align(version, GTK_JUSTIFY_LEFT);
  AddField(row, version);
  return GTK_LABEL(version);
}

GtkEntry *AddGateway(GtkWidget *column, Setting setting) {
  GtkEntry *entry = AddEntry(column, kEntryLimit);
  GuardEntry(entry);
  FillEntry(entry, agent_settings[setting].OrEmpty());
  return entry;
}

// The functions that select a duration's row and handle its signals.
struct DurationHandlers {
  void (*select)(GtkWidget *combo);
  gboolean (*on_focus)();
  gboolean (*on_key)(gpointer, const GdkEventKey *event);
  void (*validate)();
};

// Connected last, so that opening the window changes nothing.
void AddDuration(GtkWidget *column, DurationField &field, const DurationHandlers &handlers) {
  field.combo = gtk_combo_box_new_with_model_and_entry(GTK_TREE_MODEL(field.store));
  gtk_combo_box_set_entry_text_column(GTK_COMBO_BOX(field.combo), kShownColumn);
  field.entry = EntryOf(field.combo);
  gtk_entry_set_max_length(field.entry, kEntryLimit);
  handlers.select(field.combo);
  g_signal_connect_swapped(field.entry, "focus", G_CALLBACK(handlers.on_focus), nullptr);
  g_signal_connect_swapped(field.entry, "key-press-event", G_CALLBACK(handlers.on_key), nullptr);
  g_signal_connect_swapped(field.entry, "activate", G_CALLBACK(handlers.validate), nullptr);
  IgnoreWheel(field.combo);
  AddField(column, field.combo);
}

void AddLogLevel(GtkWidget *column) {
  GtkWidget *combo = gtk_combo_box_new_with_model(GTK_TREE_MODEL(general_page.log_level_store));
  general_page.log_level = combo;
  GtkCellRenderer *cell = gtk_cell_renderer_text_new();
  gtk_cell_layout_pack_start(GTK_CELL_LAYOUT(combo), cell, TRUE);
  gtk_cell_layout_add_attribute(GTK_CELL_LAYOUT(combo), cell, "text", kShownColumn);
  SelectLogLevel(combo);
  g_signal_connect_swapped(combo, "changed", G_CALLBACK(OnLogLevelChanged), nullptr);
  IgnoreWheel(combo);
  AddField(column, combo);
}

void AddFields(GtkWidget *column) {
  GeneralPage &page = general_page;
  page.current_gateway = AddGateway(column, CurrentGateway);
  page.backup_gateway = AddGateway(column, BackupGateway);
  BuildPullIntervalStore();
  AddDuration(column, page.pull_interval,
              {SelectPullInterval, OnPullIntervalFocus, OnPullIntervalKey, ValidatePullInterval});
  BuildLogLevelStore();
  AddLogLevel(column);
  BuildDelayScopeStore();
  AddDuration(column, page.delay_scope,
              {SelectDelayScope, OnDelayScopeFocus, OnDelayScopeKey, ValidateDelayScope});
}

void AddLabels(GtkWidget *column) {
  const GeneralPage &page = general_page;
  AddLabel(column, GTK_WIDGET(page.current_gateway),
           PageText("Label_CurrentGW", "Current Gateway"));
  AddLabel(column, GTK_WIDGET(page.backup_gateway), PageText("Label_BackupGW", "Backup Gateway"));
  AddLabel(column, page.pull_interval.combo, PageText("Label_Interval", "Pull Interval"));
  AddLabel(column, page.log_level, PageText("Label_Log", "Log Level"));
  AddLabel(column, page.delay_scope.combo, PageText("Label_Delay", "Delay Scope"));
}

}  // namespace

void BuildGeneralPage(std::string_view agent_version) {
  general_page.box = gtk_vbox_new(FALSE, 0);
  g_signal_connect(general_page.box, "destroy", G_CALLBACK(gtk_widget_destroyed),
                   &general_page.box);
  GtkLabel *version = AddVersion();
  GtkWidget *row = AddFrame(general_page.box, PageText("Frame_Settings", "Settings"), 400, 250);
  GtkWidget *labels = AddColumn(row, 10);
  GtkWidget *fields = AddColumn(row, 5);
  AddFields(fields);  // before the labels: each is tied to its field
  AddLabels(labels);
  ShowWithin(general_page.box, version, ShowableBytes(agent_version).OrEmpty(), "5.2.1\n");
  gtk_widget_show(general_page.box);
}

bool ShowFieldMessage(const FieldMessage &message) {
  ShowMessage(ShownText("Message", message.key, message.english).Get());
  if (general_page.box == nullptr) {
    return false;
  }
  GtkNotebook *notebook = GTK_NOTEBOOK(gtk_widget_get_parent(general_page.box));
  gtk_notebook_set_current_page(notebook, gtk_notebook_page_num(notebook, general_page.box));
  return true;
}

GtkWidget *GeneralPageWidget() {
  return general_page.box;
}
