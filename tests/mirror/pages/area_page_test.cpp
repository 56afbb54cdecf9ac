#include "pages/area_page.h"

#include <array>

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "pages/figures.h"
#include "pages/text.h"
#include "support/mirror/plain_steps.h"
#include "support/mirror/random_catalogue.h"
#include "support/mirror/read_as.h"
#include "support/mirror/time_zone.h"

namespace borvane::mirror {
namespace {

const QByteArray host = "alaska.localhost:17650";

std::string ListedPlace(const Event &event) { return RowText(PlaceWithMiles(event.place)).toStdString(); }

/// What every form but the region's gives back of an event.
ListRow RowOf(const Event &event) {
  const std::string time = LocalTimeText(event.origin_time).toStdString();
  return {.magnitude = MagnitudeText(event.magnitude.value()).toStdString(),
          .date = time.substr(0, 10),
          .time = time.substr(11),
          .latitude = LatitudeText(event.latitude).toStdString(),
          .longitude = LongitudeText(event.longitude).toStdString(),
          .depth = DepthText(event.depth).toStdString(),
          .place = plain::Trimmed(ListedPlace(event)),
          .link = "recenteqs/Quakes/" + event.id.toStdString() + ".html"};
}

ListRow WorldRowOf(const Event &event) {
  ListRow row = RowOf(event);
  if (row.place.empty())
    row.place = "not named";
  return row;
}

/// The row of the region's table, with its link as a browser and the mirror understand it.
ListRow RegionRowOf(const Event &event) {
  ListRow row;
  row.magnitude = MagnitudeText(event.magnitude.value()).toStdString();
  row.date = LocalTimeText(event.origin_time).toStdString();
  row.place = ListedPlace(event);
  row.link = "http://" + host.toStdString() + "/recenteqs/Quakes/" + event.id.toStdString() + ".html";
  return row;
}

std::vector<const Event *> EventsOf(const Area &area, const Catalogue &catalogue) {
  std::vector<const Event *> events;
  for (const Event &event : catalogue.events())
    if (event.magnitude && *event.magnitude >= area.least_magnitude &&
        area.box.Contains(event.latitude, event.longitude))
      events.push_back(&event);
  return events;
}

/// What the area's scanner has to find for these events.
ListReading ExpectedReading(const Area &area, const std::vector<const Event *> &events) {
  ListReading expected;
  if (area.form == ListForm::Region) {
    if (!events.empty())
      expected.rows.push_back(RegionRowOf(*events.front()));
    return expected;
  }
  for (const Event *event : events)
    expected.rows.push_back(area.form == ListForm::World ? WorldRowOf(*event) : RowOf(*event));
  return expected;
}

void ExpectToComeBack(const Area &area, const Catalogue &catalogue) {
  const std::vector<const Event *> events = EventsOf(area, catalogue);
  const ListReading expected = ExpectedReading(area, events);
  const ListReading reading = ReadAs(area.form, AreaPage(area, catalogue, host).toStdString());
  ASSERT_EQ(reading.fault, "");
  ASSERT_EQ(reading.rows.size(), expected.rows.size());
  for (std::size_t i = 0; i < expected.rows.size(); ++i) {
    const ListRow &row = reading.rows[i];
    const ListRow &wanted = expected.rows[i];
    ASSERT_EQ(row.magnitude, wanted.magnitude) << i;
    ASSERT_EQ(row.date, wanted.date) << i;
    ASSERT_EQ(row.time, wanted.time) << i;
    ASSERT_EQ(row.latitude, wanted.latitude) << i;
    ASSERT_EQ(row.longitude, wanted.longitude) << i;
    ASSERT_EQ(row.depth, wanted.depth) << i;
    ASSERT_EQ(row.place, wanted.place) << i;
    ASSERT_EQ(row.link, wanted.link) << i;
  }
}

/// Each area of the table.
class AreaPages : public testing::TestWithParam<std::size_t> {
 protected:
  const Area &area() const { return Areas()[GetParam()]; }
};

TEST_P(AreaPages, GiveTheEventsOfTheSampleBackToTheScanner) {
  const TimeZone zone("JST-9");
  const Catalogue catalogue(SampleEvents());
  EXPECT_GE(EventsOf(area(), catalogue).size(), 10U);
  ExpectToComeBack(area(), catalogue);
}

TEST_P(AreaPages, EndTheScanNormallyWithoutEvents) {
  const std::string page = AreaPage(area(), Catalogue(), host).toStdString();
  const ListReading reading = ReadAs(area().form, page);
  EXPECT_TRUE(reading.rows.empty());
  EXPECT_EQ(reading.fault, "");
  EXPECT_NE(page.find("There are no events here"), std::string::npos);
}

TEST_P(AreaPages, EndTheScanNormallyWithOneEvent) {
  const Catalogue sample(SampleEvents());
  ExpectToComeBack(area(), Catalogue({*EventsOf(area(), sample).front()}));
}

constexpr int random_catalogues = 2000;

/// How many events a catalogue has: mostly few, none and one among them, and now and then so many that the distances
/// within the page do not fit into 16 bits.
int CountOf(int number) {
  if (number % 250 == 249)
    return 400 + number % 300;
  return number % 25;
}

class RandomPages : public testing::TestWithParam<ListForm> {};

TEST_P(RandomPages, ComeBackFromTheScannerEventForEvent) {
  const TimeZone zone("UTC");
  const Area everything = AnywhereWith(GetParam());
  for (int number = 0; number < random_catalogues; ++number) {
    RandomCatalogue random(static_cast<unsigned>(number));
    SCOPED_TRACE(number);
    ExpectToComeBack(everything, random.Make(CountOf(number)));
    if (HasFatalFailure())
      return;
  }
}

std::string NameOfForm(const testing::TestParamInfo<ListForm> &info) {
  constexpr std::array names = {"Quakes", "MapList", "MapAnchor", "World", "Region"};
  return names[static_cast<std::size_t>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(All, RandomPages,
                         testing::Values(ListForm::Quakes, ListForm::MapList, ListForm::MapAnchor, ListForm::World,
                                         ListForm::Region),
                         NameOfForm);

/// The area's name with nothing but letters and digits, as a test's name has it.
std::string NameOf(const testing::TestParamInfo<std::size_t> &info) {
  std::string name = Areas()[info.param].name;
  std::erase_if(name,
                [](char c) { return !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')); });
  return name;
}

INSTANTIATE_TEST_SUITE_P(All, AreaPages, testing::Range<std::size_t>(0, Areas().size()), NameOf);

}  // namespace
}  // namespace borvane::mirror
