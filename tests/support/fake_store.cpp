#include "support/fake_store.h"

#include <stdexcept>

#include "basic/failure.h"
#include "basic/number.h"

namespace borvane {

namespace {

constexpr std::string_view own_key = R"(Software\Nalvorin\Borvane)";

/// The name alone for a value of the program's key, the rest of the key before it for one of a key inside, else all.
std::string PathOf(std::string_view key, std::string_view name) {
  if (key.starts_with(own_key))
    key.remove_prefix(own_key.size());
  if (key.starts_with('\\'))
    key.remove_prefix(1);
  return (key.empty() ? "" : std::string(key) + "\\") + std::string(name);
}

}  // namespace

void StoreEntry::Put(StoredValue value) { store_.Put(own_key, name_, std::move(value)); }

bool StoreEntry::operator==(std::string_view text) const {
  const StoredValue *value = store_.Get(own_key, name_);
  const auto *stored = value == nullptr ? nullptr : std::get_if<std::string>(value);
  return stored != nullptr && *stored == text;
}

std::string StoreEntry::Shown() const {
  const StoredValue *value = store_.Get(own_key, name_);
  if (value == nullptr)
    return "missing";
  if (const auto *text = std::get_if<std::string>(value))
    return "\"" + *text + "\"";
  if (const auto *number = std::get_if<std::uint32_t>(value))
    return "the number " + IntegerText(*number);
  return "a value that is neither text nor number";
}

void PrintTo(const StoreEntry &entry, std::ostream *stream) { *stream << entry.name_ << ": " << entry.Shown(); }

bool FakeStore::Has(std::string_view name) const { return Get(own_key, name) != nullptr; }

std::string FakeStore::TextOf(std::string_view name) const {
  const StoredValue *value = Get(own_key, name);
  const auto *text = value == nullptr ? nullptr : std::get_if<std::string>(value);
  return text == nullptr ? "" : *text;
}

Lines FakeStore::Names() const {
  Lines names;
  for (const auto &[place, value] : values_) {
    if (place.first == own_key)
      names.push_back(place.second);
  }
  return names;
}

void FakeStore::Put(std::string_view key, std::string_view name, StoredValue value) {
  values_.insert_or_assign({std::string(key), std::string(name)}, std::move(value));
}

const StoredValue *FakeStore::Get(std::string_view key, std::string_view name) const {
  const auto place = values_.find({std::string(key), std::string(name)});
  return place == values_.end() ? nullptr : &place->second;
}

std::optional<StoredValue> FakeStore::Read(std::string_view key, std::string_view name) {
  trace_.Add("read " + PathOf(key, name));
  if (is_broken_)
    throw std::length_error("broken");
  if (read_failure_ != 0)
    throw RuntimeError(read_failure_, "the store cannot be read");
  const StoredValue *value = Get(key, name);
  return value == nullptr ? std::nullopt : std::optional(*value);
}

void FakeStore::Write(std::string_view key, std::string_view name, std::string_view text) {
  trace_.Add("write " + PathOf(key, name) + "=" + std::string(text));
  if (takes_writes_)
    Put(key, name, std::string(text));
}

void FakeStore::Delete(std::string_view key, std::string_view name) {
  trace_.Add("delete " + PathOf(key, name));
  if (takes_writes_)
    values_.erase({std::string(key), std::string(name)});
}

}  // namespace borvane
