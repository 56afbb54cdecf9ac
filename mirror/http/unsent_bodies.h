#pragma once

#include <QByteArray>
#include <QHash>

namespace borvane::mirror {

/// The bodies that a server's connections still have to send. One that several connections share takes its memory once.
class UnsentBodies {
 public:
  /// Counts a connection that holds the body.
  void Add(const QByteArray &body);

  /// Counts it no more; the body is the one that was added.
  void Remove(const QByteArray &body);

  /// The memory that they take.
  qsizetype Bytes() const { return bytes_; }

  /// How many different bodies there are.
  qsizetype Count() const { return connections_.size(); }

 private:
  QHash<const char *, int> connections_;  ///< how many hold the body at that address
  qsizetype bytes_ = 0;
};

}  // namespace borvane::mirror
