// From the General page's widgets to the settings, on OK.
#include "pages/general/collect.h"

#include <string>

#include "pages/busy.h"
#include "pages/filled_entry.h"
#include "pages/general/gateway.h"
#include "pages/general/general_page.h"
#include "settings/agent_settings.h"
#include "text/trim_blanks.h"

namespace {

constexpr FieldMessage kCurrentGatewayFault = {"Msg_Current_Gateway_Err",
                                               "Current gateway is not correct.."};
constexpr FieldMessage kBackupGatewayFault = {"Msg_Backup_Gateway_Err",
                                              "Backup gateway is not correct.."};

// Looks a gateway up, which can take seconds.
bool IsGateway(GtkEntry *entry, std::string gateway) {
  const Busy busy(GTK_WIDGET(entry));
  return CheckGateway(gateway);
}

// The setting holds the entry's text in any case. The window can be gone after the look-up.
bool TakeGateway(GtkEntry *entry, Setting setting, const FieldMessage &fault) {
  const std::string gateway = TrimmedBlanks(EntryBytes(entry));
  agent_settings[setting] = HeapText::Copy(gateway);
  const bool is_good = gateway.empty() || IsGateway(entry, gateway);
  if (!is_good && general_page.box != nullptr) {
    ShowFieldMessage(GTK_WIDGET(entry), fault);
  }
  return is_good && general_page.box != nullptr;
}

// Checks the fields that can be typed into, which may show a message.
bool IsValid(ComboKind kind) {
  switch (kind) {
    case kPullInterval:
      ValidatePullInterval();
      return general_page.pull_interval.validated;
    case kDelayScope:
      ValidateDelayScope();
      return general_page.delay_scope.validated;
    case kLogLevel:
      break;
  }
  return true;
}

bool TakeDuration(const DurationField &field, ComboKind kind) {
  HeapText &setting = agent_settings[field.traits.setting];
  setting = ReadComboValue(field.combo, field.store, kind);
  return static_cast<bool>(setting);
}

}  // namespace

HeapText ReadComboValue(GtkWidget *combo, GtkListStore *, ComboKind kind) {
  return IsValid(kind) ? ActiveNumber(combo) : HeapText();
}

int CollectGeneralSettings() {
  const GeneralPage &page = general_page;
  if (!TakeGateway(page.current_gateway, CurrentGateway, kCurrentGatewayFault) ||
      !TakeGateway(page.backup_gateway, BackupGateway, kBackupGatewayFault) ||
      !TakeDuration(page.pull_interval, kPullInterval)) {
    return 1;
  }
  agent_settings[LogLevel] = ReadComboValue(page.log_level, page.log_level_store, kLogLevel);
  return TakeDuration(page.delay_scope, kDelayScope) ? 0 : 1;
}
