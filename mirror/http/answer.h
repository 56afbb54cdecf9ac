#pragma once

#include <QByteArray>
#include <QList>

namespace borvane::mirror {

/// A line of an answer's head, such as "Location".
struct HeaderField {
  QByteArray name;
  QByteArray value;
};

/// What is sent back for a request.
struct Answer {
  int status = 200;
  QByteArray type = "text/html; charset=windows-1252";
  QByteArray body = {};            ///< shared with whoever keeps the page, not copied
  QList<HeaderField> fields = {};  ///< besides those that every answer has
};

/// A small page that says what `status` means, for every status but 200. It is one line without an end: whoever asked
/// for lines finds none. That for 405 allows GET and HEAD.
Answer StatusPage(int status);

/// The answer 301, which leads to `location`.
Answer Redirection(const QByteArray &location);

/// Whether the connection goes on after an answer.
enum class Afterwards { KeepAlive, Close };

/// The answer's head as it is sent, with the length of the body, which comes after it.
QByteArray HeadText(const Answer &answer, Afterwards afterwards);

}  // namespace borvane::mirror
