#include "feed/refresh.h"

#include "alert/quake_log.h"
#include "bars/Form1.h"
#include "basic/number.h"
#include "basic/text.h"
#include "core/program.h"
#include "core/time_text.h"
#include "feed/area.h"
#include "feed/hosts.h"
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

/// Once in a run whose number is a multiple of ten, reports the run to the service. Returns whether the client was free
/// for it.
bool CountRunAtService() {
  if (Module1->RunCount % 10 != 0)
    return true;
  if (HttpClientFree() == flag_false)
    return false;
  conffrm->Inet1.OpenURL(ServiceAddress("cmd=add&macid=" + Module1->MacID), Inet::as_text);
  Module1->RunCount = -1;
  return true;
}

/// Cuts `SiteRoot` after the first slash at position 9 or later, which leaves scheme, host and a slash.
void CutSiteRoot() {
  constexpr int after_the_scheme = 9;
  const Integer slash = Find(Module1->SiteRoot, "/", after_the_scheme);
  Module1->SiteRoot = Piece(Module1->SiteRoot, 1, slash);
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

  // Meant (site-root-is-unprotected): the address should be this refresh's own. A refresh that runs while this one
  // waits for the client has cut it, and this one asks for the site root.
  std::string page = conffrm->Inet1.OpenURL(Module1->SiteRoot);
  if (page.empty())
    return Outcome::EmptyPage;

  CutSiteRoot();

  // Meant (scanner-follows-area-text): a page chosen by its coordinates should have its own scanner. The area's text
  // alone decides, also then.
  ScannerOf(conffrm->Combo2.Text())(mode, page);
  return Outcome::Finished;
}

/// Finishes a refresh, also one that fetched nothing because the client was busy.
void FinishRefresh(Integer mode) {
  // Meant (busy-client-counts-as-refreshed): without a fetch there is nothing to report. The status bar shows the time
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

/// Leaves a refresh that failed. Nothing is shown to the user; the next tick that tests the count tries again.
void FailRefresh(Integer mode) {
  Module1->RefreshBusy = flag_false;

  if (mode == refresh_with_hourglass) {
    frmRecords->MousePointer = pointer_normal;
    frmRecords->Timer1.Enabled = true;
  }

  // Meant (unreachable-threshold-ends-the-program): here at once, since no trap is left.
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
    // Falls through to FailRefresh, as an empty page does.
  }
  FailRefresh(mode);
}

void RefreshWorld() {
  try {
    frmRecords->MousePointer = pointer_hourglass;

    const std::string address = AddressOf(Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_all.php");

    // Meant (busy-client-leaves-the-hourglass): the pointer should become normal again on every way out. A busy client
    // leaves it.
    if (HttpClientFree() == flag_false)
      return;
    std::string page = conffrm->Inet1.OpenURL(address);

    Module1->GlobalScanFlag = flag_true;
    Integer mode = refresh_with_hourglass;
    ScanWorldList(mode, page);
    Module1->GlobalScanFlag = flag_false;

    // Meant (world-refresh-label-stays-disabled): the label should be enabled while there is no headline. The
    // headline's text is "N/A" at first and never empty.
    frmRecords->Label8.Enabled = frmRecords->Label3.Caption().empty();

    frmRecords->Label3.Visible = true;

    frmRecords->MousePointer = pointer_normal;
  } catch (const RuntimeError &) {
    // Meant (hourglass-stays-after-a-failed-headline): a failure should put pointer and flag back. Both stay, the flag
    // until a later headline succeeds.
  }
}

}  // namespace borvane
