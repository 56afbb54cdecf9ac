#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace borvane::mirror {

/// What the text of a feature says of an event. What is missing, null or of a wrong kind is empty. The texts are in
/// UTF-8 and belong to the collection.
struct Feature {
  std::string_view id;
  std::optional<double> longitude;
  std::optional<double> latitude;
  std::optional<double> depth;
  std::optional<double> magnitude;
  std::optional<double> time;
  std::optional<double> updated;
  std::string_view place;
  std::string_view network;
  std::string_view kind;
  std::string_view ids;
  std::string_view status;
};

/// What a collection says of itself.
struct CollectionMetadata {
  std::optional<double> generated;
  std::optional<double> status;
  std::optional<double> count;
};

/// A GeoJSON text with an array of features, in the summary form of the US Geological Survey. The whole text has to be
/// JSON in UTF-8, with or without a byte order mark. Of several members of one name the last one counts.
class FeatureCollection {
 public:
  explicit FeatureCollection(const QByteArray &text);
  ~FeatureCollection();
  FeatureCollection(const FeatureCollection &) = delete;
  FeatureCollection &operator=(const FeatureCollection &) = delete;

  /// What is wrong with the text as a whole; empty when it could be read. Without a fault there are features.
  const QString &fault() const { return fault_; }

  const CollectionMetadata &metadata() const { return metadata_; }

  /// How many features it has; 16,777,215 means that many or more.
  qsizetype size() const;

  /// Gives each feature, in the order of the text; one without anything for what is none.
  void ForEach(const std::function<void(const Feature &)> &take) const;

 private:
  struct Document;

  std::unique_ptr<Document> document_;
  QString fault_;
  CollectionMetadata metadata_;
};

}  // namespace borvane::mirror
