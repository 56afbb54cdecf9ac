#include "mirror_version_at.h"

#include <QDeadlineTimer>
#include <QTcpSocket>
#include <string>
#include <string_view>

#include "common/mirror_probe.h"

namespace borvane::mirror {

std::optional<OtherMirror> MirrorAt(const QHostAddress &address, quint16 port) {
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
  const std::optional<std::string_view> version = MirrorVersion(answer);
  if (!version)
    return {};
  return OtherMirror{.version = QString::fromUtf8(version->data(), static_cast<qsizetype>(version->size())),
                     .has_our_pages = IsMirrorOfOurPages(answer)};
}

}  // namespace borvane::mirror
