#pragma once

#include <QByteArray>

namespace borvane::mirror {

inline constexpr int events_of_feed = 10'000;
inline constexpr qint64 made = 1'781'838'300'000;

/// A week's feed with all the properties that a real one has. Each hundredth event has been revised `later`
/// milliseconds after the others.
inline QByteArray SummaryText(qint64 later = 0) {
  QByteArray text = R"({"type":"FeatureCollection","metadata":{"generated":)" + QByteArray::number(made + later) +
                    R"(,"title":"All Earthquakes, Past Week","status":200,"api":"1.10.3","count":)" +
                    QByteArray::number(events_of_feed) + R"(},"features":[)";
  for (int i = 0; i < events_of_feed; ++i) {
    const QByteArray code = QByteArray::number(38'592'402 + i);
    const QByteArray time = QByteArray::number(made - 60'000LL * i);
    const QByteArray updated = QByteArray::number(made - 60'000LL * i + (i % 100 == 0 ? later : 0));
    text += (i == 0 ? "" : ",");
    text += R"({"type":"Feature","properties":{"mag":)" + QByteArray::number(i % 80 / 10.0) + R"(,"place":")" +
            QByteArray::number(i % 60) + R"( km SSW of Ridgecrest, CA","time":)" + time + R"(,"updated":)" + updated +
            R"(,"tz":null,"url":"https://earthquake.usgs.gov/earthquakes/eventpage/ci)" + code +
            R"(","detail":"https://earthquake.usgs.gov/earthquakes/feed/v1.0/detail/ci)" + code +
            R"(.geojson","felt":null,"cdi":null,"mmi":null,"alert":null,"status":"automatic","tsunami":0,"sig":34,)"
            R"("net":"ci","code":")" +
            code + R"(","ids":",ci)" + code +
            R"(,","sources":",ci,","types":",nearby-cities,origin,phase-data,scitech-link,","nst":15,)"
            R"("dmin":0.1417,"rms":0.1,"gap":140,"magType":"ml","type":"earthquake","title":"M 1.5 - CA"},)"
            R"("geometry":{"type":"Point","coordinates":[)" +
            QByteArray::number(-118 + i % 100 / 400.0) + "," + QByteArray::number(34 + i % 70 / 400.0) + "," +
            QByteArray::number(i % 300 / 10.0) + R"(]},"id":"ci)" + code + R"("})";
  }
  return text + "]}";
}

}  // namespace borvane::mirror
