#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "core/load_settings.h"
#include "core/module1.h"
#include "info/banner.h"
#include "records/frmRecords.h"
#include "support/rig.h"

// What a start counts: the runs, the shows of the banner, and the step that nothing acts on.

namespace borvane {
namespace {

TEST(RunTime, GrowsByOneAtEveryStart) {
  for (const auto &[stored, count] : std::initializer_list<std::pair<const char *, int>>{{"", 1},
                                                                                         {"abc", 1},
                                                                                         {"9", 10},
                                                                                         {"10", 11},
                                                                                         {" 41", 42},
                                                                                         {"-5", -4},
                                                                                         {"7 runs", 8},
                                                                                         {"9.6", 11},
                                                                                         {"32766", 32767}}) {
    Rig rig;
    rig.store()["RunTime"] = stored;
    rig.happen(LoadSettings);
    EXPECT_EQ(Module1->RunCount, count) << stored;
    EXPECT_EQ(rig.store()["RunTime"], std::to_string(count)) << stored;
  }
}

TEST(RunTime, EndsTheProgramWhenTheNextRunDoesNotFitSixteenBits) {
  RecordProperty("quirk", "run-beyond-sixteen-bits-ends-the-start");
  for (const char *stored : {"32767", "40000", "1e300", "-40000"}) {
    Rig rig;
    rig.store()["RunTime"] = stored;
    rig.happen(LoadSettings);
    ASSERT_EQ(rig.end_status(), 1) << stored;
    EXPECT_TRUE(rig.trace({"error"}).at(0).starts_with("error report 6 ")) << stored;
    EXPECT_EQ(rig.store()["RunTime"], stored);
  }
}

/// A run on a store with `stored` under `name`; an empty `stored` means no value.
struct LoadedRig : Rig {
  LoadedRig(const char *name, const std::string &stored) {
    if (!stored.empty())
      store()[name] = stored;
    happen([this] { result = LoadSettings(); });
  }
  int result = -1;
};

TEST(Banner, ShowsInFiveRuns) {
  RecordProperty("quirk", "banner-shows-five-times");
  std::string ad;
  std::string shows;
  for (int run = 1; run <= 7; ++run) {
    Rig rig;
    if (!ad.empty())
      rig.store()["ad"] = ad;
    rig.start();
    shows += banner.IfLoaded() != nullptr && banner->IsShown() ? "shown " : "- ";
    ad = rig.store().TextOf("ad");
  }
  EXPECT_EQ(shows, "shown shown shown shown shown - - ");
  EXPECT_EQ(ad, " 5");
}

TEST(Banner, IsNotCountedOnceItHasBeenShownOften) {
  for (const char *stored : {"5", " 5", "6", "1e300", "40000"}) {
    const LoadedRig rig("ad", stored);
    EXPECT_EQ(Module1->ShowBanner, flag_false) << stored;
    EXPECT_EQ(rig.trace({"write"}), (Lines{"write MacID=500000", "write RunTime=1", "write noBother=2"})) << stored;
  }
}

TEST(NoBother, WalksFromNothingToTwoToOneAndStays) {
  RecordProperty("quirk", "no-bother-has-no-effect");
  std::string value;
  std::string walk;
  for (int run = 1; run <= 4; ++run) {
    LoadedRig rig("noBother", value);
    value = rig.store().TextOf("noBother");
    walk += value + ": " + std::to_string(rig.result) + ", ";
  }
  EXPECT_EQ(walk, "2: 0, 1: 1, 1: 0, 1: 0, ");
}

TEST(NoBother, ReadsTheNumericPrefix) {
  for (const auto &[stored, next, result] : std::initializer_list<std::tuple<const char *, const char *, int>>{
           {"0", "2", 0}, {"never", "2", 0}, {" 2 runs", "1", 1}, {"3", "3", 0}, {"-1", "-1", 0}, {"0.5", "0.5", 0}}) {
    LoadedRig rig("noBother", stored);
    EXPECT_EQ(rig.store()["noBother"], next) << stored;
    EXPECT_EQ(rig.result, result) << stored;
  }
}

}  // namespace
}  // namespace borvane
