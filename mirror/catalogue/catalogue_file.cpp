#include "catalogue/catalogue_file.h"

#include <QFile>
#include <QFileInfo>

#include "catalogue/free_memory.h"

namespace borvane::mirror {

namespace {

// A changed file is read at the second look that finds the file the same, so within half a second.
constexpr int look_interval_ms = 200;

constexpr qint64 largest_file = qint64{256} * 1024 * 1024;

}  // namespace

CatalogueFile::CatalogueFile(QString path, TakeEvents take, LogFault log)
    : path_(std::move(path)), take_(std::move(take)), log_(std::move(log)) {
  QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
}

void CatalogueFile::Start() {
  seen_ = StampNow();
  Read();
  timer_.start(look_interval_ms);
}

CatalogueFile::Stamp CatalogueFile::StampNow() const {
  const QFileInfo info(path_);
  if (!info.exists())
    return {};
  return {.exists = true,
          .modified = info.lastModified(),
          .status_changed = info.metadataChangeTime(),
          .size = info.size()};
}

void CatalogueFile::Look() {
  const Stamp now = StampNow();
  const bool at_rest = now == seen_;
  seen_ = now;
  if (at_rest && taken_ != now)
    Read();
}

void CatalogueFile::Read() {
  // A file that cannot be read is looked at again and again: without a text there is nothing to give back.
  if (TakeText())
    ReturnFreeMemory();
}

/// Takes up the file's text. Returns whether it was read, whatever came of it.
bool CatalogueFile::TakeText() {
  const std::optional<QByteArray> text = ReadText();
  if (!text)
    return false;

  // If a writer was at work meanwhile, what was read may be half old and half new. The next look tries again.
  const Stamp before = seen_;
  seen_ = StampNow();
  if (seen_ != before)
    return true;
  taken_ = seen_;

  CatalogueReading reading = ReadGeoJson(*text);
  if (reading.fault.isEmpty())
    take_(std::move(reading));
  else
    Report(reading.fault);
  return true;
}

std::optional<QByteArray> CatalogueFile::ReadText() {
  // A pipe or a device would keep the mirror waiting.
  if (const QFileInfo info(path_); info.exists() && !info.isFile()) {
    Report("not a file");
    return std::nullopt;
  }
  QFile file(path_);
  const bool is_open = file.open(QIODevice::ReadOnly);
  if (file.size() > largest_file) {
    Report(QString("larger than %1 bytes").arg(largest_file));
    return std::nullopt;
  }
  QByteArray text = is_open ? file.readAll() : QByteArray();
  if (is_open && file.error() == QFileDevice::NoError)
    return text;
  Report(file.errorString());
  return std::nullopt;
}

void CatalogueFile::Report(const QString &fault) {
  if (fault == logged_fault_ && seen_ == logged_stamp_)
    return;
  logged_fault_ = fault;
  logged_stamp_ = seen_;
  log_(QString("the catalogue file %1 cannot be used: %2").arg(path_, fault));
}

}  // namespace borvane::mirror
