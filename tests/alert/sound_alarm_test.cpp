#include "alert/sound_alarm.h"

#include <gtest/gtest.h>

#include "settings/conffrm.h"
#include "support/failure_of.h"
#include "support/rig.h"

namespace borvane {
namespace {

/// The tones of an alarm with these texts for its sweeps and the length of its tones.
Lines Tones(std::string_view sweeps, std::string_view length) {
  Rig rig;
  conffrm->Text5(1).Text = sweeps;
  conffrm->Text5(0).Text = length;
  rig.clear_trace();
  rig.happen(SoundAlarm);
  return rig.trace({"beep", "error", "end"});
}

TEST(SoundAlarm, RisesFrom100To1000HertzInEverySweep) {
  Lines sweep;
  for (int frequency = 100; frequency <= 1000; frequency += 10)
    sweep.push_back("beep " + IntegerText(frequency) + " 1");
  ASSERT_EQ(sweep.size(), 91U);
  EXPECT_EQ(Tones("1", "1"), sweep);

  Lines twice = sweep;
  twice.insert(twice.end(), sweep.begin(), sweep.end());
  EXPECT_EQ(Tones("2", "1"), twice);
}

TEST(SoundAlarm, LetsEventsRunAfterEachToneAndAfterEachSweep) {
  Rig rig;
  conffrm->Text5(1).Text = "2";
  rig.clear_trace();
  rig.happen(SoundAlarm);
  const Lines &trace = rig.trace();
  const std::size_t lines_of_a_sweep = 91 * 3 + 2;
  ASSERT_EQ(trace.size(), 2 * lines_of_a_sweep);
  EXPECT_EQ(Lines(trace.begin(), trace.begin() + 4), (Lines{"beep 100 10", "pump in", "pump out", "beep 110 10"}));
  const auto end_of_sweep = trace.begin() + static_cast<std::ptrdiff_t>(lines_of_a_sweep);
  EXPECT_EQ(Lines(end_of_sweep - 5, end_of_sweep + 1),
            (Lines{"beep 1000 10", "pump in", "pump out", "pump in", "pump out", "beep 100 10"}));
}

TEST(SoundAlarm, HasSevenSweepsOfTenMillisecondsByDesign) {
  Rig rig;
  rig.happen(SoundAlarm);
  const Lines tones = rig.trace({"beep"});
  EXPECT_EQ(tones.size(), 7 * 91U);
  EXPECT_EQ(tones.back(), "beep 1000 10");
}

TEST(SoundAlarm, ReadsTheNumberAtTheStartOfEachBox) {
  const std::pair<const char *, std::size_t> sweeps[] = {{"0", 0},    {"-3", 0},    {"", 0},      {"abc", 0},
                                                         {"0.5", 0},  {"1.5", 182}, {"2.5", 182}, {" 1x", 91},
                                                         {"1e0", 91}, {"0.51", 91}};
  for (const auto &[text, tones] : sweeps)
    EXPECT_EQ(Tones(text, "1").size(), tones) << text;

  for (const auto &[text, length] : {std::pair("0", "0"),
                                     {"-5", "-5"},
                                     {"", "0"},
                                     {"abc", "0"},
                                     {"2.5", "2"},
                                     {"3.5", "4"},
                                     {" 20 ms", "20"},
                                     {"32767", "32767"},
                                     {"-32768", "-32768"}})
    EXPECT_EQ(Tones("1", text).at(0), std::string("beep 100 ") + length) << text;
}

TEST(SoundAlarm, EndsTheProgramForANumberBeyondSixteenBits) {
  RecordProperty("quirk", "alarm-settings-beyond-sixteen-bits-end-the-program");
  const Lines end = {"error report 6 Overflow", "end 1"};
  for (const char *text : {"32768", "-32769", "32767.5", "1e9", "1e999"}) {
    EXPECT_EQ(Tones(text, "10"), end) << text;
    EXPECT_EQ(Tones("0", text), end) << text << ", although no tone would sound";
  }
}

TEST(SoundAlarm, KeepsItsSettingsWhenTheyChangeMeanwhile) {
  Rig rig;
  conffrm->Text5(1).Text = "1";
  rig.during_next_pump([] {
    conffrm->Text5(0).Text = "20";
    conffrm->Text5(1).Text = "3";
  });
  rig.happen(SoundAlarm);
  EXPECT_EQ(rig.trace({"beep"}).size(), 91U);
  EXPECT_EQ(rig.trace({"beep"}).back(), "beep 1000 10");
}

}  // namespace
}  // namespace borvane
