#pragma once

#include <QImage>
#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

#include "controls/form.h"
#include "core/program.h"
#include "desktop/services/event_pump.h"
#include "desktop/services/http_transfer.h"
#include "desktop/services/message_box.h"
#include "desktop/windows/desktop_forms.h"
#include "desktop/windows/form_window.h"
#include "support/fake_clock.h"
#include "support/fake_files.h"
#include "support/fake_message_box.h"
#include "support/fake_process.h"
#include "support/fake_random.h"
#include "support/fake_region.h"
#include "support/fake_shell.h"
#include "support/fake_sound.h"
#include "support/fake_store.h"
#include "support/trace.h"

namespace borvane {

/// What the program's message boxes are: fakes that the test has answered in advance, or real ones on the screen.
enum class MessageBoxes { Fake, Real };

/// A fresh program with real windows on a screen that nobody sees, real HTTP, and fakes for all else.
class ScreenRig {
 public:
  explicit ScreenRig(MessageBoxes boxes = MessageBoxes::Fake);
  ScreenRig(const ScreenRig &) = delete;
  ScreenRig &operator=(const ScreenRig &) = delete;
  ~ScreenRig();

  /// The window that shows `form`, which it does since its first Show.
  FormWindow &window(const FormBase &form) const { return *forms_.WindowOf(form); }

  /// The widget of the control with that full name, such as "Label1(2)".
  template <class Widget = QWidget>
  Widget &widget(const FormBase &form, const char *name) const {
    auto *found = dynamic_cast<Widget *>(Find(form, name));
    if (found == nullptr)
      Missing(name);
    return *found;
  }

  /// What has happened so far, a line each, and forgets it.
  Lines events();
  void note(std::string line) { trace_.Add(std::move(line)); }

  DesktopForms &forms() { return forms_; }
  FakeStore &store() { return store_; }
  FakeRandom &random() { return random_; }
  FakeFiles &files() { return files_; }
  FakeMessageBox &message_box() { return message_box_; }

 private:
  /// Takes the windows away when all else of the rig has gone.
  struct LeftWindows {
    ~LeftWindows();
  };

  QWidget *Find(const FormBase &form, const char *name) const;
  [[noreturn]] static void Missing(const char *name);

  LeftWindows left_windows_;
  Trace trace_;
  FakeStore store_{trace_};
  FakeClock clock_;
  DesktopHttpTransfer http_;
  QtEventPump events_;
  FakeRandom random_{trace_};
  FakeMessageBox message_box_{trace_};
  QtMessageBox real_message_box_;
  FakeShell shell_{trace_};
  FakeFiles files_{trace_};
  FakeSound sound_{trace_};
  FakeRegion region_;
  FakeProcess process_{trace_};
  DesktopForms forms_;
  Program program_;
};

/// What a screen reader says of the widget: its name, and what it holds.
std::string SpokenName(QWidget &widget);
std::string SpokenValue(QWidget &widget);

/// What assistive software does with a widget, past the mouse and the keyboard: switches it over, replaces its text.
void SwitchOver(QWidget &widget);
void Write(QWidget &widget, const QString &text);

/// Lets everything happen that is due.
void Settle();

/// What the screen shows where the widget is.
QImage Picture(QWidget &widget);

/// How well two colours can be distinguished, from 1 to 21: the ratio of their luminances, as for web pages.
double Contrast(const QColor &first, const QColor &second);

/// How many pixels of the picture have that colour, give or take so much of each of its parts. The thin lines of small
/// letters are never quite of their colour: half of 255 finds them.
constexpr int exact = 8;
constexpr int half = 127;
int PixelsOf(const QImage &picture, const QColor &color, int tolerance = exact);

}  // namespace borvane
