#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

#include "store/store_address.h"

namespace borvane::mirror {

/// Why the database did not do what was asked. The text holds no value of a statement.
class StoreFailure : public std::runtime_error {
 public:
  explicit StoreFailure(const QString &text, bool may_be_kept = false)
      : std::runtime_error(text.toStdString()), may_be_kept_(may_be_kept) {}

  /// Whether the changes may have been kept in spite of it: the connection broke during the commit.
  bool MayBeKept() const { return may_be_kept_; }

 private:
  bool may_be_kept_;
};

/// A file's device and inode: the same file under any name.
using FileIdentity = std::pair<quint64, quint64>;

/// A connection to an SQL database. It belongs to the thread that opened it. Everything but Close throws StoreFailure.
///
/// A file may be replaced while it is open. No change goes to the new file by way of the old one's connection or log:
/// Begin and Commit fail, IsOpen is false, and Close leaves both files whole.
class Database {
 public:
  explicit Database(StoreAddress address);
  ~Database() { Close(); }
  Database(const Database &) = delete;
  Database &operator=(const Database &) = delete;

  const StoreAddress &address() const { return address_; }

  /// Whether there is something to read: a PostgreSQL database always counts as there, a file has to exist. A file
  /// that cannot be looked up counts as there: opening it reports the reason.
  bool Exists() const;

  /// Whether it is a file that this program may not change, or beside which it may not create a log.
  bool IsWriteProtected() const;

  /// Whether there is a connection, and to the file that has the name now.
  bool IsOpen() const;

  /// Opens the connection. Creates the file, for its owner alone, when there is none; otherwise leaves it unchanged.
  void Open();

  /// Opens a file for reading only. A file that has no log must not be changed while it is open in this way.
  void OpenToRead();

  /// Turns on the write-ahead log: a commit is one write to a log beside the file. This changes the file.
  void UseLog();

  /// Ends the connection and rolls back an open transaction.
  void Close();

  /// Begins a transaction as soon as no program has another one open.
  void Begin();

  /// Commits the transaction; on return its changes are on the disk, in the file that has the name.
  void Commit();

  /// Executes a statement; each "?" in it is a placeholder for a value.
  void Run(const QString &statement, const QVariantList &values = {});

  /// Executes a statement and returns the columns of its first row; nothing when there is none.
  QVariantList Row(const QString &statement, const QVariantList &values = {});

  /// Executes a statement and calls `take` with each row, until `take` returns false.
  void ForEachRow(const QString &statement, const QVariantList &values,
                  const std::function<bool(const QSqlQuery &row)> &take);

 private:
  void CreateFile() const;
  void RequireItsFile() const;
  bool HasLostItsFile() const;
  void DiscardLog();
  void Connect(const QString &name, const QString &options);
  QSqlQuery &Execute(const QString &statement, const QVariantList &values);
  QSqlQuery &Prepared(const QString &statement);

  const StoreAddress address_;
  const QString name_;  ///< of the connection, among those of the process
  QSqlDatabase connection_;
  QString path_;                      ///< of the open file, with its symbolic links resolved
  std::optional<FileIdentity> file_;  ///< the open file; nothing for PostgreSQL
  std::optional<FileIdentity> log_;   ///< the log beside it, once it is open
  std::map<QString, QSqlQuery> prepared_;
  std::optional<QSqlQuery> plain_;  ///< the last statement without values
};

}  // namespace borvane::mirror
