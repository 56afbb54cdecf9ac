#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "basic/number.h"
#include "core/load_settings.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/rig.h"

// Which control a stored text reaches, and which texts end the start.

namespace borvane {
namespace {

/// A stored text and what the control of its value then shows; nothing is stored when the text is null.
struct Stored {
  const char *text;
  const char *seen;
};

struct ValueCase {
  const char *name;
  std::function<std::string()> seen;
  std::vector<Stored> table;
};

void PrintTo(const ValueCase &value, std::ostream *stream) { *stream << value.name; }

class StoredValueOf : public testing::TestWithParam<ValueCase> {};

TEST_P(StoredValueOf, ReachesItsControlAtTheStart) {
  for (const auto &[text, seen] : GetParam().table) {
    Rig rig;
    if (text != nullptr)
      rig.store()[GetParam().name] = text;
    rig.happen(LoadSettings);
    ASSERT_EQ(rig.end_status(), std::nullopt) << (text == nullptr ? "missing" : text);
    EXPECT_EQ(GetParam().seen(), seen) << (text == nullptr ? "missing" : text);
  }
}

std::string On(bool value) { return value ? "on" : "off"; }

std::string EdgeOption() {
  std::string on;
  for (int i = 0; i < conffrm->Option1.Count(); ++i)
    on += conffrm->Option1(i).Value() ? IntegerText(i) : "";
  return on;
}

std::string ColorOf(int box) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  for (int shift = 28; shift >= 0; shift -= 4)
    text += digits[conffrm->Picture1(box).BackColor() >> shift & 0xF];
  return text;
}

/// What every stored check box shows for these texts.
const std::vector<Stored> check_box = {{nullptr, "0"}, {"", "0"},   {"0", "0"},     {"1", "1"},    {" 1", "1"},
                                       {"2", "2"},     {"3", "0"},  {"-1", "0"},    {"abc", "0"},  {"1.5", "0"},
                                       {"1e300", "0"}, {"1x", "1"}, {"40000", "0"}, {"1e999", "0"}};

/// The same for the colour boxes, as 0BGR.
const std::vector<Stored> color = {
    {nullptr, "00000000"}, {"", "00000000"},      {" 1", "00FF0000"},    {"2", "000000FF"},  {"3", "0000FF00"},
    {"4", "00FFFF00"},     {"5", "00FF00FF"},     {"6", "00FFFFFF"},     {"7", "0000FFFF"},  {"8", "80000001"},
    {"9", "007F7F7F"},     {"10", "00FF00FF"},    {"11", "000066FF"},    {"12", "00FFA43C"}, {"13", "00AA00FF"},
    {"14", "0078FFDD"},    {"15", "00FFC8FF"},    {"16", "00000000"},    {"-1", "00000000"}, {"abc", "00000000"},
    {"40000", "00000000"}, {"1e300", "00000000"}, {"-1e300", "00000000"}};

const ValueCase values[] = {
    {"StrongerDisplay",
     [] { return conffrm->Combo1.Text(); },
     {{nullptr, "Keep highest Magnitude"},
      {"", "Keep highest Magnitude"},
      {"0", "Keep highest Magnitude"},
      {"1", "Update on refresh!"},
      {" 1", "Update on refresh!"},
      {"0.5", "Keep highest Magnitude"},
      {"0.6", "Update on refresh!"},
      {"abc", "Keep highest Magnitude"},
      {"2", ""},
      {"-1", ""},
      {"32767", ""}}},
    {"Grid",
     [] { return On(frmRecords->mnuGrid.Checked()) + " " + On(frmRecords->ListView1.GridLines()); },
     {{nullptr, "off off"},
      {"", "off off"},
      {"0", "off off"},
      {"1", "on on"},
      {"2", "on on"},
      {"-1", "on on"},
      {"abc", "off off"},
      {"1e999", "on on"}}},
    {"EdgeOffset",
     [] { return conffrm->Text7.Text(); },
     {{nullptr, "900"}, {"", "900"}, {"0", "0"}, {"abc", "abc"}, {" 1200", " 1200"}}},
    {"EdgeDetect",
     EdgeOption,
     {{nullptr, "0"}, {"", "0"}, {"0", "0"}, {" 1", "1"}, {"2", "2"}, {"abc", "0"}, {"0.5", "0"}, {"1.5", "2"}}},
    {"Color0", [] { return ColorOf(0); }, color},
    {"Color1", [] { return ColorOf(1); }, color},
    {"Color2", [] { return ColorOf(2); }, color},
    {"KeepPosition", [] { return IntegerText(conffrm->Check6.Value()); }, check_box},
    {"LogCity", [] { return conffrm->Text8.Text(); }, {{nullptr, ""}, {"", ""}, {" Castaic ", " Castaic "}}},
    {"EnableLog", [] { return IntegerText(conffrm->Check1.Value()); }, check_box},
    {"LogAll",
     [] { return On(conffrm->Option2(0).Value()) + " " + On(conffrm->Option2(1).Value()); },
     {{nullptr, "on off"},
      {"", "on off"},
      {"True", "on off"},
      {"False", "off off"},
      {"true", "off off"},
      {"1", "off off"}}},
    {"Colorize", [] { return IntegerText(conffrm->Check3.Value()); }, check_box},
    {"AlarmTone", [] { return conffrm->Text5(0).Text(); }, {{nullptr, "10"}, {"", "10"}, {"15", "15"}, {"abc", "abc"}}},
    {"AlarmPeriod", [] { return conffrm->Text5(1).Text(); }, {{nullptr, "7"}, {"", "7"}, {"3", "3"}, {"abc", "abc"}}},
    {"EnableAlarmSound", [] { return IntegerText(conffrm->Check2.Value()); }, check_box},
    {"Area",
     [] { return conffrm->Combo2.Text(); },
     {{nullptr, ""}, {"", ""}, {"Seattle Area", "Seattle Area"}, {"Atlantis", "Atlantis"}}},
    {"StartWOS", [] { return IntegerText(conffrm->Check7.Value()); }, check_box},
    {"Refresh",
     [] { return conffrm->Text2.Text(); },
     {{nullptr, "700"}, {"", "700"}, {"60", "60"}, {"abc", "abc"}, {"1e999", "1e999"}}},
    {"Alert",
     [] { return conffrm->Text1.Text() + "|" + conffrm->Text4.Text(); },
     {{nullptr, "3.5|"}, {"", "3.5|"}, {"4.2", "4.2|4.2"}, {"abc", "abc|abc"}}},
    {"BarTop", [] { return conffrm->Text3.Text(); }, {{nullptr, ""}, {"", ""}, {"1200", "1200"}}},
    {"smBarLeft", [] { return conffrm->Text4.Text(); }, {{"900", ""}}},
};

INSTANTIATE_TEST_SUITE_P(LoadSettings, StoredValueOf, testing::ValuesIn(values),
                         [](const auto &value) { return std::string(value.param.name); });

/// The number in the error report of a start on `text` stored under `name`.
std::string ReportOfStart(std::string_view name, std::string_view text) {
  Rig rig;
  rig.store()[name] = text;
  rig.start();
  if (rig.end_status() != 1)
    return "none";
  const std::string report = rig.trace({"error"}).at(0);
  return report.substr(0, report.find(' ', std::string_view("error report ").size()));
}

TEST(LoadSettings, EmptiesTheBarLeftBoxWhenNoAlertMagnitudeIsStored) {
  Rig rig;
  conffrm->Text4.Text = "900";
  rig.happen(LoadSettings);
  EXPECT_EQ(conffrm->Text4.Text(), "");
}

TEST(LoadSettings, EndsTheProgramForAnEdgeOptionWithoutAButton) {
  RecordProperty("quirk", "edge-option-without-button-ends-the-start");
  EXPECT_EQ(ReportOfStart("EdgeDetect", "3"), "error report 9");
  EXPECT_EQ(ReportOfStart("EdgeDetect", "-1"), "error report 9");
  EXPECT_EQ(ReportOfStart("EdgeDetect", "2.6"), "error report 9");
  EXPECT_EQ(ReportOfStart("EdgeDetect", "2.5"), "none");
}

TEST(LoadSettings, EndsTheProgramForAListPositionBeyondSixteenBits) {
  RecordProperty("quirk", "list-position-beyond-sixteen-bits-ends-the-start");
  EXPECT_EQ(ReportOfStart("StrongerDisplay", "32768"), "error report 6");
  EXPECT_EQ(ReportOfStart("StrongerDisplay", "-32769"), "error report 6");
  EXPECT_EQ(ReportOfStart("StrongerDisplay", "1e300"), "error report 6");
  EXPECT_EQ(ReportOfStart("StrongerDisplay", "32767"), "none");
}

TEST(LoadSettings, StartsWithAnyOtherStoredValueHoweverWrong) {
  const std::string endless(100000, '9');
  const std::string_view ends_the_start[] = {"StrongerDisplay", "RunTime", "EdgeDetect"};
  Lines reads;
  {
    Rig rig;
    rig.start();
    reads = rig.trace({"read"});
  }
  ASSERT_GT(reads.size(), 20U);
  for (const std::string &read : reads) {
    const std::string name = read.substr(std::string_view("read ").size());
    if (std::count(std::begin(ends_the_start), std::end(ends_the_start), name) > 0)
      continue;
    for (const std::string &text :
         {std::string("-1"), std::string("1e999"), std::string("-1e999"), std::string("\0\xFF\r\n", 4), endless}) {
      EXPECT_EQ(ReportOfStart(name, text), "none") << name << "=" << text.substr(0, 20);
    }
  }
}

}  // namespace
}  // namespace borvane
