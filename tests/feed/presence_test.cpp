#include "feed/presence.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "feed/service.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(VersionDigits, JoinsTheThreeNumbersOfTheVersion) {
  std::string version = BORVANE_VERSION;
  EXPECT_EQ(std::count(version.begin(), version.end(), '.'), 2);
  std::erase(version, '.');
  EXPECT_EQ(VersionDigits(), version);
}

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

/// A program whose version file contains `answer`; nullopt means an unreachable host.
struct UpdateRig : WatchingRig {
  explicit UpdateRig(const std::string &answer) { serve(version_file, answer); }
  void look() {
    happen([] { frmRecords->CheckForUpdate(); });
  }
};

const std::string question =
    "message [Software Update] A new version of Borvane is available.\nPress Ok to open Borvane website (OK, Cancel)";

TEST(CheckForUpdate, SaysNothingAboutTheSameOrAnOlderVersion) {
  for (const std::string &answer : {VersionDigits(), std::string("1"), std::string("0"), std::string("-999")}) {
    UpdateRig rig(answer);
    rig.look();
    EXPECT_EQ(rig.trace({"request", "message"}), Lines{"request " + version_file}) << answer;
  }
}

TEST(CheckForUpdate, ReportsANewerVersionAndOpensItsPageOnOk) {
  UpdateRig rig("9999");
  rig.message_box().Answer(MessageAnswer::Ok);
  rig.look();
  EXPECT_EQ(rig.trace({"message", "open"}),
            (Lines{question, "open http://maker.localhost:17650/borvane/ for frmRecords"}));
}

TEST(CheckForUpdate, ComparesTheNumbers) {
  UpdateRig rig(std::to_string(std::stoi(VersionDigits()) + 1));
  rig.look();
  EXPECT_EQ(rig.trace({"message"}), Lines{question});
}

TEST(CheckForUpdate, OpensNothingOnCancel) {
  UpdateRig rig("9999");
  rig.message_box().Answer(MessageAnswer::Cancel);
  rig.look();
  EXPECT_EQ(rig.trace({"message", "open"}), Lines{question});
}

TEST(CheckForUpdate, ReadsThePrefixOfTheAnswer) {
  UpdateRig rig(" 9999 beta");
  rig.look();
  EXPECT_EQ(rig.trace({"message"}), Lines{question});
}

TEST(CheckForUpdate, SaysNothingWithoutANumber) {
  for (const std::string &answer :
       {std::string(), std::string("newest"), std::string("<html>9999</html>"), std::string("v9999"),
        std::string("\r\n"), std::string("."), std::string("\0009999", 5), std::string(10'000'000, '<'),
        std::string(10'000'000, ' ')}) {
    UpdateRig rig(answer);
    rig.look();
    EXPECT_TRUE(rig.trace({"message"}).empty()) << answer;
  }
}

TEST(CheckForUpdate, ReadsANumberOfAnyLength) {
  // Numbers of digits before a zero byte, a line end, a further text; beyond double precision it is not a number.
  for (const auto &[answer, is_newer] :
       {std::pair(std::string(300, '9'), true), std::pair(std::string(400, '9'), false),
        std::pair(std::string(10'000'000, '9'), false), std::pair(std::string(10'000'000, '0') + "9999", true),
        std::pair(std::string("9999\r\n"), true)}) {
    UpdateRig rig(answer);
    rig.look();
    EXPECT_EQ(rig.trace({"message"}).size(), is_newer ? 1U : 0U) << answer.size();
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(CheckForUpdate, IsSilentWhenItFails) {
  UpdateRig rig("");
  rig.refuse(version_file);
  rig.look();
  rig.serve(version_file, "1e999");
  rig.look();
  EXPECT_EQ(rig.end_status(), std::nullopt);
  EXPECT_TRUE(rig.trace({"message", "error"}).empty());
}

TEST(CheckForUpdate, AsksForNothingWhenTheClientIsBusy) {
  UpdateRig rig("9999");
  rig.hold_stubbornly(los_angeles);
  rig.during_request(los_angeles, [&] {
    rig.clear_trace();
    rig.look();
    rig.note("looked");
  });
  rig.key('R');
  EXPECT_EQ(rig.trace({"cancel", "request", "message", "looked"}), (Lines{"cancel " + los_angeles, "looked"}));
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
