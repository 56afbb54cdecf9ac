#include "desktop/services/http_transfer.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <utility>

#include "desktop/services/curl_loop.h"
#include "desktop/services/http_address.h"

namespace borvane {

namespace {

bool IsRedirect(long status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

}  // namespace

/// One transfer under way: where it goes, what has come so far, and what is left of its limits.
class CurlTransfer::Request {
 public:
  Request(const CurlLibrary &curl, TransferNumber transfer, HttpAddress first, const TransferLimits &limits)
      : number(transfer),
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
    Set(CURLOPT_HEADERFUNCTION, ReceiveHeader);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, Receive);
    Set(CURLOPT_WRITEDATA, this);
  }

  CURL *easy() const { return easy_.get(); }

  bool IsLate() const { return deadline_.hasExpired(); }

  /// Points the handle at the address. The target goes out as it stands, which the library's own addresses do not
  /// allow.
  void Aim() {
    body.clear();
    has_whole_head_ = false;
    Set(CURLOPT_URL, address.Root().c_str());
    Set(CURLOPT_REQUEST_TARGET, address.target.c_str());
    // To the library, no time left is no limit.
    Set(CURLOPT_TIMEOUT_MS, std::max(1L, static_cast<long>(deadline_.remainingTime())));
  }

  /// Whether the blank line has come that ends the head. The library takes a head that is cut off for a whole one.
  bool HasWholeHead() const { return has_whole_head_; }

  /// The header Location of a redirect; empty when the answer is none.
  std::string_view Location() const {
    long status = 0;
    curl_.easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_header *location = nullptr;
    if (!IsRedirect(status) || curl_.easy_header(easy_.get(), "Location", 0, CURLH_HEADER, -1, &location) != CURLHE_OK)
      return {};
    return location->value;
  }

  const TransferNumber number;
  HttpAddress address;
  int redirects_left;
  std::string body;

 private:
  template <class Value>
  void Set(CURLoption option, Value value) {
    curl_.easy_setopt(easy_.get(), option, value);
  }

  static std::size_t ReceiveHeader(const char *line, std::size_t size, std::size_t count, void *request) {
    const std::size_t length = size * count;
    const std::string_view text(line, length);
    static_cast<Request *>(request)->has_whole_head_ = text == "\r\n" || text == "\n";
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
  bool has_whole_head_ = false;
  std::unique_ptr<CURL, decltype(CurlLibrary::easy_cleanup)> easy_;
};

CurlTransfer::CurlTransfer(const TransferLimits &limits, LoadCurl load) : limits_(limits), load_(load) {}

CurlTransfer::~CurlTransfer() = default;

/// Loads the library at the first call.
bool CurlTransfer::IsReady() {
  if (loop_ != nullptr)
    return true;
  const std::optional<CurlLibrary> curl = load_();
  if (!curl)
    return false;
  curl_ = std::make_unique<CurlLibrary>(*curl);
  loop_ = std::make_unique<CurlLoop>(*curl_, [this](CURL *easy, CURLcode result) {
    Request *request = nullptr;
    curl_->easy_getinfo(easy, CURLINFO_PRIVATE, &request);
    AnswerEnded(*request, result == CURLE_OK && request->HasWholeHead());
  });
  return true;
}

TransferNumber CurlTransfer::Start(std::string_view address) {
  const TransferNumber number = ++last_;
  const std::optional<HttpAddress> parts = ParseHttpAddress(address);
  if (parts && IsReady()) {
    requests_[number] = std::make_unique<Request>(*curl_, number, *parts, limits_);
    Send(*requests_[number]);
  } else {
    requests_[number] = nullptr;
    FailSoon(number);
  }
  return number;
}

bool CurlTransfer::IsDone(TransferNumber transfer) const { return !requests_.contains(transfer); }

void CurlTransfer::Cancel(TransferNumber transfer) { End(transfer, true); }

TransferResult CurlTransfer::Take(TransferNumber transfer) {
  TransferResult result = std::move(results_[transfer]);
  results_.erase(transfer);
  return result;
}

void CurlTransfer::Send(Request &request) {
  if (request.easy() == nullptr) {
    FailSoon(request.number);
    return;
  }
  request.Aim();
  if (!loop_->Add(request.easy()))
    FailSoon(request.number);
}

void CurlTransfer::FailSoon(TransferNumber transfer) {
  QMetaObject::invokeMethod(
      this, [this, transfer] { End(transfer, true); }, Qt::QueuedConnection);
}

void CurlTransfer::AnswerEnded(Request &request, bool complete) {
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

void CurlTransfer::End(TransferNumber transfer, bool failed) {
  const auto place = requests_.find(transfer);
  if (place == requests_.end())
    return;
  TransferResult &result = results_[transfer];
  result.failed = failed;
  if (Request *request = place->second.get()) {
    loop_->Remove(request->easy());
    if (!failed)
      result.text = std::move(request->body);
  }
  requests_.erase(place);
}

}  // namespace borvane
