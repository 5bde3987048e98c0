// Start-up, in its fixed order.
#include <gtk/gtk.h>

#include <cstdint>
#include <cstdlib>
#include <optional>

#include "app/agent_version.h"
#include "app/main_window.h"
#include "app/platform.h"
#include "app/print_now.h"
#include "app/raise_window.h"
#include "app/single_instance.h"
#include "app/standard_descriptors.h"
#include "settings/agent_settings.h"
#include "text/string_table.h"

int main(int argc, char **argv) {
  OpenStandardDescriptors();
  // Before anything else is looked at, and an image id that is too short ends the process right
  // here: nothing catches it.
  const PlatformRecord platform = IdentifyPlatform();
  if (PlatformCode(platform) == kPellion5Code) {
    PrintNow("Pellion 5\n");
    if (AnotherInstanceHoldsLock()) {
      if (const std::optional<std::int32_t> pid = RunningInstancePid()) {
        RaiseRunningInstance(*pid);
      }
      return 0;
    }
  }
  LoadStringTable();
  setenv("DISPLAY", ":0.0", 0);
  gtk_init(&argc, &argv);
  QueryAgentVersion();
  LoadSettings();
  OpenMainWindow();
  gtk_main();
  return 0;
}
