#pragma once

#include <QByteArray>

namespace borvane::mirror {

/// What is sent back for a request.
struct Answer {
  int status = 200;
  QByteArray type = "text/html; charset=windows-1252";
  QByteArray body = {};
};

/// A small page that says what `status` means, for every status but 200.
Answer StatusPage(int status);

/// Whether and how the connection goes on behind an answer.
enum class Afterwards { KeepAlive, Close };

/// The answer as it goes over the wire. `with_body` is false for the answer to HEAD: the length stands, the body is
/// left out.
QByteArray WireText(const Answer &answer, bool with_body, Afterwards afterwards);

}  // namespace borvane::mirror
