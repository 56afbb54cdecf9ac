#pragma once

#include <QLocalSocket>
#include <QProcess>
#include <QTcpSocket>
#include <QTimer>
#include <chrono>
#include <functional>
#include <string>

#include "desktop/services/growing_pause.h"

namespace borvane {

/// Where the companion mirror is looked for and what is started.
struct MirrorPlace {
  quint16 port = 0;
  QString executable;
  QString socket_folder;  ///< for the socket at which the mirror counts its monitors; only this user may write there
};

/// How long the looks at the mirror's port take, and the pauses between them; shorter in a test.
struct MirrorTimes {
  std::chrono::milliseconds answer_timeout{2'000};
  std::chrono::milliseconds between_looks_at_a_mirror{10'000};
  std::chrono::milliseconds first_pause{100};               ///< while there is no mirror; each further one is longer
  std::chrono::milliseconds longest_pause{60'000};          ///< while none can be started
  std::chrono::milliseconds longest_while_starting{2'000};  ///< while one is starting
};

/// Keeps the companion mirror running while the program's hosts are this computer's own: starts the executable when
/// nothing answers at the port, and holds a connection to the mirror's local socket, by which the mirror knows that a
/// monitor is there. A mirror that ends is started again, after pauses that grow from 0.1 s to a minute while it cannot
/// start. Any other program at the port is left alone. Why there is no mirror is logged when that changes, not at each
/// try. The mirror outlives the process, which ends without destroying this object.
class MirrorStarter : public QObject {
 public:
  using Log = std::function<void(const QString &)>;

  MirrorStarter(MirrorPlace place, Log log, MirrorTimes times = {});
  ~MirrorStarter() override;

  /// Begins to look, without waiting for an answer.
  void Start();

  /// The pause before the next look, or before the one that is under way.
  std::chrono::milliseconds Pause() const { return next_look_.intervalAsDuration(); }

 private:
  void Look();
  void OnAnswer();
  void OnQuestionFailed(QAbstractSocket::SocketError error);
  void OnMirrorFound();
  void OnMirrorGone();
  void OnNobodyListens();
  void OnNoMirror(const QString &what);
  void OnMirrorEnded(const QString &how);
  void ForwardErrors();
  QByteArray TakeErrors();

  bool IsStarting() const;
  void LookAfter(std::chrono::milliseconds pause);
  void SetTrouble(const QString &trouble);
  QString PlaceText() const;

  const MirrorPlace place_;
  const Log log_;
  const MirrorTimes times_;
  GrowingPause between_tries_;
  GrowingPause while_starting_;
  QString trouble_;        // as it was logged last; empty when there is none
  QString end_;            // how the mirror that was started last ended; empty while it has not
  bool is_found_ = false;  // by the last look
  std::string answer_;
  // The sockets and the process report their end to the members before them, also when this object goes.
  QTimer next_look_;
  QTimer timeout_;
  QTcpSocket question_;
  QLocalSocket attendance_;
  QProcess mirror_;
};

}  // namespace borvane
