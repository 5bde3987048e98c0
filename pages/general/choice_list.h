// The rows under the page's combo boxes: numbers and their texts.
#pragma once

#include <gtk/gtk.h>

#include <optional>
#include <string>

#include "pages/general/choices.h"
#include "text/heap_text.h"

enum ChoiceColumn { kNumberColumn, kShownColumn, kChoiceColumns };  // an int, a UTF-8 text

// Makes the store when it is null and empties it otherwise, then appends the fixed rows. It belongs
// to the page for the life of the program. The entry of a combo box that shows it keeps its text.
void BuildChoices(GtkListStore *&store, Choices rows);

void AppendChoice(GtkListStore *store, int number, const std::string &text);

// Makes the first row with that number the active one of a combo box that shows such a store.
// False, with nothing changed, when there is none.
bool SelectNumber(GtkWidget *combo, int number);

// The number of the first row that `typed` names (see NamesRow).
std::optional<int> NumberNamed(GtkListStore *store, const std::string &typed);

// The active row's number in decimal; null when no row is active.
HeapText ActiveNumber(GtkWidget *combo);
