#pragma once

#include <QDateTime>
#include <QTimer>
#include <functional>
#include <optional>

#include "catalogue/geojson_reader.h"

namespace borvane::mirror {

/// A catalogue file that is read again whenever it changes, whole or not at all: a file that is only half written, or
/// cannot be read, gives a fault, and the events given before go on to hold.
class CatalogueFile {
 public:
  using TakeEvents = std::function<void(CatalogueReading)>;
  using LogFault = std::function<void(const QString &fault)>;

  /// `take` gets every good reading, `log` a sentence about each bad one, which names the file.
  CatalogueFile(QString path, TakeEvents take, LogFault log);

  /// Reads the file now and watches it from now on.
  void Start();

 private:
  /// What changes when a file is written, replaced by another or removed.
  struct Stamp {
    bool exists = false;
    QDateTime modified;
    QDateTime status_changed;
    qint64 size = 0;

    bool operator==(const Stamp &) const = default;
  };

  Stamp StampNow() const;
  void Look();
  void Read();
  bool TakeText();
  std::optional<QByteArray> ReadText();
  void Report(const QString &fault);

  QString path_;
  TakeEvents take_;
  LogFault log_;
  QTimer timer_;
  Stamp seen_;                  ///< at the last look
  std::optional<Stamp> taken_;  ///< of the text that was read, or found not to be a catalogue
  QString logged_fault_;
  Stamp logged_stamp_;
};

}  // namespace borvane::mirror
