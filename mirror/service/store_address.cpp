#include "service/store_address.h"

#include <QStandardPaths>
#include <QUrl>

namespace borvane::mirror {

QString StoreAddress::Text() const {
  if (IsFile())
    return file;
  QUrl url;
  url.setScheme("postgresql");
  url.setUserName(user, QUrl::DecodedMode);
  url.setHost(host);
  url.setPort(port);
  url.setPath('/' + database, QUrl::DecodedMode);
  return url.toString();
}

std::optional<StoreAddress> ReadStoreAddress(const QString &text) {
  if (!text.startsWith("postgresql:"))
    return StoreAddress{.file = text};

  const QUrl url(text, QUrl::StrictMode);
  StoreAddress address = {.host = url.host(),
                          .user = url.userName(QUrl::FullyDecoded),
                          .password = url.password(QUrl::FullyDecoded),
                          .database = url.path(QUrl::FullyDecoded).sliced(url.path().isEmpty() ? 0 : 1)};
  address.port = url.port(address.port);
  if (!url.isValid() || address.host.isEmpty() || address.database.isEmpty() || url.hasQuery() || url.hasFragment())
    return std::nullopt;
  return address;
}

StoreAddress DefaultStoreAddress() {
  return {.file = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + "/service.sqlite"};
}

}  // namespace borvane::mirror
