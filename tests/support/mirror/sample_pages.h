#pragma once

#include <QStringDecoder>
#include <QXmlStreamReader>
#include <string>

#include "catalogue/event.h"

namespace borvane::mirror {

/// An event of the sample's area.
inline Event Castaic() {
  return {.id = "ci37868143",
          .origin_time = 1517966773000,
          .latitude = 34.495,
          .longitude = -118.667,
          .depth = 26.5,
          .magnitude = 2.04,
          .place = "4km W of Castaic, CA",
          .network = "ci",
          .kind = "earthquake"};
}

/// Why the page is not well-formed; empty when it is. The pages close every element and quote every attribute, so that
/// the strict rules of XML hold for them, too.
inline std::string FaultOf(const QByteArray &page) {
  QXmlStreamReader reader(QString(QStringDecoder("windows-1252").decode(page)));
  while (!reader.atEnd())
    reader.readNext();
  return reader.hasError() ? reader.errorString().toStdString() : "";
}

}  // namespace borvane::mirror
