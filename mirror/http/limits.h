#pragma once

#include <QtGlobal>
#include <cstddef>

namespace borvane::mirror {

/// What a client may ask of the server, each with the answer to one that asks for more.
struct Limits {
  // The request line.
  std::size_t method = 32;         ///< bytes of the method's name: 400
  std::size_t target = 64 * 1024;  ///< bytes of the request target: 414
  std::size_t blank_lines = 4;     ///< empty lines in front of a request: 400

  // The header lines.
  std::size_t headers = 100;             ///< header lines: 431
  std::size_t header_line = 8 * 1024;    ///< bytes of one header line: 431
  std::size_t header_lines = 32 * 1024;  ///< bytes of all header lines together: 431

  // Connections and time.
  int connections = 2000;             ///< connections at a time: 503, and the connection ends
  int connections_of_a_client = 500;  ///< of these from one client, see ClientOf: 503, and the connection ends
  int refusals = 50;                  ///< connections beyond these that get the 503; more are closed without it
  int head_ms = 10'000;    ///< from a request's first byte to its last: 408, and the connection ends; without
                           ///< an answer when the request line is not complete
  int answer_ms = 30'000;  ///< until a request has its answer: 503, and the connection ends
  int idle_ms = 60'000;    ///< without a request: the connection ends without an answer
  int stall_ms = 30'000;   ///< in which a client takes no byte of its answer: the connection is cut
  int linger_ms = 2'000;   ///< in which a client may still send what nobody reads, after the last answer
  qsizetype unsent = 64 * 1024 * 1024;  ///< bytes of different bodies that clients have not taken yet: the connection
                                        ///< whose client has taken nothing for longest is cut
};

}  // namespace borvane::mirror
