// Every procedure with a trap, given a failure of the program, which it swallows, and an exception that is none, which
// ends the program as it does everywhere else.
#include <algorithm>
#include <functional>
#include <ostream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "alert/quake_log.h"
#include "bars/bar_content.h"
#include "basic/failure.h"
#include "core/registry.h"
#include "feed/http_client.h"
#include "feed/presence.h"
#include "feed/refresh.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
#include "reports/show_reports.h"
#include "scan/detail_page.h"
#include "support/program/alert_rig.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

/// What is raised in the procedure.
enum class Raised { Failure, OtherException };

[[noreturn]] void Raise(Raised what) {
  if (what == Raised::OtherException)
    throw std::length_error("no failure");
  Fail(Failure::InvalidArgument);
}

/// Raises when a property of what it watches changes.
class RaisingWatcher final : public PropertyWatcher {
 public:
  explicit RaisingWatcher(Raised what) : what_(what) {}
  void PropertyChanged(const PropertyBase & /*property*/) override { Raise(what_); }

 private:
  Raised what_;
};

/// Runs the procedure in a started program in which something is raised.
using Run = std::function<void(WatchingRig &, Raised)>;

/// A procedure with a trap.
struct Trap {
  const char *name;
  Run run;
};

void PrintTo(const Trap &trap, std::ostream *stream) { *stream << trap.name; }

/// A run in which requests of `address` fail or raise.
Run WithRequestsOf(std::string address, std::function<void()> procedure) {
  return [address = std::move(address), procedure = std::move(procedure)](WatchingRig &rig, Raised what) {
    if (what == Raised::OtherException)
      rig.http().Break(address);
    else
      rig.refuse(address);
    rig.happen(procedure);
  };
}

/// A run in which the load of the window of that name raises.
Run WithLoadOf(std::string_view name, std::function<void()> procedure) {
  return [name, procedure = std::move(procedure)](WatchingRig &rig, Raised what) {
    rig.screen().on_load = [name, what](const FormBase &form) {
      if (form.name() == name)
        Raise(what);
    };
    rig.happen(procedure);
  };
}

void ReadAStoredValue(WatchingRig &rig, Raised what) {
  if (what == Raised::OtherException)
    rig.store().BreakReads();
  else
    rig.store().FailReads(static_cast<int>(Failure::InvalidArgument));
  rig.happen([] { ReadRegValue(HKEY_CURRENT_USER, R"(Software\Nalvorin\Borvane)", "Area"); });
}

void Refresh() {
  Integer mode = refresh_with_hourglass;
  RefreshEvents(mode);
}

void AlertOfAStrongEvent() {
  EventFields event = AlertRig::strong();
  CheckEventAlert(event);
}

void WriteLogOnABrokenDisk(WatchingRig &rig, Raised what) {
  rig.files().BeforeCall("exists", 1, [what] { Raise(what); });
  rig.happen(WriteQuakeLog);
}

void ResizeRecords(WatchingRig &rig, Raised what) {
  RaisingWatcher watcher(what);
  frmRecords->Frame2.Watch(&watcher);
  rig.happen([] { frmRecords->SetSize(20'000, 10'000); });
  frmRecords->Frame2.Watch(nullptr);
}

void CheckForUpdate() { frmRecords->CheckForUpdate(); }

void SubmitAnEmptyReport() { ComPart->Command1_Click(ReportForm::button_submit); }

void ShowAllReports() {
  ReportFields fields;
  ShowReports(fields);
}

/// What they ask the service for before a page has been chosen.
const std::string empty_report = service + "cmd=puta&map=&strout=" + VersionDigits() + "|||1.285714|0|0|";
const std::string all_reports = service + "cmd=geta&map=";

class EveryTrap : public testing::TestWithParam<Trap> {};

TEST_P(EveryTrap, SwallowsAFailure) {
  WatchingRig rig;
  GetParam().run(rig, Raised::Failure);
  EXPECT_EQ(rig.trace({"error", "end"}), Lines{});
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST_P(EveryTrap, LetsAnExceptionThatIsNoFailureEndTheProgram) {
  WatchingRig rig;
  GetParam().run(rig, Raised::OtherException);
  ASSERT_EQ(rig.end_status(), 1);
  EXPECT_EQ(rig.trace({"error", "end"}).size(), 2U);
  EXPECT_TRUE(rig.trace({"error"}).front().starts_with("error report 0 "));
}

const std::string detail_page = southern + "/recenteqs/Quakes/ci1.html";

INSTANTIATE_TEST_SUITE_P(
    All, EveryTrap,
    testing::Values(Trap{"QueryRegValueEx", ReadAStoredValue},
                    Trap{"SendOnlineMark", WithRequestsOf(set_online, SendOnlineMark)},
                    Trap{"GetUsersOnline", WithRequestsOf(who_is_on, [] { GetUsersOnline(); })},
                    Trap{"RefreshEvents", WithRequestsOf(los_angeles, Refresh)},
                    Trap{"RefreshWorld", WithRequestsOf(world_page, RefreshWorld)},
                    Trap{"FetchDetailPage", WithRequestsOf(detail_page, [] { FetchDetailPage(detail_page); })},
                    Trap{"CheckEventAlert", WithLoadOf("frmQalert", AlertOfAStrongEvent)},
                    Trap{"WriteQuakeLog", WriteLogOnABrokenDisk},
                    Trap{"UpdateLongBar", WithLoadOf("newTagFrm", UpdateLongBar)},
                    Trap{"RecordsForm::Form_Resize", ResizeRecords},
                    Trap{"RecordsForm::CheckForUpdate", WithRequestsOf(version_file, CheckForUpdate)},
                    Trap{"ReportForm::Submit", WithRequestsOf(empty_report, SubmitAnEmptyReport)},
                    Trap{"ShowReports", WithRequestsOf(all_reports, ShowAllReports)}),
    [](const testing::TestParamInfo<Trap> &trap) {
      std::string name = trap.param.name;
      std::replace(name.begin(), name.end(), ':', '_');
      return name;
    });

}  // namespace
}  // namespace borvane
