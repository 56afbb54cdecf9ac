#include "pages/locator_map.h"

#include <QFile>

#include <gtest/gtest.h>

// Each drawing as a whole beside a file of tests/cases/locator_map/.

namespace borvane::mirror {
namespace {

Event At(const QString &id, double latitude, double longitude, double magnitude = 2) {
  Event event;
  event.id = id;
  event.latitude = latitude;
  event.longitude = longitude;
  event.magnitude = magnitude;
  return event;
}

void ExpectCase(const QString &name, const QByteArray &drawing) {
  const QString path = QString(BORVANE_CASES "/locator_map/%1.html").arg(name);
  QFile file(path);
  EXPECT_TRUE(file.open(QFile::ReadOnly)) << path.toStdString();
  const QByteArray expected = file.readAll();
  if (drawing != expected && qEnvironmentVariableIsSet("BORVANE_UPDATE")) {
    QFile update(path + ".new");
    ASSERT_TRUE(update.open(QFile::WriteOnly));
    update.write(drawing);
  }
  EXPECT_EQ(drawing.toStdString(), expected.toStdString());
}

TEST(LocatorMap, DrawsAnEventAmongItsNeighbours) {
  const Event centre = At("centre", 34.495, -118.667);
  ExpectCase("neighbours",
             LocatorMap(centre, Catalogue({centre, At("near", 35.5, -119.2, 4.4), At("small", 34.4, -118.6, -1),
                                           At("edge", 36.495, -118.667), At("far", 36.496, -118.667),
                                           At("elsewhere", -20, 170, 8.5)})));
}

TEST(LocatorMap, DrawsAnEventInTheFarNorthAcrossTheDateLine) {
  const Event centre = At("centre", 71.3, 179.6);
  ExpectCase("date_line", LocatorMap(centre, Catalogue({centre, At("east", 71.9, -178.5), At("west", 70.8, 176.1)})));
}

TEST(LocatorMap, DrawsAnEventInTheSouthAcrossTheDateLine) {
  const Event centre = At("centre", -17.8, -179.3);
  ExpectCase("south", LocatorMap(centre, Catalogue({centre, At("west", -16.5, 179.4)})));
}

TEST(LocatorMap, DrawsNoMoreNeighboursThanItHasRoomFor) {
  const Event centre = At("centre", 10, 20);
  std::vector<Event> events = {centre};
  for (int i = 0; i < 600; ++i)
    events.push_back(At(QString::number(i), 10.5, 20.5));
  const QByteArray alone = LocatorMap(centre, Catalogue({centre}));
  EXPECT_EQ(LocatorMap(centre, Catalogue(events)).count("<circle"), alone.count("<circle") + 500);
}

TEST(LocatorMap, DrawsNoMorePlacesOnTheGlobeThanItHasRoomFor) {
  std::vector<Event> events;
  for (int i = 0; i < 1500; ++i)
    events.push_back(At(QString::number(i), -80 + 3 * (i / 60), -170 + 5 * (i % 60)));
  EXPECT_EQ(LocatorMap(events.front(), Catalogue(events)).count("h.1"), 1000);
}

}  // namespace
}  // namespace borvane::mirror
