#pragma once

#include <QMenu>
#include <QSystemTrayIcon>

namespace borvane {

class DesktopForms;

/// The program's icon in the system's tray: leads back to a program of which no window shows. Where there is no tray,
/// nothing shows, until there is one.
class TrayIcon {
 public:
  /// The icon's text follows the caption of the records window, which has been shown before.
  explicit TrayIcon(const DesktopForms &forms);

  /// The icon and its menu do nothing from now on: the program is ending.
  void Release() { is_released_ = true; }

  QSystemTrayIcon &icon() { return icon_; }

 private:
  void ShowCaption();
  void ShowFace() const;
  void Exit() const;

  QMenu menu_;
  QSystemTrayIcon icon_;
  bool is_released_ = false;
};

}  // namespace borvane
