// Entries that show any bytes and give them back.
#include "pages/filled_entry.h"

#include "pages/guarded_entry.h"
#include "text/shown_text.h"

namespace {

constexpr char kFillingKey[] = "filling";

struct Filling {
  std::string bytes;
  std::string shown;  // UTF-8, cut to what the entry holds
};

void FreeFilling(gpointer filling) {
  delete static_cast<Filling *>(filling);
}

}  // namespace

void FillEntry(GtkEntry *entry, std::string_view bytes) {
  SetTextUnguarded(entry, ShowableBytes(bytes).OrEmpty());
  g_object_set_data_full(G_OBJECT(entry), kFillingKey,
                         new Filling{std::string(bytes), gtk_entry_get_text(entry)}, FreeFilling);
}

std::string EntryBytes(GtkEntry *entry) {
  const std::string text = gtk_entry_get_text(entry);
  const auto *filling = static_cast<Filling *>(g_object_get_data(G_OBJECT(entry), kFillingKey));
  return filling != nullptr && text == filling->shown ? filling->bytes : text;
}
