#include "desktop/windows/tray_icon.h"

#include <QAction>
#include <QGuiApplication>
#include <algorithm>
#include <array>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "core/dispatch.h"
#include "core/program.h"
#include "core/start.h"
#include "desktop/widgets/label_text.h"
#include "desktop/widgets/pictures.h"
#include "desktop/windows/desktop_forms.h"
#include "desktop/windows/form_window.h"
#include "records/frmRecords.h"

namespace borvane {

namespace {

bool IsShown(const FormBase *face) { return face != nullptr && face->IsShown(); }

/// The face that the user sees, or the one that comes back where none shows.
FormBase &FaceToShow() {
  // In the order of BarMode.
  const std::array<FormBase *, 3> faces = {frmRecords.IfLoaded(), Form1.IfLoaded(), newTagFrm.IfLoaded()};
  FormBase *face_that_is_up = faces.at(Module1->BarMode);
  if (IsShown(face_that_is_up))
    return *face_that_is_up;
  const auto shown = std::find_if(faces.begin(), faces.end(), IsShown);
  if (shown != faces.end())
    return **shown;
  // Only "Expand" hides the short bar, and it changes BarMode. So a hidden short bar that counts as up was loaded by
  // the settings' "Close" beside the long bar, and that one is missing from the screen.
  if (face_that_is_up != nullptr && Module1->BarMode == face_short_bar && newTagFrm.IfLoaded() != nullptr)
    return *newTagFrm;
  return face_that_is_up != nullptr ? *face_that_is_up : *frmRecords;
}

}  // namespace

TrayIcon::TrayIcon(const DesktopForms &forms) : forms_(forms), icon_(ProgramIcon()) {
  QObject::connect(menu_.addAction(QStringLiteral("Show")), &QAction::triggered, &menu_, [this] { ShowFace(); });
  QObject::connect(menu_.addAction(QStringLiteral("Exit")), &QAction::triggered, &menu_, [this] { Exit(); });
  icon_.setContextMenu(&menu_);
  QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_, [this](QSystemTrayIcon::ActivationReason reason) {
    // The menu opens by itself. Of two clicks in a row the second one is a double click and nothing else; the window
    // may have been minimised in between.
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
      ShowFace();
  });

  if (const RecordsForm *records = frmRecords.IfLoaded()) {
    if (const FormWindow *window = forms.WindowOf(*records))
      QObject::connect(window, &QWidget::windowTitleChanged, &icon_, [this] { ShowCaption(); });
  }
  ShowCaption();
  // On X11 the icon waits for a tray. Elsewhere Qt would wait for a signal that only X11 has, and complain.
  if (QSystemTrayIcon::isSystemTrayAvailable() || QGuiApplication::platformName() == QLatin1String("xcb"))
    icon_.show();
}

void TrayIcon::ShowCaption() {
  if (const RecordsForm *records = frmRecords.IfLoaded())
    icon_.setToolTip(LabelText(records->Caption()));
}

void TrayIcon::ShowFace() const {
  if (!forms_.IsStopped())
    Dispatch([] { FaceToShow().Show(); });
}

void TrayIcon::Exit() const {
  if (!forms_.IsStopped())
    Dispatch(QuitProgram);
}

}  // namespace borvane
