#pragma once

#include <QByteArray>
#include <cstddef>
#include <string_view>

#include "http/limits.h"

namespace borvane::mirror {

/// A request as the pages need it.
struct Request {
  QByteArray method = {};   ///< "GET" or "HEAD"
  QByteArray target = {};   ///< path and query as they came, blanks and bytes above 127 included; begins with "/"
  QByteArray host = {};     ///< value of the Host header; empty when there is none
  bool has_origin = false;  ///< whether there is an Origin header: a browser sends it for a web page's script or form
  QByteArray fetch_site = {};  ///< the Sec-Fetch-Site headers, joined: a browser's word on whose page asks
  bool keep_alive = false;     ///< whether the connection goes on after the answer
};

/// What the start of a connection's bytes is.
struct RequestReading {
  enum class Status {
    Incomplete,  ///< a request may yet come of them
    Complete,    ///< `request` was read whole
    Refused,     ///< no request can come of them; the connection ends with `refusal`
  };
  Status status = Status::Incomplete;
  Request request = {};            ///< Incomplete and Refused: as far as it was read, the target perhaps malformed
  int refusal = 0;                 ///< HTTP status of the answer to what was refused
  std::size_t used = 0;            ///< Complete: how many bytes the request took
  std::size_t refused_beyond = 0;  ///< Incomplete: more bytes than this without another line feed will be refused
};

/// Reads one HTTP/1.x request without a body from the start of `bytes`.
///
/// The monitor writes blanks and any bytes into the request target as they are. So the target is everything between the
/// request line's first blank and the last " HTTP/1.x", which ends the line. Lines end with a line feed, with or
/// without a carriage return in front.
///
/// Refused are: what is no request (400), a request with a body (413, or 501 when it comes in chunks), another method
/// than GET and HEAD (405, or 501 for one that HTTP does not know), a version of HTTP other than 1 (505), and what goes
/// beyond the limits (400, 414, 431).
RequestReading ReadRequest(std::string_view bytes, const Limits &limits);

/// The path of a request's target: what comes before a query or a fragment.
QByteArray PathOf(const QByteArray &target);

}  // namespace borvane::mirror
