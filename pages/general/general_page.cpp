#include "pages/general/general_page.h"

#include "pages/accessible.h"
#include "pages/general/choices.h"
#include "pages/general/duration_check.h"
#include "pages/general/duration_choices.h"
#include "pages/general/general_page_widgets.h"
#include "pages/quote_guard.h"
#include "settings/agent_settings.h"
#include "text/to_utf8.h"

GeneralPage general_page;

namespace {

GtkWidget *AddVersionLabel(GtkWidget *box, const char *text, GtkJustification justification) {
  GtkWidget *label = gtk_label_new(text);
  gtk_label_set_justify(GTK_LABEL(label), justification);
  gtk_misc_set_alignment(GTK_MISC(label), 0.0F, 0.0F);
  gtk_container_add(GTK_CONTAINER(box), label);
  gtk_widget_show(label);
  return label;
}

void AddVersion(const char *agent_version) {
  GtkWidget *outer = gtk_vbox_new(FALSE, 0);
  gtk_container_set_border_width(GTK_CONTAINER(outer), 5);
  gtk_box_pack_start(GTK_BOX(general_page.box), outer, TRUE, TRUE, 0);
  gtk_widget_show(outer);
  GtkWidget *inner = gtk_hbox_new(FALSE, 10);
  gtk_container_set_border_width(GTK_CONTAINER(inner), 5);
  gtk_box_pack_start(GTK_BOX(outer), inner, TRUE, TRUE, 0);
  gtk_widget_show(inner);

  GtkWidget *label =
      AddVersionLabel(inner, ShownText("Agent Version :", "Label_AgentVer", "Page_General").Get(),
                      GTK_JUSTIFY_CENTER);
  const HeapText version = agent_version == nullptr ? HeapText() : ShowableBytes(agent_version);
  LabelField(label, AddVersionLabel(inner, version.Get(), GTK_JUSTIFY_LEFT));
}

// The box inside the frame.
GtkWidget *AddFrame() {
  GtkWidget *frame = gtk_frame_new(ShownText("Settings", "Frame_Settings", "Page_General").Get());
  gtk_container_set_border_width(GTK_CONTAINER(frame), 10);
  gtk_widget_set_size_request(frame, 400, 250);
  gtk_box_pack_start(GTK_BOX(general_page.box), frame, TRUE, TRUE, 10);
  gtk_widget_show(frame);
  GtkWidget *box = gtk_hbox_new(FALSE, 0);
  gtk_container_set_border_width(GTK_CONTAINER(box), 5);
  gtk_container_add(GTK_CONTAINER(frame), box);
  gtk_widget_show(box);
  return box;
}

GtkWidget *AddColumn(GtkWidget *box, guint padding) {
  GtkWidget *column = gtk_vbox_new(FALSE, 10);
  gtk_container_set_border_width(GTK_CONTAINER(column), 5);
  gtk_box_pack_start(GTK_BOX(box), column, TRUE, TRUE, padding);
  gtk_widget_show(column);
  return column;
}

void AddField(GtkWidget *column, GtkWidget *field) {
  gtk_container_add(GTK_CONTAINER(column), field);
  gtk_widget_show(field);
}

GtkWidget *AddGateway(GtkWidget *column, Setting setting) {
  GtkWidget *entry = gtk_entry_new();
  gtk_entry_set_max_length(GTK_ENTRY(entry), kEntryLimit);
  GuardEntry(GTK_ENTRY(entry));
  FillGuardedEntry(GTK_ENTRY(entry), agent_settings[setting].OrEmpty());
  AddField(column, entry);
  return entry;
}

GtkWidget *AddDurationCombo(GtkWidget *column, GtkListStore *store) {
  GtkWidget *combo = gtk_combo_box_new_with_model_and_entry(GTK_TREE_MODEL(store));
  gtk_combo_box_set_entry_text_column(GTK_COMBO_BOX(combo), kTextColumn);
  gtk_entry_set_max_length(GTK_ENTRY(EntryOf(combo)), kEntryLimit);
  IgnoreWheel(combo);
  AddField(column, combo);
  return combo;
}

void ConnectDurationEntry(GtkWidget *combo, gboolean (*on_focus)(),
                          gboolean (*on_key)(gpointer, const GdkEventKey *), void (*validate)()) {
  GtkWidget *entry = EntryOf(combo);
  g_signal_connect_swapped(entry, "focus", G_CALLBACK(on_focus), nullptr);
  g_signal_connect_swapped(entry, "key-press-event", G_CALLBACK(on_key), nullptr);
  g_signal_connect_swapped(entry, "activate", G_CALLBACK(validate), nullptr);
}

void AddPullInterval(GtkWidget *column) {
  BuildPullIntervalStore();
  general_page.pull_interval = AddDurationCombo(column, general_page.pull_interval_store);
  SelectPullInterval(general_page.pull_interval);
  ConnectDurationEntry(general_page.pull_interval, OnPullIntervalFocus, OnPullIntervalKey,
                       ValidatePullInterval);
}

// Connected last, so that opening the window changes nothing.
void AddLogLevel(GtkWidget *column) {
  BuildLogLevelStore();
  GtkWidget *combo = gtk_combo_box_new_with_model(GTK_TREE_MODEL(general_page.log_level_store));
  general_page.log_level = combo;
  GtkCellRenderer *cell = gtk_cell_renderer_text_new();
  gtk_cell_layout_pack_start(GTK_CELL_LAYOUT(combo), cell, TRUE);
  gtk_cell_layout_add_attribute(GTK_CELL_LAYOUT(combo), cell, "text", kTextColumn);
  gtk_combo_box_set_active(GTK_COMBO_BOX(combo), 0);
  SelectLogLevel(combo);
  g_signal_connect_swapped(combo, "changed", G_CALLBACK(OnLogLevelChanged), nullptr);
  IgnoreWheel(combo);
  AddField(column, combo);
}

void AddDelayScope(GtkWidget *column) {
  BuildDelayScopeStore();
  general_page.delay_scope = AddDurationCombo(column, general_page.delay_scope_store);
  SelectDelayScope(general_page.delay_scope);
  ConnectDurationEntry(general_page.delay_scope, OnDelayScopeFocus, OnDelayScopeKey,
                       ValidateDelayScope);
}

void AddFields(GtkWidget *column) {
  general_page.current_gateway = AddGateway(column, CurrentGateway);
  general_page.backup_gateway = AddGateway(column, BackupGateway);
  AddPullInterval(column);
  AddLogLevel(column);
  AddDelayScope(column);
}

void AddLabel(GtkWidget *column, GtkWidget *field, const HeapText &text) {
  GtkWidget *label = gtk_label_new(text.Get());
  LabelField(label, field);
  gtk_container_add(GTK_CONTAINER(column), label);
  gtk_widget_show(label);
}

void AddLabels(GtkWidget *column) {
  AddLabel(column, general_page.current_gateway,
           ShownText("Current Gateway", "Label_CurrentGW", "Page_General"));
  AddLabel(column, general_page.backup_gateway,
           ShownText("Backup Gateway", "Label_BackupGW", "Page_General"));
  AddLabel(column, general_page.pull_interval,
           ShownText("Pull Interval", "Label_Interval", "Page_General"));
  AddLabel(column, general_page.log_level, ShownText("Log Level", "Label_Log", "Page_General"));
  AddLabel(column, general_page.delay_scope,
           ShownText("Delay Scope", "Label_Delay", "Page_General"));
}

}  // namespace

void BuildGeneralPage(const char *agent_version) {
  general_page.box = gtk_vbox_new(FALSE, 0);
  g_signal_connect(general_page.box, "destroy", G_CALLBACK(gtk_widget_destroyed),
                   &general_page.box);
  AddVersion(agent_version);
  GtkWidget *settings = AddFrame();
  GtkWidget *labels = AddColumn(settings, 10);
  GtkWidget *fields = AddColumn(settings, 5);
  AddFields(fields);  // first: each label is tied to its field
  AddLabels(labels);
  gtk_widget_show(general_page.box);
}

GtkWidget *GeneralPageWidget() {
  return general_page.box;
}
