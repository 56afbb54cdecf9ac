#include "service/store_thread.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace borvane::mirror {

namespace {

// The pause in front of the next attempt to open a store that could not be opened: it doubles from one to the other.
constexpr int first_pause_ms = 100;
constexpr int longest_pause_ms = 4'000;

/// How long the end of the program waits for the store. A database server that has gone may hold the thread for ever.
constexpr std::chrono::seconds last_patience(2);

}  // namespace

/// The thread's side: takes jobs, works on the store, posts what came of them.
class StoreThread::Worker {
 public:
  struct Job {
    quint64 number;
    Access access;
    Work work;
  };

  Worker(StoreThread *owner, const StoreAddress &address, StoreLimits limits)
      : owner_(owner), store_(address, limits) {}

  /// Works until Stop.
  void Run();

  void Add(Job job);

  /// Takes back a job; false when it has begun already.
  bool TakeBack(quint64 number);

  /// Posts nothing more and ends Run after the job at hand. Gives whether it has ended by now.
  bool Stop();

 private:
  std::vector<Job> NextJobs();
  void Read(const Job &job);
  void Change(const std::vector<Job> &jobs);
  QString Attempt(const std::function<void()> &work);
  QString AttemptToRead(const std::function<void()> &work);
  void Pause();
  void Post(const Job &job, const std::optional<QByteArray> &result, const QString &failure);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Job> jobs_;
  StoreThread *owner_;  ///< null from Stop on
  bool ended_ = false;

  // The thread's own.
  Store store_;
  QString failure_;  ///< why the store could not be opened
  int pause_ms_ = 0;
  QDeadlineTimer next_attempt_;
};

void StoreThread::Worker::Run() {
  for (std::vector<Job> jobs = NextJobs(); !jobs.empty(); jobs = NextJobs()) {
    std::vector<Job> changes;
    for (Job &job : jobs) {
      if (job.access == Access::Read)
        Read(job);
      else
        changes.push_back(std::move(job));
    }
    if (!changes.empty())
      Change(changes);
  }
  store_.Close();
  const std::lock_guard lock(mutex_);
  ended_ = true;
  changed_.notify_all();
}

void StoreThread::Worker::Add(Job job) {
  const std::lock_guard lock(mutex_);
  jobs_.push_back(std::move(job));
  changed_.notify_all();
}

bool StoreThread::Worker::TakeBack(quint64 number) {
  const std::lock_guard lock(mutex_);
  return std::erase_if(jobs_, [number](const Job &job) { return job.number == number; }) > 0;
}

bool StoreThread::Worker::Stop() {
  std::unique_lock lock(mutex_);
  owner_ = nullptr;
  changed_.notify_all();
  return changed_.wait_for(lock, last_patience, [this] { return ended_; });
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
  const auto read = [&] { result = job.work(store_); };
  QString failure = store_.Exists() ? Attempt(read) : QString();
  if (!failure.isEmpty() && store_.IsWriteProtected())
    failure = AttemptToRead(read);
  Post(job, failure.isEmpty() ? std::optional(result) : std::nullopt, failure);
}

void StoreThread::Worker::Change(const std::vector<Job> &jobs) {
  std::vector<QByteArray> results;
  const QString failure = Attempt([&] {
    results.clear();
    store_.Begin();
    for (const Job &job : jobs)
      results.push_back(job.work(store_));
    store_.Commit();
  });
  for (std::size_t i = 0; i < jobs.size(); ++i)
    Post(jobs[i], failure.isEmpty() ? std::optional(results[i]) : std::nullopt, failure);
}

/// Works on the open store; gives why it failed.
QString StoreThread::Worker::Attempt(const std::function<void()> &work) {
  if (!next_attempt_.hasExpired())
    return failure_;
  for (bool is_first = true;; is_first = false) {
    const bool was_open = store_.IsOpen();
    bool could_open = was_open;
    try {
      if (!was_open) {
        store_.Close();
        store_.Open();
        could_open = true;
        pause_ms_ = 0;
      }
      work();
      return {};
    } catch (const std::exception &exception) {
      store_.Close();
      // A server that was started anew is noticed only by the failure on the old connection.
      const auto *failure = dynamic_cast<const StoreFailure *>(&exception);
      if (is_first && was_open && failure != nullptr && !failure->MayBeKept())
        continue;
      failure_ = QString::fromStdString(exception.what());
      if (!could_open)
        Pause();
      return failure_;
    }
  }
}

/// Works on a store that cannot be opened for changes.
QString StoreThread::Worker::AttemptToRead(const std::function<void()> &work) {
  QString failure;
  try {
    store_.OpenToRead();
    work();
  } catch (const std::exception &exception) {
    failure = QString::fromStdString(exception.what());
  }
  store_.Close();
  return failure;
}

void StoreThread::Worker::Pause() {
  pause_ms_ = std::clamp(pause_ms_ * 2, first_pause_ms, longest_pause_ms);
  next_attempt_.setRemainingTime(pause_ms_);
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

StoreThread::StoreThread(const StoreAddress &address, StoreLimits limits, Tell tell, int patience_ms)
    : name_(address.Text()),
      tell_(std::move(tell)),
      patience_ms_(patience_ms),
      worker_(std::make_shared<Worker>(this, address, limits)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] { GiveUpLateJobs(); });
}

StoreThread::~StoreThread() {
  if (!thread_.joinable())
    return;
  if (worker_->Stop())
    thread_.join();
  else
    thread_.detach();
}

void StoreThread::Do(Access access, Work work, Done done) {
  if (!stuck_.isEmpty()) {
    done(std::nullopt);
    return;
  }
  if (!thread_.joinable())
    thread_ = std::thread([worker = worker_] { worker->Run(); });
  waiting_.push_back({++last_number_, std::move(done), QDeadlineTimer(patience_ms_)});
  worker_->Add({last_number_, access, std::move(work)});
  if (!timer_.isActive())
    RestartTimer();
}

void StoreThread::Finish(quint64 number, Access access, const std::optional<QByteArray> &result,
                         const QString &failure) {
  stuck_.remove(number);
  NoteOutcome(access, failure);
  const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                  [number](const Waiting &waiting) { return waiting.number == number; });
  if (found == waiting_.end())
    return;
  const Done done = std::move(found->done);
  waiting_.erase(found);
  done(result);
}

void StoreThread::GiveUpLateJobs() {
  while (!waiting_.empty() && waiting_.front().deadline.hasExpired()) {
    const Waiting late = std::move(waiting_.front());
    waiting_.pop_front();
    if (!worker_->TakeBack(late.number))
      stuck_.insert(late.number);
    NoteOutcome(Access::Change, "it does not answer");
    late.done(std::nullopt);
  }
  RestartTimer();
}

void StoreThread::RestartTimer() {
  if (!waiting_.empty())
    timer_.start(static_cast<int>(waiting_.front().deadline.remainingTime()) + 1);
}

void StoreThread::NoteOutcome(Access access, const QString &failure) {
  if (failure.isEmpty()) {
    if (failing_ && (access == Access::Change || failing_ == Access::Read)) {
      failing_.reset();
      tell_(QString("the service's store %1 works again").arg(name_));
    }
    return;
  }
  if (!failing_)
    tell_(QString("the service's store %1 does not work: %2").arg(name_, failure));
  if (failing_ != Access::Change)
    failing_ = access;
}

}  // namespace borvane::mirror
