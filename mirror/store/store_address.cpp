#include "store/store_address.h"

#include <QRegularExpression>
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
  static const QRegularExpression other_scheme("^[A-Za-z][A-Za-z0-9+.-]*://");
  if (!text.startsWith("postgresql:") && !text.startsWith("postgres:"))
    return other_scheme.match(text).hasMatch() ? std::nullopt : std::optional(StoreAddress{.file = text});

  const QUrl url(text, QUrl::StrictMode);
  StoreAddress address = {.host = url.host(),
                          .port = url.port(),
                          .user = url.userName(QUrl::FullyDecoded),
                          .password = url.password(QUrl::FullyDecoded),
                          .database = url.path(QUrl::FullyDecoded).sliced(url.path().isEmpty() ? 0 : 1)};
  if (!url.isValid() || address.host.isEmpty() || address.database.isEmpty() || url.hasQuery() || url.hasFragment())
    return std::nullopt;
  return address;
}

StoreAddress DefaultStoreAddress() {
  return {.file = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + "/service.sqlite"};
}

}  // namespace borvane::mirror
