// The first page of the notebook: the agent's version and the five general settings.
#pragma once

#include <gtk/gtk.h>

#include <string_view>

#include "pages/general/duration_field.h"

// The page's widgets, in the order of the screen; they are borrowed from their parents, the stores
// are the page's own for the life of the program. All are null before the page is built. When it is
// destroyed `box` becomes null again, and the other widgets must not be used any more.
struct GeneralPage {
  GtkWidget *box = nullptr;
  GtkEntry *current_gateway = nullptr;
  GtkEntry *backup_gateway = nullptr;
  DurationField pull_interval = {kPullIntervalTraits};
  GtkWidget *log_level = nullptr;  // combo box
  GtkListStore *log_level_store = nullptr;
  DurationField delay_scope = {kDelayScopeTraits};
};
extern GeneralPage general_page;

// Builds the page, once, after the settings and the string table were loaded. The version (bytes;
// empty when none is known) is shown with its line end, and with a replacement for what is not
// UTF-8; a long one is shortened.
void BuildGeneralPage(std::string_view agent_version);

// The built page. The notebook that it is put into owns it.
GtkWidget *GeneralPageWidget();

// The page's fields by their names: what duration_field.h, choice_list.h and log_level.h do, for
// each of them.
void BuildPullIntervalStore();
void BuildLogLevelStore();
void BuildDelayScopeStore();
void SelectPullInterval(GtkWidget *combo);
void SelectDelayScope(GtkWidget *combo);
void ReselectPullInterval(int minutes);
void ReselectDelayScope(int minutes);

// "activate" handlers, and what OK calls. A valid number that does not name a row moves the focus
// on, from the interval to the Log Level and from the delay to OK.
void ValidatePullInterval();
void ValidateDelayScope();
