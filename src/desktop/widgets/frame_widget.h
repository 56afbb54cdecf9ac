#pragma once

#include <QGroupBox>
#include <QString>

namespace borvane {

/// An outline with a caption set into its upper edge. The styles draw a group box's caption above its outline, which
/// would leave too little room for what is inside at fixed places.
class FrameWidget final : public QGroupBox {
 public:
  explicit FrameWidget(QWidget *parent);

  /// The caption is not the box's own title, which a screen reader would read for every label that is empty.
  void ShowCaption(const QString &caption);

 protected:
  void paintEvent(QPaintEvent *event) override;
  void changeEvent(QEvent *event) override;
  void resizeEvent(QResizeEvent *event) override;

 private:
  QString caption_;
};

}  // namespace borvane
