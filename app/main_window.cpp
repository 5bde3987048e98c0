// The main window and its end.
#include "app/main_window.h"

#include <gtk/gtk.h>

#include "app/agent_version.h"
#include "app/save.h"
#include "pages/general/general_page.h"
#include "pages/groups/groups_page.h"
#include "pages/ok_button.h"
#include "pages/widgets.h"
#include "settings/agent_settings.h"
#include "settings/xml/settings_file.h"
#include "text/shown_text.h"

namespace {

constexpr char kIconFile[] = "/usr/share/pixmaps/agent_48.png";
constexpr guint kRefreshInterval = 3000;  // milliseconds

// Cancel, and the window's close control. Nothing is written, not even by an OK that is at work or
// comes later: while a dialog is open, the window is still there.
gboolean OnCancel() {
  EndSaving();
  agent_version.Reset();
  FreeSettings();
  SaveSettingsFile(0);  // discards the XML document; none is held, the registry is the store
  gtk_main_quit();
  return FALSE;
}

// However the window comes to its end.
void OnWindowDestroyed() {
  EndSaving();
  gtk_main_quit();
}

gboolean OnRefreshTimer(gpointer) {
  RefreshCurrentGateway();
  return TRUE;  // to be called again
}

GtkWidget *NewWindow() {
  GtkWidget *window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_title(GTK_WINDOW(window),
                       ShownText("MainWindow", "Title", "Agent Configure Manager").Get());
  gtk_window_set_resizable(GTK_WINDOW(window), FALSE);
  gtk_window_set_position(GTK_WINDOW(window), GTK_WIN_POS_CENTER);
  g_signal_connect_swapped(window, "delete_event", G_CALLBACK(OnCancel), nullptr);
  g_signal_connect_swapped(window, "destroy", G_CALLBACK(OnWindowDestroyed), nullptr);
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

  BuildGeneralPage(agent_version.OrEmpty());
  BuildGroupsPage();
  AppendPage(notebook, GeneralPageWidget(), ShownText("MainWindow", "Page_General", "General"));
  AppendPage(notebook, GroupsPageWidget(), ShownText("MainWindow", "Page_Groups", "Groups"));
  gtk_notebook_set_current_page(GTK_NOTEBOOK(notebook), 0);
}

void AddOkAndCancel(GtkWidget *box) {
  GtkWidget *buttons = gtk_hbutton_box_new();
  AddButtonBox(box, buttons, GTK_BUTTONBOX_END);
  SetOkButton(AddButton(buttons, ShownText("General", "Button_OK", "OK"), G_CALLBACK(OnOkClicked)));
  AddButton(buttons, ShownText("General", "Button_Cancel", "Cancel"), G_CALLBACK(OnCancel));
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
  AddOkAndCancel(box);
  // After all else: with a client that takes longer than the interval a refresh is always due, and
  // what is clicked and drawn is not to wait for one each time.
  g_timeout_add_full(G_PRIORITY_LOW, kRefreshInterval, OnRefreshTimer, nullptr, nullptr);
  SetIcon(window);
  gtk_widget_show_all(window);
}
