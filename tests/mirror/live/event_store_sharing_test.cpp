#include <QCoreApplication>
#include <QProcess>
#include <functional>
#include <memory>

#include <gtest/gtest.h>
#include <signal.h>

#include "support/mirror/databases.h"
#include "support/mirror/events_under_test.h"
#include "support/mirror/postgresql_server.h"

// Several mirrors at one database server.

namespace borvane::mirror {
namespace {

class EventsOnPostgreSQL : public testing::Test {
 protected:
  static std::unique_ptr<EventsUnderTest> Start(const StoreAddress &address,
                                                std::chrono::milliseconds takeover_timeout = std::chrono::minutes(10)) {
    auto events =
        std::make_unique<EventsUnderTest>(address, EventRetention(), QStringList{"survey", "centre"}, takeover_timeout);
    events->Start(std::chrono::hours(24 * 365 * 60));
    return events;
  }
  static bool Leads(const std::unique_ptr<EventsUnderTest> &events) {
    return WaitFor([&] { return events->Leads() == true; });
  }
  static bool Follows(const std::unique_ptr<EventsUnderTest> &events) {
    return WaitFor([&] { return events->Leads() == false; });
  }

  /// What is taken up while the database takes no changes is in it as soon as it does again. Meanwhile its last state
  /// can be read, and the log has one line with the reason.
  void ExpectNothingLost(const std::function<void()> &spoil, const QString &reason,
                         const std::function<void()> &mend) const {
    const EventRecord before = Said("before");
    const EventRecord revised = Said("before", 0, 3.0, start_of_test + 2);
    const auto leader = Start(address_);
    EXPECT_TRUE(Leads(leader));
    leader->Write({before}, start_of_test);

    spoil();
    leader->WriteLater({Said("first")}, start_of_test + 1);
    leader->WriteLater({revised, Said("second")}, start_of_test + 2);
    EXPECT_TRUE(WaitFor([&] { return !leader->store().Works(); }));
    const auto other = Start(address_);
    EXPECT_EQ(other->Records(), std::vector<EventRecord>{before});
    EXPECT_EQ(other->TimeOfData(), start_of_test);
    EXPECT_FALSE(leader->store().WaitUntilWritten(500)) << "several attempts";
    EXPECT_EQ(leader->store().Unwritten(), 3U);
    ASSERT_EQ(leader->Lines().size(), 1);
    EXPECT_TRUE(leader->Lines()[0].contains(" does not work: ERROR: " + reason)) << leader->Lines()[0].toStdString();

    mend();
    EXPECT_TRUE(leader->store().WaitUntilWritten(60'000));
    EXPECT_TRUE(leader->store().Works());
    EXPECT_TRUE(WaitFor([&] { return other->Records() == leader->Records(); }));
    EXPECT_TRUE(WaitFor([&] { return other->TimeOfData() == start_of_test + 2; }));
    EXPECT_EQ(other->Records().size(), 3U);
    EXPECT_TRUE(other->Knows(revised));
    EXPECT_EQ(leader->Lines().size(), 2);
    EXPECT_EQ(other->Lines(), QStringList());
    Database database(address_);
    database.Open();
    EXPECT_EQ(database.Row("select magnitude from revision").value(0).toDouble(), before.event.magnitude);
  }

  PostgresqlServer &server_ = PostgresqlServer::Shared();
  const StoreAddress service_ = server_.MakeDatabase();
  const StoreAddress address_ = EventStoreAddress(service_);
};

TEST_F(EventsOnPostgreSQL, AreAskedForByOneMirrorOnlyAndByTheNextWhenItEnds) {
  auto one = Start(address_);
  EXPECT_TRUE(Leads(one));
  auto other = Start(address_);
  auto third = Start(address_);
  EXPECT_TRUE(Follows(other));
  EXPECT_TRUE(Follows(third));
  one.reset();
  EXPECT_TRUE(WaitFor([&] { return other->Leads() == true || third->Leads() == true; }));
  EXPECT_NE(other->Leads(), third->Leads());
  (other->Leads() == true ? other : third).reset();
  EXPECT_TRUE(Leads(other ? other : third));
}

TEST_F(EventsOnPostgreSQL, OfTwoDatabasesHaveALeaderEach) {
  const auto one = Start(address_);
  const auto other = Start(EventStoreAddress(server_.MakeDatabase()));
  EXPECT_TRUE(Leads(one));
  EXPECT_TRUE(Leads(other));
}

TEST_F(EventsOnPostgreSQL, AreSeenByTheMirrorsThatFollow) {
  const auto leader = Start(address_);
  EXPECT_TRUE(Leads(leader));
  const auto follower = Start(address_);
  leader->Write({Said("ci1"), Said("gfz1", 1)}, start_of_test);
  EXPECT_TRUE(WaitFor([&] { return follower->Knows(Said("ci1")) && follower->Knows(Said("gfz1", 1)); }));
  EXPECT_EQ(follower->TimeOfData(), start_of_test);
  const EventRecord gone = Gone(Said("ci1"), start_of_test + 1);
  leader->Write({gone});
  EXPECT_TRUE(WaitFor([&] { return follower->Knows(gone); }));
  leader->store().Write({}, start_of_test + 2);
  EXPECT_TRUE(WaitFor([&] { return follower->TimeOfData() == start_of_test + 2; }));
  EXPECT_EQ(follower->Lines(), QStringList());
}

TEST_F(EventsOnPostgreSQL, AreAllSeenAfterAClockThatWasAheadIsRight) {
  const auto leader = Start(address_);
  leader->Write({Said("early")}, start_of_test);
  EventsUnderTest follower(address_);
  follower.SetTime(start_of_test + 100 * one_day);
  follower.Start();
  leader->Write({Said("late")}, start_of_test + one_minute);
  EXPECT_TRUE(WaitFor([&] { return follower.TimeOfData() == start_of_test + one_minute; }));
  EXPECT_EQ(follower.Records().size(), 0U);
  follower.SetTime(start_of_test + 2 * one_minute);
  EXPECT_TRUE(WaitFor([&] { return follower.Knows(Said("early")) && follower.Knows(Said("late")); }));
}

TEST_F(EventsOnPostgreSQL, LiveBesideTheServicesTables) {
  server_.Execute(service_, "create schema borvane;\ncreate table borvane.event (x int);\n");
  const auto events = Start(address_);
  events->Write({Said("ci1")});
  EXPECT_EQ(events->Lines(), QStringList());
}

TEST_F(EventsOnPostgreSQL, AreKeptWhileTheServerIsGoneAndWrittenWhenItIsBack) {
  const auto leader = Start(address_);
  EXPECT_TRUE(Leads(leader));
  const auto follower = Start(address_);
  EXPECT_TRUE(Follows(follower));
  leader->Write({Said("before")});
  server_.Stop();
  EXPECT_TRUE(WaitFor([&] { return !leader->store().Works() && !follower->store().Works(); }));
  leader->WriteLater({Said("first")});
  EXPECT_FALSE(leader->store().WaitUntilWritten(200));
  leader->WriteLater({Said("second")});
  EXPECT_EQ(leader->Leads(), true) << "it goes on to ask the feeds";
  EXPECT_EQ(follower->Leads(), false);
  server_.Start();
  EXPECT_TRUE(leader->store().WaitUntilWritten(60'000));
  EXPECT_TRUE(WaitFor([&] { return follower->Knows(Said("first")) && follower->Knows(Said("second")); }));
  EXPECT_TRUE(WaitFor([&] { return leader->Leads() != follower->Leads(); })) << "one of the two leads";
  EXPECT_EQ(leader->Lines().size(), 2);
}

TEST_F(EventsOnPostgreSQL, AreKeptWhileTheDatabaseIsReadOnlyAndWrittenWhenItIsNot) {
  const auto let_write = [this](const char *off_or_on) {
    const QString database =
        QString("alter database \"%1\" set default_transaction_read_only = ").arg(service_.database);
    server_.Execute(service_, "set default_transaction_read_only = off;\n" + database + off_or_on + ";\n");
  };
  const auto spoil = [&] {
    let_write("on");
    server_.EndConnections(service_);
  };
  ExpectNothingLost(spoil, "cannot execute UPDATE in a read-only transaction", [&] { let_write("off"); });
}

TEST_F(EventsOnPostgreSQL, AreKeptWhileTheDiskIsFullAndWrittenWhenItIsNot) {
  const QStringList tables = {"state", "event", "revision"};
  const auto for_each_table = [&](const QString &statement) {
    QString sql;
    for (const QString &table : tables)
      sql += statement.arg("borvane_events." + table) + ";\n";
    return sql;
  };
  const auto spoil = [&] {
    server_.Execute(
        service_,
        "create function borvane_events.fail() returns trigger language plpgsql as $$ begin raise exception "
        "using errcode = 'disk_full', message = 'could not extend file'; end $$;\n" +
            for_each_table("create trigger full_disk before insert or update on %1 "
                           "execute function borvane_events.fail()"));
  };
  ExpectNothingLost(spoil, "could not extend file",
                    [&] { server_.Execute(service_, for_each_table("drop trigger full_disk on %1")); });
}

TEST_F(EventsOnPostgreSQL, AreKnownNotToBeWrittenWhileTheOthersCanBeRead) {
  const auto leader = Start(address_);
  EXPECT_TRUE(Leads(leader));
  const auto other = Start(address_);
  server_.Execute(service_,
                  "create function borvane_events.fail() returns trigger language plpgsql as $$ begin raise exception "
                  "using errcode = 'disk_full', message = 'could not extend file'; end $$;\n"
                  "create trigger full_disk before insert on borvane_events.event for each row "
                  "when (new.place = 'too much') execute function borvane_events.fail();\n");
  EventRecord too_much = Said("ci1");
  too_much.event.place = "too much";
  leader->WriteLater({too_much});
  EXPECT_TRUE(WaitFor([&] { return !leader->store().Works(); }));
  for (const char *id : {"ci2", "ci3", "ci4", "ci5"}) {
    other->Write({Said(id)});
    bool has_worked = false;
    EXPECT_TRUE(WaitFor([&] {
      has_worked = has_worked || leader->store().Works();
      return leader->Knows(Said(id));
    }));
    EXPECT_FALSE(has_worked) << id;
  }
  EXPECT_TRUE(other->store().Works());
  server_.Execute(service_, "drop trigger full_disk on borvane_events.event;\n");
  EXPECT_TRUE(leader->store().WaitUntilWritten(60'000));
  EXPECT_TRUE(leader->store().Works());
}

TEST_F(EventsOnPostgreSQL, AreAskedForByAMirrorThatFindsNoServer) {
  const auto leader = Start(address_);
  EXPECT_TRUE(Leads(leader));
  const auto follower = Start(address_, std::chrono::milliseconds(300));
  EXPECT_TRUE(Follows(follower));
  server_.Stop();
  EXPECT_TRUE(Leads(follower));
  follower->WriteLater({Said("from the follower")});
  leader->WriteLater({Said("from the leader")});
  server_.Start();
  EXPECT_TRUE(leader->store().WaitUntilWritten(60'000) && follower->store().WaitUntilWritten(60'000));
  EXPECT_TRUE(WaitFor([&] { return leader->Leads() != follower->Leads(); })) << "one of the two leads";
  EXPECT_TRUE(WaitFor([&] { return leader->Records() == follower->Records() && leader->Records().size() == 2; }));
}

/// Another process that takes up an event when it leads.
class LeaderElsewhere {
 public:
  explicit LeaderElsewhere(const StoreAddress &service) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(BORVANE_TAKE_UP, {CommandLineText(service)});
  }
  ~LeaderElsewhere() {
    process_.kill();
    process_.waitForFinished();
  }
  bool Leads() {
    return WaitFor([this] { return process_.readAllStandardOutput().contains("leads"); });
  }
  void Signal(int signal) const { ::kill(static_cast<pid_t>(process_.processId()), signal); }

 private:
  QProcess process_;
};

TEST_F(EventsOnPostgreSQL, OfALeaderThatIsKilledAreKeptAndAskedForByAnotherMirror) {
  LeaderElsewhere leader(service_);
  ASSERT_TRUE(leader.Leads());
  const auto follower = Start(address_);
  EXPECT_TRUE(Follows(follower));
  EXPECT_TRUE(WaitFor([&] { return follower->Records().size() == 1; })) << "what the leader took up";
  leader.Signal(SIGKILL);
  EXPECT_TRUE(Leads(follower));
  EXPECT_EQ(follower->Records().size(), 1U);
}

TEST_F(EventsOnPostgreSQL, OfALeaderThatIsFrozenAreAskedForByAnotherMirrorWithinAMinute) {
  LeaderElsewhere leader(service_);
  ASSERT_TRUE(leader.Leads());
  const auto follower = Start(address_);
  EXPECT_TRUE(Follows(follower));
  leader.Signal(SIGSTOP);
  EXPECT_TRUE(Leads(follower));
}

}  // namespace
}  // namespace borvane::mirror
