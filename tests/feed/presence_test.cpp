#include "feed/presence.h"

#include <functional>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "feed/service.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(SendOnlineMark, ReportsThisClientToTheService) {
  WatchingRig rig;
  rig.happen(SendOnlineMark);
  EXPECT_EQ(rig.trace({"pump", "request", "cancel"}), (Lines{"pump in", "pump out", "request " + set_online}));
}

TEST(SendOnlineMark, IsHarmlessWhenItFails) {
  WatchingRig rig;
  rig.refuse(set_online);
  rig.happen(SendOnlineMark);
  rig.hold(set_online);
  rig.happen(SendOnlineMark);
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

/// Label9 after the timer has asked a service that answers `answer`; nullopt means an unreachable one.
std::string UsersOnline(const std::optional<std::string> &answer) {
  WatchingRig rig;
  if (answer)
    rig.serve(who_is_on, *answer);
  rig.tick(frmRecords->Timer3);
  return frmRecords->Label9.Caption();
}

TEST(GetUsersOnline, ShowsTheAnswerAsItCame) {
  EXPECT_EQ(UsersOnline("17"), "Users Online: 17");
  EXPECT_EQ(UsersOnline(" 17 \n"), "Users Online:  17 \n");
  EXPECT_EQ(UsersOnline(""), "Users Online: ");
}

TEST(GetUsersOnline, ShowsZeroForAnErrorPage) {
  EXPECT_EQ(UsersOnline("<html>404</html>"), "Users Online: 0");
  EXPECT_EQ(UsersOnline("17 <"), "Users Online: 0");
}

TEST(GetUsersOnline, ShowsWhateverElseAServiceMayAnswer) {
  for (const std::string &answer : {std::string("x"), std::string("\r\n"), std::string(400, '9'),
                                    std::string("1\0002", 3), std::string("\x80\xff"), std::string(10'000'000, '7')})
    EXPECT_EQ(UsersOnline(answer), "Users Online: " + answer) << answer.size();
}

TEST(GetUsersOnline, LeavesTheBarePrefixWithoutAConnection) { EXPECT_EQ(UsersOnline(std::nullopt), "Users Online: "); }

TEST(GetUsersOnline, LeavesTheBarePrefixWhenTheClientIsBusy) {
  WatchingRig rig;
  rig.hold_stubbornly(los_angeles);
  rig.during_request(los_angeles, [&] {
    frmRecords->Label9.Caption = "Users Online: 17";
    rig.tick(frmRecords->Timer3);
  });
  rig.key('R');
  EXPECT_EQ(frmRecords->Label9.Caption(), "Users Online: ");
}

TEST(GetUsersOnline, SendsTheVersionWithALeadingBlank) {
  RecordProperty("quirk", "whoson-version-has-a-blank");
  WatchingRig rig;
  rig.happen([] { GetUsersOnline(); });
  const std::string request = rig.trace({"request"}).at(0);
  EXPECT_TRUE(request.ends_with("&AppVersion= " + VersionDigits())) << request;
  rig.happen(SendOnlineMark);
  EXPECT_TRUE(rig.trace({"request"}).at(1).ends_with("&AppVersion=" + VersionDigits()));
}

TEST(GetUsersOnline, IsAskedEveryMinuteWhetherTheRefreshIsOnOrOff) {
  WatchingRig rig;
  EXPECT_TRUE(frmRecords->Timer3.IsCounting());
  EXPECT_EQ(frmRecords->Timer3.Interval(), 60000);
  rig.tick(frmRecords->Timer3, 2);
  EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + who_is_on, "request " + who_is_on}));
}

TEST(PresenceCalls, DoNotTrapAForeignException) {
  const std::pair<std::string, std::function<void()>> calls[] = {{set_online, SendOnlineMark},
                                                                 {who_is_on, [] { GetUsersOnline(); }},
                                                                 {version_file, [] { frmRecords->CheckForUpdate(); }}};
  for (const auto &[address, call] : calls) {
    WatchingRig rig;
    rig.http().Break(address);
    rig.happen(call);
    EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 0 broken", "end 1"})) << address;
  }
}

}  // namespace
}  // namespace borvane
