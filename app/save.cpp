#include "app/save.h"

#include <gtk/gtk.h>

#include "app/agent_version.h"
#include "pages/general/collect.h"
#include "settings/agent_settings.h"
#include "text/message_dialogs.h"
#include "text/to_utf8.h"

namespace {

void ShowRestartHint() {
  const HeapText hint =
      ShownText("The settings will only take effect after the Agent is restarted.",
                "Msg_RESTART_HINTS", "Message");
  const HeapText warning = ShownText("Warning", "Msg_WARNING", "Message");
  ShowInfoMessage(warning.Get(), hint.Get());
}

// Assistive tools can press Cancel behind a message of the check: the settings are gone then, and
// empty ones must not be written in their place.
bool WasCancelled() {
  return !agent_settings[CurrentGateway];
}

}  // namespace

gboolean HandleOk() {
  const RefreshHold hold;  // what is collected here is what is saved
  agent_version.Reset();   // the label has a copy of its own, should the window stay open
  if (CollectGeneralSettings() != 0 || WasCancelled()) {
    return FALSE;
  }
  SaveSettings();
  ShowRestartHint();  // also after a failed write: see SaveSettings
  gtk_main_quit();
  return TRUE;
}
