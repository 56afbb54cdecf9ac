#include "http/answer.h"

#include <QDateTime>
#include <QLocale>

namespace borvane::mirror {

namespace {

const char *Reason(int status) {
  switch (status) {
    case 200:
      return "OK";
    case 404:
      return "Not Found";
    case 405:
      return "Method Not Allowed";
    case 408:
      return "Request Timeout";
    case 413:
      return "Content Too Large";
    case 414:
      return "URI Too Long";
    case 429:
      return "Too Many Requests";
    case 431:
      return "Request Header Fields Too Large";
    case 501:
      return "Not Implemented";
    case 503:
      return "Service Unavailable";
    case 505:
      return "HTTP Version Not Supported";
    default:
      return "Bad Request";
  }
}

const char *Explanation(int status) {
  switch (status) {
    case 404:
      return "There is no page at this address.";
    case 405:
      return "Pages can be got, and nothing else.";
    case 408:
      return "The request did not come to its end in time.";
    case 413:
      return "A request may have no body.";
    case 414:
      return "The address is too long.";
    case 429:
      return "Too many reports have come from there. Wait a minute.";
    case 431:
      return "The request has too many or too long header lines.";
    case 501:
      return "The request asks for something that this server does not know.";
    case 503:
      return "The server cannot answer this at the moment. Try again later.";
    case 505:
      return "This server speaks HTTP/1.1.";
    default:
      return "This is no request that the server understands.";
  }
}

}  // namespace

Answer StatusPage(int status) {
  const QByteArray title = QByteArray::number(status) + ' ' + Reason(status);
  return {.status = status,
          .body = R"(<!DOCTYPE html><html lang="en"><head><meta charset="windows-1252"><title>)" + title +
                  "</title></head><body><h1>" + title + "</h1><p>" + Explanation(status) +
                  R"(</p><p><a href="/">All pages</a></p></body></html>)"};
}

QByteArray WireText(const Answer &answer, bool with_body, Afterwards afterwards) {
  QByteArray text = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + Reason(answer.status);
  text += "\r\nServer: borvane-mirror/" BORVANE_VERSION "\r\nDate: ";
  text += QLocale::c().toString(QDateTime::currentDateTimeUtc(), u"ddd, dd MMM yyyy hh:mm:ss 'GMT'").toLatin1();
  text += "\r\nContent-Type: " + answer.type + "\r\nContent-Length: " + QByteArray::number(answer.body.size());
  // A page shows what the catalogue says, and must never load or run anything.
  text += "\r\nContent-Security-Policy: default-src 'none'; style-src 'unsafe-inline'";
  text += "\r\nX-Content-Type-Options: nosniff\r\nCache-Control: no-cache";
  if (answer.status == 405)
    text += "\r\nAllow: " + answer.allow;
  text += afterwards == Afterwards::Close ? "\r\nConnection: close" : "\r\nConnection: keep-alive";
  text += "\r\n\r\n";
  if (with_body)
    text += answer.body;
  return text;
}

}  // namespace borvane::mirror
