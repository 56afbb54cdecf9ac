#include "feeds/feed_fetcher.h"

#include <QDateTime>
#include <QFile>
#include <algorithm>
#include <array>
#include <utility>

#include "feeds/answer_times.h"
#include "transfer/answer_head.h"
#include "transfer/curl_loop.h"
#include "transfer/http_address.h"

namespace borvane::mirror {

namespace {

constexpr int status_ok = 200;

/// Whether `value` may be sent as a header's value: it came from a server, and must not become a line of its own.
bool IsHeaderValue(const QByteArray &value) {
  constexpr qsizetype longest = 512;
  return !value.isEmpty() && value.size() <= longest &&
         std::all_of(value.begin(), value.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Whether the host is this computer, to which no proxy leads.
bool IsThisComputer(std::string_view host) {
  return host == "localhost" || host.ends_with(".localhost") || host.starts_with("127.") || host == "[::1]";
}

}  // namespace

/// One fetch under way: what it has sent, what has come so far, and its limits.
class FeedFetcher::Transfer {
 public:
  Transfer(const CurlLibrary &curl, Number fetch, const FeedLimits &limits)
      : number(fetch),
        curl_(curl),
        limits_(limits),
        headers_(nullptr, curl.slist_free_all),
        easy_(curl.easy_init(), curl.easy_cleanup) {}

  /// False where there is no memory for a transfer.
  bool IsUsable() const { return easy_ != nullptr; }
  CURL *easy() const { return easy_.get(); }

  void Aim(const FeedRequest &request, const HttpAddress &address, const QString &authorities) {
    SetGeneralOptions();
    SetLimits();
    // A redirect must not lead from a verified host to whoever is on the way.
    Set(CURLOPT_PROTOCOLS_STR, "http,https");
    Set(CURLOPT_REDIR_PROTOCOLS_STR, address.scheme == "https" ? "https" : "http,https");
    Set(CURLOPT_URL, request.url.toUtf8().constData());
    may_be_packed_ = request.may_be_packed;
    Set(CURLOPT_ACCEPT_ENCODING, may_be_packed_ ? "gzip" : "identity");
    if (IsThisComputer(address.host))
      Set(CURLOPT_PROXY, "");
    if (!authorities.isEmpty())
      Set(CURLOPT_CAINFO, QFile::encodeName(authorities).constData());
    AddHeader("If-None-Match", request.etag);
    AddHeader("If-Modified-Since", request.last_modified);
    Set(CURLOPT_HTTPHEADER, headers_.get());
  }

  /// What has come of it, now that it has ended.
  FeedAnswer Answer(CURLcode result) {
    const int status = head_.IsWhole() ? static_cast<int>(Status()) : 0;
    if (status == 0)
      return {.fault = FaultOfWhatCame(result, status)};
    const AnswerTimes times = Times();
    // What the head asks for counts whatever becomes of the body.
    if (const QString fault = FaultOfWhatCame(result, status); !fault.isEmpty())
      return {.status = status, .retry_after = times.retry_after, .fault = fault};
    return {.status = status,
            .body = std::move(body_),
            .etag = Header("ETag"),
            .last_modified = Header("Last-Modified"),
            .lifetime = times.lifetime,
            .retry_after = times.retry_after,
            .made = times.made,
            .fault = {}};
  }

  const Number number;

 private:
  template <class Value>
  void Set(CURLoption option, Value value) {
    curl_.easy_setopt(easy_.get(), option, value);
  }

  void SetGeneralOptions() {
    Set(CURLOPT_PRIVATE, this);
    Set(CURLOPT_NOSIGNAL, 1L);
    // Without this, a name that is looked up slowly holds the mirror up when the fetch is cancelled.
    Set(CURLOPT_QUICK_EXIT, 1L);
    Set(CURLOPT_SSL_VERIFYPEER, 1L);
    Set(CURLOPT_SSL_VERIFYHOST, 2L);
    Set(CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    // From one request to the next the connection would idle, and often be found dead.
    Set(CURLOPT_FORBID_REUSE, 1L);
    Set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    Set(CURLOPT_USERAGENT, "borvane-mirror/" BORVANE_VERSION);
    Set(CURLOPT_ERRORBUFFER, error_.data());
    Set(CURLOPT_HEADERFUNCTION, ReceiveHeader);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, Receive);
    Set(CURLOPT_WRITEDATA, this);
    Set(CURLOPT_XFERINFOFUNCTION, Progress);
    Set(CURLOPT_XFERINFODATA, this);
    Set(CURLOPT_NOPROGRESS, 0L);
  }

  void SetLimits() {
    Set(CURLOPT_FOLLOWLOCATION, 1L);
    Set(CURLOPT_MAXREDIRS, limits_.redirects);
    // To the library, no time at all is no limit.
    Set(CURLOPT_TIMEOUT_MS, std::max(1L, static_cast<long>(limits_.time.count())));
    Set(CURLOPT_LOW_SPEED_LIMIT, limits_.slow_bytes);
    Set(CURLOPT_LOW_SPEED_TIME, std::max(1L, static_cast<long>(limits_.slow_time.count())));
  }

  void AddHeader(const QByteArray &name, const QByteArray &value) {
    if (!IsHeaderValue(value))
      return;
    const QByteArray line = name + ": " + value;
    if (curl_slist *longer = curl_.slist_append(headers_.get(), line.constData())) {
      // The list's first node stays the same, unless it has just been made.
      static_cast<void>(headers_.release());
      headers_.reset(longer);
    }
  }

  long Status() const {
    long status = 0;
    curl_.easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    return status;
  }

  /// The value of a header of the last answer; empty when it has none.
  QByteArray Header(const char *name) const {
    curl_header *header = nullptr;
    if (curl_.easy_header(easy_.get(), name, 0, CURLH_HEADER, -1, &header) != CURLHE_OK)
      return {};
    return QByteArray(header->value);
  }

  AnswerTimes Times() const {
    return ReadTimeHeaders({.date = Header("Date"),
                            .age = Header("Age"),
                            .cache_control = Header("Cache-Control"),
                            .expires = Header("Expires"),
                            .retry_after = Header("Retry-After")},
                           QDateTime::currentMSecsSinceEpoch());
  }

  /// Why there is no whole answer; empty when there is.
  QString FaultOfWhatCame(CURLcode result, int status) const {
    if (!fault_.isEmpty())
      return fault_;
    if (result != CURLE_OK && !is_body_refused_)
      return FaultOf(result);
    if (status == 0)
      return "the answer is cut off";
    if (status == status_ok && !SaysWhereItEnds())
      return "the answer does not say where it ends";
    if (status == status_ok && !may_be_packed_ && IsPacked())
      return "the answer is compressed although that was not offered";
    return {};
  }

  /// Whether it can be seen that the body is whole. One that ends with the connection cannot: the library takes a
  /// connection that breaks off for one that ends, with TLS, too. Nor does it see where a body ends that is packed for
  /// the way.
  bool SaysWhereItEnds() const {
    const QByteArray coding = Header("Transfer-Encoding").toLower();
    return coding.isEmpty() ? !Header("Content-Length").isEmpty() : coding == "chunked";
  }

  bool IsPacked() const {
    const QByteArray coding = Header("Content-Encoding").toLower();
    return !coding.isEmpty() && coding != "identity";
  }

  QString FaultOf(CURLcode result) const {
    return QString::fromUtf8(error_.front() != '\0' ? error_.data() : curl_.easy_strerror(result));
  }

  /// Remembers which limit was exceeded. What a callback takes of what has come is then less than all, which ends the
  /// transfer.
  std::size_t Exceeds(const char *what, std::size_t limit) {
    fault_ = QString("%1 of more than %2 bytes").arg(what).arg(limit);
    return 0;
  }

  static std::size_t ReceiveHeader(const char *line, std::size_t size, std::size_t count, void *transfer) {
    const std::size_t length = size * count;
    auto &self = *static_cast<Transfer *>(transfer);
    if (length > self.limits_.head - self.head_size_)
      return self.Exceeds("a head", self.limits_.head);
    self.head_size_ += length;
    self.head_.TakeLine({line, length});
    return length;
  }

  static std::size_t Receive(const char *bytes, std::size_t size, std::size_t count, void *transfer) {
    auto &self = *static_cast<Transfer *>(transfer);
    const std::size_t length = size * count;
    if (self.Status() != status_ok) {
      self.is_body_refused_ = true;
      return 0;
    }
    if (length > self.limits_.size - static_cast<std::size_t>(self.body_.size()))
      return self.Exceeds("a body", self.limits_.size);
    self.body_.append(bytes, static_cast<qsizetype>(length));
    return length;
  }

  /// Sees what comes on the wire, before it is unpacked: an endless text may unpack to nothing.
  static int Progress(void *transfer, curl_off_t announced, curl_off_t received, curl_off_t /*to_send*/,
                      curl_off_t /*sent*/) {
    auto &self = *static_cast<Transfer *>(transfer);
    const auto limit = static_cast<curl_off_t>(self.limits_.packed_size);
    if (announced <= limit && received <= limit)
      return 0;
    // The body of a refusal is not wanted anyway.
    if (self.head_.IsWhole() && self.Status() != status_ok)
      self.is_body_refused_ = true;
    else
      self.Exceeds("a transferred body", self.limits_.packed_size);
    return 1;
  }

  const CurlLibrary &curl_;
  const FeedLimits &limits_;
  std::array<char, CURL_ERROR_SIZE> error_{};
  std::size_t head_size_ = 0;
  AnswerHead head_;
  bool is_body_refused_ = false;
  bool may_be_packed_ = true;
  QByteArray body_;
  QString fault_;
  std::unique_ptr<curl_slist, decltype(CurlLibrary::slist_free_all)> headers_;
  std::unique_ptr<CURL, decltype(CurlLibrary::easy_cleanup)> easy_;
};

FeedFetcher::FeedFetcher(const FeedLimits &limits, QString authorities, LoadCurl load)
    : limits_(limits), authorities_(std::move(authorities)), load_(load) {}

FeedFetcher::~FeedFetcher() = default;

FeedFetcher::Number FeedFetcher::Start(const FeedRequest &request, OnEnd on_end) {
  const Number number = ++last_;
  Fetch &fetch = fetches_[number];
  fetch.on_end = std::move(on_end);
  const std::optional<HttpAddress> address = ParseHttpAddress(request.url.toStdString());
  if (!address) {
    EndSoon(number, "not an address of http or https");
    return number;
  }
  if (!IsReady()) {
    EndSoon(number, "libcurl cannot be loaded");
    return number;
  }
  fetch.transfer = std::make_unique<Transfer>(*curl_, number, limits_);
  if (fetch.transfer->IsUsable())
    fetch.transfer->Aim(request, *address, authorities_);
  if (!fetch.transfer->IsUsable() || !loop_->Add(fetch.transfer->easy()))
    EndSoon(number, "libcurl refuses the transfer");
  return number;
}

void FeedFetcher::Cancel(Number fetch) {
  const auto cancelled = fetches_.extract(fetch);
  if (!cancelled.empty())
    TakeOut(cancelled.mapped());
}

/// Loads the library at the first call.
bool FeedFetcher::IsReady() {
  if (loop_ != nullptr)
    return true;
  const std::optional<CurlLibrary> curl = load_();
  if (!curl)
    return false;
  curl_ = std::make_unique<CurlLibrary>(*curl);
  loop_ = std::make_unique<CurlLoop>(*curl_, [this](CURL *easy, CURLcode result) {
    Transfer *transfer = nullptr;
    curl_->easy_getinfo(easy, CURLINFO_PRIVATE, &transfer);
    End(transfer->number, transfer->Answer(result));
  });
  return true;
}

/// Ends a fetch that cannot be sent, but not before events run, as for any other.
void FeedFetcher::EndSoon(Number fetch, const QString &fault) {
  QMetaObject::invokeMethod(
      this, [this, fetch, fault] { End(fetch, {.fault = fault}); }, Qt::QueuedConnection);
}

void FeedFetcher::End(Number fetch, FeedAnswer answer) {
  // Taken out first: the callback may start or cancel others.
  const auto ended = fetches_.extract(fetch);
  if (ended.empty())
    return;
  TakeOut(ended.mapped());
  ended.mapped().on_end(std::move(answer));
}

void FeedFetcher::TakeOut(const Fetch &fetch) {
  if (fetch.transfer != nullptr && fetch.transfer->IsUsable())
    loop_->Remove(fetch.transfer->easy());
}

}  // namespace borvane::mirror
