#include "records/frmRecords.h"

#include "alert/alert_time.h"
#include "basic/number.h"
#include "controls/key_codes.h"
#include "core/program.h"
#include "core/program_info.h"
#include "core/start.h"
#include "feed/hosts.h"
#include "feed/http_client.h"
#include "feed/presence.h"
#include "feed/refresh.h"
#include "feed/service.h"
#include "info/Aboutfrm.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

void Refresh() {
  Integer mode = refresh_with_hourglass;
  RefreshEvents(mode);
}

void AskToQuit() {
  const std::string title(program_title);
  const MessageAnswer answer =
      platform().message_box.Show("Are you sure you want to terminate " + title + " ?", title + " - Quit",
                                  MessageButtons::YesNo, MessageIcon::Question);
  if (answer == MessageAnswer::Yes)
    QuitProgram();
}

}  // namespace

RecordsForm::RecordsForm()
    : FormBase({.Name = "frmRecords", .Caption = "Borvane - Last Events", .ClientWidth = 11025, .ClientHeight = 8325}) {
  Label3.MouseMove = [this](const MouseState &) { Label3_MouseMove(); };
  Label3.MouseUp = [this](const MouseState &mouse) { Label3_MouseUp(mouse); };
  Label5.Click = [this] { Label5_Click(); };
  Label6.Click = [this] { Label6_Click(); };
  Label7.Click = [this] { Label7_Click(); };
  Label8.Click = [this] { Label8_Click(); };
  Timer1.Timer = [this] { Timer1_Timer(); };
  Timer2.Timer = [this] { Timer2_Timer(); };
  Timer3.Timer = [this] { Timer3_Timer(); };
  Toolbar1.ButtonClick = [this](int number) { Toolbar1_ButtonClick(number); };
  ListView1.BeforeLabelEdit = [](Integer &cancel) { ListView1_BeforeLabelEdit(cancel); };
  ListView1.ColumnClick = [this](const ColumnHeader &header) { ListView1_ColumnClick(header); };
  ListView1.MouseUp = [this](const MouseState &mouse) { ListView1_MouseUp(mouse); };
  mnuMapGoo.Click = [this] { mnuMapGoo_Click(); };
  mnuOpenMap.Click = [this] { mnuOpenMap_Click(); };
  mnuReportIt.Click = [this] { mnuReportIt_Click(); };
  mnuViewReps.Click = [this] { mnuViewReps_Click(); };
  mnuGrid.Click = [this] { mnuGrid_Click(); };
  mnuGlobalInfo.Click = [this] { mnuGlobalInfo_Click(); };
  mnuWiki.Click = [this] { mnuWiki_Click(); };
  mnuwikipassGoogle.Click = [this] { mnuwikipassGoogle_Click(); };
}

std::vector<ColumnHeader> RecordsForm::FirstColumns() {
  return {{"Magnitude", {}},  {"Date", {}},     {"Time", {}}, {"Latitude", {}}, {"Longitude", {}},
          {"Depth (km)", {}}, {"Distance", {}}, {"Unit", {}}, {"Distance", {}}, {"Unit", {}},
          {"Direction", {}},  {"Where?", 5400}, {"", 1}};
}

void RecordsForm::Form_Load() {
  Module1->LastAlertTime = FirstAlertTime(platform().clock.Now());

  ListView2.ListItems.Add({.Text = "Mag", .SubItemTexts = {"Area", "Time Recorded"}});

  Label2(3).Caption = "N/A";

  Timer1.Interval = RoundToLong(NumericPrefix(conffrm->Text2.Text()));

  StatusBar1.Panels(3).Text = "Auto Refresh Off";
}

void RecordsForm::Form_Resize() {
  try {
    Frame2.Width = ScaleWidth() - Frame2.Left() - 405;
    ListView1.Width = Frame2.Width() - ListView1.Left() - 220;
    Frame1.Width = ScaleWidth() - 100;
    Frame3.Width = Frame1.Width();
    ListView2.Width = Frame1.Width() - 200;
    Image1.Left = Width() - Image1.Width() - 800;
    Frame2.Height = Height() - Frame2.Top() - StatusBar1.Height() - 420;
    Frame4.Height = Frame2.Height();
    ListView1.Height = Frame2.Height() - ListView1.Top() - 200;
  } catch (const RuntimeError &) {
    // Meant (tiny-window-keeps-its-layout): the steps after a size that would be negative are left undone.
  }
}

void RecordsForm::Form_QueryUnload(Integer &cancel, UnloadMode /*mode*/) {
  // Meant (closing-only-hides): closing the main window should end the program. It keeps running, with all its timers.
  cancel = 1;
  Hide();
}

void RecordsForm::Form_KeyUp(Integer key_code, Integer /*shift*/) {
  switch (key_code) {
    case key_f10:
      Label10.Visible = !Label10.Visible();
      break;
    case key_escape:
      AskToQuit();
      break;
    case key_f1:
      Label7.Click.Raise();
      break;
    case 'R':
      StatusBar1.Panels(1).Text = "Refreshing";
      Refresh();
      break;
    case 'F':
      StatusBar1.Panels(1).Text = "GET USRS";
      Timer3_Timer();
      break;
    case 'U':
      Label9.Visible = !Label9.Visible();
      break;
    default:
      break;
  }

  // Meant (any-key-wipes-first-panel): only the keys that wrote to it should empty it. Every key does.
  StatusBar1.Panels(1).Text = "";
}

void RecordsForm::Form_MouseMove(const MouseState &mouse) {
  Label3.Underline = false;

  // Meant (watermark-place-is-fixed): the place should follow the picture when the window is resized. It stays.
  if (6720 < mouse.x && mouse.x < 10665 && 1350 < mouse.y && mouse.y < 1890) {
    Timer2.Enabled = true;
    Image1.Visible = true;
  }
}

void RecordsForm::Label3_MouseMove() { Label3.Underline = true; }

void RecordsForm::Label3_MouseUp(const MouseState &mouse) {
  if (mouse.button == right_button)
    PopupMenu(TmnuGlobal);
}

void RecordsForm::Label6_Click() { Aboutfrm->Show(); }

void RecordsForm::Label8_Click() {
  RefreshWorld();
  Label8.Enabled = false;
}

void RecordsForm::Timer1_Timer() {
  // A safety net: the label's caption never changes.
  if (Label1(0).Caption().empty()) {
    Refresh();
    return;
  }

  Label10.Caption = Label10.Caption() == "-" ? "+" : "-";

  // Meant (threshold-tested-at-tens): the threshold should count whenever it is reached. It is looked at every tenth
  // tick.
  if (Module1->RefreshCount % 10 == 0) {
    if (Module1->RefreshBusy != flag_false)
      return;

    if (NumericPrefix(conffrm->Text2.Text()) <= Module1->RefreshCount)
      Refresh();
  }

  // Meant (unreachable-threshold-ends-the-program): a threshold that no count reaches should never refresh. The count
  // overflows after 32767, and no trap holds that.
  Module1->RefreshCount = Module1->RefreshCount + 1;
}

void RecordsForm::Timer2_Timer() {
  Image1.Visible = false;
  Timer2.Enabled = false;
}

void RecordsForm::Timer3_Timer() {
  // Meant (users-online-call-fails-a-refresh): the call should wait for a page that is being fetched. It takes the
  // client over, as every later request does; nothing else keeps requests apart.
  Label9.Caption = "Users Online: " + GetUsersOnline();
}

void RecordsForm::CheckForUpdate() {
  try {
    const std::string folder = AddressOf(Endpoint::Maker, "/borvane/");
    std::string newest;
    if (HttpClientFree() != flag_false)
      newest = conffrm->Inet1.OpenURL(folder + "version.txt", Inet::as_text);

    if (NumericPrefix(VersionDigits()) >= NumericPrefix(newest))
      return;

    const MessageAnswer answer =
        platform().message_box.Show("A new version of Borvane is available.\nPress Ok to open Borvane website",
                                    "Software Update", MessageButtons::OkCancel, MessageIcon::None);
    if (answer == MessageAnswer::Ok)
      platform().shell.Open(folder, this);
  } catch (const RuntimeError &) {
    // Nothing depends on the look for a newer version.
  }
}

}  // namespace borvane
