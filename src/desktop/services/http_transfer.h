#pragma once

#include <QObject>
#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>

#include "desktop/services/curl_library.h"
#include "platform/http_transfer.h"

namespace borvane {

class CurlLoop;

/// The limits of a transfer. One that reaches them ends as failed.
struct TransferLimits {
  std::chrono::milliseconds time{60'000};     // in all, redirects included
  std::size_t size = std::size_t{64} << 20U;  // bytes of the body
  int redirects = 5;
};

/// HTTP by libcurl, which is loaded at the first transfer. Without it every transfer fails.
class CurlTransfer final : public QObject, public HttpTransfer {
 public:
  using LoadCurl = std::optional<CurlLibrary> (*)();

  explicit CurlTransfer(const TransferLimits &limits = {}, LoadCurl load = CurlLibrary::Load);
  ~CurlTransfer() override;

  TransferNumber Start(std::string_view address) override;
  bool IsDone(TransferNumber transfer) const override;
  void Cancel(TransferNumber transfer) override;
  TransferResult Take(TransferNumber transfer) override;

 private:
  class Request;

  /// Sends `request` to its address: its first one, or the one to which a redirect leads.
  void Send(Request &request);

  /// Ends a transfer that cannot be sent, but not before events run, as of any other.
  void FailSoon(TransferNumber transfer);
  void AnswerEnded(Request &request, bool complete);
  void End(TransferNumber transfer, bool failed);

  bool IsReady();

  const TransferLimits limits_;
  const LoadCurl load_;
  std::unique_ptr<const CurlLibrary> curl_;
  std::unique_ptr<CurlLoop> loop_;
  std::map<TransferNumber, std::unique_ptr<Request>> requests_;  // under way; none for what cannot even be sent
  std::map<TransferNumber, TransferResult> results_;
  TransferNumber last_ = 0;
};

}  // namespace borvane
