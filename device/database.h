// The registry's database as its client uses it: SQLite, one statement at a time.
#ifndef DEVICE_DATABASE_H_
#define DEVICE_DATABASE_H_

#include <sqlite3.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>

// A column or parameter: bytes of any kind, or NULL.
using Blob = std::optional<std::string>;

class Database {
 public:
  Database() = default;
  Database(const Database &) = delete;
  Database &operator=(const Database &) = delete;
  ~Database() { sqlite3_close(handle_); }

  // Opens an existing database for reading and writing.
  bool Open(const char *path);

  // Runs one statement with its parameters and hands each row of its result to `row`. False on any
  // failure, whose reason is then in Error().
  bool Run(const char *sql, std::initializer_list<Blob> parameters = {},
           const std::function<void(sqlite3_stmt *)> &row = nullptr);

  // Runs `work` in one transaction, undone when it returns false. False when anything failed.
  bool Transaction(const std::function<bool()> &work);

  // How many rows the last statement that succeeded changed.
  int Changes() const { return sqlite3_changes(handle_); }
  sqlite3_int64 LastId() const { return sqlite3_last_insert_rowid(handle_); }

  // Why the last Run or Transaction failed.
  const std::string &Error() const { return error_; }

 private:
  bool Failed();

  sqlite3 *handle_ = nullptr;
  std::string error_;
};

// A column of a row as bytes; empty for NULL.
std::string Column(sqlite3_stmt *row, int index);

#endif  // DEVICE_DATABASE_H_
