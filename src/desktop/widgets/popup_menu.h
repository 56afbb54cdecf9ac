#pragma once

#include <QHash>
#include <QMenu>
#include <QPoint>
#include <optional>

namespace borvane {

class Menu;
class MenuItem;

/// A menu of the program on the screen, with its entries as they are at that moment.
class PopupMenu final : public QMenu {
 public:
  explicit PopupMenu(const Menu &menu);

  /// Shows the menu at `place`, or else at the pointer, for `window` if there is one, and lets events run until the
  /// user has chosen an entry or closed the menu. Returns the entry, or null.
  MenuItem *Choose(const QWidget *window, const std::optional<QPoint> &place = std::nullopt);

 private:
  void Add(MenuItem &item);

  QHash<QAction *, MenuItem *> items_;
};

}  // namespace borvane
