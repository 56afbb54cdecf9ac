#include "http/html_page.h"

#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include "http/answer.h"

namespace borvane::mirror {
namespace {

std::string FaultOf(const QByteArray &page) {
  QXmlStreamReader reader(page);
  while (!reader.atEnd())
    reader.readNext();
  return reader.hasError() ? reader.errorString().toStdString() : "";
}

TEST(HtmlPage, HasTitleAndBodyInAWellFormedFrame) {
  const QByteArray page = HtmlPage("A &amp; B", "<p>text</p>");
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("<meta charset=\"windows-1252\"/>"));
  EXPECT_TRUE(page.contains("<title>A &amp; B</title>"));
  EXPECT_TRUE(page.endsWith("</style></head><body><p>text</p></body></html>"));
  EXPECT_TRUE(
      HtmlPage("A", "B", "<base href=\"/\"/>").endsWith("</style><base href=\"/\"/></head><body>B</body></html>"));
}

TEST(HtmlPage, FollowsLightAndDarkPreference) {
  const QByteArray page = HtmlPage("", "");
  EXPECT_TRUE(page.contains(":root { color-scheme: light dark; "));
  EXPECT_TRUE(page.contains("@media (prefers-color-scheme: dark) { :root { --ink: "));
  EXPECT_TRUE(page.contains("color: var(--ink); background: var(--ground);"));
}

TEST(StatusPage, IsOneLine) {
  for (const int status : {301, 400, 404, 405, 408, 413, 414, 429, 431, 501, 503, 505}) {
    const Answer answer = StatusPage(status);
    EXPECT_EQ(answer.status, status);
    EXPECT_TRUE(answer.body.contains("<h1>" + QByteArray::number(status) + ' ')) << status;
    EXPECT_FALSE(answer.body.contains('\n')) << status;
    EXPECT_EQ(FaultOf(answer.body), "") << status;
  }
}

}  // namespace
}  // namespace borvane::mirror
