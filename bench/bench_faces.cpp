// Measures how long a bar and the felt report take from the call that opens them to their first picture on the screen;
// for comparison a bare window without a border, of a bar's size, with as many plain labels, and one with the widgets
// of the report.

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QWidget>
#include <memory>

#include <benchmark/benchmark.h>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "core/start.h"
#include "desktop/appearance.h"
#include "desktop/windows/desktop_forms.h"
#include "desktop/windows/form_window.h"
#include "quakes_page.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
#include "scan/scanners.h"
#include "support/idle_host.h"

namespace borvane {

namespace {

constexpr int rows_of_page = 10'000;
constexpr int labels_of_a_bar = 10;

/// Ends a wait at the first picture of a window.
class FirstPicture final : public QObject {
 public:
  void Wait(QWidget &window) {
    is_painted_ = false;
    window.installEventFilter(this);
    while (!is_painted_)
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    window.removeEventFilter(this);
  }

 protected:
  bool eventFilter(QObject * /*object*/, QEvent *event) override {
    if (event->type() == QEvent::Paint)
      is_painted_ = true;
    return false;
  }

 private:
  bool is_painted_ = false;
};

/// A started program on the screen, whose list has the rows of a page.
class ShownProgram {
 public:
  ShownProgram() : program_(host_.Services(), forms_) {
    Main();
    Integer mode = 0;
    std::string page = QuakesPage(rows_of_page);
    ScanQuakesList(mode, page);
  }
  ShownProgram(const ShownProgram &) = delete;
  ShownProgram &operator=(const ShownProgram &) = delete;
  ~ShownProgram() { forms_.Stop(); }

  FormWindow &WindowOf(const FormBase &form) { return *forms_.WindowOf(form); }

 private:
  IdleHost host_;
  DesktopForms forms_;
  Program program_;
};

template <const auto &form>
void Open(benchmark::State &state) {
  ShownProgram program;
  FirstPicture picture;
  for (auto _ : state) {
    form->Show();
    picture.Wait(program.WindowOf(*form));
    state.PauseTiming();
    form.Unload();
    QCoreApplication::processEvents();
    state.ResumeTiming();
  }
}

/// A window that is as wide as the screen, as the long bar is.
void OpenBareWindow(benchmark::State &state) {
  FirstPicture picture;
  for (auto _ : state) {
    auto window = std::make_unique<QWidget>(nullptr, Qt::FramelessWindowHint);
    window->resize(QGuiApplication::primaryScreen()->size().width(), 24);
    for (int number = 0; number < labels_of_a_bar; ++number)
      (new QLabel("Last: 3.1", window.get()))->move(100 * number, 4);
    window->show();
    picture.Wait(*window);
    state.PauseTiming();
    window.reset();
    QCoreApplication::processEvents();
    state.ResumeTiming();
  }
}

template <class Widget>
void AddBare(QFormLayout &rows, int count) {
  for (int number = 0; number < count; ++number)
    rows.addRow("I am", new Widget(rows.parentWidget()));
}

/// A window with as many boxes, lists and buttons as the felt report has.
void OpenBareReport(benchmark::State &state) {
  FirstPicture picture;
  for (auto _ : state) {
    auto window = std::make_unique<QWidget>();
    auto *rows = new QFormLayout(window.get());
    AddBare<QLineEdit>(*rows, 4);
    AddBare<QCheckBox>(*rows, 8);
    AddBare<QComboBox>(*rows, 3);
    AddBare<QPlainTextEdit>(*rows, 1);
    AddBare<QPushButton>(*rows, 2);
    window->show();
    picture.Wait(*window);
    state.PauseTiming();
    window.reset();
    QCoreApplication::processEvents();
    state.ResumeTiming();
  }
}

BENCHMARK(Open<Form1>)->Unit(benchmark::kMillisecond);
BENCHMARK(Open<newTagFrm>)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenBareWindow)->Unit(benchmark::kMillisecond);
BENCHMARK(Open<ComPart>)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenBareReport)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace borvane

int main(int argument_count, char **arguments) {
  const QApplication application(argument_count, arguments);
  borvane::SetAppearance();
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
