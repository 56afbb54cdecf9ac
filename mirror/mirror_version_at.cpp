#include "mirror_version_at.h"

#include <QDeadlineTimer>
#include <QTcpSocket>

#include "common/mirror_probe.h"

namespace borvane::mirror {

std::optional<std::string> MirrorVersionAt(const QHostAddress &address, quint16 port) {
  constexpr int timeout_ms = 2'000;
  const QDeadlineTimer deadline(timeout_ms);
  const auto rest = [&] { return static_cast<int>(deadline.remainingTime()); };
  QTcpSocket socket;
  socket.connectToHost(address, port);
  if (!socket.waitForConnected(rest()))
    return {};
  socket.write(mirror_probe.data(), mirror_probe.size());

  std::string answer;
  while (IsUnfinishedHead(answer) && socket.waitForReadyRead(rest()))
    answer += socket.readAll().toStdString();
  return std::optional<std::string>(MirrorVersion(answer));
}

}  // namespace borvane::mirror
