// The Log Level: a combo box of three fixed rows.
#include "pages/general/log_level.h"

#include "pages/general/choice_list.h"
#include "pages/general/general_page_widgets.h"
#include "settings/agent_settings.h"

void BuildLogLevelStore() {
  BuildChoices(general_page.log_level_store, kLogLevels);
}

void SelectLogLevel(GtkWidget *combo) {
  const int level = StoredNumber(agent_settings[LogLevel].Get(), 0).value_or(0);
  if (!SelectNumber(combo, level)) {
    gtk_combo_box_set_active(GTK_COMBO_BOX(combo), 0);
  }
}

void OnLogLevelChanged() {
  agent_settings[LogLevel] = ActiveNumber(general_page.log_level);
}
