#include "pages/area_page.h"

#include <array>

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "pages/figures.h"
#include "pages/text.h"
#include "support/mirror/random_catalogue.h"
#include "support/mirror/read_as.h"
#include "support/mirror/time_zone.h"
#include "support/plain_text.h"

namespace borvane::mirror {
namespace {

const QByteArray host = "alaska.localhost:17650";

std::string ListedPlace(const Event &event) { return RowText(PlaceWithMiles(event.place)).toStdString(); }

/// What every form but the region's gives back of an event.
plain::Row RowOf(const Event &event) {
  const std::string time = LocalTimeText(event.origin_time).toStdString();
  return {MagnitudeText(event.magnitude.value()).toStdString(),
          time.substr(0, 10),
          time.substr(11),
          LatitudeText(event.latitude).toStdString(),
          LongitudeText(event.longitude).toStdString(),
          DepthText(event.depth).toStdString(),
          plain::Trim(ListedPlace(event)),
          "recenteqs/Quakes/" + event.id.toStdString() + ".html"};
}

plain::Row WorldRowOf(const Event &event) {
  plain::Row row = RowOf(event);
  std::string &place = row[plain::column::place];
  if (place.empty())
    place = "not named";
  return row;
}

/// The row of the region's table, with its link as a browser and the mirror understand it.
plain::Row RegionRowOf(const Event &event) {
  return {MagnitudeText(event.magnitude.value()).toStdString(), LocalTimeText(event.origin_time).toStdString(),
          ListedPlace(event), "http://" + host.toStdString() + "/recenteqs/Quakes/" + event.id.toStdString() + ".html"};
}

std::vector<const Event *> EventsOf(const Area &area, const Catalogue &catalogue) {
  std::vector<const Event *> events;
  for (const Event &event : catalogue.events())
    if (event.magnitude && *event.magnitude >= area.least_magnitude &&
        area.box.Contains(event.latitude, event.longitude))
      events.push_back(&event);
  return events;
}

/// The rows that the area's scanner has to find for these events.
std::vector<plain::Row> ExpectedRows(const Area &area, const std::vector<const Event *> &events) {
  if (area.form == ListForm::Region)
    return events.empty() ? std::vector<plain::Row>() : std::vector{RegionRowOf(*events.front())};
  std::vector<plain::Row> rows;
  for (const Event *event : events)
    rows.push_back(area.form == ListForm::World ? WorldRowOf(*event) : RowOf(*event));
  return rows;
}

void ExpectToComeBack(const Area &area, const Catalogue &catalogue) {
  const std::vector<plain::Row> rows = ExpectedRows(area, EventsOf(area, catalogue));
  const PageFacts facts = {.data_time = 1'781'870'400'000};
  const plain::ScanResult scan = ReadAs(area.form, AreaPage(area, catalogue, host, facts).toStdString());
  ASSERT_EQ(scan.failure, 0);
  ASSERT_EQ(scan.rows.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i)
    ASSERT_EQ(scan.rows[i], rows[i]) << i;
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
  const plain::ScanResult scan = ReadAs(area().form, page);
  EXPECT_TRUE(scan.rows.empty());
  EXPECT_EQ(scan.failure, 0);
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

TEST_P(RandomPages, ComeBackWithTheZonesOfASummerAndAWinter) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  RandomCatalogue random(1);
  ExpectToComeBack(AnywhereWith(GetParam()), random.Make(400));
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
