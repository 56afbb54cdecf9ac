#include "http/repeated_bodies.h"

#include <QFile>
#include <vector>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

QByteArray BytesOf(const std::shared_ptr<const MemoryFile> &file) {
  if (!file)
    return "no file";
  QFile reader;
  return reader.open(file->descriptor(), QFile::ReadOnly) && reader.seek(0) ? reader.readAll() : "not readable";
}

TEST(RepeatedBodies, PutABodyIntoAFileWhenItIsSentAgain) {
  RepeatedBodies bodies;
  const QByteArray body(100'000, 'a');
  const QByteArray alike(100'000, 'a');
  EXPECT_EQ(bodies.FileOf(body), nullptr);
  const auto file = bodies.FileOf(body);
  EXPECT_EQ(BytesOf(file), body);
  EXPECT_EQ(bodies.FileOf(body), file);
  EXPECT_EQ(bodies.FileOf(alike), nullptr) << "another body, though its bytes are the same";
  EXPECT_EQ(bodies.FileOf(body), file);
}

TEST(RepeatedBodies, KeepNoneThatIsTooLong) {
  RepeatedBodies bodies;
  const QByteArray longest(8 * 1024 * 1024, 'a');
  const QByteArray too_long(8 * 1024 * 1024 + 1, 'a');
  bodies.FileOf(longest);
  EXPECT_NE(bodies.FileOf(longest), nullptr);
  bodies.FileOf(too_long);
  EXPECT_EQ(bodies.FileOf(too_long), nullptr);
  EXPECT_TRUE(too_long.isDetached());
}

TEST(RepeatedBodies, KeepWhatWasSentLast) {
  RepeatedBodies bodies;
  std::vector<QByteArray> all;
  for (int i = 0; i < RepeatedBodies::most; ++i)
    bodies.FileOf(all.emplace_back(20'000, 'a'));
  const auto first = bodies.FileOf(all[0]);
  EXPECT_NE(first, nullptr);
  bodies.FileOf(all.emplace_back(20'000, 'a'));
  EXPECT_EQ(bodies.FileOf(all[0]), first);
  EXPECT_TRUE(all[1].isDetached()) << "it had not been sent for longest";
  EXPECT_FALSE(all[2].isDetached());
}

TEST(RepeatedBodies, TogetherHaveABoundedLength) {
  RepeatedBodies bodies;
  const QByteArray first(5'000'000, 'a');
  const QByteArray second(5'000'000, 'b');
  bodies.FileOf(first);
  const auto file = bodies.FileOf(first);
  EXPECT_NE(file, nullptr);
  bodies.FileOf(second);
  EXPECT_TRUE(first.isDetached());
  EXPECT_FALSE(second.isDetached());
  EXPECT_EQ(bodies.FileOf(second), nullptr) << "a slow client still needs the file of the first";
}

TEST(RepeatedBodies, DropWhatNobodyElseKeeps) {
  RepeatedBodies bodies;
  QByteArray old(20'000, 'a');
  const QByteArray other(20'000, 'b');
  bodies.FileOf(old);
  const std::weak_ptr<const MemoryFile> file = bodies.FileOf(old);
  bodies.FileOf(other);
  EXPECT_FALSE(file.expired());
  old.clear();
  bodies.FileOf(QByteArray(20'000, 'c'));
  EXPECT_TRUE(file.expired());
}

TEST(RepeatedBodies, NeverHaveMoreFilesThanThatAlsoForSlowClients) {
  RepeatedBodies bodies;
  std::vector<std::shared_ptr<const MemoryFile>> of_slow_clients;
  const auto file_of_a_new_one = [&] {
    const QByteArray body(20'000, 'a');
    bodies.FileOf(body);
    return bodies.FileOf(body);
  };
  for (int i = 0; i < RepeatedBodies::most; ++i)
    of_slow_clients.push_back(file_of_a_new_one());
  EXPECT_NE(of_slow_clients.back(), nullptr);
  EXPECT_EQ(file_of_a_new_one(), nullptr);
  of_slow_clients.pop_back();
  EXPECT_NE(file_of_a_new_one(), nullptr);
}

}  // namespace
}  // namespace borvane::mirror
