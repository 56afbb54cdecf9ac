#include "bars/bar_place.h"

#include <gtest/gtest.h>

#include "support/program/bar_rig.h"

namespace borvane {
namespace {

// PlaceShortBar.

TEST(PlaceShortBar, PutsTheBarToTheTopOfTheBoxAndFiftyTwipsFromTheLeft) {
  for (const auto &[text, top] : std::initializer_list<std::pair<const char *, float>>{
           {"150.5", 150.5F}, {"", 0}, {"abc", 0}, {"-32000", -32000}, {"1e9", 1e9F}}) {
    BarRig rig;
    conffrm->Text3.Text = text;
    const ShortBarForm &bar = rig.open_short_bar();
    EXPECT_EQ(bar.Top(), top) << text;
    EXPECT_EQ(bar.Left(), 50) << text;
  }
}

TEST(PlaceShortBar, TicksOnTopForEveryNumberButZero) {
  for (const auto &[stored, ticked] : std::initializer_list<std::pair<const char *, bool>>{
           {"", false}, {"0", false}, {"abc", false}, {"1", true}, {" 1", true}, {"-1", true}, {"0.5", true}}) {
    BarRig rig;
    rig.store()["TopForm"] = stored;
    rig.press(frmRecords->Toolbar1, RecordsForm::button_short_bar);
    EXPECT_EQ(Form1->mnuTop.Checked(), ticked) << stored;
    EXPECT_EQ(rig.trace({"topmost", "not-topmost"}), Lines{ticked ? "topmost Form1" : "not-topmost Form1"});
  }
}

TEST(PlaceBar, TakesThePeriodFromTheRefreshBox) {
  for (const auto &[text, period] : std::initializer_list<std::pair<const char *, int>>{
           {"700", 700}, {"0", 0}, {"-5", -5}, {"abc", 0}, {"2.5", 2}, {"1e9", 1000000000}}) {
    BarRig rig;
    conffrm->Text2.Text = text;
    const ShortBarForm &short_bar = rig.open_short_bar();
    EXPECT_EQ(short_bar.Timer1.Interval(), period) << text;
    EXPECT_EQ(short_bar.Timer1.IsCounting(), period > 0) << text;
    const LongBarForm &long_bar = rig.open_long_bar();
    EXPECT_EQ(long_bar.Timer1.Interval(), period) << text;
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(PlaceBar, EndsTheProgramForAPeriodBeyondThirtyTwoBits) {
  for (const int button : {RecordsForm::button_short_bar, RecordsForm::button_long_bar}) {
    for (const char *text : {"1e300", "2147483648"}) {
      BarRig rig;
      conffrm->Text2.Text = text;
      rig.press(frmRecords->Toolbar1, button);
      EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"}) << text;
      EXPECT_EQ(rig.end_status(), 1);
    }
  }
}

TEST(PlaceBar, EndsTheProgramForAPlaceBeyondItsRange) {
  for (const int button : {RecordsForm::button_short_bar, RecordsForm::button_long_bar}) {
    for (const char *text : {"1e39", "1e11", "-4e10"}) {
      BarRig rig;
      conffrm->Text3.Text = text;
      rig.press(frmRecords->Toolbar1, button);
      EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"}) << text;
    }
  }
}

TEST(PlaceShortBar, RestoresThePlaceThatIsStoredIfPlacesAreKept) {
  for (const auto &[stored, top] : std::initializer_list<std::pair<const char *, float>>{
           {"1500.25", 1500.25F}, {"abc", 0}, {"-32000", -32000}, {"1e9", 1e9F}, {"", 75}}) {
    BarRig rig;
    conffrm->Text3.Text = "75";
    conffrm->Check6.Value = 1;
    rig.store()["shortTop"] = stored;
    rig.store()["shortLeft"] = "-20";
    const ShortBarForm &bar = rig.open_short_bar();
    EXPECT_EQ(bar.Top(), top) << stored;
    EXPECT_EQ(bar.Left(), -20) << stored;
  }
}

TEST(PlaceShortBar, EndsTheProgramForAStoredPlaceBeyondItsRange) {
  for (const char *name : {"shortTop", "shortLeft"}) {
    for (const char *stored : {"1e300", "-1e39", "1e11"}) {
      BarRig rig;
      conffrm->Check6.Value = 1;
      rig.store()[name] = stored;
      rig.press(frmRecords->Toolbar1, RecordsForm::button_short_bar);
      EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"}) << name << " " << stored;
      EXPECT_EQ(rig.end_status(), 1);
    }
  }
}

TEST(PlaceShortBar, AppliesNoPlaceThatIsMissing) {
  BarRig rig;
  conffrm->Text3.Text = "75";
  conffrm->Check6.Value = 1;
  const ShortBarForm &bar = rig.open_short_bar();
  EXPECT_EQ(bar.Top(), 75);
  EXPECT_EQ(bar.Left(), 50);
}

TEST(PlaceShortBar, IgnoresTheStoredPlaceUnlessPlacesAreKept) {
  for (const int value : {0, 2}) {
    BarRig rig;
    conffrm->Check6.Value = value;
    rig.store()["shortTop"] = "1500";
    rig.store()["shortLeft"] = "1500";
    const ShortBarForm &bar = rig.open_short_bar();
    EXPECT_EQ(bar.Top(), 0);
    EXPECT_EQ(bar.Left(), 50);
  }
}

TEST(PlaceShortBar, IgnoresTheStoredWidth) {
  BarRig rig;
  conffrm->Check6.Value = 1;
  rig.store()["shortWidth"] = "4000";
  EXPECT_EQ(rig.open_short_bar().Width(), 7935);
  EXPECT_TRUE(rig.trace({"read"}).empty());
}

// PlaceLongBar: the load overrides most of it, so it is called by itself.

TEST(PlaceLongBar, PlacesTheBarAndItsControls) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  rig.store()["TopForm"] = "1";
  conffrm->Text3.Text = "300";
  conffrm->Text2.Text = "90";
  bar.Left = 70;
  bar.Width = 10000;
  rig.happen(PlaceLongBar);
  EXPECT_TRUE(bar.mnuTop.Checked());
  EXPECT_EQ(bar.Top(), 300);
  EXPECT_EQ(bar.Left(), 70);
  EXPECT_EQ(bar.Picture1.Width(), 9550);
  EXPECT_EQ(bar.Check1.Left(), 10000 - 270 - 50);
  EXPECT_EQ(bar.Timer1.Interval(), 90);

  conffrm->Check6.Value = 1;
  rig.store()["longTop"] = "2000";
  rig.store()["longLeft"] = "15.5";
  rig.happen(PlaceLongBar);
  EXPECT_EQ(bar.Top(), 2000);
  EXPECT_EQ(bar.Left(), 15.5F);
}

TEST(PlaceLongBar, EndsTheProgramForAStoredPlaceBeyondItsRange) {
  BarRig rig;
  conffrm->Check6.Value = 1;
  rig.store()["longTop"] = "1e300";
  rig.press(frmRecords->Toolbar1, RecordsForm::button_long_bar);
  EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"});
}

// Keys.

FormBase &OpenBar(BarRig &rig, int button) {
  if (button == RecordsForm::button_short_bar)
    return rig.open_short_bar();
  return rig.open_long_bar();
}

class BarKeys : public testing::TestWithParam<int> {
 protected:
  BarKeys() : bar(OpenBar(rig, GetParam())) {
    bar.Width = 3000;
    bar.Left = 1000;
    bar.Top = 1000;
    rig.clear_trace();
  }

  Lines place() const { return {SingleText(bar.Left()), SingleText(bar.Top()), SingleText(bar.Width())}; }

  BarRig rig;
  FormBase &bar;
};

TEST_P(BarKeys, MoveTheBarWhateverShiftSays) {
  for (const int shift : {0, 1, 7}) {
    bar.Left = 1000;
    bar.Top = 1000;
    rig.key(bar, 38, shift);
    EXPECT_EQ(place(), (Lines{"1000", "950", "3000"}));
    rig.key(bar, 37, shift);
    EXPECT_EQ(place(), (Lines{"950", "950", "3000"}));
    rig.key(bar, 40, shift);
    rig.key(bar, 40, shift);
    EXPECT_EQ(place(), (Lines{"950", "1050", "3000"}));
    rig.key(bar, 39, shift);
    rig.key(bar, 39, shift);
    EXPECT_EQ(place(), (Lines{"1050", "1050", "3000"}));
    rig.key(bar, 'C', shift);
    EXPECT_EQ(place(), (Lines{"8100", "1050", "3000"}));
    rig.key(bar, 'L', shift);
    EXPECT_EQ(place(), (Lines{"0", "1050", "3000"}));
    rig.key(bar, 'R', shift);
    EXPECT_EQ(place(), (Lines{"16200", "1050", "3000"}));
  }
  EXPECT_TRUE(rig.trace().empty()) << "nothing is stored";
}

TEST_P(BarKeys, OpenTheProductsPage) {
  rig.key(bar, 'W');
  EXPECT_EQ(rig.trace({"open", "write"}),
            Lines{"open http://maker.localhost:17650/borvane/ for " + std::string(bar.name())});
}

TEST_P(BarKeys, DoNothingElse) {
  for (const int code : std::initializer_list<int>{0, 27, 13, 32, 'A', 'F', 'Z', 115, 112, 121})
    rig.key(bar, code);
  EXPECT_EQ(place(), (Lines{"1000", "1000", "3000"}));
  EXPECT_TRUE(rig.trace().empty());
}

TEST_P(BarKeys, StoreThePlaceAfterAnyKeyIfPlacesAreKept) {
  const std::string name = GetParam() == RecordsForm::button_short_bar ? "short" : "long";
  conffrm->Check6.Value = 1;
  bar.Top = -0.5F;
  rig.clear_trace();
  rig.key(bar, 'Z');
  EXPECT_EQ(rig.trace(),
            (Lines{"write " + name + "Top=-.5", "write " + name + "Left=1000", "write " + name + "Width=3000"}));
  rig.clear_trace();
  rig.key(bar, key_right);
  EXPECT_EQ(rig.trace().at(1), "write " + name + "Left=1050");
  conffrm->Check6.Value = 2;
  rig.clear_trace();
  rig.key(bar, key_right);
  EXPECT_TRUE(rig.trace().empty());
}

TEST_P(BarKeys, StoreTheNewPlaceWhicheverKeyItWas) {
  const bool is_short = GetParam() == RecordsForm::button_short_bar;
  conffrm->Check6.Value = 1;
  const auto writes_after = [&](int code) {
    rig.clear_trace();
    rig.key(bar, code);
    return rig.trace({"write"});
  };
  const auto writes = [&](const char *top, const char *left, const char *width) {
    const std::string name = is_short ? "write short" : "write long";
    return Lines{name + "Top=" + top, name + "Left=" + left, name + "Width=" + width};
  };
  EXPECT_EQ(writes_after('S'), writes("1000", "1000", "2950"));
  EXPECT_EQ(writes_after('E'), writes("1000", "1000", "3000"));
  EXPECT_EQ(writes_after('W'), writes("1000", "1000", "3000"));
  EXPECT_EQ(writes_after(key_up), writes("950", "1000", "3000"));
  EXPECT_EQ(writes_after(key_down), writes("1000", "1000", "3000"));
  EXPECT_EQ(writes_after(key_left), writes("1000", "950", "3000"));
  EXPECT_EQ(writes_after('C'), writes("1000", "8100", "3000"));
  EXPECT_EQ(writes_after('R'), writes("1000", "16200", "3000"));
  EXPECT_EQ(writes_after('L'), writes("1000", "0", "3000"));
  EXPECT_EQ(writes_after(key_menu), writes("1000", "0", "3000"));
  EXPECT_EQ(writes_after('H'), writes("1000", "0", "3000"));
  EXPECT_EQ(bar.IsShown(), is_short);
}

TEST_P(BarKeys, StoreNoPlaceWhenTheMenuThatTheyOpenEndsTheProgram) {
  const bool is_short = GetParam() == RecordsForm::button_short_bar;
  conffrm->Check6.Value = 1;
  rig.choose_next(is_short ? Form1->mnuQuit : newTagFrm->mnuQuit);
  rig.clear_trace();
  rig.key(bar, key_menu);
  EXPECT_EQ(rig.end_status(), 0);
  EXPECT_EQ(rig.trace({"write", "error"}), Lines{});
  EXPECT_EQ(Form1.IfLoaded(), nullptr);
  EXPECT_EQ(newTagFrm.IfLoaded(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Both, BarKeys, testing::Values(RecordsForm::button_short_bar, RecordsForm::button_long_bar),
                         [](const testing::TestParamInfo<int> &button) {
                           return button.param == RecordsForm::button_short_bar ? "ShortBar" : "LongBar";
                         });

TEST(ShortBarKeys, ChangeTheWidthAndMoveWhatIsAtTheEnd) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  const auto edges = [&] {
    return Lines{SingleText(bar.Width()), SingleText(bar.Picture1.Width()), SingleText(bar.Check1.Left()),
                 SingleText(bar.Check2.Left()), SingleText(bar.Label5.Left())};
  };
  bar.Label1(0).Caption = "";
  rig.key(bar, 'S');
  EXPECT_EQ(edges(), (Lines{"7885", "7165", "7315", "7315", "7570"}));
  EXPECT_EQ(bar.Label1(0).Caption(), "Mag: 2.0");
  rig.key(bar, 'E');
  bar.Label1(0).Caption = "";
  rig.key(bar, 'E');
  EXPECT_EQ(edges(), (Lines{"7985", "7265", "7415", "7415", "7670"}));
  EXPECT_EQ(bar.Label1(0).Caption(), "Mag: 2.0");
}

TEST(LongBarKeys, ChangeTheWidthAndPaintTheBar) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  const auto edges = [&] {
    return Lines{SingleText(bar.Width()), SingleText(bar.Picture1.Width()), SingleText(bar.Check1.Left())};
  };
  bar.Label2(2).Left = 0;
  rig.key(bar, 'S');
  EXPECT_EQ(edges(), (Lines{"19150", "19050", "18780"}));
  EXPECT_EQ(bar.Label2(2).Left(), 18780 - bar.Label2(2).Width() - 200);
  rig.key(bar, 'E');
  rig.key(bar, 'E');
  EXPECT_EQ(edges(), (Lines{"19250", "19150", "18880"}));
  EXPECT_EQ(bar.Label2(2).Left(), 18880 - bar.Label2(2).Width() - 200);
}

TEST(SmallestBar, StaysWhenItsKeyIsPressedAgainAndAgain) {
  RecordProperty("quirk", "smallest-bar-stays");
  BarRig rig;
  ShortBarForm &short_bar = rig.open_short_bar();
  for (int press = 0; press < 2000; ++press)
    rig.key(short_bar, 'S');
  EXPECT_EQ(short_bar.Picture1.Width(), 15);
  EXPECT_EQ(short_bar.Width(), 735);
  EXPECT_EQ(short_bar.Check1.Left(), 165);
  EXPECT_EQ(short_bar.Label5.Left(), 420);
  short_bar.Label1(0).Caption = "";
  rig.key(short_bar, 'S');
  EXPECT_EQ(short_bar.Label1(0).Caption(), "Mag: 2.0") << "it repaints all the same";

  LongBarForm &long_bar = rig.open_long_bar();
  for (int press = 0; press < 2000; ++press)
    rig.key(long_bar, 'S');
  EXPECT_EQ(long_bar.Picture1.Width(), 0);
  EXPECT_EQ(long_bar.Width(), 100);
  EXPECT_EQ(long_bar.Check1.Left(), -270);
  long_bar.Label2(2).Left = 0;
  rig.key(long_bar, 'S');
  EXPECT_LT(long_bar.Label2(2).Left(), 0);
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

}  // namespace
}  // namespace borvane
