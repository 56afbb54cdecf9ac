#pragma once

#include <QByteArray>

namespace borvane::mirror {

/// What is sent back for a request.
struct Answer {
  int status = 200;
  QByteArray type = "text/html; charset=windows-1252";
  QByteArray body = {};
  QByteArray allow = "GET, HEAD";  ///< with status 405: the methods that would do
};

/// A small page that says what `status` means, for every status but 200. It is one line without an end: whoever asked
/// for lines finds none.
Answer StatusPage(int status);

/// Whether and how the connection goes on behind an answer.
enum class Afterwards { KeepAlive, Close };

/// The answer as it goes over the wire. `with_body` is false for the answer to HEAD: the length stands, the body is
/// left out.
QByteArray WireText(const Answer &answer, bool with_body, Afterwards afterwards);

}  // namespace borvane::mirror
