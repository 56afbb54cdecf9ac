#include "support/desktop/link_catcher.h"

#include <utility>

namespace borvane {

LinkCatcher::LinkCatcher(QStringList schemes) : schemes_(std::move(schemes)) {
  for (const QString &scheme : schemes_)
    QDesktopServices::setUrlHandler(scheme, this, "Take");
}

LinkCatcher::~LinkCatcher() {
  for (const QString &scheme : schemes_)
    QDesktopServices::unsetUrlHandler(scheme);
}

}  // namespace borvane
