#include "core/dispatch.h"

#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/rig.h"

namespace borvane {
namespace {

TEST(Dispatch, RunsTheHandler) {
  Rig rig;
  int runs = 0;
  Dispatch([&] { ++runs; });
  EXPECT_EQ(runs, 1);
  EXPECT_TRUE(rig.trace().empty());
}

TEST(Dispatch, ReportsARuntimeErrorAndEndsTheProcess) {
  Rig rig;
  rig.happen([] { throw RuntimeError(9, "no such button"); });
  EXPECT_EQ(rig.trace(), (Lines{"error report 9 no such button", "end 1"}));
  EXPECT_EQ(rig.end_status(), 1);
}

TEST(Dispatch, ReportsAForeignException) {
  Rig rig;
  rig.happen([] { throw std::out_of_range("far out"); });
  EXPECT_EQ(rig.trace(), (Lines{"error report 0 far out", "end 1"}));
  EXPECT_EQ(rig.end_status(), 1);
}

TEST(Dispatch, LetsNoErrorEscapeIntoTheProcedureThatRunsEvents) {
  Rig rig;
  bool has_caught = false;
  rig.during_next_pump([] { Fail(Failure::Overflow); });
  rig.happen([&] {
    try {
      platform().events.LetEventsRun();
    } catch (const RuntimeError &) {
      has_caught = true;
    }
  });
  EXPECT_FALSE(has_caught);
  EXPECT_EQ(rig.end_status(), 1);
}

TEST(Dispatch, KeepsAWindowThatANestedEventUnloads) {
  Rig rig;
  rig.happen([&] {
    SettingsForm &settings = *conffrm;
    rig.during_next_pump([] { conffrm.Unload(); });
    platform().events.LetEventsRun();
    EXPECT_EQ(conffrm.IfLoaded(), nullptr);
    EXPECT_EQ(settings.Text1.Text(), "3.5") << "its memory is still that of the window";
  });
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(Program, StartsFromScratchInEachRun) {
  {
    Rig rig;
    rig.happen([] {
      Module1->SiteRoot = "http://example/";
      frmRecords->Show();
    });
  }
  Rig rig;
  EXPECT_EQ(Module1->SiteRoot, "");
  EXPECT_EQ(frmRecords.IfLoaded(), nullptr);
}

TEST(Dispatch, LetsTheStoreKnowWhereAnEventBeginsAndEnds) {
  Rig rig;
  std::vector<int> events;
  Dispatch([&] {
    events.push_back(rig.store().events());
    Dispatch([&] { events.push_back(rig.store().events()); });
    events.push_back(rig.store().events());
  });
  EXPECT_EQ(events, (std::vector{1, 2, 1}));
  EXPECT_EQ(rig.store().events(), 0);

  rig.happen([] { Fail(Failure::Overflow); });
  EXPECT_EQ(rig.store().events(), 0);
}

}  // namespace
}  // namespace borvane
