// The yardstick for the window: the same widgets, texts and icon as the program's, the same
// libraries, and no work behind them. OK runs a script, shows the hint and ends.
//
// usage: bare_window SCRIPT
#include <gtk/gtk.h>

#include <QByteArray>
#include <QString>
#include <initializer_list>

namespace {

char *save_script = nullptr;

// The program has Qt Core loaded; a library that is linked but not used would not be.
QByteArray TitleThroughQt() {
  return QString::fromLatin1("Agent Configure Manager").toUtf8();
}

GtkWidget *NewBox(GtkWidget *box, GtkWidget *parent, guint border, guint padding) {
  gtk_container_set_border_width(GTK_CONTAINER(box), border);
  if (GTK_IS_BOX(parent)) {
    gtk_box_pack_start(GTK_BOX(parent), box, TRUE, TRUE, padding);
  } else {
    gtk_container_add(GTK_CONTAINER(parent), box);
  }
  return box;
}

GtkWidget *NewFrame(GtkWidget *page, const char *title, int height) {
  GtkWidget *frame = NewBox(gtk_frame_new(title), page, 10, 10);
  gtk_widget_set_size_request(frame, 400, height);
  return NewBox(gtk_hbox_new(FALSE, 0), frame, 5, 0);
}

void AddLabels(GtkWidget *box, std::initializer_list<const char *> texts) {
  for (const char *text : texts) {
    gtk_container_add(GTK_CONTAINER(box), gtk_label_new(text));
  }
}

void AddEntry(GtkWidget *box, const char *text) {
  GtkWidget *entry = gtk_entry_new();
  gtk_entry_set_text(GTK_ENTRY(entry), text);
  gtk_container_add(GTK_CONTAINER(box), entry);
}

void AddCombo(GtkWidget *box, GtkWidget *combo, std::initializer_list<const char *> rows,
              int active) {
  for (const char *row : rows) {
    gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(combo), row);
  }
  gtk_combo_box_set_active(GTK_COMBO_BOX(combo), active);
  gtk_container_add(GTK_CONTAINER(box), combo);
}

GtkWidget *NewGeneralPage() {
  GtkWidget *page = gtk_vbox_new(FALSE, 0);
  GtkWidget *version = NewBox(gtk_vbox_new(FALSE, 0), page, 5, 0);
  AddLabels(NewBox(gtk_hbox_new(FALSE, 10), version, 5, 0), {"Agent Version :", "5.2.1\n"});

  GtkWidget *settings = NewFrame(page, "Settings", 250);
  GtkWidget *labels = NewBox(gtk_vbox_new(FALSE, 10), settings, 5, 10);
  AddLabels(labels,
            {"Current Gateway", "Backup Gateway", "Pull Interval", "Log Level", "Delay Scope"});
  GtkWidget *fields = NewBox(gtk_vbox_new(FALSE, 10), settings, 5, 5);
  AddEntry(fields, "192.168.10.5");
  AddEntry(fields, "192.168.10.6");
  AddCombo(fields, gtk_combo_box_text_new_with_entry(),
           {"Never Pull", "30 minutes", "1 hour", "6 hours", "1 day(recommended)", "7 days"}, 4);
  AddCombo(fields, gtk_combo_box_text_new(), {"Error(recommended)", "Warning", "Information"}, 0);
  AddCombo(fields, gtk_combo_box_text_new_with_entry(),
           {"No Delay", "1 minute", "10 minutes", "30 minutes", "1 hour"}, 2);
  return page;
}

void AddList(GtkWidget *box) {
  GtkListStore *rows = gtk_list_store_new(2, G_TYPE_STRING, G_TYPE_STRING);
  const char *const groups[][2] = {{"Manual Group", "floor2"}, {"P1", "lab"}, {"SALES", "north"}};
  for (const auto &group : groups) {
    gtk_list_store_insert_with_values(rows, nullptr, -1, 0, group[0], 1, group[1], -1);
  }
  GtkWidget *list = gtk_tree_view_new_with_model(GTK_TREE_MODEL(rows));
  int column = 0;
  for (const char *title : {"Group Name", "Value"}) {
    gtk_tree_view_insert_column_with_attributes(
        GTK_TREE_VIEW(list), -1, title, gtk_cell_renderer_text_new(), "text", column++, nullptr);
  }
  GtkWidget *scrolled = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled), GTK_POLICY_AUTOMATIC,
                                 GTK_POLICY_AUTOMATIC);
  gtk_widget_set_size_request(scrolled, 300, 200);
  gtk_scrolled_window_add_with_viewport(GTK_SCROLLED_WINDOW(scrolled), list);
  gtk_box_pack_start(GTK_BOX(box), scrolled, TRUE, TRUE, 0);
}

void AddButtons(GtkWidget *box, std::initializer_list<const char *> labels) {
  for (const char *label : labels) {
    gtk_container_add(GTK_CONTAINER(box), gtk_button_new_with_label(label));
  }
}

GtkWidget *NewGroupsPage() {
  GtkWidget *page = gtk_vbox_new(FALSE, 0);
  GtkWidget *choice = NewBox(gtk_vbox_new(FALSE, 10), page, 5, 0);
  GtkWidget *dhcp = gtk_radio_button_new_with_label(nullptr, "Get Pre-Assign Groups from DHCP Tag");
  gtk_container_add(GTK_CONTAINER(choice), dhcp);
  GtkWidget *own = gtk_radio_button_new_with_label_from_widget(GTK_RADIO_BUTTON(dhcp),
                                                               "Use Static Custom Groups");
  gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(own), TRUE);
  gtk_container_add(GTK_CONTAINER(choice), own);

  GtkWidget *groups = NewFrame(page, "Static Custom Groups", 200);
  AddList(groups);
  AddButtons(NewBox(gtk_vbutton_box_new(), groups, 5, 10), {"Add...", "Edit...", "Delete"});
  return page;
}

void ShowHint() {
  GtkWidget *hint = gtk_message_dialog_new(nullptr, GTK_DIALOG_DESTROY_WITH_PARENT,
                                           GTK_MESSAGE_INFO, GTK_BUTTONS_CLOSE, "Warning");
  gtk_message_dialog_format_secondary_text(
      GTK_MESSAGE_DIALOG(hint), "%s",
      "The settings will only take effect after the Agent is restarted.");
  gtk_window_set_resizable(GTK_WINDOW(hint), FALSE);
  gtk_window_set_position(GTK_WINDOW(hint), GTK_WIN_POS_CENTER);
  gtk_dialog_run(GTK_DIALOG(hint));
}

void OnOk() {
  char shell[] = "/bin/sh";
  char *arguments[] = {shell, save_script, nullptr};
  g_spawn_sync(nullptr, arguments, nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, nullptr, nullptr,
               nullptr, nullptr);
  ShowHint();
  gtk_main_quit();
}

void AddOkAndCancel(GtkWidget *box) {
  GtkWidget *buttons = NewBox(gtk_hbutton_box_new(), box, 5, 10);
  gtk_button_box_set_layout(GTK_BUTTON_BOX(buttons), GTK_BUTTONBOX_END);
  gtk_box_set_spacing(GTK_BOX(buttons), 10);
  GtkWidget *ok = gtk_button_new_with_label("OK");
  g_signal_connect(ok, "clicked", G_CALLBACK(OnOk), nullptr);
  gtk_container_add(GTK_CONTAINER(buttons), ok);
  AddButtons(buttons, {"Cancel"});
}

GtkWidget *NewWindow() {
  GtkWidget *window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_title(GTK_WINDOW(window), TitleThroughQt().constData());
  gtk_window_set_resizable(GTK_WINDOW(window), FALSE);
  gtk_window_set_position(GTK_WINDOW(window), GTK_WIN_POS_CENTER);
  gtk_container_set_border_width(GTK_CONTAINER(window), 10);
  gtk_window_set_default_icon_from_file("/usr/share/pixmaps/agent_48.png", nullptr);
  return window;
}

}  // namespace

int main(int argc, char **argv) {
  gtk_init(&argc, &argv);
  if (argc != 2) {
    return 2;
  }
  save_script = argv[1];
  GtkWidget *window = NewWindow();
  GtkWidget *box = NewBox(gtk_vbox_new(FALSE, 0), window, 0, 0);
  GtkWidget *notebook = NewBox(gtk_notebook_new(), box, 0, 0);
  gtk_notebook_append_page(GTK_NOTEBOOK(notebook), NewGeneralPage(), gtk_label_new("General"));
  gtk_notebook_append_page(GTK_NOTEBOOK(notebook), NewGroupsPage(), gtk_label_new("Groups"));
  AddOkAndCancel(box);
  gtk_widget_show_all(window);
  gtk_main();
  return 0;
}
