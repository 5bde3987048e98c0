#include "pages/general/collect.h"

#include <string>

#include "pages/general/duration_check.h"
#include "pages/general/duration_choices.h"
#include "pages/general/gateway.h"
#include "pages/general/general_page_widgets.h"
#include "pages/quote_guard.h"
#include "settings/agent_settings.h"
#include "text/message_dialogs.h"
#include "text/to_utf8.h"
#include "text/trim_blanks.h"

namespace {

int refresh_holds = 0;

// True when the entry is empty or names a gateway; the setting holds its text in any case.
bool TakeGateway(GtkWidget *entry, Setting setting) {
  std::string gateway = TrimmedBlanks(GuardedText(GTK_ENTRY(entry)).c_str());
  agent_settings[setting] = HeapText::Copy(gateway.c_str());
  return gateway.empty() || CheckGateway(gateway);  // replaces its argument
}

bool TakeComboValue(GtkWidget *combo, GtkListStore *store, ComboKind kind, Setting setting) {
  agent_settings[setting] = ReadComboValue(combo, store, kind);
  return static_cast<bool>(agent_settings[setting]);
}

}  // namespace

HeapText ReadComboValue(GtkWidget *combo, GtkListStore *store, ComboKind kind) {
  if (kind == kPullInterval) {
    ValidatePullInterval();
    if (!pull_interval_validated) {
      return HeapText();
    }
  }
  if (kind == kDelayScope) {
    ValidateDelayScope();
    if (!delay_scope_validated) {
      return HeapText();
    }
  }
  return ActiveValue(combo, store);
}

int CollectGeneralSettings() {
  const GeneralPage &page = general_page;
  if (!TakeGateway(page.current_gateway, CurrentGateway)) {
    ShowMessage(
        ShownText("Current gateway is not correct..", "Msg_Current_Gateway_Err", "Message").Get());
    return 1;
  }
  if (!TakeGateway(page.backup_gateway, BackupGateway)) {
    ShowMessage(
        ShownText("Backup gateway is not correct..", "Msg_Backup_Gateway_Err", "Message").Get());
    return 1;
  }
  if (!TakeComboValue(page.pull_interval, page.pull_interval_store, kPullInterval, Interval_min)) {
    return 1;
  }
  TakeComboValue(page.log_level, page.log_level_store, kLogLevel, LogLevel);
  return TakeComboValue(page.delay_scope, page.delay_scope_store, kDelayScope, DelayScope_min) ? 0
                                                                                               : 1;
}

RefreshHold::RefreshHold() {
  ++refresh_holds;
}

RefreshHold::~RefreshHold() {
  --refresh_holds;
}

gboolean RefreshCurrentGateway(gpointer) {
  HeapText gateway;
  if (ReadCurrentGateway(gateway) && refresh_holds == 0) {
    agent_settings[CurrentGateway] = std::move(gateway);
  }
  return TRUE;
}
