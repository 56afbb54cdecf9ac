#include "monitoring/monitoring.h"

#include <optional>

#include <gtest/gtest.h>

#include "support/mirror/client.h"
#include "support/mirror/mirror_process.h"

namespace borvane::mirror {
namespace {

/// The answer of a mirror that fares so.
Answer AnswerTo(const QByteArray &target, const Status &status) {
  Monitoring monitoring([&] { return status; });
  EXPECT_TRUE(monitoring.Serves(target, "127.0.0.1"));
  std::optional<Answer> answer;
  monitoring.Handle({.method = "GET", .target = target}, QHostAddress(), [&](const Answer &given) { answer = given; });
  return answer.value();
}

TEST(Monitoring, AnswersOkWhereAllIsWell) {
  const Answer answer = AnswerTo("/health", {});
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.type, "text/plain; charset=utf-8");
  EXPECT_EQ(answer.body, "ok\n");
}

TEST(Monitoring, SaysWhatIsWrong) {
  Status status = {.is_live = true};
  status.service_store_works = false;
  const Answer answer = AnswerTo("/health?verbose", status);
  EXPECT_EQ(answer.status, 503);
  EXPECT_EQ(answer.body, "The service's store does not work.\nNo feed has answered yet.\n");
}

TEST(Monitoring, ServesItsTwoPathsOnly) {
  const Monitoring monitoring([] { return Status(); });
  for (const char *target : {"/metrics", "/metrics?x", "/health#x"})
    EXPECT_TRUE(monitoring.Serves(target, "southern.localhost")) << target;
  for (const char *target : {"/", "/healthy", "/metrics/", "/recenteqs/metrics"})
    EXPECT_FALSE(monitoring.Serves(target, "southern.localhost")) << target;
}

TEST(Monitoring, CountsWhatARunningMirrorAnswers) {
  MirrorProcess mirror;
  EXPECT_EQ(Get(mirror.Port(), "/health").value().body, "ok\n");
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(Get(mirror.Port(), "/nowhere").value().status, 404);
  const Response metrics = Get(mirror.Port(), "/metrics").value();
  EXPECT_EQ(metrics.headers["content-type"], "text/plain; version=0.0.4; charset=utf-8");
  EXPECT_TRUE(metrics.body.contains("\nborvane_answers_total{status=\"200\"} 1\n")) << metrics.body.constData();
  EXPECT_TRUE(metrics.body.contains("\nborvane_answers_total{status=\"404\"} 3\n")) << metrics.body.constData();
  EXPECT_TRUE(metrics.body.contains("\nborvane_events 1306\n"));
  EXPECT_FALSE(metrics.body.contains("feed")) << "offline";
}

TEST(Monitoring, SaysThatTheStoreDoesNotWork) {
  MirrorProcess mirror({"--store", "/dev/null/service.sqlite"});
  EXPECT_EQ(Get(mirror.Port(), "/cgi-bin/borvane/control.pl?cmd=setonline&macid=1", "maker.localhost").value().status,
            503);
  EXPECT_EQ(Get(mirror.Port(), "/health").value().body, "The service's store does not work.\n");
  EXPECT_TRUE(Get(mirror.Port(), "/metrics").value().body.contains("borvane_store_works{store=\"service\"} 0\n"));
}

}  // namespace
}  // namespace borvane::mirror
