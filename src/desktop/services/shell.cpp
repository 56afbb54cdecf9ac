#include "desktop/services/shell.h"

#include <QDesktopServices>
#include <QUrl>

#include "desktop/windows_1252.h"

namespace borvane {

void DesktopShell::Open(std::string_view address, FormBase * /*owner*/) {
  const QUrl url(ShownText(address), QUrl::TolerantMode);
  if (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"))
    QDesktopServices::openUrl(url);
}

}  // namespace borvane
