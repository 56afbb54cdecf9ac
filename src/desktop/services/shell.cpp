#include "desktop/services/shell.h"

#include <QDesktopServices>
#include <QUrl>

#include "desktop/windows_1252.h"
#include "platform/files.h"

namespace borvane {

void DesktopShell::Open(std::string_view address, FormBase * /*owner*/) {
  // The address may come from a page. Without a host it could be a path to whatever makes one out of it.
  const QUrl url(UnicodeText(address), QUrl::TolerantMode);
  const bool is_web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
  if (is_web && url.isValid() && !url.host().isEmpty())
    QDesktopServices::openUrl(url);
}

void DesktopShell::OpenFile(std::string_view path, FormBase * /*owner*/) {
  const std::size_t separator = path.rfind(path_separator);
  if (separator == std::string_view::npos)
    return;
  const std::string_view name = path.substr(separator + 1);
  if (name != "quakes.log" && name != "help.html")
    return;

  // Not by way of a Unicode path, which would lose bytes that are no UTF-8.
  const QByteArray bytes(path.data(), static_cast<qsizetype>(path.size()));
  QDesktopServices::openUrl(QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/")));
}

}  // namespace borvane
