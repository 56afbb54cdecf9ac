#include "controls/form.h"

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "controls/form_set.h"
#include "support/failure_of.h"
#include "support/recording_host.h"
#include "support/small_notice.h"

namespace borvane {
namespace {

/// A window that records its events.
struct MapForm : FormBase {
  MapForm() : FormBase({.Name = "frmMap", .Caption = "Map", .ClientWidth = 3000, .ClientHeight = 2000}) {}

  void Form_Resize() override { resizes.emplace_back(Width(), Height()); }

  std::vector<std::pair<float, float>> resizes;
};

struct OwnerForm : FormBase {
  OwnerForm()
      : FormBase(
            {.Name = "frmOwner", .Caption = "Owner", .Border = BorderStyle::FixedDialog, .SpokenName = "The owner"}) {}
};

struct NoticeForm : SmallNotice {
  NoticeForm() : SmallNotice("frmNotice") {}

  void Form_Load() override { left_at_load = Left(); }

  float left_at_load = 0;
};

using Sizes = std::vector<std::pair<float, float>>;

constexpr Form<MapForm> frmMap;
constexpr Form<OwnerForm> frmOwner;
constexpr Form<NoticeForm> frmNotice;

TEST(FormBase, AddsTheFrameToItsClientArea) {
  const Windows windows;
  EXPECT_EQ(frmMap->Width(), 3120);
  EXPECT_EQ(frmMap->Height(), 2405);
  EXPECT_EQ(frmMap->ScaleWidth(), 3000);
  EXPECT_EQ(frmMap->ScaleHeight(), 2000);
  EXPECT_EQ(frmMap->Caption(), "Map");
  EXPECT_EQ(frmMap->name(), "frmMap");
  EXPECT_EQ(frmMap->border(), BorderStyle::Sizable);
  EXPECT_EQ(frmOwner->border(), BorderStyle::FixedDialog);
  EXPECT_EQ(frmMap->MousePointer(), pointer_normal);
}

TEST(FormBase, IsResizedOnceAtItsFirstShow) {
  const Windows windows;
  EXPECT_TRUE(frmMap->resizes.empty());
  frmMap->Show();
  EXPECT_EQ(frmMap->resizes, (Sizes{{3120, 2405}}));
  frmMap->Hide();
  frmMap->Show();
  EXPECT_EQ(frmMap->resizes.size(), 1u);
}

TEST(FormBase, ShowsAndHidesThroughItsHost) {
  Windows windows;
  frmMap->Show();
  EXPECT_TRUE(frmMap->IsShown());
  frmMap->Hide();
  EXPECT_FALSE(frmMap->IsShown());
  EXPECT_EQ(windows.host.seen, (Lines{"load frmMap", "show frmMap", "hide frmMap"}));
}

TEST(FormBase, ShowsAboveItsOwner) {
  Windows windows;
  frmMap->Show(&*frmOwner);
  EXPECT_EQ(windows.host.seen, (Lines{"load frmMap", "load frmOwner", "show frmMap above frmOwner"}));
}

TEST(FormBase, IsBroughtToTheFrontWhenItShowsAlready) {
  Windows windows;
  frmMap->Show();
  frmMap->Show();
  EXPECT_EQ(windows.host.seen, (Lines{"load frmMap", "show frmMap", "show frmMap"}));
}

TEST(FormBase, HidesOnlyWhatShows) {
  Windows windows;
  frmMap->Hide();
  EXPECT_EQ(windows.host.seen, Lines{"load frmMap"});
}

TEST(FormBase, IsResizedOnceByANewSize) {
  const Windows windows;
  frmMap->SetSize(4000, 3000);
  EXPECT_EQ(frmMap->resizes, (Sizes{{4000, 3000}}));
}

/// Reads the size at each notification, as the code that draws a window does.
struct SizeWatcher : PropertyWatcher {
  Sizes seen;

  void PropertyChanged(const PropertyBase & /*property*/) override {
    seen.emplace_back(frmMap->Width(), frmMap->Height());
  }
};

TEST(FormBase, ReportsBothSidesOfANewSizeAtOnce) {
  const Windows windows;
  SizeWatcher watcher;
  frmMap->Watch(&watcher);
  frmMap->SetSize(4000, 3000);
  EXPECT_EQ(watcher.seen, (Sizes{{4000, 3000}}));
}

TEST(FormBase, IsResizedWhenOneSideChanges) {
  const Windows windows;
  frmMap->SetSize(4000, 2405);
  frmMap->SetSize(4000, 500);
  EXPECT_EQ(frmMap->resizes, (Sizes{{4000, 2405}, {4000, 500}}));
}

TEST(FormBase, IsNotResizedByTheSizeThatItHas) {
  const Windows windows;
  frmMap->SetSize(3120, 2405);
  EXPECT_TRUE(frmMap->resizes.empty());
}

TEST(FormBase, IsResizedByCodeOnceForEachSide) {
  const Windows windows;
  frmMap->Width = 4000;
  frmMap->Height = 3000;
  EXPECT_EQ(frmMap->resizes, (Sizes{{4000, 2405}, {4000, 3000}}));
}

TEST(FormBase, HasNoPlaceUntilItIsPut) {
  const Windows windows;
  SizeWatcher watcher;
  frmMap->Watch(&watcher);
  EXPECT_FALSE(frmMap->Left.is_set());
  frmMap->Left = 0;
  EXPECT_TRUE(frmMap->Left.is_set());
  EXPECT_FALSE(frmMap->Top.is_set());
  EXPECT_EQ(watcher.seen.size(), 1u);
  frmMap->Left = 0;
  EXPECT_EQ(watcher.seen.size(), 1u);
}

TEST(FormBase, IsInTheMiddleOfTheFirstScreenBeforeItsLoadWhereTheDesignSaysSo) {
  const Windows windows;
  EXPECT_EQ(frmNotice->left_at_load, (19200 - 1830) / 2.0F);
  EXPECT_EQ(frmNotice->Left(), (19200 - 1830) / 2.0F);
  EXPECT_EQ(frmNotice->Top(), (15360 - 1185) / 2.0F);
  EXPECT_TRUE(frmNotice->Left.is_set());
  EXPECT_TRUE(frmNotice->Top.is_set());
}

TEST(FormBase, HasTheBackgroundAndTheFocusOfItsDesign) {
  const Windows windows;
  EXPECT_EQ(frmNotice->BackColor(), 0x301800u);
  EXPECT_FALSE(frmNotice->takes_focus());
  EXPECT_EQ(frmMap->BackColor(), color_button_face);
  EXPECT_TRUE(frmMap->takes_focus());
}

TEST(FormBase, IsKeptAboveOtherProgramsByItsHostWhetherItShowsOrNot) {
  Windows windows;
  frmMap->KeepOnTop(true);
  frmMap->Show();
  frmMap->KeepOnTop(false);
  EXPECT_EQ(windows.host.seen, (Lines{"load frmMap", "topmost frmMap", "show frmMap", "not-topmost frmMap"}));
}

TEST(FormBase, ComesBackWithoutTheFocusWhateverItsDesign) {
  Windows windows;
  frmMap->ShowWithoutFocus();
  EXPECT_TRUE(frmMap->IsShown());
  EXPECT_EQ(frmMap->resizes.size(), 1u);
  frmNotice->ShowWithoutFocus();
  EXPECT_EQ(windows.host.seen,
            (Lines{"load frmMap", "show frmMap without the focus", "load frmNotice", "show frmNotice"}));
}

TEST(FormBase, ShowsItsMenusThroughItsHost) {
  Windows windows;
  Menu menu(*frmMap, "Tmnu", {});
  frmMap->PopupMenu(menu);
  EXPECT_EQ(windows.host.seen, (Lines{"load frmMap", "popup Tmnu of frmMap"}));
}

TEST(FormBase, IsSpokenByItsCaptionUnlessItsDesignNamesIt) {
  const Windows windows;
  EXPECT_EQ(frmMap->spoken_name(), "");
  EXPECT_EQ(frmOwner->spoken_name(), "The owner");
}

TEST(FormBase, HasNoPlaceWhosePixelsNeedMoreThanThirtyTwoBits) {
  const Windows windows;
  constexpr float largest = 32212252672.0F;  // the last below the limit
  for (const float edge : {largest, -largest}) {
    frmMap->Left = edge;
    frmMap->Top = edge;
    EXPECT_EQ(frmMap->Left(), edge);
  }
  for (const float edge : {32212256768.0F, 1e38F, -32212256768.0F}) {
    EXPECT_EQ(FailureOf([&] { frmMap->Left = edge; }), 6) << edge;
    EXPECT_EQ(FailureOf([&] { frmMap->Top = edge; }), 6) << edge;
  }
  EXPECT_EQ(frmMap->Left(), -largest);
}

TEST(FormBase, MovesFromOnePlaceToAnother) {
  const Windows windows;
  SizeWatcher watcher;
  frmMap->Watch(&watcher);
  frmMap->Top = 150;
  frmMap->Top = 300;
  EXPECT_EQ(frmMap->Top(), 300);
  EXPECT_EQ(watcher.seen.size(), 2u);
}

TEST(FormBase, IgnoresKeysAndMouseUnlessItOverridesTheHandlers) {
  Windows windows;
  SizeWatcher watcher;
  frmMap->Watch(&watcher);
  frmMap->Form_KeyUp(27, 0);
  frmMap->Form_MouseMove({.button = 0, .shift = 0, .x = 10, .y = 10});
  EXPECT_TRUE(watcher.seen.empty());
  EXPECT_EQ(windows.host.seen, Lines{"load frmMap"});
}

TEST(FormBase, HasThePlaceWhereTheUserMovesIt) {
  const Windows windows;
  SizeWatcher watcher;
  frmMap->Watch(&watcher);
  frmMap->SetPlace(150, -300);
  EXPECT_EQ(frmMap->Left(), 150);
  EXPECT_EQ(frmMap->Top(), -300);
  EXPECT_FALSE(frmMap->Left.is_set());
  EXPECT_TRUE(watcher.seen.empty());
}

TEST(FormBase, IsNotResizedByOtherProperties) {
  const Windows windows;
  frmMap->Left = 100;
  frmMap->Top = 100;
  frmMap->Caption = "Other";
  frmMap->MousePointer = pointer_hourglass;
  EXPECT_TRUE(frmMap->resizes.empty());
}

TEST(FormBase, IsStillResizedAfterASizeThatWasRefused) {
  const Windows windows;
  EXPECT_THROW(frmMap->SetSize(4000, -1), RuntimeError);
  EXPECT_THROW(frmMap->SetSize(-1, 3000), RuntimeError);
  EXPECT_EQ(frmMap->Width(), 3120);
  EXPECT_EQ(frmMap->Height(), 2405);
  EXPECT_TRUE(frmMap->resizes.empty());
  frmMap->Width = 5000;
  EXPECT_EQ(frmMap->resizes, (Sizes{{5000, 2405}}));
}

}  // namespace
}  // namespace borvane
