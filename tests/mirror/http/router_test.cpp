#include "http/router.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

/// Serves the targets that begin with a folder on one host, and answers with its own name.
class FolderHandler : public Handler {
 public:
  FolderHandler(QByteArray name, QByteArray folder, QByteArray host = {})
      : name_(std::move(name)), folder_(std::move(folder)), host_(std::move(host)) {}

  bool Serves(const QByteArray &target, const QByteArray &host) const override {
    return target.startsWith(folder_) && (host_.isEmpty() || host == host_);
  }
  void Handle(const Request & /*request*/, const QHostAddress &client, const Reply &reply) override {
    reply({.body = name_ + " for " + client.toString().toLatin1()});
  }
  Answer Refusal(int status, const QByteArray & /*target*/, const QByteArray & /*host*/) const override {
    return {.status = status, .body = name_ + " refuses"};
  }

 private:
  const QByteArray name_;
  const QByteArray folder_;
  const QByteArray host_;
};

class RouterTest : public testing::Test {
 protected:
  Answer Ask(const QByteArray &target, const QByteArray &host = {}) {
    std::optional<Answer> answer;
    router_.Handle({.method = "GET", .target = target, .host = host}, QHostAddress("10.0.0.1"),
                   [&](const Answer &given) { answer = given; });
    return answer.value();
  }

  FolderHandler first_{"first", "/a/", "x"};
  FolderHandler second_{"second", "/a/b"};
  Router router_{{&first_, &second_}};
};

TEST_F(RouterTest, PassesARequestToTheFirstHandlerThatServesIt) {
  EXPECT_EQ(Ask("/a/b", "x").body, "first for 10.0.0.1");
  EXPECT_EQ(Ask("/a/b", "y").body, "second for 10.0.0.1");
}

TEST_F(RouterTest, ServesWhatOneOfItsHandlersServes) {
  EXPECT_TRUE(router_.Serves("/a/c", "x"));
  EXPECT_FALSE(router_.Serves("/a/c", "y"));
}

TEST_F(RouterTest, AnswersWhatNoHandlerServesWithNotFound) {
  const Answer answer = Ask("/a/c", "y");
  EXPECT_EQ(answer.status, 404);
  EXPECT_TRUE(answer.body.contains("<h1>404 Not Found</h1>"));
}

TEST_F(RouterTest, LeavesTheFormOfARefusalToTheHandler) {
  EXPECT_EQ(router_.Refusal(414, "/a/b", "y").body, "second refuses");
  EXPECT_EQ(router_.Refusal(414, "/a/b", "y").status, 414);
  EXPECT_TRUE(router_.Refusal(414, "/c", "y").body.contains("<h1>414 URI Too Long</h1>"));
}

}  // namespace
}  // namespace borvane::mirror
