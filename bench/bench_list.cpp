// Measures the time from the answer to the painted list, and of a step through a long list; for comparison a bare
// QTreeView over a model of ready-made texts.

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTreeView>
#include <array>
#include <optional>

#include <benchmark/benchmark.h>

#include "desktop/appearance.h"
#include "desktop/windows/desktop_forms.h"
#include "desktop/windows/form_window.h"
#include "quakes_page.h"
#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"

namespace borvane {

namespace {

constexpr int columns = 8;

/// Waits until a view has been painted with all that is in it.
class Painted final : public QObject {
 public:
  explicit Painted(QTreeView &view) : view_(view) { view.viewport()->installEventFilter(this); }

  void Wait(int rows) {
    is_painted_ = false;
    while (!is_painted_ || view_.model()->rowCount() != rows)
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }

 protected:
  bool eventFilter(QObject * /*object*/, QEvent *event) override {
    if (event->type() == QEvent::Paint)
      is_painted_ = true;
    return false;
  }

 private:
  QTreeView &view_;
  bool is_painted_ = false;
};

/// A minimal model of texts.
class BareModel final : public QAbstractTableModel {
 public:
  int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : columns; }
  QVariant data(const QModelIndex & /*index*/, int role) const override {
    return role == Qt::DisplayRole ? QVariant(text_) : QVariant();
  }

  void Fill(int rows) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
  }

 private:
  int rows_ = 0;
  QString text_ = "118.667W";
};

/// The monitor's records window with its list.
class Monitor {
 public:
  Monitor() : program_(host_.Services(), forms_) {
    frmRecords->Show();
    for (auto *view : forms_.WindowOf(*frmRecords)->findChildren<QTreeView *>()) {
      if (view_ == nullptr || view->height() > view_->height())
        view_ = view;
    }
    painted_.emplace(*view_);
  }
  Monitor(const Monitor &) = delete;
  Monitor &operator=(const Monitor &) = delete;
  ~Monitor() { forms_.Stop(); }

  QTreeView &view() { return *view_; }
  Painted &painted() { return *painted_; }

  void Load(std::string page, int /*rows*/) {
    Integer mode = 1;
    ScanQuakesList(mode, page);
  }

 private:
  IdleHost host_;
  DesktopForms forms_;
  Program program_;
  QTreeView *view_ = nullptr;
  std::optional<Painted> painted_;
};

/// A window with only a view, as large as the monitor's list.
class Bare {
 public:
  explicit Bare(QSize size) : painted_(view_) {
    view_.setUniformRowHeights(true);
    view_.setRootIsDecorated(false);
    view_.setModel(&model_);
    view_.resize(size);
    view_.show();
  }

  QTreeView &view() { return view_; }
  Painted &painted() { return painted_; }
  void Load(std::string_view /*page*/, int rows) { model_.Fill(rows); }

 private:
  BareModel model_;
  QTreeView view_;
  Painted painted_;
};

void Press(QTreeView &view, int key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(&view, &press);
}

/// From the answer to the painted list.
template <class Window>
void Fill(benchmark::State &state, Window &window) {
  const auto rows = static_cast<int>(state.range(0));
  const std::string page = QuakesPage(rows);
  for (auto _ : state) {
    window.Load(page, rows);
    window.painted().Wait(rows);
  }
}

/// One step through the list and its repaint; at the end it starts again from the top.
template <class Window>
void Step(benchmark::State &state, Window &window, Qt::Key key) {
  const auto rows = static_cast<int>(state.range(0));
  window.Load(QuakesPage(rows), rows);
  window.painted().Wait(rows);
  QTreeView &view = window.view();
  view.setFocus();
  view.setCurrentIndex(view.model()->index(0, 0));
  for (auto _ : state) {
    const bool is_at_end = view.currentIndex().row() == rows - 1;
    Press(view, is_at_end ? Qt::Key_Home : key);
    window.painted().Wait(rows);
  }
}

template <class Window>
void Register(const std::string &name, Window &window) {
  using benchmark::State;
  benchmark::RegisterBenchmark((name + "/filled").c_str(), [&](State &state) { Fill(state, window); })
      ->Arg(10'000)
      ->Arg(100'000)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark((name + "/page_down").c_str(),
                               [&](State &state) { Step(state, window, Qt::Key_PageDown); })
      ->Arg(100'000)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark((name + "/end_and_home").c_str(),
                               [&](State &state) { Step(state, window, Qt::Key_End); })
      ->Arg(100'000)
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

}  // namespace borvane

int main(int argument_count, char **arguments) {
  const QApplication application(argument_count, arguments);
  borvane::SetAppearance();
  borvane::Monitor monitor;
  borvane::Bare bare(monitor.view().size());
  borvane::Register("monitor", monitor);
  borvane::Register("bare_view", bare);
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
