#include "catalogue/catalogue.h"

#include <vector>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(Catalogue, HasTheNewestEventFirstAndEachIdOnce) {
  const auto event_of = [](const char *id, qint64 time) {
    Event event;
    event.id = id;
    event.origin_time = time;
    return event;
  };
  const Catalogue catalogue({event_of("a", 1), event_of("b", 3), event_of("a", 5), event_of("c", 2), event_of("d", 3)});
  std::vector<QString> ids;
  for (const Event &each : catalogue.events())
    ids.push_back(each.id);
  EXPECT_EQ(ids, (std::vector<QString>{"b", "d", "c", "a"}));
  EXPECT_EQ(catalogue.Find("a")->origin_time, 1);
  EXPECT_EQ(catalogue.Find("x"), nullptr);
}

}  // namespace
}  // namespace borvane::mirror
