#include "catalogue/catalogue.h"

#include <vector>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

Event EventOf(const char *id, qint64 time) {
  Event event;
  event.id = id;
  event.origin_time = time;
  return event;
}

TEST(Catalogue, HasTheNewestEventFirstAndEachIdOnce) {
  const Catalogue catalogue({EventOf("a", 1), EventOf("b", 3), EventOf("a", 5), EventOf("c", 2), EventOf("d", 3)});
  std::vector<QString> ids;
  for (const Event &each : catalogue.events())
    ids.push_back(each.id);
  EXPECT_EQ(ids, (std::vector<QString>{"b", "d", "c", "a"}));
  EXPECT_EQ(catalogue.Find("a")->origin_time, 1);
  EXPECT_EQ(catalogue.Find("x"), nullptr);
}

TEST(Catalogue, FindsAnEventUnderItsOtherIds) {
  const Catalogue catalogue({EventOf("a", 1), EventOf("b", 3)}, {{.id = "x", .event = "a"},
                                                                 {.id = "x", .event = "b"},
                                                                 {.id = "b", .event = "a"},
                                                                 {.id = "y", .event = "unknown"}});
  EXPECT_EQ(catalogue.events().size(), 2U);
  ASSERT_NE(catalogue.Find("x"), nullptr);
  EXPECT_EQ(catalogue.Find("x")->id, "a") << "the first counts";
  EXPECT_EQ(catalogue.Find("b")->id, "b") << "its own id comes first";
  EXPECT_EQ(catalogue.Find("y"), nullptr);
}

}  // namespace
}  // namespace borvane::mirror
