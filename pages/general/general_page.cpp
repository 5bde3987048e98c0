// The first page of the notebook, built from top to bottom.
#include "pages/general/general_page.h"

#include "pages/filled_entry.h"
#include "pages/general/log_level.h"
#include "pages/guarded_entry.h"
#include "pages/ok_button.h"
#include "pages/shortened_label.h"
#include "pages/widgets.h"
#include "text/shown_text.h"

GeneralPage general_page;

namespace {

HeapText GeneralText(const char *key, const char *english) {
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
  Align(AddLabel(row, version, GeneralText("Label_AgentVer", "Agent Version :")),
        GTK_JUSTIFY_CENTER);
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

gboolean OnPullIntervalFocus() {
  return CheckOnLeaving(general_page.pull_interval);
}

gboolean OnDelayScopeFocus() {
  return CheckOnLeaving(general_page.delay_scope);
}

gboolean OnPullIntervalKey(gpointer, const GdkEventKey *event) {
  return CheckRoom(general_page.pull_interval, event);
}

gboolean OnDelayScopeKey(gpointer, const GdkEventKey *event) {
  return CheckRoom(general_page.delay_scope, event);
}

void FocusLogLevel() {
  gtk_widget_grab_focus(general_page.log_level);
}

void OnLogLevelChanged() {
  agent_settings[LogLevel] = ActiveNumber(general_page.log_level);
}

// The functions that fill a duration's list, select its row and handle its signals.
struct DurationHandlers {
  void (*build_store)();
  void (*select)(GtkWidget *combo);
  gboolean (*on_focus)();
  gboolean (*on_key)(gpointer, const GdkEventKey *event);
  void (*on_activate)();
  void (*move_on)();
};

// Signals are connected last, so that opening the window changes nothing.
void AddDuration(GtkWidget *column, DurationField &field, const DurationHandlers &handlers) {
  field.move_on = handlers.move_on;
  handlers.build_store();
  AddDurationCombo(field, column);
  handlers.select(field.combo);
  g_signal_connect_swapped(field.entry, "focus", G_CALLBACK(handlers.on_focus), nullptr);
  g_signal_connect_swapped(field.entry, "key-press-event", G_CALLBACK(handlers.on_key), nullptr);
  g_signal_connect_swapped(field.entry, "activate", G_CALLBACK(handlers.on_activate), nullptr);
}

GtkWidget *AddLogLevel(GtkWidget *column) {
  BuildLogLevelStore();
  GtkWidget *combo = NewLogLevelCombo(general_page.log_level_store);
  SelectLogLevel(combo);
  g_signal_connect_swapped(combo, "changed", G_CALLBACK(OnLogLevelChanged), nullptr);
  IgnoreWheel(combo);
  AddField(column, combo);
  return combo;
}

void AddFields(GtkWidget *column) {
  GeneralPage &page = general_page;
  page.current_gateway = AddGateway(column, CurrentGateway);
  page.backup_gateway = AddGateway(column, BackupGateway);
  AddDuration(column, page.pull_interval,
              {BuildPullIntervalStore, SelectPullInterval, OnPullIntervalFocus, OnPullIntervalKey,
               ValidatePullInterval, FocusLogLevel});
  page.log_level = AddLogLevel(column);
  AddDuration(column, page.delay_scope,
              {BuildDelayScopeStore, SelectDelayScope, OnDelayScopeFocus, OnDelayScopeKey,
               ValidateDelayScope, FocusOkButton});
}

void AddLabels(GtkWidget *column) {
  const GeneralPage &page = general_page;
  AddLabel(column, GTK_WIDGET(page.current_gateway),
           GeneralText("Label_CurrentGW", "Current Gateway"));
  AddLabel(column, GTK_WIDGET(page.backup_gateway),
           GeneralText("Label_BackupGW", "Backup Gateway"));
  AddLabel(column, page.pull_interval.combo, GeneralText("Label_Interval", "Pull Interval"));
  AddLabel(column, page.log_level, GeneralText("Label_Log", "Log Level"));
  AddLabel(column, page.delay_scope.combo, GeneralText("Label_Delay", "Delay Scope"));
}

}  // namespace

void BuildGeneralPage(std::string_view agent_version) {
  general_page.box = gtk_vbox_new(FALSE, 0);
  g_signal_connect(general_page.box, "destroy", G_CALLBACK(gtk_widget_destroyed),
                   &general_page.box);
  GtkLabel *version = AddVersion();
  GtkWidget *row = AddFrame(general_page.box, GeneralText("Frame_Settings", "Settings"), 400, 250);
  GtkWidget *labels = AddColumn(row, 10);
  GtkWidget *fields = AddColumn(row, 5);
  AddFields(fields);  // before the labels: each is tied to its field
  AddLabels(labels);
  ShowShortened(general_page.box, version, ShowableBytes(agent_version).OrEmpty(), "5.2.1\n");
  gtk_widget_show(general_page.box);
}

GtkWidget *GeneralPageWidget() {
  return general_page.box;
}

void BuildPullIntervalStore() {
  BuildRows(general_page.pull_interval);
}

void BuildLogLevelStore() {
  BuildChoices(general_page.log_level_store, kLogLevels);
}

void BuildDelayScopeStore() {
  BuildRows(general_page.delay_scope);
}

void SelectPullInterval(GtkWidget *combo) {
  SelectStored(general_page.pull_interval, combo);
}

void SelectDelayScope(GtkWidget *combo) {
  SelectStored(general_page.delay_scope, combo);
}

void ReselectPullInterval(int minutes) {
  Reselect(general_page.pull_interval, minutes);
}

void ReselectDelayScope(int minutes) {
  Reselect(general_page.delay_scope, minutes);
}

void ValidatePullInterval() {
  Validate(general_page.pull_interval);
}

void ValidateDelayScope() {
  Validate(general_page.delay_scope);
}
