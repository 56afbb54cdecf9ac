#include "http/plain_host.h"

#include <QRegularExpression>

namespace borvane::mirror {

bool IsPlainHost(const QByteArray &host) {
  static const QRegularExpression form(R"(\A(?:[A-Za-z0-9._-]{1,253}|\[[0-9A-Fa-f:.]{2,45}\])(?::([0-9]{1,5}))?\z)");
  const QRegularExpressionMatch match = form.match(QString::fromLatin1(host));
  return match.hasMatch() && match.captured(1).toInt() <= 65'535;
}

}  // namespace borvane::mirror
