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

#include "service/store_address.h"

namespace borvane::mirror {

/// Why the database did not do what it was asked for. The text names no value that was to be kept.
class StoreFailure : public std::runtime_error {
 public:
  explicit StoreFailure(const QString &text, bool may_be_kept = false)
      : std::runtime_error(text.toStdString()), may_be_kept_(may_be_kept) {}

  /// Whether the changes may be kept for all that: the connection broke at the end of the transaction.
  bool MayBeKept() const { return may_be_kept_; }

 private:
  bool may_be_kept_;
};

/// A file's device and its number there: what it is, whatever its name.
using FileIdentity = std::pair<quint64, quint64>;

/// A connection to an SQL database. It belongs to the thread that opened it. Everything but Close throws StoreFailure.
class Database {
 public:
  explicit Database(StoreAddress address);
  ~Database() { Close(); }
  Database(const Database &) = delete;
  Database &operator=(const Database &) = delete;

  const StoreAddress &address() const { return address_; }

  /// Whether there is something to read: a PostgreSQL server always has, a file has to be there. One that cannot be
  /// looked for counts as there: opening it tells why not.
  bool Exists() const;

  /// Whether it is a file that this program may not change, or that it cannot keep a log beside.
  bool IsWriteProtected() const;

  /// Whether the connection stands, to the file that has the name now.
  bool IsOpen() const;

  /// Opens the connection; makes the file, for its owner alone, when there is none. One that is there stays as it is.
  void Open();

  /// Opens a file for reading alone. A file without a log may be changed by nobody as long as it is open.
  void OpenToRead();

  /// Makes a commit one write to a log beside the file. This changes the file.
  void UseLog();

  /// Ends the connection and takes back what a transaction has not ended.
  void Close();

  /// Begins a transaction when there is no other one, of any program.
  void Begin();

  /// Ends the transaction; what it changed is on the disk then, in the file that has the name.
  void Commit();

  /// Executes a statement; each "?" in it stands for a value.
  void Run(const QString &statement, const QVariantList &values = {});

  /// Executes a statement and gives the columns of the first row of its result; nothing when there is no row.
  QVariantList Row(const QString &statement, const QVariantList &values = {});

  /// Executes a statement and calls `take` with the first column of each row, until it gives false.
  void ForEachRow(const QString &statement, const QVariantList &values, const std::function<bool(QByteArray)> &take);

 private:
  void MakeFile() const;
  void Connect(const QString &name, const QString &options);
  QSqlQuery &Execute(const QString &statement, const QVariantList &values);
  QSqlQuery &Prepared(const QString &statement);

  const StoreAddress address_;
  const QString name_;  ///< of the connection, among those of the process
  QSqlDatabase connection_;
  std::optional<FileIdentity> file_;  ///< what the connection is to; nothing for PostgreSQL
  std::map<QString, QSqlQuery> prepared_;
  std::optional<QSqlQuery> plain_;  ///< the last statement without values
};

}  // namespace borvane::mirror
