#include "feed/http_client.h"

#include <gtest/gtest.h>

#include "feed/presence.h"
#include "settings/conffrm.h"
#include "support/failure_of.h"
#include "support/program/pages.h"
#include "support/rig.h"

namespace borvane {
namespace {

const std::string page_address = "http://host/page";
const std::string other_address = "http://host/other";

/// Runs `event` during a request of page_address, which then ends with the time-out or before.
void WhileBusy(Rig &rig, const Rig::Event &event) {
  rig.during_request(page_address, [&] {
    rig.clear_trace();
    event();
    rig.note("event over");
  });
  rig.happen([] { FailureOf([] { conffrm->Inet1.OpenURL(page_address); }); });
  // What came after the event belongs to the request that was under way.
}

Lines LinesOfEvent(const Rig &rig) {
  Lines lines;
  for (const std::string &line : rig.trace()) {
    if (line == "event over")
      break;
    lines.push_back(line);
  }
  return lines;
}

Lines Pumps(int count) {
  Lines lines;
  for (int i = 0; i < count; ++i) {
    lines.emplace_back("pump in");
    lines.emplace_back("pump out");
  }
  return lines;
}

Lines operator+(Lines first, const Lines &second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST(HttpClientFree, IsTrueForAnIdleClientAfterOneRunOfEvents) {
  Rig rig;
  Flag is_free = flag_false;
  rig.happen([&] { is_free = HttpClientFree(); });
  EXPECT_EQ(is_free, flag_true);
  EXPECT_EQ(rig.trace({"pump", "wait", "cancel", "request"}), Pumps(1));
}

TEST(HttpClientFree, CancelsTheRequestUnderWayAtTheTwentiethPassAndIsThenTrue) {
  Rig rig;
  rig.hold(page_address);
  Flag is_free = flag_false;
  WhileBusy(rig, [&] { is_free = HttpClientFree(); });
  EXPECT_EQ(is_free, flag_true);
  EXPECT_EQ(LinesOfEvent(rig), Pumps(21) + Lines{"cancel " + page_address})
      << "twenty passes have tested the client, and the pass that cancels tests it again";
}

TEST(HttpClientFree, CancelsAClientThatNeverStopsOnceAndIsFalse) {
  Rig rig;
  rig.hold_stubbornly(page_address);
  Flag is_free = flag_true;
  WhileBusy(rig, [&] { is_free = HttpClientFree(); });
  EXPECT_EQ(is_free, flag_false);
  EXPECT_EQ(LinesOfEvent(rig), Pumps(21) + Lines{"cancel " + page_address} + Pumps(2))
      << "no test follows the last run of events";
}

TEST(HttpClientFree, TestsTheClientAfterEachOfTwentyTwoRunsOfEvents) {
  for (int ends = 1; ends <= 23; ++ends) {
    Rig rig;
    rig.hold_stubbornly(page_address);
    Flag is_free = flag_false;
    std::size_t runs = 0;
    WhileBusy(rig, [&] {
      // The request ends in the run of events with that number.
      rig.during_pump(ends, [&] {
        rig.serve(page_address, "page");
        rig.http().PassWait();
      });
      is_free = HttpClientFree();
      runs = rig.trace({"pump"}).size() / 2;
    });
    EXPECT_EQ(is_free, ends <= 22 ? flag_true : flag_false) << ends;
    EXPECT_EQ(runs, static_cast<std::size_t>(ends)) << ends;
  }
}

TEST(HttpClientFree, IsTrueWithoutANetworkAndTheRequestFails) {
  Rig rig;
  rig.refuse(page_address);
  rig.happen([] {
    EXPECT_EQ(HttpClientFree(), flag_true);
    EXPECT_EQ(FailureOf([] { conffrm->Inet1.OpenURL(page_address); }), static_cast<int>(Failure::RequestFailed));
  });
}

TEST(Inet1, ReturnsTheBodyAsText) {
  Rig rig;
  rig.serve(page_address, std::string_view("a\0\r\n\xFF", 5));
  rig.happen([] { EXPECT_EQ(conffrm->Inet1.OpenURL(page_address), std::string("a\0\r\n\xFF", 5)); });
  EXPECT_EQ(rig.trace({"request", "wait", "pump"}), (Lines{"request " + page_address, "wait in", "wait out"}));
}

TEST(Inet1, ReturnsTheSameWhenTextIsRequested) {
  Rig rig;
  rig.serve(page_address, "page");
  rig.happen([] { EXPECT_EQ(conffrm->Inet1.OpenURL(page_address, 0), "page"); });
  EXPECT_EQ(rig.trace({"request"}), Lines{"request " + page_address});
}

TEST(Inet1, ReportsTheStartAndTheEndOfARequest) {
  Rig rig;
  EXPECT_TRUE(conffrm->Inet1.StateChanged.IsWired()) << "by design, though its handler is empty";
  conffrm->Inet1.StateChanged = [&] { rig.note(conffrm->Inet1.StillExecuting() ? "busy" : "free"); };
  rig.serve(page_address, "page");
  rig.happen([] { conffrm->Inet1.OpenURL(page_address); });
  rig.refuse(page_address);
  rig.happen([] { FailureOf([] { conffrm->Inet1.OpenURL(page_address); }); });
  EXPECT_EQ(rig.trace({"busy", "free"}), (Lines{"busy", "free", "busy", "free"}));
}

TEST(Inet1, WaitsForEventsUntilTheAnswerIsThere) {
  Rig rig;
  rig.serve(page_address, "page", 3);
  rig.happen([] { EXPECT_EQ(conffrm->Inet1.OpenURL(page_address), "page"); });
  EXPECT_EQ(rig.trace({"wait"}).size(), 6u);
}

TEST(Inet1, LetsHandlersRunWhileItWaits) {
  Rig rig;
  rig.serve(page_address, "page");
  bool was_busy = false;
  rig.during_request(page_address, [&] { was_busy = conffrm->Inet1.StillExecuting(); });
  rig.happen([] { conffrm->Inet1.OpenURL(page_address); });
  EXPECT_TRUE(was_busy);
  EXPECT_FALSE(conffrm->Inet1.StillExecuting());
}

TEST(Inet1, SendsTheAddressUnchanged) {
  Rig rig;
  rig.happen([] { FailureOf([] { conffrm->Inet1.OpenURL("http://host/a b|c#\xE9"); }); });
  EXPECT_EQ(rig.trace({"request"}), Lines{"request http://host/a b|c#\xE9"});
}

/// The number of the failure that a request of page_address raises.
int FailureOfRequest(Rig &rig) {
  int failure = 0;
  rig.happen([&] { failure = FailureOf([] { conffrm->Inet1.OpenURL(page_address); }); });
  return failure;
}

TEST(Inet1, FailsWithItsTransferAndStartsNoOther) {
  for (const bool times_out : {false, true}) {
    Rig rig;
    if (times_out)
      rig.hold(page_address);
    else
      rig.refuse(page_address);
    EXPECT_EQ(FailureOfRequest(rig), static_cast<int>(Failure::RequestFailed));
    EXPECT_EQ(rig.trace({"request"}), Lines{"request " + page_address});
    EXPECT_EQ(rig.trace({"time-out"}).size(), times_out ? 1U : 0U);
    EXPECT_FALSE(conffrm->Inet1.StillExecuting());
  }
}

TEST(Inet1, FailsAfterItsCancel) {
  Rig rig;
  rig.hold(page_address);
  rig.during_request(page_address, [] { conffrm->Inet1.Cancel(); });
  EXPECT_EQ(FailureOfRequest(rig), static_cast<int>(Failure::RequestFailed));
  EXPECT_EQ(rig.trace({"cancel", "time-out"}), Lines{"cancel " + page_address});
}

TEST(Inet1, RefusesARequestWhileItIsBusy) {
  Rig rig;
  rig.hold(page_address);
  int failure = 0;
  rig.during_request(page_address, [&] { failure = FailureOf([] { conffrm->Inet1.OpenURL(other_address); }); });
  rig.happen([] { FailureOf([] { conffrm->Inet1.OpenURL(page_address); }); });
  EXPECT_EQ(failure, static_cast<int>(Failure::StillExecutingLastRequest));
  EXPECT_EQ(rig.trace({"request"}), Lines{"request " + page_address});
}

TEST(Inet1, HasNothingToCancelWhenIdle) {
  Rig rig;
  rig.serve(page_address, "page");
  rig.happen([] {
    conffrm->Inet1.Cancel();
    EXPECT_EQ(conffrm->Inet1.OpenURL(page_address), "page");
    conffrm->Inet1.Cancel();
  });
  EXPECT_TRUE(rig.trace({"cancel"}).empty());
}

TEST(Inet1, FailsTheRequestThatWasTakenOverHoweverTheOtherEnds) {
  for (const bool other_answers : {true, false}) {
    Rig rig;
    rig.hold(page_address);
    if (other_answers)
      rig.serve(other_address, "other");
    std::string other;
    rig.during_request(page_address, [&] {
      conffrm->Inet1.Cancel();
      FailureOf([&] { other = conffrm->Inet1.OpenURL(other_address); });
      EXPECT_FALSE(conffrm->Inet1.StillExecuting());
    });
    int failure = 0;
    rig.happen([&] { failure = FailureOf([] { conffrm->Inet1.OpenURL(page_address); }); });
    EXPECT_EQ(failure, static_cast<int>(Failure::RequestFailed));
    EXPECT_EQ(other, other_answers ? "other" : "");
    EXPECT_FALSE(conffrm->Inet1.StillExecuting());
  }
}

TEST(Inet1, ReportsTheNewestRequestWhileTheOlderOneIsBeingAbandoned) {
  Rig rig;
  rig.hold(page_address);
  rig.hold(other_address);
  bool newest_is_busy = false;
  rig.during_request(page_address, [&] {
    conffrm->Inet1.Cancel();
    FailureOf([] { conffrm->Inet1.OpenURL(other_address); });
  });
  rig.during_request(other_address, [&] { newest_is_busy = conffrm->Inet1.StillExecuting(); });
  rig.happen([] { FailureOf([] { conffrm->Inet1.OpenURL(page_address); }); });
  EXPECT_TRUE(newest_is_busy);
}

TEST(Inet1, LivesFromTheLoadOfTheSettingsWindowToTheEnd) {
  Rig rig;
  rig.start();
  rig.serve(page_address, "page");
  rig.happen([] {
    conffrm->Show();
    conffrm->Hide();
    EXPECT_EQ(conffrm->Inet1.OpenURL(page_address), "page");
  });
}

}  // namespace
}  // namespace borvane
