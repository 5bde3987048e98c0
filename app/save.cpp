// Collecting, saving and the hint: what OK does.
#include "app/save.h"

#include <gtk/gtk.h>

#include "app/agent_version.h"
#include "pages/busy.h"
#include "pages/general/collect.h"
#include "pages/general/general_page.h"
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

bool saving_has_ended = false;
bool is_at_work = false;

// True when everything was written and the user has been told.
bool SaveAll() {
  const RefreshHold hold;  // what is collected here is what is saved
  agent_version.Reset();   // the label keeps its own copy, in case the window stays open
  // Assistive tools can press Cancel behind a message.
  if (CollectGeneralSettings() != 0 || saving_has_ended) {
    return false;
  }
  {
    const Busy busy(GeneralPageWidget());
    SaveSettings();
  }
  ShowRestartHint();  // also after a failed write: see SaveSettings
  return true;
}

}  // namespace

// Assistive tools can press the button again behind one of its messages.
gboolean OnOkClicked() {
  if (saving_has_ended || is_at_work) {
    return FALSE;
  }
  is_at_work = true;
  const bool is_saved = SaveAll();
  is_at_work = false;
  if (is_saved) {
    EndSaving();  // a dialog that is still open keeps the window for a while
    gtk_main_quit();
  }
  return is_saved ? TRUE : FALSE;
}

void EndSaving() {
  saving_has_ended = true;
}
