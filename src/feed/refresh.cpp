#include "feed/refresh.h"

#include <array>

#include "alert/quake_log.h"
#include "bars/Form1.h"
#include "basic/number.h"
#include "basic/text.h"
#include "core/program.h"
#include "core/time_text.h"
#include "feed/area.h"
#include "feed/http_client.h"
#include "feed/presence.h"
#include "feed/service.h"
#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

/// How the steps up to the scan ended when no failure ended them.
enum class Outcome { Finished, EmptyPage };

/// Once in a run whose number is a multiple of ten, tells the service of the run. Gives whether the client was free for
/// it.
bool CountRunAtService() {
  if (Module1->RunCount % 10 != 0)
    return true;
  if (HttpClientFree() == flag_false)
    return false;
  conffrm->Inet1.OpenURL(ServiceAddress("cmd=add&macid=" + Module1->MacID));
  Module1->RunCount = -1;
  return true;
}

/// Cuts `SiteRoot` behind the first slash at position 9 or later, which leaves scheme, host and a slash.
void CutSiteRoot() {
  constexpr int behind_the_scheme = 9;
  const Integer slash = Find(Module1->SiteRoot, "/", behind_the_scheme);
  Module1->SiteRoot = Piece(Module1->SiteRoot, 1, slash);
}

void ScanPage(Integer &mode, std::string &page) {
  using Scanner = void (*)(Integer &, std::string &);
  struct Choice {
    int position;
    Scanner scan;
  };
  constexpr std::array choices = {
      Choice{14, ScanRegionTable},    // All Alaska
      Choice{16, ScanMapList},        // Intermountain West
      Choice{21, ScanMapList},        // NorthEastern
      Choice{24, ScanMapAnchorList},  // Puerto Rico
      Choice{22, ScanWorldList},      // Worlwide <5
      Choice{23, ScanWorldList},      // Worldwide 5+
  };

  // Meant (scanner-follows-area-text): a page chosen by its coordinates should have its own scanner. The area's text
  // alone decides, also then.
  const std::string area = conffrm->Combo2.Text();
  for (const Choice &choice : choices) {
    if (area == conffrm->Combo2.List(choice.position)) {
      choice.scan(mode, page);
      return;
    }
  }
  ScanQuakesList(mode, page);
}

/// The steps that may fail, up to the scan. Where the client is busy the fetch is skipped, and the refresh counts as
/// finished.
Outcome FetchAndScan(Integer &mode) {
  SendOnlineMark();

  if (mode == refresh_with_hourglass) {
    Module1->RefreshCount = 0;
    frmRecords->MousePointer = pointer_hourglass;
    frmRecords->Timer1.Enabled = false;
  } else if (mode == refresh_from_short_bar) {
    Form1->Label1(0).Caption = "";
  }

  if (!CountRunAtService())
    return Outcome::Finished;

  Module1->AlertThreshold = SinglePrefix(conffrm->Text1.Text());

  GetAreaUrl();

  Module1->RefreshBusy = flag_true;
  if (HttpClientFree() == flag_false)
    return Outcome::Finished;

  std::string page = conffrm->Inet1.OpenURL(Module1->SiteRoot);
  if (page.empty())
    return Outcome::EmptyPage;

  CutSiteRoot();

  ScanPage(mode, page);
  return Outcome::Finished;
}

/// Finishes a refresh, also one that fetched nothing because the client was busy.
void FinishRefresh(Integer mode) {
  // Meant (busy-client-counts-as-refreshed): without a fetch there is nothing to tell. The status bar names the time
  // all the same.
  frmRecords->StatusBar1.Panels(2).Text = "Last Refresh: " + TimeText(platform().clock.Now());
  frmRecords->Caption = frmRecords->ListView2.ListItems(1).Text + " - Borvane - Last Events";

  Module1->RefreshBusy = flag_false;
  if (mode == refresh_with_hourglass)
    frmRecords->MousePointer = pointer_normal;

  // Meant (any-refresh-starts-the-clock): the switch should decide whether the timer runs. Every refresh that finishes
  // starts it, the R key's too.
  frmRecords->Timer1.Enabled = true;

  if (conffrm->Check1.Value() == 1)
    WriteQuakeLog();
  InitLogPath();

  Module1->RefreshCount = 0;
}

/// Leaves a refresh that failed. The user is told nothing; the next tick that looks tries again.
void FailRefresh(Integer mode) {
  Module1->RefreshBusy = flag_false;

  if (mode == refresh_with_hourglass) {
    frmRecords->MousePointer = pointer_normal;
    frmRecords->Timer1.Enabled = true;
  }

  Module1->RefreshCount = RoundToInteger(NumericPrefix(conffrm->Text2.Text()));
}

}  // namespace

void RefreshEvents(Integer &mode) {
  try {
    if (FetchAndScan(mode) == Outcome::Finished) {
      FinishRefresh(mode);
      return;
    }
  } catch (const RuntimeError &) {
    // The failure's own road follows.
  }
  FailRefresh(mode);
}

void RefreshWorld() {}

}  // namespace borvane
