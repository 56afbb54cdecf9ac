#include "support/mirror/authority.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>

#include <gtest/gtest.h>

namespace borvane::mirror {

namespace {

const QStringList new_key = {"-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"};

QByteArray ContentOf(const QString &path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

}  // namespace

Authority::Authority() {
  RunOpenSsl(QStringList({"req", "-x509"}) + new_key +
             QStringList({"-keyout", Path("authority.key"), "-out", File(), "-subj", "/CN=Authority", "-days", "2"}));
}

QString Authority::File() const { return Path("authority.pem"); }

QSslConfiguration Authority::Certify(const QString &host, int days) {
  const QString name = Path(QString::number(++certificates_));
  QFile extensions(name + ".extensions");
  EXPECT_TRUE(extensions.open(QIODevice::WriteOnly));
  extensions.write("subjectAltName=DNS:" + host.toLatin1() + "\n");
  extensions.close();
  RunOpenSsl(QStringList("req") + new_key +
             QStringList({"-keyout", name + ".key", "-out", name + ".request", "-subj", "/CN=" + host}));
  RunOpenSsl({"x509", "-req", "-in", name + ".request", "-CA", File(), "-CAkey", Path("authority.key"),
              "-CAcreateserial", "-days", QString::number(days), "-extfile", extensions.fileName(), "-out",
              name + ".pem"});

  QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
  configuration.setLocalCertificate(QSslCertificate(ContentOf(name + ".pem")));
  configuration.setPrivateKey(QSslKey(ContentOf(name + ".key"), QSsl::Ec));
  configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
  return configuration;
}

void Authority::RunOpenSsl(const QStringList &arguments) {
  QProcess openssl;
  openssl.start("openssl", arguments);
  EXPECT_TRUE(openssl.waitForFinished(60'000) && openssl.exitCode() == 0)
      << arguments.join(' ').toStdString() << "\n"
      << openssl.readAllStandardError().toStdString();
}

}  // namespace borvane::mirror
