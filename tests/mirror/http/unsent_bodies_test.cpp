#include "http/unsent_bodies.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(UnsentBodies, CountABodyThatSeveralConnectionsShareOnce) {
  const QByteArray shared(100, 's');
  const QByteArray copy = shared;
  const QByteArray other(100, 's');
  UnsentBodies bodies;
  bodies.Add(shared);
  bodies.Add(copy);
  EXPECT_EQ(bodies.Bytes(), 100);
  EXPECT_EQ(bodies.Count(), 1);
  bodies.Add(other);
  EXPECT_EQ(bodies.Bytes(), 200);
  EXPECT_EQ(bodies.Count(), 2);
  bodies.Remove(shared);
  EXPECT_EQ(bodies.Bytes(), 200) << "one connection still holds it";
  bodies.Remove(copy);
  bodies.Remove(other);
  EXPECT_EQ(bodies.Bytes(), 0);
  EXPECT_EQ(bodies.Count(), 0);
}

}  // namespace
}  // namespace borvane::mirror
