#include "app/main_window.h"

#include <gtk/gtk.h>

#include "app/agent_version.h"
#include "app/save.h"
#include "pages/button_box.h"
#include "pages/general/collect.h"
#include "pages/general/general_page.h"
#include "pages/groups/groups_page.h"
#include "pages/ok_button.h"
#include "settings/agent_settings.h"
#include "settings/xml/settings_file.h"
#include "text/to_utf8.h"

namespace {

constexpr char kIconFile[] = "/usr/share/pixmaps/agent_48.png";
constexpr guint kRefreshInterval = 3000;  // milliseconds

// Cancel, and the window's close control. Nothing is written.
gboolean HandleCancel() {
  agent_version.Reset();
  FreeSettings();
  SaveSettingsFile(0);  // discards the XML document; none is held, the registry is the store
  gtk_main_quit();
  return FALSE;
}

GtkWidget *NewWindow() {
  GtkWidget *window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_title(GTK_WINDOW(window),
                       ShownText("Agent Configure Manager", "Title", "MainWindow").Get());
  gtk_window_set_resizable(GTK_WINDOW(window), FALSE);
  gtk_window_set_position(GTK_WINDOW(window), GTK_WIN_POS_CENTER);
  g_signal_connect_swapped(window, "delete_event", G_CALLBACK(HandleCancel), nullptr);
  g_signal_connect_swapped(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
  gtk_container_set_border_width(GTK_CONTAINER(window), 10);
  return window;
}

void AppendPage(GtkWidget *notebook, GtkWidget *page, const HeapText &title) {
  gtk_notebook_append_page(GTK_NOTEBOOK(notebook), page, gtk_label_new(title.Get()));
}

void AddNotebook(GtkWidget *box, const char *name) {
  GtkWidget *notebook = gtk_notebook_new();
  // For assistive tools: its tabs can have the focus.
  atk_object_set_name(gtk_widget_get_accessible(notebook), name);
  gtk_notebook_set_tab_pos(GTK_NOTEBOOK(notebook), GTK_POS_TOP);
  gtk_box_pack_start(GTK_BOX(box), notebook, TRUE, TRUE, 0);

  BuildGeneralPage(agent_version.Get());
  BuildGroupsPage();
  AppendPage(notebook, GeneralPageWidget(), ShownText("General", "Page_General", "MainWindow"));
  AppendPage(notebook, GroupsPageWidget(), ShownText("Groups", "Page_Groups", "MainWindow"));
  gtk_notebook_set_current_page(GTK_NOTEBOOK(notebook), 0);
}

GtkWidget *AddButton(GtkWidget *box, const HeapText &label, gboolean (*handler)()) {
  GtkWidget *button = gtk_button_new_with_label(label.Get());
  g_signal_connect_swapped(button, "clicked", G_CALLBACK(handler), nullptr);
  gtk_container_add(GTK_CONTAINER(box), button);
  gtk_widget_show(button);
  return button;
}

void AddButtons(GtkWidget *box) {
  GtkWidget *buttons = gtk_hbutton_box_new();
  gtk_container_set_border_width(GTK_CONTAINER(buttons), 5);
  gtk_box_pack_start(GTK_BOX(box), buttons, TRUE, TRUE, 10);
  gtk_button_box_set_layout(GTK_BUTTON_BOX(buttons), GTK_BUTTONBOX_END);
  gtk_box_set_spacing(GTK_BOX(buttons), 10);
  SetMinimumButtonSize(buttons, 85, 20);
  SetOkButton(AddButton(buttons, ShownText("OK", "Button_OK", "General"), HandleOk));
  AddButton(buttons, ShownText("Cancel", "Button_Cancel", "General"), HandleCancel);
}

// A missing icon file is no fault.
void SetIcon(GtkWidget *window) {
  GdkPixbuf *icon = gdk_pixbuf_new_from_file(kIconFile, nullptr);
  if (icon == nullptr) {
    return;
  }
  gtk_window_set_default_icon(icon);
  gtk_window_set_icon(GTK_WINDOW(window), icon);
  g_object_unref(icon);
}

}  // namespace

void OpenMainWindow() {
  GtkWidget *window = NewWindow();
  GtkWidget *box = gtk_vbox_new(FALSE, 0);
  gtk_container_add(GTK_CONTAINER(window), box);
  AddNotebook(box, gtk_window_get_title(GTK_WINDOW(window)));
  AddButtons(box);
  g_timeout_add(kRefreshInterval, RefreshCurrentGateway, nullptr);
  SetIcon(window);
  gtk_widget_show_all(window);
}
