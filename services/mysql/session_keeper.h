// The settings of the caller's session, as they were and as they are given back.
#pragma once

#include <string>

#include "services/mysql/db_connection.h"

namespace kestrelon {

/// Reads the settings that a backup or a restore changes, and gives them back at its end, after a
/// failure too. A connection that broke meanwhile has nothing to be given back.
class SessionKeeper {
 public:
  /// Throws DbError when the server does not tell them.
  explicit SessionKeeper(DbConnection& connection);
  ~SessionKeeper();
  SessionKeeper(const SessionKeeper&) = delete;
  SessionKeeper& operator=(const SessionKeeper&) = delete;

  const std::wstring& sql_mode() const { return sql_mode_; }
  const std::wstring& database() const { return database_; }
  const std::wstring& version() const { return version_; }
  const std::wstring& database_collation() const { return database_collation_; }
  /// Bytes that the server takes as one statement.
  int64_t most_packet() const { return most_packet_; }
  bool in_transaction() const { return in_transaction_; }
  /// A server whose prepared statements may create routines.
  bool executes_immediate() const;

  /// Statements that a failure left open are undone and locks are released first.
  void undo_open_work() { undoes_ = true; }

 private:
  void read_own_variables();
  void read_mariadb_variables();
  void run_quietly(const std::wstring& sql) noexcept;

  DbConnection& connection_;
  std::wstring give_back_;  // one SET
  std::wstring give_back_mariadb_;
  std::wstring sql_mode_;
  std::wstring database_;
  std::wstring version_;
  std::wstring database_collation_;
  int64_t most_packet_ = 0;
  bool in_transaction_ = false;
  bool undoes_ = false;
};

/// Learns whether the connection carries every character in both directions, in a session of
/// utf8mb4.
bool reads_unicode(DbConnection& connection);
bool sends_unicode(DbConnection& connection);

}  // namespace kestrelon
