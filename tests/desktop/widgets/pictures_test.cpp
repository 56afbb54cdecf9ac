#include "desktop/widgets/pictures.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <map>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "desktop/widgets/colors.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

const QColor ground(0xef, 0xef, 0xef);
const QColor ink(0xc0, 0x10, 0x60);

QStringList Files() { return QDir(QStringLiteral(":/pictures")).entryList({"*.svg"}, QDir::Files, QDir::Name); }

QString TextOf(const QString &file) {
  QFile opened(":/pictures/" + file);
  return opened.open(QIODevice::ReadOnly) ? QString::fromUtf8(opened.readAll()) : QString();
}

QImage Drawn(const std::string &name, const QSize &size, const QColor &color) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(ground);
  QPainter painter(&image);
  DrawPicture(painter, name, image.rect(), color);
  return image;
}

QImage OnGround(const QPixmap &pixels) {
  QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(ground);
  QPainter painter(&image);
  painter.drawPixmap(image.rect(), pixels);
  return image;
}

int PixelsUnlike(const QImage &image, const QColor &color) {
  return image.width() * image.height() - PixelsOf(image, color);
}

TEST(Pictures, AreAllCompiledIn) {
  const QDir folder(QStringLiteral(BORVANE_CASES "/../../assets/pictures"));
  EXPECT_EQ(Files(), folder.entryList(QDir::Files, QDir::Name));
  EXPECT_EQ(Files(), QStringList({"borvane.svg", "longbar.svg", "pointer.svg", "quit.svg", "refresh.svg",
                                  "settings.svg", "shortbar.svg", "watermark.svg"}));
}

TEST(Pictures, AreDrawingsThatNeedNoFont) {
  for (const QString &file : Files()) {
    EXPECT_TRUE(QSvgRenderer(":/pictures/" + file).isValid()) << file.toStdString();
    EXPECT_FALSE(TextOf(file).contains("<text")) << file.toStdString();
    EXPECT_FALSE(TextOf(file).contains("<image")) << file.toStdString();
  }
}

TEST(Pictures, OfTheToolbarShareOneField) {
  for (const QString &file : Files())
    EXPECT_EQ(QSvgRenderer(":/pictures/" + file).defaultSize(),
              file == "watermark.svg" ? QSize(262, 31) : QSize(24, 24))
        << file.toStdString();
}

TEST(Pictures, HaveLinesInTheGivenColour) {
  for (const QString &file : Files()) {
    const std::string name = file.chopped(4).toStdString();
    const QImage drawn = Drawn(name, QSvgRenderer(":/pictures/" + file).defaultSize(), ink);
    EXPECT_GT(PixelsUnlike(drawn, ground), 60) << name;
    EXPECT_GT(PixelsOf(drawn, ground), drawn.width() * drawn.height() / 20) << name;
    if (name == "borvane") {
      EXPECT_EQ(PixelsOf(drawn, ink, 40), 0) << "the icon has colours of its own";
    } else {
      EXPECT_GT(PixelsOf(drawn, ink, 40), 20) << name;
      EXPECT_TRUE(TextOf(file).contains("currentColor")) << name;
    }
  }
}

TEST(Pictures, StayInsideTheirPlace) {
  constexpr int margin = 10;
  for (const QString &file : Files()) {
    const std::string name = file.chopped(4).toStdString();
    const QSize size = QSvgRenderer(":/pictures/" + file).defaultSize();
    QImage image(size + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    const QRect place(QPoint(margin, margin), size);
    DrawPicture(painter, name, place, ink);
    painter.end();
    const int inside = PixelsUnlike(image.copy(place), ground);
    EXPECT_EQ(PixelsUnlike(image, ground), inside) << name;
    // What is cut off at an edge of the field would leave its mark on that edge.
    EXPECT_EQ(PixelsUnlike(image.copy(place.adjusted(1, 1, -1, -1)), ground), inside) << name;
  }
}

TEST(Pictures, DifferFromEachOther) {
  std::map<QByteArray, std::string> seen;
  for (const QString &file : Files()) {
    const std::string name = file.chopped(4).toStdString();
    const QImage drawn = Drawn(name, {24, 24}, ink);
    const QByteArray bytes(reinterpret_cast<const char *>(drawn.constBits()), drawn.sizeInBytes());
    EXPECT_TRUE(seen.emplace(bytes, name).second) << name << " looks like " << seen[bytes];
  }
  EXPECT_EQ(seen.size(), 8u);
}

TEST(Pictures, DrawNothingForAnUnknownName) {
  EXPECT_EQ(PixelsOf(Drawn("nothing", {24, 24}, ink), ground), 24 * 24);
  EXPECT_EQ(PixelsOf(Drawn("../assets", {24, 24}, ink), ground), 24 * 24);
}

TEST(Pictures, ShareTheColoursSeeThroughness) {
  QColor faint = ink;
  faint.setAlphaF(0.25F);
  EXPECT_GT(PixelsOf(Drawn("quit", {24, 24}, ink), ink, 40), 20);
  EXPECT_EQ(PixelsOf(Drawn("quit", {24, 24}, faint), ink, 40), 0);
}

TEST(PictureIcon, IsRedrawnForASharpScreen) {
  const QPixmap plain = PictureIcon("settings").pixmap(QSize(24, 24), 1.0);
  const QPixmap sharp = PictureIcon("settings").pixmap(QSize(24, 24), 2.0);
  EXPECT_EQ(plain.size(), QSize(24, 24));
  EXPECT_EQ(sharp.size(), QSize(48, 48));
  EXPECT_NE(OnGround(sharp), OnGround(plain.scaled(48, 48)));
  // Twice as wide and as high, a drawing has four times the full pixels and more.
  const QColor line = QApplication::palette().color(QPalette::ButtonText);
  EXPECT_GT(PixelsOf(OnGround(sharp), line, 20), 4 * PixelsOf(OnGround(plain), line, 20));
}

TEST(PictureIcon, FollowsTheColoursOfTheDesktop) {
  const QIcon icon = PictureIcon("quit");
  const QPalette light = QApplication::palette();
  EXPECT_GT(PixelsOf(OnGround(icon.pixmap(24, 24)), light.color(QPalette::ButtonText), 40), 20);

  QPalette coloured = light;
  coloured.setColor(QPalette::Active, QPalette::ButtonText, ink);
  coloured.setColor(QPalette::Disabled, QPalette::ButtonText, Qt::green);
  QApplication::setPalette(coloured);
  EXPECT_GT(PixelsOf(OnGround(icon.pixmap(24, 24)), ink, 40), 20);
  EXPECT_GT(PixelsOf(OnGround(icon.pixmap(QSize(24, 24), QIcon::Disabled)), Qt::green, 40), 20);
  QApplication::setPalette(light);
}

TEST(PictureIcon, IsPalerWhileItsButtonIsDisabled) {
  const QIcon icon = PictureIcon("longbar");
  const QColor line = QApplication::palette().color(QPalette::Active, QPalette::ButtonText);
  const QImage disabled = OnGround(icon.pixmap(QSize(24, 24), QIcon::Disabled));
  EXPECT_EQ(PixelsOf(disabled, line, half), 0);
  EXPECT_GT(PixelsUnlike(disabled, ground), 60);
}

TEST(ProgramIcon, StandsOutOnLightAndOnDarkGround) {
  const QImage icon = ProgramIcon().pixmap(48, 48).toImage();
  EXPECT_GT(PixelsOf(icon, QColor(0x1f, 0x3a, 0x4d)), 800);
  EXPECT_GT(PixelsOf(icon, QColor(0xf2, 0xa9, 0x3b), 40), 100);
}

TEST(WatermarkColor, IsNearlyWhiteOnLightGroundAndNearTheGroundOnDark) {
  const QColor on_light = WatermarkColor(QPalette(QColor(0xef, 0xef, 0xef)));
  EXPECT_GT(on_light.lightness(), 250);
  const QColor dark(0x2a, 0x2e, 0x32);
  const QColor on_dark = WatermarkColor(QPalette(dark));
  EXPECT_GT(on_dark.lightness(), dark.lightness() + 30);
  EXPECT_LT(on_dark.lightness(), 128);
}

}  // namespace
}  // namespace borvane
