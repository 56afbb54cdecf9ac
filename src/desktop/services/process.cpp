#include "desktop/services/process.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <cstdlib>
#include <utility>

#include "core/program_info.h"
#include "desktop/windows_1252.h"

namespace borvane {

DesktopProcess::DesktopProcess(std::function<void()> stop, std::function<void()> finish)
    : stop_(std::move(stop)), finish_(std::move(finish)) {}

void DesktopProcess::ReportRuntimeError(int number, std::string_view description) {
  stop_();
  const QString heading =
      number == 0 ? QStringLiteral("Unexpected error:") : QStringLiteral("Run-time error '%1':").arg(number);
  QMessageBox box(QMessageBox::Critical, ShownText(program_title), heading + "\n\n" + ShownText(description),
                  QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

std::string DesktopProcess::Folder() { return QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString(); }

std::string DesktopProcess::ExecutableName() {
  // Only the system's own suffix is no part of the name: an executable may be called "borvane-2.3.5".
  const QString suffix = QLatin1String(executable_suffix.data(), static_cast<qsizetype>(executable_suffix.size()));
  QString name = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
  if (name.endsWith(suffix, Qt::CaseInsensitive))
    name.chop(suffix.size());
  return QFile::encodeName(name).toStdString();
}

void DesktopProcess::End(int status) {
  finish_();
  // Nothing is left to write. What still runs is not waited for.
  std::_Exit(status);
}

}  // namespace borvane
