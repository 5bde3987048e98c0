// What OK does.
#include "app/save.h"

#include <gtk/gtk.h>

#include "app/agent_version.h"
#include "pages/general/collect.h"
#include "settings/agent_settings.h"
#include "text/message_dialogs.h"
#include "text/shown_text.h"

namespace {

void ShowRestartHint() {
  const HeapText hint =
      ShownText("Message", "Msg_RESTART_HINTS",
                "The settings will only take effect after the Agent is restarted.");
  const HeapText warning = ShownText("Message", "Msg_WARNING", "Warning");
  ShowInfoMessage(warning.Get(), hint.Get());
}

// Assistive tools can press Cancel behind a message of the check: the settings are gone then, and
// empty ones must not be written in their place.
bool WasCancelled() {
  return !agent_settings[CurrentGateway];
}

}  // namespace

gboolean OnOkClicked() {
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
