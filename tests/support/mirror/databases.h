#pragma once

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "store/store_address.h"

namespace borvane::mirror {

enum class DatabaseKind { SQLite, PostgreSQL };

inline std::string Name(DatabaseKind kind) { return kind == DatabaseKind::SQLite ? "SQLite" : "PostgreSQL"; }
inline void PrintTo(DatabaseKind kind, std::ostream *out) { *out << Name(kind); }

/// The address as the command line takes it, password included.
QString CommandLineText(const StoreAddress &address);

/// An empty database of either kind, for one test.
class EmptyDatabase {
 public:
  explicit EmptyDatabase(DatabaseKind kind);

  const StoreAddress &Address() const { return address_; }
  QString AddressText() const { return CommandLineText(address_); }

  /// Executes SQL statements, each ended by ";" at the end of a line.
  void Execute(const QString &sql) const;

 private:
  QTemporaryDir folder_;
  StoreAddress address_;
};

/// A test that runs on either kind.
class OnEveryDatabase : public testing::TestWithParam<DatabaseKind> {
 protected:
  const EmptyDatabase database_{GetParam()};
};

/// The end of the test's name.
inline std::string KindName(const testing::TestParamInfo<DatabaseKind> &info) { return Name(info.param); }

}  // namespace borvane::mirror
