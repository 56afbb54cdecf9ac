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

#include "service/store.h"

namespace borvane::mirror {

/// What a job does to the store.
enum class Access { Read, Change };

/// Works on a store in a thread of its own, so that a slow disk or a database server that has gone never holds up who
/// asks. The store is opened with the first job. After a failure it is closed and opened anew, at once when that may
/// help and then at growing intervals.
///
/// Changes that wait at the same time are one transaction: many reports need one write to the disk.
class StoreThread : public QObject {
 public:
  using Work = std::function<QByteArray(Store &)>;
  using Done = std::function<void(const std::optional<QByteArray> &result)>;
  using Tell = std::function<void(const QString &)>;

  /// `tell` gets a line for people when the store stops working, and when it works again. A job that is not done after
  /// `patience_ms` counts as failed; what has begun by then may still come to its end.
  StoreThread(const StoreAddress &address, StoreLimits limits, Tell tell, int patience_ms = 10'000);
  ~StoreThread() override;

  /// Does `work` on the store, then calls `done` in the calling thread with what it gave, or with nothing when the
  /// store failed. Changes are on the disk by then. A read of a store that does not exist yet gives an empty text.
  void Do(Access access, Work work, Done done);

 private:
  class Worker;

  struct Waiting {
    quint64 number;
    Done done;
    QDeadlineTimer deadline;
  };

  void Finish(quint64 number, Access access, const std::optional<QByteArray> &result, const QString &failure);
  void GiveUpLateJobs();
  void RestartTimer();
  void NoteOutcome(Access access, const QString &failure);

  const QString name_;
  const Tell tell_;
  const int patience_ms_;
  quint64 last_number_ = 0;
  std::deque<Waiting> waiting_;    ///< in the order of their deadlines
  QSet<quint64> stuck_;            ///< given up, and the worker is still at it
  std::optional<Access> failing_;  ///< what the store cannot do at the moment; to change is more than to read
  QTimer timer_;
  std::shared_ptr<Worker> worker_;
  std::thread thread_;
};

}  // namespace borvane::mirror
