// The first page of the notebook, built from top to bottom.
#include "pages/general/general_page.h"

#include "pages/filled_entry.h"
#include "pages/general/choice_list.h"
#include "pages/general/general_page_widgets.h"
#include "pages/general/log_level.h"
#include "pages/guarded_entry.h"
#include "pages/widgets.h"
#include "text/message_dialogs.h"
#include "text/shown_text.h"

GeneralPage general_page;

namespace {

HeapText PageText(const char *key, const char *english) {
  return ShownText("Page_General", key, english);
}

GtkWidget *AddBox(GtkWidget *parent, GtkWidget *box) {
  gtk_container_set_border_width(GTK_CONTAINER(box), 5);
  gtk_box_pack_start(GTK_BOX(parent), box, TRUE, TRUE, 0);
  gtk_widget_show(box);
  return box;
}

void Align(GtkWidget *label, GtkJustification justification) {
  gtk_label_set_justify(GTK_LABEL(label), justification);
  gtk_misc_set_alignment(GTK_MISC(label), 0.0F, 0.0F);
}

void AddVersion(const char *agent_version) {
  GtkWidget *row =
      AddBox(AddBox(general_page.box, gtk_vbox_new(FALSE, 0)), gtk_hbox_new(FALSE, 10));
  const HeapText text = agent_version == nullptr ? HeapText() : ShowableBytes(agent_version);
  GtkWidget *version = gtk_label_new(text.Get());
  Align(AddLabel(row, version, PageText("Label_AgentVer", "Agent Version :")), GTK_JUSTIFY_CENTER);
  Align(version, GTK_JUSTIFY_LEFT);
  AddField(row, version);
}

GtkEntry *AddGateway(GtkWidget *column, Setting setting) {
  GtkEntry *entry = AddEntry(column, kEntryLimit);
  GuardEntry(entry);
  FillEntry(entry, agent_settings[setting].OrEmpty());
  return entry;
}

// The functions by which a duration's signals know it.
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
  GtkEntry *entry = EntryOf(field.combo);
  gtk_entry_set_max_length(entry, kEntryLimit);
  handlers.select(field.combo);
  g_signal_connect_swapped(entry, "focus", G_CALLBACK(handlers.on_focus), nullptr);
  g_signal_connect_swapped(entry, "key-press-event", G_CALLBACK(handlers.on_key), nullptr);
  g_signal_connect_swapped(entry, "activate", G_CALLBACK(handlers.validate), nullptr);
  IgnoreWheel(field.combo);
  AddField(column, field.combo);
}

void AddLogLevel(GtkWidget *column) {
  GtkWidget *combo = gtk_combo_box_new_with_model(GTK_TREE_MODEL(general_page.log_level_store));
  general_page.log_level = combo;
  GtkCellRenderer *cell = gtk_cell_renderer_text_new();
  gtk_cell_layout_pack_start(GTK_CELL_LAYOUT(combo), cell, TRUE);
  gtk_cell_layout_add_attribute(GTK_CELL_LAYOUT(combo), cell, "text", kShownColumn);
  gtk_combo_box_set_active(GTK_COMBO_BOX(combo), 0);
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

void BuildGeneralPage(const char *agent_version) {
  general_page.box = gtk_vbox_new(FALSE, 0);
  g_signal_connect(general_page.box, "destroy", G_CALLBACK(gtk_widget_destroyed),
                   &general_page.box);
  AddVersion(agent_version);
  GtkWidget *row = AddFrame(general_page.box, PageText("Frame_Settings", "Settings"), 400, 250);
  GtkWidget *labels = AddColumn(row, 10);
  GtkWidget *fields = AddColumn(row, 5);
  AddFields(fields);  // first: each label is tied to its field
  AddLabels(labels);
  gtk_widget_show(general_page.box);
}

bool ShowFieldMessage(const FieldMessage &message) {
  ShowMessage(ShownText("Message", message.key, message.english).Get());
  return general_page.box != nullptr;
}

GtkWidget *GeneralPageWidget() {
  return general_page.box;
}
