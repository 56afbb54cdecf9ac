#include "catalogue/feature_collection.h"

#include <array>

#include <simdjson.h>

namespace borvane::mirror {

namespace {

namespace json = simdjson::dom;

/// Names of members and where their values go.
template <typename Record, typename Value>
struct MemberPlace {
  std::string_view name;
  Value Record::*place;
};

constexpr std::array<MemberPlace<Feature, std::optional<double>>, 3> number_properties = {
    {{"mag", &Feature::magnitude}, {"time", &Feature::time}, {"updated", &Feature::updated}}};

constexpr std::array<MemberPlace<Feature, std::string_view>, 5> text_properties = {{{"place", &Feature::place},
                                                                                    {"net", &Feature::network},
                                                                                    {"type", &Feature::kind},
                                                                                    {"ids", &Feature::ids},
                                                                                    {"status", &Feature::status}}};

constexpr std::array<MemberPlace<CollectionMetadata, std::optional<double>>, 3> metadata_members = {
    {{"generated", &CollectionMetadata::generated},
     {"status", &CollectionMetadata::status},
     {"count", &CollectionMetadata::count}}};

/// Where the coordinates go, in their order.
constexpr std::array<std::optional<double> Feature::*, 3> coordinate_places = {&Feature::longitude, &Feature::latitude,
                                                                               &Feature::depth};

template <typename Value>
std::optional<Value> As(const json::element &element) {
  Value value{};
  return element.get(value) == simdjson::SUCCESS ? std::optional(value) : std::nullopt;
}

std::string_view StringOf(const json::element &element) { return As<std::string_view>(element).value_or(""); }

/// The members of an object; none of what is no object.
template <typename Take>
void ForEachMember(const std::optional<json::element> &element, Take take) {
  if (const std::optional<json::object> object = element ? As<json::object>(*element) : std::nullopt)
    for (const json::key_value_pair member : *object)
      take(member.key, member.value);
}

void ReadProperties(Feature &feature, const std::optional<json::element> &properties) {
  ForEachMember(properties, [&](std::string_view name, const json::element &value) {
    for (const auto &[known, place] : number_properties)
      if (name == known)
        feature.*place = As<double>(value);
    for (const auto &[known, place] : text_properties)
      if (name == known)
        feature.*place = StringOf(value);
  });
}

void ReadGeometry(Feature &feature, const std::optional<json::element> &geometry) {
  std::optional<json::array> coordinates;
  ForEachMember(geometry, [&](std::string_view name, const json::element &value) {
    if (name == "coordinates")
      coordinates = As<json::array>(value);
  });
  if (!coordinates)
    return;
  auto coordinate = coordinates->begin();
  for (const auto &place : coordinate_places) {
    if (coordinate == coordinates->end())
      return;
    feature.*place = As<double>(*coordinate);
    ++coordinate;
  }
}

Feature FeatureOf(const json::element &element) {
  Feature feature;
  std::optional<json::element> properties;
  std::optional<json::element> geometry;
  ForEachMember(element, [&](std::string_view name, const json::element &value) {
    if (name == "id")
      feature.id = StringOf(value);
    else if (name == "properties")
      properties = value;
    else if (name == "geometry")
      geometry = value;
  });
  ReadProperties(feature, properties);
  ReadGeometry(feature, geometry);
  return feature;
}

CollectionMetadata MetadataOf(const std::optional<json::element> &element) {
  CollectionMetadata metadata;
  ForEachMember(element, [&](std::string_view name, const json::element &value) {
    for (const auto &[known, place] : metadata_members)
      if (name == known)
        metadata.*place = As<double>(value);
  });
  return metadata;
}

std::string_view WithoutByteOrderMark(const QByteArray &text) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  std::string_view content(text.constData(), static_cast<std::size_t>(text.size()));
  if (content.starts_with(mark))
    content.remove_prefix(mark.size());
  return content;
}

QString JsonFault(simdjson::error_code error) {
  const QString fault = simdjson::error_message(error);
  return error == simdjson::MEMALLOC ? fault : "not JSON that can be read: " + fault;
}

}  // namespace

/// The text as it was read.
struct FeatureCollection::Document {
  json::parser parser;
  std::optional<json::array> features;
};

FeatureCollection::FeatureCollection(const QByteArray &text) : document_(std::make_unique<Document>()) {
  const std::string_view content = WithoutByteOrderMark(text);
  json::element root;
  if (const auto error = document_->parser.parse(content.data(), content.size()).get(root)) {
    fault_ = JsonFault(error);
    return;
  }
  std::string_view type;
  std::optional<json::element> metadata;
  ForEachMember(root, [&](std::string_view name, const json::element &value) {
    if (name == "type")
      type = StringOf(value);
    else if (name == "metadata")
      metadata = value;
    else if (name == "features")
      document_->features = As<json::array>(value);
  });
  if (type != "FeatureCollection" || !document_->features) {
    document_->features.reset();
    fault_ = "not a GeoJSON feature collection";
    return;
  }
  metadata_ = MetadataOf(metadata);
}

FeatureCollection::~FeatureCollection() = default;

qsizetype FeatureCollection::size() const {
  return document_->features ? static_cast<qsizetype>(document_->features->size()) : 0;
}

void FeatureCollection::ForEach(const std::function<void(const Feature &)> &take) const {
  if (document_->features)
    for (const json::element feature : *document_->features)
      take(FeatureOf(feature));
}

}  // namespace borvane::mirror
