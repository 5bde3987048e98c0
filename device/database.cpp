// The statements and transactions of the registry's database.
#include "device/database.h"

#include <memory>

namespace {

constexpr int kBusyMilliseconds = 30000;

using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

}  // namespace

bool Database::Open(const char *path) {
  return sqlite3_open_v2(path, &handle_, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK &&
         sqlite3_busy_timeout(handle_, kBusyMilliseconds) == SQLITE_OK &&
         // A simulated device never loses power, so nothing waits for the disk.
         Run("PRAGMA synchronous = OFF");
}

bool Database::Run(const char *sql, std::initializer_list<Blob> parameters,
                   const std::function<void(sqlite3_stmt *)> &row) {
  sqlite3_stmt *prepared = nullptr;
  if (sqlite3_prepare_v2(handle_, sql, -1, &prepared, nullptr) != SQLITE_OK) {
    return Failed();
  }
  const Statement statement(prepared, sqlite3_finalize);
  int index = 0;
  for (const Blob &parameter : parameters) {
    ++index;
    if (parameter && sqlite3_bind_blob64(prepared, index, parameter->data(), parameter->size(),
                                         SQLITE_STATIC) != SQLITE_OK) {
      return Failed();
    }
  }
  int result = SQLITE_ROW;
  while ((result = sqlite3_step(prepared)) == SQLITE_ROW) {
    if (row) {
      row(prepared);
    }
  }
  return result == SQLITE_DONE || Failed();
}

bool Database::Transaction(const std::function<bool()> &work) {
  if (!Run("BEGIN IMMEDIATE")) {
    return false;
  }
  if (work() && Run("COMMIT")) {
    return true;
  }
  const std::string reason = error_;
  Run("ROLLBACK");  // Fails when the error has rolled back by itself.
  error_ = reason;
  return false;
}

bool Database::Failed() {
  error_ = sqlite3_errmsg(handle_);
  return false;
}

std::string Column(sqlite3_stmt *row, int index) {
  const void *bytes = sqlite3_column_blob(row, index);
  const int size = sqlite3_column_bytes(row, index);
  return bytes == nullptr
             ? std::string()
             : std::string(static_cast<const char *>(bytes), static_cast<std::size_t>(size));
}
