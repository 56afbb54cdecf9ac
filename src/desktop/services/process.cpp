#include "desktop/services/process.h"

#include <QMessageBox>
#include <cstdlib>
#include <utility>

#include "core/program_info.h"
#include "desktop/windows_1252.h"

namespace borvane {

DesktopProcess::DesktopProcess(std::function<void()> stop) : stop_(std::move(stop)) {}

void DesktopProcess::ReportRuntimeError(int number, std::string_view description) {
  stop_();
  const QString heading =
      number == 0 ? QStringLiteral("Unexpected error:") : QStringLiteral("Run-time error '%1':").arg(number);
  QMessageBox box(QMessageBox::Critical, ShownText(program_title), heading + "\n\n" + ShownText(description),
                  QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

void DesktopProcess::End(int status) {
  // Nothing is left to write: every setting was stored when it changed. What still runs is not waited for.
  std::_Exit(status);
}

}  // namespace borvane
