#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "feed/service.h"
#include "records/frmRecords.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

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

}  // namespace
}  // namespace borvane
