#include "http/answer.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(StatusPage, NamesAndExplainsEachStatus) {
  struct Page {
    int status;
    const char *text;
  };
  for (const Page &page : std::initializer_list<Page>{
           {301, "<h1>301 Moved Permanently</h1><p>The page has another address.</p>"},
           {400, "<h1>400 Bad Request</h1><p>The server does not understand this request.</p>"},
           {403,
            "<h1>403 Forbidden</h1><p>The service answers neither requests from pages of other web sites nor requests "
            "for an "
            "unknown host name.</p>"},
           {404, "<h1>404 Not Found</h1><p>There is no page at this address.</p>"},
           {405, "<h1>405 Method Not Allowed</h1><p>This address does not allow the request's method.</p>"},
           {408, "<h1>408 Request Timeout</h1><p>The request was not complete in time.</p>"},
           {413, "<h1>413 Content Too Large</h1><p>A request may have no body.</p>"},
           {414, "<h1>414 URI Too Long</h1><p>The address is too long.</p>"},
           {429, "<h1>429 Too Many Requests</h1><p>Too many requests have come from this client."},
           {431,
            "<h1>431 Request Header Fields Too Large</h1><p>The request has too many header lines, or too long "
            "ones.</p>"},
           {501, "<h1>501 Not Implemented</h1><p>The request uses a method or an encoding"},
           {503, "<h1>503 Service Unavailable</h1><p>The server cannot answer this at the moment."},
           {505, "<h1>505 HTTP Version Not Supported</h1><p>This server speaks HTTP/1.1.</p>"}}) {
    const Answer answer = StatusPage(page.status);
    EXPECT_EQ(answer.status, page.status);
    EXPECT_TRUE(answer.body.contains(page.text)) << answer.body.toStdString();
  }
}

}  // namespace
}  // namespace borvane::mirror
