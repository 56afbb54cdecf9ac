#include "store/database.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlRecord>
#include <QThread>
#include <QUrl>
#include <QUuid>
#include <cerrno>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace borvane::mirror {

namespace {

/// How long a file may be locked by another program before it counts as a failure.
constexpr const char *sqlite_options = "QSQLITE_BUSY_TIMEOUT=1000";

/// SQLite's number for a file that another program has locked.
constexpr const char *sqlite_busy = "5";

/// A slow statement and a dead connection each fail within some seconds: the latter by tcp_user_timeout while something
/// is sent, by the keepalives while an answer is awaited. The tables are in a schema of their own, so that the database
/// may hold other things. A commit is on the disk when it is acknowledged, whatever the server's settings are.
constexpr const char *postgresql_options =
    "connect_timeout=3;tcp_user_timeout=5000;keepalives=1;keepalives_idle=3;keepalives_interval=1;keepalives_count=3;"
    "application_name=borvane-mirror;"
    "options='-c statement_timeout=5000 -c lock_timeout=2000 -c idle_in_transaction_session_timeout=10000 "
    "-c synchronous_commit=on -c client_min_messages=error -c search_path=%1'";

/// What the database says, without the lines below it, which may quote the statement with its values.
QString FirstLine(const QSqlError &error) {
  const QString text = error.databaseText().trimmed();
  return text.isEmpty() ? error.driverText() : text.section('\n', 0, 0).simplified();
}

/// The file that has the name now; nothing, and the reason in errno, when there is none.
std::optional<FileIdentity> Identify(const QString &path) {
#ifdef Q_OS_UNIX
  struct stat status = {};
  if (::stat(QFile::encodeName(path).constData(), &status) != 0)
    return std::nullopt;
  return FileIdentity(status.st_dev, status.st_ino);
#else
  // On other systems a file keeps its name while it is open.
  errno = ENOENT;
  return QFile::exists(path) ? std::optional(FileIdentity()) : std::nullopt;
#endif
}

bool MayWrite(const QString &path) {
#ifdef Q_OS_UNIX
  return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK, AT_EACCESS) == 0;
#else
  return QFileInfo(path).isWritable();
#endif
}

}  // namespace

Database::Database(StoreAddress address)
    : address_(std::move(address)), name_(QUuid::createUuid().toString(QUuid::WithoutBraces)) {}

bool Database::Exists() const { return !address_.IsFile() || Identify(address_.file) || errno != ENOENT; }

bool Database::IsWriteProtected() const {
  return address_.IsFile() && !(MayWrite(address_.file) && MayWrite(QFileInfo(address_.file).path()));
}

bool Database::IsOpen() const {
  return connection_.isOpen() && (!address_.IsFile() || file_ == Identify(address_.file));
}

void Database::Open() {
  if (!address_.IsFile()) {
    Connect(address_.database, QString(postgresql_options).arg(address_.schema));
    return;
  }
  if (!Exists())
    CreateFile();
  Connect(address_.file, sqlite_options);
  // A commit is on the disk when it returns.
  Run("pragma synchronous = full");
  Run("pragma foreign_keys = on");
}

void Database::OpenToRead() {
  QUrl url = QUrl::fromLocalFile(QFileInfo(address_.file).absoluteFilePath());
  // Without "immutable" SQLite creates a log even to read.
  url.setQuery(QFile::exists(address_.file + "-wal") ? "mode=ro" : "mode=ro&immutable=1");
  Connect(url.toString(QUrl::FullyEncoded), "QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI");
}

void Database::CreateFile() const {
  const QDir folder = QFileInfo(address_.file).dir();
  const bool had_folder = folder.exists();
  if (!had_folder && !folder.mkpath("."))
    throw StoreFailure("its folder cannot be created");
  if (!had_folder)
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  QFile file(address_.file);
  // Another mirror may be creating it at the same time.
  if (!file.open(QFile::WriteOnly | QFile::NewOnly, QFile::ReadOwner | QFile::WriteOwner) && !Exists())
    throw StoreFailure("the file cannot be created: " + file.errorString());
}

void Database::Connect(const QString &name, const QString &options) {
  const QString driver = address_.IsFile() ? "QSQLITE" : "QPSQL";
  if (!QSqlDatabase::isDriverAvailable(driver))
    throw StoreFailure("Qt's driver " + driver + " is not installed");
  if (address_.IsFile()) {
    file_ = Identify(address_.file);
    path_ = QFileInfo(address_.file).canonicalFilePath();
  }
  connection_ = QSqlDatabase::addDatabase(driver, name_);
  connection_.setHostName(address_.host);
  connection_.setPort(address_.port);
  connection_.setUserName(address_.user);
  connection_.setPassword(address_.password);
  connection_.setDatabaseName(name);
  connection_.setConnectOptions(options);
  if (!connection_.open())
    throw StoreFailure(FirstLine(connection_.lastError()));
  RequireItsFile();
}

void Database::UseLog() {
  if (!address_.IsFile())
    return;
  QSqlQuery query(connection_);
  // SQLite's own timeout covers another program's lock, but not one that is changing the journal mode, too.
  for (const QDeadlineTimer deadline(2'000); !query.exec("pragma journal_mode = wal"); QThread::msleep(5))
    if (query.lastError().nativeErrorCode() != sqlite_busy || deadline.hasExpired())
      throw StoreFailure(FirstLine(query.lastError()));
  // This opens the log, unless the file is empty. It is found by its name.
  Run("select count(*) from sqlite_master");
  RequireItsFile();
  log_ = Identify(path_ + "-wal");
}

void Database::RequireItsFile() const {
  if (!IsOpen())
    throw StoreFailure("its file was replaced or removed");
}

/// Whether the open file no longer has its name. One that cannot be looked up may still have it.
bool Database::HasLostItsFile() const {
  if (!file_)
    return false;
  const std::optional<FileIdentity> found = Identify(path_);
  return found ? found != file_ : errno == ENOENT;
}

/// Completes a file that has lost its name from its log, and removes the log's name: SQLite finds a log by its name
/// alone, and would replay this one onto the file that has the name now.
void Database::DiscardLog() {
  QSqlQuery(connection_).exec("rollback");
  QSqlQuery(connection_).exec("pragma wal_checkpoint(truncate)");
  if (!log_ || Identify(path_ + "-wal") != log_)
    return;
  QFile::remove(path_ + "-wal");
  QFile::remove(path_ + "-shm");
}

void Database::Close() {
  if (connection_.isOpen() && HasLostItsFile()) {
    // A statement that has not ended would keep the log busy.
    prepared_.clear();
    plain_.reset();
    DiscardLog();
  }
  if (connection_.isValid()) {
    connection_.close();
    connection_ = {};
    QSqlDatabase::removeDatabase(name_);
  }
  // Only now: over a broken connection each statement would log that it cannot be deallocated.
  prepared_.clear();
  plain_.reset();
  file_.reset();
  log_.reset();
}

void Database::Begin() {
  Run(address_.IsFile() ? "begin immediate" : "begin");
  RequireItsFile();
  // One transaction at a time, as in a file. Otherwise two could deadlock on rows, and one could act on what the other
  // has changed since it was read.
  if (!address_.IsFile())
    Run("select pg_advisory_xact_lock(hashtext('" + address_.schema + "'))");
}

void Database::Commit() {
  try {
    Run("commit");
  } catch (const StoreFailure &failure) {
    throw StoreFailure(failure.what(), true);
  }
  RequireItsFile();
  if (address_.IsFile() && !log_)
    log_ = Identify(path_ + "-wal");
}

void Database::Run(const QString &statement, const QVariantList &values) { Execute(statement, values).finish(); }

QVariantList Database::Row(const QString &statement, const QVariantList &values) {
  QSqlQuery &query = Execute(statement, values);
  QVariantList row;
  if (query.next())
    for (int column = 0; column < query.record().count(); ++column)
      row.append(query.value(column));
  query.finish();
  return row;
}

void Database::ForEachRow(const QString &statement, const QVariantList &values,
                          const std::function<bool(const QSqlQuery &)> &take) {
  QSqlQuery &query = Execute(statement, values);
  while (query.next() && take(query)) {
  }
  const QSqlError error = query.lastError();
  query.finish();
  if (error.isValid())
    throw StoreFailure(FirstLine(error));
}

QSqlQuery &Database::Execute(const QString &statement, const QVariantList &values) {
  QSqlQuery &query = values.isEmpty() ? plain_.emplace(connection_) : Prepared(statement);
  for (qsizetype i = 0; i < values.size(); ++i) {
    // The drivers bind a null QByteArray as a null value.
    const bool is_null_text = values[i].typeId() == QMetaType::QByteArray && values[i].toByteArray().isNull();
    query.bindValue(static_cast<int>(i), is_null_text ? QVariant(QByteArray("")) : values[i]);
  }
  if (!(values.isEmpty() ? query.exec(statement) : query.exec()))
    throw StoreFailure(FirstLine(query.lastError()));
  return query;
}

QSqlQuery &Database::Prepared(const QString &statement) {
  const auto found = prepared_.find(statement);
  if (found != prepared_.end())
    return found->second;
  QSqlQuery query(connection_);
  query.setForwardOnly(address_.IsFile());
  if (!query.prepare(statement))
    throw StoreFailure(FirstLine(query.lastError()));
  return prepared_.emplace(statement, std::move(query)).first->second;
}

}  // namespace borvane::mirror
