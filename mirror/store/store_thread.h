#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "log/log.h"
#include "store/database.h"
#include "store/migrations.h"

namespace borvane::mirror {

/// What a job does to the store.
enum class Access { Read, Write };

/// Does jobs on a store in a thread of its own, so that a slow disk or a database server that has gone never blocks the
/// caller. The store is opened, and its tables are migrated, with the first job. After a failure it is closed and
/// opened again, at once when that may help and then at growing intervals.
///
/// Writing jobs that wait at the same time are one transaction: many of them need one write to the disk.
class StoreThread : public QObject {
 public:
  using Work = std::function<QByteArray(Database &)>;
  using Done = std::function<void(const std::optional<QByteArray> &result)>;

  /// `log` gets a line that begins with the store's address when the store stops working, and when it works again. A
  /// job that is not done after `timeout_ms` counts as failed; if it has begun by then, it may still complete.
  StoreThread(const StoreAddress &address, const Schema &schema, WriteLog log, int timeout_ms = 10'000);
  ~StoreThread() override;

  /// Runs `work` on the store, then calls `done` in the calling thread with the result, or with nothing when the store
  /// failed. Changes are on the disk by then. A read of a store that does not exist yet has an empty result.
  void Submit(Access access, Work work, Done done);

  /// Whether the store did what it was asked for last.
  bool Works() const { return !failing_; }

 private:
  class Worker;

  struct Waiting {
    quint64 number;
    Access access;
    Done done;
    QDeadlineTimer deadline;
  };

  void Finish(quint64 number, Access access, const std::optional<QByteArray> &result, const QString &failure);
  void FailOverdueJobs();
  void RestartTimer();
  void LogOutcome(Access access, const QString &failure);

  const QString name_;
  const WriteLog log_;
  const int timeout_ms_;
  quint64 last_number_ = 0;
  std::deque<Waiting> waiting_;    ///< in the order of their deadlines
  QSet<quint64> stuck_;            ///< failed by their timeout, and still running
  std::optional<Access> failing_;  ///< what the store cannot do at the moment; one that cannot be read fails at both
  QTimer timer_;
  std::shared_ptr<Worker> worker_;
  std::thread thread_;
};

}  // namespace borvane::mirror
