#include "catalogue/catalogue_file.h"

#include <QFile>
#include <QFileInfo>

namespace borvane::mirror {

namespace {

// A change is taken up at the second look that finds the file the same, so within half a second.
constexpr int look_interval_ms = 200;

constexpr qint64 largest_file = qint64{256} * 1024 * 1024;

}  // namespace

CatalogueFile::CatalogueFile(QString path, TakeEvents take, TellFault tell)
    : path_(std::move(path)), take_(std::move(take)), tell_(std::move(tell)) {
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
  if (at_rest && now != taken_)
    Read();
}

void CatalogueFile::Read() {
  const Stamp before = seen_;
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) {
    taken_ = before;
    Report(file.errorString());
    return;
  }
  if (file.size() > largest_file) {
    taken_ = before;
    Report(QString("larger than %1 bytes").arg(largest_file));
    return;
  }
  const QByteArray text = file.readAll();
  const bool read_well = file.error() == QFileDevice::NoError;
  const QString read_error = file.errorString();

  // A writer was at work meanwhile: what was read may be half old and half new. The next look tries again.
  seen_ = StampNow();
  if (seen_ != before)
    return;
  taken_ = before;

  CatalogueReading reading = read_well ? ReadGeoJson(text) : CatalogueReading{.events = {}, .fault = read_error};
  if (!reading.fault.isEmpty()) {
    Report(reading.fault);
    return;
  }
  last_fault_.clear();
  take_(std::move(reading));
}

void CatalogueFile::Report(const QString &fault) {
  if (fault == last_fault_)
    return;
  last_fault_ = fault;
  tell_(QString("the catalogue file %1 cannot be used: %2").arg(path_, fault));
}

}  // namespace borvane::mirror
