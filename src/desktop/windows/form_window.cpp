#include "desktop/windows/form_window.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>

#include "controls/form_set.h"
#include "core/dispatch.h"
#include "desktop/widgets/binders.h"
#include "desktop/widgets/colors.h"
#include "desktop/widgets/focus_tracker.h"
#include "desktop/widgets/key_codes.h"
#include "desktop/widgets/pictures.h"
#include "desktop/widgets/twips.h"
#include "desktop/windows/task_bar.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// Distinguishes keys by their place on the keyboard, since Shift may change what one of them means between its press
/// and its release. Keys of a screen without scan codes are distinguished by their meaning.
quint32 PlaceOf(const QKeyEvent &event) {
  return event.nativeScanCode() != 0 ? event.nativeScanCode() : static_cast<quint32>(event.key());
}

Qt::WindowFlags FrameOf(BorderStyle border) {
  const Qt::WindowFlags fixed =
      Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  switch (border) {
    case BorderStyle::FixedSingle:
      return Qt::Window | fixed | Qt::WindowMinimizeButtonHint;
    case BorderStyle::FixedDialog:
      return Qt::Dialog | fixed;
    case BorderStyle::None:
      return Qt::Window | Qt::FramelessWindowHint;
    default:
      return Qt::Window;
  }
}

/// Where the program's positions begin: the upper left corner of the first screen, wherever that is among the others.
QPoint FirstCorner() {
  const QScreen *screen = QGuiApplication::primaryScreen();
  return screen == nullptr ? QPoint() : screen->geometry().topLeft();
}

/// A place is a number of 16 bits on an X11 screen: what is beyond that is as far away as can be.
int ScreenPixels(float twips) {
  constexpr int farthest = 30'000;
  return std::clamp(PixelsOf(twips), -farthest, farthest);
}

QPoint PlaceOf(const FormBase &form) {
  return FirstCorner() + QPoint(ScreenPixels(form.Left()), ScreenPixels(form.Top()));
}

QSize ClientSizeOf(const FormBase &form) { return {PixelsOf(form.ScaleWidth()), PixelsOf(form.ScaleHeight())}; }

/// A screen reader gets a window; Qt itself would report a container.
class SpokenWindow final : public QAccessibleWidget {
 public:
  explicit SpokenWindow(QWidget *window) : QAccessibleWidget(window, QAccessible::Window) {}
};

QAccessibleInterface *Speak(const QString & /*class_name*/, QObject *object) {
  auto *window = dynamic_cast<FormWindow *>(object);
  return window == nullptr ? nullptr : new SpokenWindow(window);
}

}  // namespace

FormWindow::FormWindow(FormBase &form, FocusTracker &focus) : form_(form), focus_(focus) {
  setObjectName(ShownText(form.name()));
  setWindowFlags(FrameOf(form.border()));
  setWindowIcon(ProgramIcon());
  QAccessible::installFactory(Speak);
  setMouseTracking(true);
  if (!form.spoken_name().empty())
    setAccessibleName(ShownText(form.spoken_name()));
  ShowBackground();
  ShowCaption();
  ShowPointer();
  ShowSize();
  form_.Watch(this);
  if (form.border() == BorderStyle::None)
    FollowFirstScreen();
}

void FormWindow::Build() { BindAll(form_, *this); }

void FormWindow::BindAll(const Container &container, QWidget &parent) {
  for (Control *control : container.children()) {
    QWidget *widget = Bind(*control, parent, Placing::ByTwips);
    const auto *inner = dynamic_cast<const Container *>(control);
    if (widget != nullptr && inner != nullptr)
      BindAll(*inner, *widget);
  }
}

QWidget *FormWindow::Bind(Control &control, QWidget &parent, Placing placing) {
  Binder *binder = BindControl(control, {parent, placing, focus_});
  if (binder == nullptr)
    return nullptr;
  binders_.push_back(binder);
  return &binder->widget();
}

void FormWindow::Release() {
  if (is_released_)
    return;
  is_released_ = true;
  form_.Watch(nullptr);
  for (Binder *binder : binders_)
    binder->Release();
}

void FormWindow::Present(FormWindow *owner, bool with_focus) {
  if (isVisible() && !with_focus)
    return;
  setAttribute(Qt::WA_ShowWithoutActivating, !with_focus);
  // The screen may have put a window without a frame anywhere, and the user has nothing to drag it back by.
  if (windowHandle() == nullptr || form_.border() == BorderStyle::None)
    ShowPlace();
  if (windowHandle() == nullptr) {
    create();
    // The window sees its keys here before any of its widgets does.
    windowHandle()->installEventFilter(this);
  }
  // Qt looks at the attribute only when it creates the window.
  windowHandle()->setProperty("_q_showWithoutActivating", !with_focus);
  windowHandle()->setTransientParent(owner == nullptr ? nullptr : owner->windowHandle());
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  if (form_.border() == BorderStyle::None)
    LeaveOutOfTaskBar(*windowHandle());
  if (with_focus) {
    raise();
    activateWindow();
  }
}

void FormWindow::Withdraw() {
  hide();
  // Another window of the program that gets the keyboard has it left already. There may be none.
  LeaveControl();
}

void FormWindow::LeaveControl() { focus_.Leave(*this); }

void FormWindow::KeepOnTop(bool on) {
  // setWindowFlag would hide the window and create it again.
  overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
  if (windowHandle() != nullptr)
    windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on);
}

void FormWindow::changeEvent(QEvent *event) {
  // A colour of the system changes with the desktop's colours.
  if (event->type() == QEvent::PaletteChange && !is_released_)
    ShowBackground();
  QWidget::changeEvent(event);
}

void FormWindow::closeEvent(QCloseEvent *event) {
  event->ignore();
  Enter([this] { current->Unload(form_, UnloadMode::CloseBox); });
}

void FormWindow::resizeEvent(QResizeEvent * /*event*/) {
  // The size that the form asked for is not reported back: its twips would come back rounded.
  if (is_released_ || size() == ClientSizeOf(form_))
    return;
  // A window whose size the user cannot change has that of its form: what comes here is late, the form has gone on, or
  // the window manager's own.
  if (form_.border() != BorderStyle::Sizable)
    return;
  const Size frame = form_.FrameSize();
  Enter([&] { form_.SetSize(TwipsOf(width()) + frame.width, TwipsOf(height()) + frame.height); });
}

void FormWindow::moveEvent(QMoveEvent *event) {
  if (is_released_ || pos() == PlaceOf(form_))
    return;
  // A window without a frame offers the user nothing to drag: it is where the form says, also if the window manager
  // keeps it from being there, say for a panel.
  if (form_.border() == BorderStyle::None)
    return;
  // The screen confirms a move only after a while: the form may have gone on from there, and must not be set back.
  const auto confirmed = std::find(asked_places_.begin(), asked_places_.end(), pos());
  if (confirmed != asked_places_.end()) {
    // What was asked for before has been confirmed or passed over. Qt's own notice comes before any of that.
    if (event->spontaneous())
      asked_places_.erase(asked_places_.begin(), confirmed);
    return;
  }
  asked_places_.clear();
  const QPoint place = pos() - FirstCorner();
  form_.SetPlace(TwipsOf(place.x()), TwipsOf(place.y()));
}

void FormWindow::mouseMoveEvent(QMouseEvent *event) {
  // A drag that began on a control hands its moves on to here, wherever the pointer is.
  if (childAt(event->position().toPoint()) != nullptr)
    return;
  Enter([&] { form_.Form_MouseMove(MouseStateOf(*event)); });
}

bool FormWindow::eventFilter(QObject * /*object*/, QEvent *event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      KeyPressed(static_cast<QKeyEvent &>(*event));
      return MovesTheBar(static_cast<QKeyEvent &>(*event));
    case QEvent::KeyRelease:
      return KeyReleased(static_cast<QKeyEvent &>(*event));
    case QEvent::FocusOut:
      // What is released elsewhere must not count when its next press happens elsewhere, too.
      pressed_keys_.clear();
      return false;
    default:
      return false;
  }
}

/// On a bar the arrow keys are the bar's own. Its boxes would pass the keyboard on to their neighbours.
bool FormWindow::MovesTheBar(const QKeyEvent &event) const {
  constexpr std::array keys = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
  return !is_released_ && form_.border() == BorderStyle::None &&
         std::find(keys.begin(), keys.end(), event.key()) != keys.end();
}

void FormWindow::KeyPressed(const QKeyEvent &event) {
  const bool with_shift = event.key() != Qt::Key_Shift && event.modifiers().testFlag(Qt::ShiftModifier);
  pressed_keys_.emplace(PlaceOf(event), with_shift);
}

/// Gives the form a release whose press this window has seen: the key that closed a message box is not its own. Of two
/// keys that were pressed together, Shift may be released first; it counts all the same.
bool FormWindow::KeyReleased(const QKeyEvent &event) {
  if (event.isAutoRepeat())
    return false;
  const auto pressed = pressed_keys_.find(PlaceOf(event));
  if (pressed == pressed_keys_.end())
    return false;
  const Qt::KeyboardModifiers modifiers = event.modifiers() | (pressed->second ? Qt::ShiftModifier : Qt::NoModifier);
  pressed_keys_.erase(pressed);
  const QPointer<FormWindow> self(this);
  Enter([&] { form_.Form_KeyUp(KeyCodeOf(event.key(), event.nativeScanCode()), ShiftStateOf(modifiers)); });
  return self.isNull();
}

void FormWindow::PropertyChanged(const PropertyBase &property) {
  if (&property == &form_.Caption)
    ShowCaption();
  else if (&property == &form_.MousePointer)
    ShowPointer();
  else if (&property == &form_.BackColor)
    ShowBackground();
  else if (&property == &form_.Width || &property == &form_.Height)
    ShowSize();
  else
    ShowPlace();
}

void FormWindow::ShowCaption() {
  // "[*]" is Qt's own sign in a title; doubled, it is shown as it is.
  setWindowTitle(ShownText(form_.Caption()).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

void FormWindow::ShowSize() {
  const QSize size = ClientSizeOf(form_);
  if (form_.border() == BorderStyle::Sizable)
    resize(size);
  else
    setFixedSize(size);
}

/// The place of a window counts from the corner of the first screen, which changes with the screens. A window with a
/// frame stays where the user sees it.
void FormWindow::FollowFirstScreen() {
  const auto follow = [this](QScreen *screen) {
    if (screen != nullptr)
      connect(screen, &QScreen::geometryChanged, this, &FormWindow::ShowPlace, Qt::UniqueConnection);
  };
  follow(QGuiApplication::primaryScreen());
  connect(qApp, &QGuiApplication::primaryScreenChanged, this, [this, follow](QScreen *screen) {
    follow(screen);
    ShowPlace();
  });
}

/// Does nothing until the form has been put somewhere.
void FormWindow::ShowPlace() {
  if (is_released_ || (!form_.Left.is_set() && !form_.Top.is_set()))
    return;
  // More than the two of each step of a shaking, none of which the screen may have confirmed at its end.
  constexpr std::size_t remembered_places = 2'000;
  const QPoint asked = PlaceOf(form_);
  const QPoint place(form_.Left.is_set() ? asked.x() : x(), form_.Top.is_set() ? asked.y() : y());
  asked_places_.push_back(place);
  if (asked_places_.size() > remembered_places)
    asked_places_.pop_front();
  move(place);
}

void FormWindow::ShowBackground() { setPalette(BackgroundPalette(form_.BackColor(), QApplication::palette())); }

void FormWindow::ShowPointer() {
  if (form_.MousePointer() == pointer_hourglass)
    setCursor(Qt::WaitCursor);
  else if (form_.MousePointer() == pointer_custom)
    setCursor(PicturePointer("pointer", devicePixelRatioF()));
  else
    unsetCursor();
}

void FormWindow::Enter(const std::function<void()> &handler) {
  if (!is_released_)
    Dispatch(handler);
}

}  // namespace borvane
