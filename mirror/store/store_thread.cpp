#include "store/store_thread.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace borvane::mirror {

namespace {

// The back-off before the next attempt to open a store that could not be opened: it doubles from one to the other.
constexpr int first_backoff_ms = 100;
constexpr int longest_backoff_ms = 4'000;

/// How long the end of the program waits for the store. A database server that has gone may block the thread for ever.
constexpr std::chrono::seconds shutdown_timeout(2);

}  // namespace

/// The thread's side: takes jobs, runs them on the store, posts their outcomes.
class StoreThread::Worker {
 public:
  struct Job {
    quint64 number;
    Access access;
    Work work;
  };

  Worker(StoreThread *owner, const StoreAddress &address, const Schema &schema)
      : owner_(owner), schema_(schema), database_(address) {}

  /// Runs jobs until Stop.
  void Run();

  void Add(Job job);

  /// Removes a job; false when it has begun already.
  bool Cancel(quint64 number);

  /// Posts nothing more and ends Run after the current job. Returns whether Run has ended within the timeout.
  bool Stop();

 private:
  std::vector<Job> NextJobs();
  void Read(const Job &job);
  void Write(const std::vector<Job> &jobs);
  QString Attempt(const std::function<void()> &work);
  QString AttemptToRead(const std::function<void()> &work);
  void BackOff();
  void Post(const Job &job, const std::optional<QByteArray> &result, const QString &failure);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Job> jobs_;
  StoreThread *owner_;  ///< null from Stop on
  bool ended_ = false;

  // Used by the thread alone.
  const Schema schema_;
  Database database_;
  QString failure_;  ///< why the store could not be opened
  int backoff_ms_ = 0;
  QDeadlineTimer next_attempt_;
};

void StoreThread::Worker::Run() {
  for (std::vector<Job> jobs = NextJobs(); !jobs.empty(); jobs = NextJobs()) {
    std::vector<Job> writes;
    for (Job &job : jobs) {
      if (job.access == Access::Read)
        Read(job);
      else
        writes.push_back(std::move(job));
    }
    if (!writes.empty())
      Write(writes);
  }
  database_.Close();
  const std::lock_guard lock(mutex_);
  ended_ = true;
  changed_.notify_all();
}

void StoreThread::Worker::Add(Job job) {
  const std::lock_guard lock(mutex_);
  jobs_.push_back(std::move(job));
  changed_.notify_all();
}

bool StoreThread::Worker::Cancel(quint64 number) {
  const std::lock_guard lock(mutex_);
  return std::erase_if(jobs_, [number](const Job &job) { return job.number == number; }) > 0;
}

bool StoreThread::Worker::Stop() {
  std::unique_lock lock(mutex_);
  owner_ = nullptr;
  changed_.notify_all();
  return changed_.wait_for(lock, shutdown_timeout, [this] { return ended_; });
}

std::vector<StoreThread::Worker::Job> StoreThread::Worker::NextJobs() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return !owner_ || !jobs_.empty(); });
  if (!owner_)
    return {};
  std::vector<Job> jobs(std::make_move_iterator(jobs_.begin()), std::make_move_iterator(jobs_.end()));
  jobs_.clear();
  return jobs;
}

void StoreThread::Worker::Read(const Job &job) {
  QByteArray result;
  const auto read = [&] { result = job.work(database_); };
  QString failure = database_.Exists() ? Attempt(read) : QString();
  if (!failure.isEmpty() && database_.IsWriteProtected())
    failure = AttemptToRead(read);
  Post(job, failure.isEmpty() ? std::optional(result) : std::nullopt, failure);
}

void StoreThread::Worker::Write(const std::vector<Job> &jobs) {
  std::vector<QByteArray> results;
  const QString failure = Attempt([&] {
    results.clear();
    database_.Begin();
    for (const Job &job : jobs)
      results.push_back(job.work(database_));
    database_.Commit();
  });
  for (std::size_t i = 0; i < jobs.size(); ++i)
    Post(jobs[i], failure.isEmpty() ? std::optional(results[i]) : std::nullopt, failure);
}

/// Runs `work` on the open store; returns why it failed.
QString StoreThread::Worker::Attempt(const std::function<void()> &work) {
  if (!next_attempt_.hasExpired())
    return failure_;
  for (bool is_first = true;; is_first = false) {
    const bool was_open = database_.IsOpen();
    bool could_open = was_open;
    try {
      if (!was_open) {
        database_.Close();
        database_.Open();
        MigrateToNewest(database_, schema_);
        could_open = true;
        backoff_ms_ = 0;
      }
      work();
      return {};
    } catch (const std::exception &exception) {
      database_.Close();
      // That a server was restarted is noticed only by the failure on the old connection.
      const auto *failure = dynamic_cast<const StoreFailure *>(&exception);
      if (is_first && was_open && failure != nullptr && !failure->MayBeKept())
        continue;
      failure_ = QString::fromStdString(exception.what());
      if (!could_open)
        BackOff();
      return failure_;
    }
  }
}

/// Runs `work` on a store that cannot be opened for changes.
QString StoreThread::Worker::AttemptToRead(const std::function<void()> &work) {
  QString failure;
  try {
    database_.OpenToRead();
    RequireNewest(database_, schema_);
    work();
  } catch (const std::exception &exception) {
    failure = QString::fromStdString(exception.what());
  }
  database_.Close();
  return failure;
}

void StoreThread::Worker::BackOff() {
  backoff_ms_ = std::clamp(backoff_ms_ * 2, first_backoff_ms, longest_backoff_ms);
  next_attempt_.setRemainingTime(backoff_ms_);
}

void StoreThread::Worker::Post(const Job &job, const std::optional<QByteArray> &result, const QString &failure) {
  const std::lock_guard lock(mutex_);
  if (!owner_)
    return;
  QMetaObject::invokeMethod(
      owner_,
      [owner = owner_, number = job.number, access = job.access, result, failure] {
        owner->Finish(number, access, result, failure);
      },
      Qt::QueuedConnection);
}

StoreThread::StoreThread(const StoreAddress &address, const Schema &schema, WriteLog log, int timeout_ms)
    : name_(address.Text()),
      log_(std::move(log)),
      timeout_ms_(timeout_ms),
      worker_(std::make_shared<Worker>(this, address, schema)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] { FailOverdueJobs(); });
}

StoreThread::~StoreThread() {
  if (!thread_.joinable())
    return;
  if (worker_->Stop())
    thread_.join();
  else
    thread_.detach();
}

void StoreThread::Submit(Access access, Work work, Done done) {
  if (!stuck_.isEmpty()) {
    done(std::nullopt);
    return;
  }
  if (!thread_.joinable())
    thread_ = std::thread([worker = worker_] { worker->Run(); });
  waiting_.push_back({++last_number_, access, std::move(done), QDeadlineTimer(timeout_ms_)});
  worker_->Add({last_number_, access, std::move(work)});
  if (!timer_.isActive())
    RestartTimer();
}

void StoreThread::Finish(quint64 number, Access access, const std::optional<QByteArray> &result,
                         const QString &failure) {
  stuck_.remove(number);
  LogOutcome(access, failure);
  const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                  [number](const Waiting &waiting) { return waiting.number == number; });
  if (found == waiting_.end())
    return;
  const Done done = std::move(found->done);
  waiting_.erase(found);
  done(result);
}

void StoreThread::FailOverdueJobs() {
  while (!waiting_.empty() && waiting_.front().deadline.hasExpired()) {
    const Waiting overdue = std::move(waiting_.front());
    waiting_.pop_front();
    if (!worker_->Cancel(overdue.number))
      stuck_.insert(overdue.number);
    LogOutcome(overdue.access, "it does not answer");
    overdue.done(std::nullopt);
  }
  RestartTimer();
}

void StoreThread::RestartTimer() {
  if (!waiting_.empty())
    timer_.start(static_cast<int>(waiting_.front().deadline.remainingTime()) + 1);
}

void StoreThread::LogOutcome(Access access, const QString &failure) {
  if (failure.isEmpty()) {
    if (failing_ && (access == Access::Write || failing_ == Access::Read)) {
      failing_.reset();
      log_(LogLevel::Info, QString("%1 works again").arg(name_));
    }
    return;
  }
  if (!failing_)
    log_(LogLevel::Warning, QString("%1 does not work: %2").arg(name_, failure));
  if (failing_ != Access::Write)
    failing_ = access;
}

}  // namespace borvane::mirror
