#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace borvane {

/// Takes the place of the desktop's own programs for addresses of these schemes, and writes down what they are to open.
class LinkCatcher : public QObject {
  Q_OBJECT

 public:
  explicit LinkCatcher(QStringList schemes);
  ~LinkCatcher() override;

  const QStringList &links() const { return links_; }

 public Q_SLOTS:
  void Take(const QUrl &link) { links_ += QString::fromLatin1(link.toEncoded()); }

 private:
  const QStringList schemes_;
  QStringList links_;
};

}  // namespace borvane
