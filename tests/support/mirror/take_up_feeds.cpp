// Takes up feeds as a mirror does, in a process of its own that a test can kill, freeze, or give a bad disk.
//
// usage: take_up_feeds STORE [COUNT MILLISECONDS]
//
// With a count it takes up that many readings, one after another. After each it prints what is served, and whether it
// is in the store within the time. Without one it prints "leads" as soon as it may ask the feeds, and has taken up one
// event then.

#include "support/mirror/take_up_feeds.h"

#include <QCoreApplication>
#include <QDateTime>
#include <cstdio>

#include "live/live_catalogue.h"

namespace borvane::mirror {
namespace {

LiveCatalogue::Settings SettingsFor(const QString &store, std::function<qint64()> clock) {
  return {.store = ReadStoreAddress(store).value(),
          .sources = TwoSources(),
          .feeds = {{.url = "week", .span = WholeWeek()}},
          .timing = {.look_interval = std::chrono::milliseconds(1'000),
                     .retry_interval = std::chrono::milliseconds(20),
                     .takeover_timeout = std::chrono::minutes(10)},
          .clock = std::move(clock)};
}

QString IdsOf(const Catalogue &catalogue) {
  QStringList ids;
  for (const Event &event : catalogue.events())
    ids.append(event.id);
  ids.sort();
  return ids.join(' ');
}

void WriteLine(LogLevel /*level*/, const QString &line) { std::fprintf(stderr, "%s\n", qPrintable(line)); }

void TakeUp(const QString &store, int count, int milliseconds) {
  int number = 0;
  QString served;
  LiveCatalogue live(SettingsFor(store, [&number] { return start_of_test + number * one_minute; }),
                     {.changed = [&](const std::shared_ptr<const Catalogue> &events) { served = IdsOf(*events); },
                      .restored = [] {},
                      .may_poll = [](bool) {},
                      .log = WriteLine});
  live.Start(10'000);
  for (number = 1; number <= count; ++number) {
    const QString fault = live.Take({.url = "week", .span = WholeWeek()}, ReadingNumber(number));
    std::printf("%s|%s|%s\n", qPrintable(served), qPrintable(fault), live.Finish(milliseconds) ? "stored" : "waits");
  }
}

void LeadOnceAllowed(const QString &store) {
  bool may_poll = false;
  LiveCatalogue live(SettingsFor(store, QDateTime::currentMSecsSinceEpoch),
                     {.changed = [](const std::shared_ptr<const Catalogue> &) {},
                      .restored = [] {},
                      .may_poll = [&may_poll](bool may) { may_poll = may; },
                      .log = WriteLine});
  live.Start(0);
  while (!may_poll)
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  live.Take({.url = "hour", .span = Recent()},
            ReadingOf({GivenAt("ci1", QDateTime::currentMSecsSinceEpoch() - one_hour)}, 0));
  live.Finish(60'000);
  std::printf("leads\n");
  std::fflush(stdout);
  QCoreApplication::exec();
}

}  // namespace
}  // namespace borvane::mirror

int main(int argc, char *argv[]) {
  const QCoreApplication application(argc, argv);
  if (argc == 4)
    borvane::mirror::TakeUp(argv[1], QString(argv[2]).toInt(), QString(argv[3]).toInt());
  else
    borvane::mirror::LeadOnceAllowed(argv[1]);
}
