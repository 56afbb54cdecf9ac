#include "pages/coordinates.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace borvane::mirror {

namespace {

bool IsNear(const Event &event, int west, int north) {
  if (std::abs(west) > 180 || std::abs(north) > 90)
    return false;
  const double across = std::abs(event.longitude + west);
  return std::min(across, 360 - across) <= 1 && std::abs(event.latitude - north) <= 1;
}

}  // namespace

std::optional<std::pair<int, int>> PageNumbers(const QByteArray &name) {
  static const QRegularExpression form(R"(\A(-?[0-9]{1,5})-(-?[0-9]{1,5})\.html\z)");
  const QRegularExpressionMatch match = form.match(QString::fromLatin1(name));
  if (!match.hasMatch())
    return std::nullopt;
  return std::pair(match.captured(1).toInt(), match.captured(2).toInt());
}

bool BelongsToPage(const Event &event, int first, int second) {
  if (first == 0 && second == 0)
    return false;
  return IsNear(event, first, second) || IsNear(event, second, first);
}

QByteArray MapPath(const Event &event) {
  int west = static_cast<int>(-event.longitude);
  const int north = static_cast<int>(event.latitude);
  // The page 0-0 holds nothing; the one beside it holds the event.
  if (west == 0 && north == 0)
    west = event.longitude > 0 ? -1 : 1;
  return "/recenteqs/Maps/" + QByteArray::number(west) + '-' + QByteArray::number(north) + ".html";
}

}  // namespace borvane::mirror
