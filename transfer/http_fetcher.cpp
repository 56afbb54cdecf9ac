#include "transfer/http_fetcher.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <utility>

#include <fcntl.h>

#include "transfer/answer_head.h"
#include "transfer/curl_loop.h"
#include "transfer/http_address.h"

namespace borvane {

namespace {

bool IsRedirect(long status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

}  // namespace

/// One fetch under way: where it goes, what has come so far, and what is left of its limits.
class HttpFetcher::Request {
 public:
  Request(const CurlLibrary &curl, Number fetch, HttpAddress first, const FetchLimits &limits)
      : number(fetch),
        address(std::move(first)),
        redirects_left(limits.redirects),
        curl_(curl),
        deadline_(limits.time),
        size_limit_(limits.size),
        easy_(curl.easy_init(), curl.easy_cleanup) {
    Set(CURLOPT_PRIVATE, this);
    Set(CURLOPT_NOSIGNAL, 1L);
    // Without this, a name that is looked up slowly holds the program up when the request is cancelled.
    Set(CURLOPT_QUICK_EXIT, 1L);
    Set(CURLOPT_PROXY, "");
    Set(CURLOPT_PROTOCOLS_STR, "http,https");
    Set(CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    Set(CURLOPT_SOCKOPTFUNCTION, KeepFromOtherPrograms);
    Set(CURLOPT_HEADERFUNCTION, ReceiveHeader);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, Receive);
    Set(CURLOPT_WRITEDATA, this);
  }

  CURL *easy() const { return easy_.get(); }

  bool IsLate() const { return deadline_.hasExpired(); }

  /// Points the handle at the address. The target goes out as it is, which the library's own addresses do not
  /// allow.
  void Aim() {
    body.clear();
    head_ = {};
    Set(CURLOPT_URL, address.Root().c_str());
    Set(CURLOPT_REQUEST_TARGET, address.target.c_str());
    // To the library, no time left is no limit.
    Set(CURLOPT_TIMEOUT_MS, std::max(1L, static_cast<long>(deadline_.remainingTime())));
  }

  bool HasWholeHead() const { return head_.IsWhole(); }

  /// The header Location of a redirect; empty when the answer is none.
  std::string_view Location() const {
    long status = 0;
    curl_.easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_header *location = nullptr;
    if (!IsRedirect(status) || curl_.easy_header(easy_.get(), "Location", 0, CURLH_HEADER, -1, &location) != CURLHE_OK)
      return {};
    return location->value;
  }

  const Number number;
  HttpAddress address;
  int redirects_left;
  std::string body;

 private:
  template <class Value>
  void Set(CURLoption option, Value value) {
    curl_.easy_setopt(easy_.get(), option, value);
  }

  /// A program that is started meanwhile must not get the connection: it would stay open for as long as that runs.
  static int KeepFromOtherPrograms(void * /*client*/, [[maybe_unused]] curl_socket_t socket, curlsocktype /*purpose*/) {
#ifdef FD_CLOEXEC
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
#endif
    return CURL_SOCKOPT_OK;
  }

  static std::size_t ReceiveHeader(const char *line, std::size_t size, std::size_t count, void *request) {
    const std::size_t length = size * count;
    static_cast<Request *>(request)->head_.TakeLine({line, length});
    return length;
  }

  /// Takes what has come; to take less than that ends the transfer.
  static std::size_t Receive(const char *bytes, std::size_t size, std::size_t count, void *request) {
    auto &self = *static_cast<Request *>(request);
    const std::size_t length = size * count;
    if (length > self.size_limit_ - self.body.size())
      return 0;
    self.body.append(bytes, length);
    return length;
  }

  const CurlLibrary &curl_;
  QDeadlineTimer deadline_;
  std::size_t size_limit_;
  AnswerHead head_;
  std::unique_ptr<CURL, decltype(CurlLibrary::easy_cleanup)> easy_;
};

HttpFetcher::HttpFetcher(const FetchLimits &limits, LoadCurl load) : limits_(limits), load_(load) {}

HttpFetcher::~HttpFetcher() = default;

/// Loads the library at the first call.
bool HttpFetcher::IsReady() {
  if (loop_ != nullptr)
    return true;
  const std::optional<CurlLibrary> curl = load_();
  if (!curl)
    return false;
  curl_ = std::make_unique<CurlLibrary>(*curl);
  loop_ = std::make_unique<CurlLoop>(*curl_, [this](CURL *easy, CURLcode result) {
    Request *request = nullptr;
    curl_->easy_getinfo(easy, CURLINFO_PRIVATE, &request);
    OnAnswerEnded(*request, result == CURLE_OK && request->HasWholeHead());
  });
  return true;
}

HttpFetcher::Number HttpFetcher::Start(std::string_view address, OnEnd on_end) {
  const Number number = ++last_;
  Fetch &fetch = fetches_[number];
  fetch.on_end = std::move(on_end);
  const std::optional<HttpAddress> parts = ParseHttpAddress(address);
  if (parts && IsReady()) {
    fetch.request = std::make_unique<Request>(*curl_, number, *parts, limits_);
    Send(*fetch.request);
  } else {
    FailSoon(number);
  }
  return number;
}

void HttpFetcher::Cancel(Number fetch) { End(fetch, true); }

void HttpFetcher::Send(Request &request) {
  if (request.easy() == nullptr) {
    FailSoon(request.number);
    return;
  }
  request.Aim();
  if (!loop_->Add(request.easy()))
    FailSoon(request.number);
}

void HttpFetcher::FailSoon(Number fetch) {
  QMetaObject::invokeMethod(
      this, [this, fetch] { End(fetch, true); }, Qt::QueuedConnection);
}

void HttpFetcher::OnAnswerEnded(Request &request, bool complete) {
  const std::string_view location = complete ? request.Location() : std::string_view();
  if (location.empty()) {
    End(request.number, !complete);
    return;
  }
  const std::optional<HttpAddress> next = ResolveRedirect(request.address, location);
  if (!next || request.redirects_left == 0 || request.IsLate()) {
    End(request.number, true);
    return;
  }
  --request.redirects_left;
  request.address = *next;
  Send(request);
}

void HttpFetcher::End(Number fetch, bool failed) {
  // Taken out first: the callback may start or cancel others.
  auto ended = fetches_.extract(fetch);
  if (ended.empty())
    return;
  FetchResult result;
  result.failed = failed;
  if (Request *request = ended.mapped().request.get()) {
    loop_->Remove(request->easy());
    if (!failed)
      result.body = std::move(request->body);
  }
  ended.mapped().on_end(fetch, std::move(result));
}

}  // namespace borvane
