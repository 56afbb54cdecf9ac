#pragma once

#include <QMenu>
#include <QSystemTrayIcon>

namespace borvane {

class DesktopForms;

/// The program's icon in the system's tray: leads back to a program of which no window shows. Where there is no tray,
/// nothing shows, until there is one.
class TrayIcon {
 public:
  /// The icon's text follows the caption of the records window, which has been shown before. When `forms` have been
  /// stopped, the icon and its menu do nothing.
  explicit TrayIcon(const DesktopForms &forms);

  QSystemTrayIcon &icon() { return icon_; }

 private:
  void ShowCaption();
  void ShowFace() const;
  void Exit() const;

  const DesktopForms &forms_;
  QMenu menu_;
  QSystemTrayIcon icon_;
};

}  // namespace borvane
