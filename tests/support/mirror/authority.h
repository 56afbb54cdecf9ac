#pragma once

#include <QSslConfiguration>
#include <QString>
#include <QTemporaryDir>

namespace borvane::mirror {

/// Who vouches for the hosts of a test: a certificate authority in a folder of its own, made by the command openssl.
class Authority {
 public:
  Authority();

  /// The file with its own certificate.
  QString File() const;

  /// What a server needs that is to be taken for `host`, with a certificate that ends in so many days.
  QSslConfiguration Certify(const QString &host, int days = 2);

 private:
  QString Path(const QString &name) const { return folder_.filePath(name); }
  static void RunOpenSsl(const QStringList &arguments);

  QTemporaryDir folder_;
  int certificates_ = 0;
};

}  // namespace borvane::mirror
