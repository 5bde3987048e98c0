#include "pages/general/duration_choices.h"

#include <optional>

#include "pages/general/choices.h"
#include "pages/general/duration_text.h"
#include "pages/general/general_page_widgets.h"
#include "settings/agent_settings.h"

bool pull_interval_matched = false;
bool delay_scope_matched = false;

namespace {

void AppendRow(GtkListStore *store, int value, const char *text) {
  gtk_list_store_insert_with_values(store, nullptr, -1, kValueColumn, value, kTextColumn, text, -1);
}

template <std::size_t size>
void BuildStore(GtkListStore *&store, const Choice (&choices)[size]) {
  if (store == nullptr) {
    store = gtk_list_store_new(kChoiceColumns, G_TYPE_INT, G_TYPE_STRING);
  }
  gtk_list_store_clear(store);
  for (const Choice &choice : choices) {
    AppendRow(store, choice.value, ChoiceText(choice.english, choice.key).Get());
  }
}

int ValueAt(GtkListStore *store, GtkTreeIter *row) {
  int value = 0;
  gtk_tree_model_get(GTK_TREE_MODEL(store), row, kValueColumn, &value, -1);
  return value;
}

HeapText TextAt(GtkListStore *store, GtkTreeIter *row) {
  gchar *text = nullptr;
  gtk_tree_model_get(GTK_TREE_MODEL(store), row, kTextColumn, &text, -1);
  return HeapText::Adopt(text);
}

// Walks the rows from the first one to the one that `found` accepts.
template <typename Found>
std::optional<GtkTreeIter> FindRow(GtkListStore *store, Found found) {
  GtkTreeIter row;
  for (gboolean more = gtk_tree_model_get_iter_first(GTK_TREE_MODEL(store), &row); more == TRUE;
       more = gtk_tree_model_iter_next(GTK_TREE_MODEL(store), &row)) {
    if (found(&row)) {
      return row;
    }
  }
  return std::nullopt;
}

std::optional<GtkTreeIter> FindValue(GtkListStore *store, int value) {
  return FindRow(store, [&](GtkTreeIter *row) { return ValueAt(store, row) == value; });
}

// Just the value: selecting it builds the list anew, and no row of the old one may be touched then.
std::optional<int> ValueNamed(const std::string &typed, GtkListStore *store) {
  auto row = FindRow(store, [&](GtkTreeIter *candidate) {
    return NamesRow(typed, TextAt(store, candidate).OrEmpty(), ValueAt(store, candidate));
  });
  return row.has_value() ? std::make_optional(ValueAt(store, &*row)) : std::nullopt;
}

void Activate(GtkWidget *combo, GtkTreeIter row) {
  gtk_combo_box_set_active_iter(GTK_COMBO_BOX(combo), &row);
}

void SelectDuration(GtkWidget *combo, GtkListStore *store, const char *kind, int minutes) {
  auto row = FindValue(store, minutes);
  if (!row.has_value()) {
    AppendRow(store, minutes, DurationText(kind, minutes).c_str());
    row = FindValue(store, minutes);
  }
  Activate(combo, *row);
}

}  // namespace

void BuildPullIntervalStore() {
  BuildStore(general_page.pull_interval_store, kPullIntervals);
}

void BuildLogLevelStore() {
  BuildStore(general_page.log_level_store, kLogLevels);
}

void BuildDelayScopeStore() {
  BuildStore(general_page.delay_scope_store, kDelayScopes);
}

void SelectPullInterval(GtkWidget *combo) {
  if (const auto minutes = StoredNumber(agent_settings[Interval_min].Get(), kRecommendedInterval)) {
    SelectDuration(combo, general_page.pull_interval_store, "interval", *minutes);
  }
}

void SelectLogLevel(GtkWidget *combo) {
  GtkListStore *store = general_page.log_level_store;
  const int level = StoredNumber(agent_settings[LogLevel].Get(), 0).value_or(0);
  if (const auto row = FindValue(store, level)) {
    Activate(combo, *row);
  } else {
    gtk_combo_box_set_active(GTK_COMBO_BOX(combo), 0);
  }
}

void SelectDelayScope(GtkWidget *combo) {
  if (const auto minutes = StoredNumber(agent_settings[DelayScope_min].Get(), 0)) {
    SelectDuration(combo, general_page.delay_scope_store, "delayScope", *minutes);
  }
}

void ReselectPullInterval(int minutes) {
  BuildPullIntervalStore();
  SelectDuration(general_page.pull_interval, general_page.pull_interval_store, "interval", minutes);
}

void ReselectDelayScope(int minutes) {
  BuildDelayScopeStore();
  SelectDuration(general_page.delay_scope, general_page.delay_scope_store, "delayscope", minutes);
}

void MatchPullInterval(const std::string &typed) {
  const auto minutes = ValueNamed(typed, general_page.pull_interval_store);
  pull_interval_matched = minutes.has_value();
  if (pull_interval_matched) {
    ReselectPullInterval(*minutes);
  }
}

void MatchDelayScope(const std::string &typed) {
  const auto minutes = ValueNamed(typed, general_page.delay_scope_store);
  delay_scope_matched = minutes.has_value();
  if (delay_scope_matched) {
    ReselectDelayScope(*minutes);
  }
}

HeapText ActiveValue(GtkWidget *combo, GtkListStore *store) {
  GtkTreeIter row;
  if (gtk_combo_box_get_active_iter(GTK_COMBO_BOX(combo), &row) == FALSE) {
    return HeapText();
  }
  return HeapText::Copy(std::to_string(ValueAt(store, &row)).c_str());
}

void OnLogLevelChanged() {
  agent_settings[LogLevel] = ActiveValue(general_page.log_level, general_page.log_level_store);
}
