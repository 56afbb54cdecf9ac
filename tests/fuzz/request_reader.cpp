#include "http/request_reader.h"

#include <cstdint>
#include <cstdlib>

// Any bytes: what is read meets its guarantees, and a request that arrives in pieces is read like one that arrives at
// once.

namespace {

using namespace borvane::mirror;
using Status = RequestReading::Status;

// Small limits, so that short inputs reach them.
constexpr Limits limits = {
    .method = 8, .target = 40, .blank_lines = 2, .headers = 4, .header_line = 30, .header_lines = 80};

void Require(bool fact) {
  if (!fact)
    std::abort();
}

/// A refused request may be refused for another of its faults when less of it has arrived, and then has less of its
/// target.
bool Same(const RequestReading &a, const RequestReading &b) {
  if (a.status == Status::Refused && b.status == Status::Refused)
    return true;
  return a.status == b.status && a.used == b.used && a.request.method == b.request.method &&
         a.request.target == b.request.target && a.request.host == b.request.host &&
         a.request.keep_alive == b.request.keep_alive;
}

void CheckReading(std::string_view bytes, const RequestReading &reading) {
  switch (reading.status) {
    case Status::Complete:
      Require(reading.used > 0 && reading.used <= bytes.size() && bytes[reading.used - 1] == '\n');
      Require(reading.request.method == "GET" || reading.request.method == "HEAD");
      Require(reading.request.target.startsWith('/') && reading.request.target.size() <= 40);
      Require(!reading.request.target.contains('\n') && !reading.request.target.contains('\r') &&
              !reading.request.target.contains('\0'));
      Require(!reading.request.host.contains('\n') && !reading.request.host.contains('\r'));
      break;
    case Status::Refused:
      Require(reading.refusal >= 400 && reading.refusal <= 505);
      break;
    case Status::Incomplete:
      Require(reading.refused_beyond >= bytes.size());
      break;
  }
}

/// Reads the bytes as they would arrive one by one, only when the previous reading said that more can be read.
RequestReading ReadPieceByPiece(std::string_view bytes) {
  RequestReading reading = ReadRequest({}, limits);
  for (std::size_t length = 1; length <= bytes.size() && reading.status == Status::Incomplete; ++length)
    if (bytes[length - 1] == '\n' || length > reading.refused_beyond)
      reading = ReadRequest(bytes.substr(0, length), limits);
  return reading;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char *>(data), size);
  const RequestReading whole = ReadRequest(bytes, limits);
  CheckReading(bytes, whole);
  const RequestReading pieces = ReadPieceByPiece(bytes);
  CheckReading(bytes, pieces);
  // Bytes that cannot start a request are refused early or late, but never accepted.
  if (whole.status != Status::Incomplete && pieces.status != Status::Incomplete)
    Require(Same(whole, pieces));
  else
    Require(whole.status != Status::Complete && pieces.status != Status::Complete);
  return 0;
}
