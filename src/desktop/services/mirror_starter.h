#pragma once

#include <QLocalSocket>
#include <QTcpSocket>
#include <QTimer>
#include <optional>

namespace borvane {

/// Sees to it that the companion mirror runs while the program's hosts are this computer's own: starts the one that
/// lies beside the program when nothing answers at the mirror's port, and holds a local socket to it, by which it knows
/// that a monitor is there. A mirror that ends is started again. What else answers at the port is left alone.
class MirrorStarter : public QObject {
 public:
  /// `port` is where a mirror is looked for; `executable` is started with `arguments` when there is none.
  MirrorStarter(quint16 port, QString executable, QStringList arguments);

  /// Begins to look, without waiting for an answer.
  void Start();

 private:
  void Ask();
  void Heard();
  void NobodyAnswered(QAbstractSocket::SocketError error);
  void StartMirror();
  void Attend();

  const quint16 port_;
  const QString executable_;
  const QStringList arguments_;
  // The sockets tell their end to what stands before them, also at the end of this object.
  QTimer next_look_;
  QByteArray answer_;
  QTcpSocket question_;
  QLocalSocket attendance_;
};

/// The port at which the program's default hosts are looked for; nothing when the settings name others for all of them.
std::optional<quint16> PortOfDefaultHosts();

}  // namespace borvane
