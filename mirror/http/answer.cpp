#include "http/answer.h"

#include <QDateTime>
#include <QLocale>

#include "common/mirror_probe.h"
#include "http/html_page.h"

namespace borvane::mirror {

namespace {

const char *Reason(int status) {
  switch (status) {
    case 200:
      return "OK";
    case 301:
      return "Moved Permanently";
    case 403:
      return "Forbidden";
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
    case 301:
      return "The page has another address.";
    case 403:
      return "The service answers neither requests from pages of other web sites nor requests for an unknown host "
             "name.";
    case 404:
      return "There is no page at this address.";
    case 405:
      return "This address does not allow the request's method.";
    case 408:
      return "The request was not complete in time.";
    case 413:
      return "A request may have no body.";
    case 414:
      return "The address is too long.";
    case 429:
      return "Too many requests have come from this client. Try again in a minute.";
    case 431:
      return "The request has too many header lines, or too long ones.";
    case 501:
      return "The request uses a method or an encoding that this server does not know.";
    case 503:
      return "The server cannot answer this at the moment. Try again later.";
    case 505:
      return "This server speaks HTTP/1.1.";
    default:
      return "The server does not understand this request.";
  }
}

}  // namespace

Answer StatusPage(int status) {
  const QByteArray title = QByteArray::number(status) + ' ' + Reason(status);
  Answer answer = {.status = status,
                   .body = HtmlPage(title, "<h1>" + title + "</h1><p>" + Explanation(status) +
                                               "</p><p><a href=\"/\">All pages</a></p>")};
  if (status == 405)
    answer.fields.append(HeaderField{"Allow", "GET, HEAD"});
  return answer;
}

Answer Redirection(const QByteArray &location) {
  Answer answer = StatusPage(301);
  answer.fields.append(HeaderField{"Location", location});
  return answer;
}

QByteArray HeadText(const Answer &answer, Afterwards afterwards) {
  QByteArray text = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + Reason(answer.status);
  text += "\r\nServer: borvane-mirror/" BORVANE_VERSION "\r\n";
  text.append(pages_field).append(": ").append(pages_number).append("\r\nDate: ");
  text += QLocale::c().toString(QDateTime::currentDateTimeUtc(), u"ddd, dd MMM yyyy hh:mm:ss 'GMT'").toLatin1();
  text += "\r\nContent-Type: " + answer.type + "\r\nContent-Length: " + QByteArray::number(answer.body.size());
  // A page shows what the catalogue says, and must never load or run anything.
  text += "\r\nContent-Security-Policy: default-src 'none'; style-src 'unsafe-inline'";
  text += "\r\nX-Content-Type-Options: nosniff\r\nCache-Control: no-cache";
  for (const HeaderField &field : answer.fields)
    text += "\r\n" + field.name + ": " + field.value;
  text += afterwards == Afterwards::Close ? "\r\nConnection: close" : "\r\nConnection: keep-alive";
  return text + "\r\n\r\n";
}

}  // namespace borvane::mirror
