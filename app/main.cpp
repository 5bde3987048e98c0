// Start-up, in its fixed order.
#include <gtk/gtk.h>

#include <cstdlib>

#include "app/agent_version.h"
#include "app/main_window.h"
#include "settings/agent_settings.h"
#include "text/string_table.h"

int main(int argc, char **argv) {
  LoadStringTable();
  setenv("DISPLAY", ":0.0", 0);
  gtk_init(&argc, &argv);
  QueryAgentVersion();
  LoadSettings();
  OpenMainWindow();
  gtk_main();
  return 0;
}
