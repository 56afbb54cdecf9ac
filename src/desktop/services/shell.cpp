#include "desktop/services/shell.h"

#include <QDesktopServices>
#include <QUrl>

#include "desktop/windows_1252.h"

namespace borvane {

void DesktopShell::Open(std::string_view address, FormBase * /*owner*/) {
  const QUrl url(UnicodeText(address), QUrl::TolerantMode);
  if (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"))
    QDesktopServices::openUrl(url);
}

void DesktopShell::OpenFile(std::string_view path, FormBase * /*owner*/) {
  // Not by way of a Unicode path, which would lose bytes that are no UTF-8.
  const QByteArray bytes(path.data(), static_cast<qsizetype>(path.size()));
  QDesktopServices::openUrl(QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/")));
}

}  // namespace borvane
