#pragma once

#include <QByteArray>
#include <QString>
#include <QTimer>
#include <vector>

#include "desktop/settings/autostart_entry.h"
#include "platform/settings_store.h"

namespace borvane {

/// Nalvorin/Borvane.conf in the user's folder for configuration.
QString UserSettingsFile();

/// The program's settings in a file. A changed value is on the disk when Write returns; what is written within one
/// event is on the disk, all of it at once, before the next event begins or this one ends. When another Borvane is
/// writing for too long, values are kept in memory and written as soon as the other lets go. An unchanged value is not
/// written. Several Borvanes share the file, value by value. What the program writes to the Run key becomes an
/// autostart entry, at once; what was written before it is then on the disk.
class SettingsFileStore final : public SettingsStore {
 public:
  /// How long a write waits for another Borvane, in milliseconds: the program does nothing else meanwhile.
  static constexpr int write_timeout = 1'000;

  /// How long the end of the process waits for it.
  static constexpr int last_timeout = 2'000;

  /// A write waits for another Borvane at most `timeout` milliseconds, and not at all while earlier values are kept.
  explicit SettingsFileStore(QString file_name = UserSettingsFile(), int timeout = write_timeout,
                             QString autostart_file = UserAutostartFile());

  std::optional<StoredValue> Read(std::string_view key, std::string_view name) override;
  void Write(std::string_view key, std::string_view name, std::string_view text) override;

  /// The program deletes no value but that of the Run key.
  void Delete(std::string_view key, std::string_view name) override;

  void BeginEvent() override;
  void EndEvent() override;

  /// Writes what is kept.
  void WriteKept();

  /// The stored settings have reached the program. What it writes from now on is the user's choice.
  void EndStart() { autostart_entry_.EndStart(); }

  /// For the end of the process: writes what is still kept, waits for that up to `last_timeout`, and names on standard
  /// error what is lost.
  void Finish();

 private:
  struct Value {
    QByteArray section;
    QByteArray name;
    QString text;
  };

  /// What an event has seen of the file: its values do not change during the event.
  struct Snapshot {
    struct Value {
      std::string key;
      std::string name;
      std::optional<StoredValue> value;
    };

    std::optional<QByteArray> content;
    std::vector<Value> values;  ///< that have been read from it
  };

  Value *Kept(const QByteArray &section, const QByteArray &name);
  std::optional<QString> TextOf(const QByteArray &section, const QByteArray &name);

  /// The file's content; nothing when it cannot be read.
  std::optional<QByteArray> Content();

  /// Writes the kept values if the lock is free within `timeout` milliseconds; otherwise they stay kept, and the timer
  /// tries again.
  void WriteKeptWithin(int timeout);

  void WriteValues(const QString &file, const std::vector<Value> &values);

  QString file_name_;
  int timeout_;
  AutostartEntry autostart_entry_;
  QByteArray last_content_;  ///< as it was when it could be read
  std::vector<Value> kept_;  ///< changed, in that order, and not yet written
  int events_ = 0;           ///< that are under way, one inside the other
  Snapshot snapshot_;        ///< of the innermost event; empty outside all events
  QTimer retry_;             ///< runs while values are kept
};

}  // namespace borvane
