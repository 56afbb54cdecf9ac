#include "http/request_reader.h"

#include <algorithm>
#include <array>
#include <optional>

#include "common/letters.h"

namespace borvane::mirror {

namespace {

constexpr std::size_t nowhere = std::string_view::npos;
constexpr std::string_view version_form = " HTTP/1.x";

bool IsLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

/// Whether `c` may be part of a method or of the name of a header.
bool IsTokenCharacter(char c) { return IsLetterOrDigit(c) || std::string_view("!#$%&'*+-.^_`|~").find(c) != nowhere; }

bool IsToken(std::string_view text) { return !text.empty() && std::all_of(text.begin(), text.end(), IsTokenCharacter); }

std::string_view WithoutSpace(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == nowhere)
    return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Reads a head line by line. Each step gives the status of a refusal, or 0 to go on.
class HeadReader {
 public:
  HeadReader(std::string_view bytes, const Limits &limits) : bytes_(bytes), limits_(limits) {}

  RequestReading Read();

 private:
  std::optional<std::string_view> NextLine();
  RequestReading ReadHeaders();
  RequestReading UnfinishedRequestLine();
  /// `limit` is where the longest good line would end, its carriage return included.
  RequestReading Unfinished(std::size_t limit, int refusal);
  RequestReading Refused(int status);
  int ReadRequestLine(std::string_view line);
  int ReadMethod(std::string_view method);
  void TakeTarget(std::string_view target);
  int ReadHeader(std::string_view line);
  int ReadHeaderValue(std::string_view name, std::string_view value);
  void ReadConnection(std::string_view value);

  std::string_view bytes_;
  const Limits &limits_;
  std::size_t position_ = 0;
  Request request_;
  bool host_is_in_target_ = false;
  bool has_host_ = false;
  bool close_ = false;
};

RequestReading HeadReader::Read() {
  // Empty lines in front of a request are left by clients that end a body with one too many.
  std::optional<std::string_view> line = NextLine();
  for (std::size_t skipped = 0; line && line->empty(); ++skipped) {
    if (skipped == limits_.blank_lines)
      return Refused(400);
    line = NextLine();
  }

  if (!line)
    return UnfinishedRequestLine();
  if (const int refusal = ReadRequestLine(*line))
    return Refused(refusal);
  return ReadHeaders();
}

RequestReading HeadReader::ReadHeaders() {
  const std::size_t start = position_;
  for (std::size_t count = 0;; ++count) {
    const std::optional<std::string_view> line = NextLine();
    if (!line)
      return Unfinished(std::min(position_ + limits_.header_line, start + limits_.header_lines) + 1, 431);
    if (line->empty())
      break;
    if (count == limits_.headers || line->size() > limits_.header_line || position_ - start > limits_.header_lines)
      return Refused(431);
    if (const int refusal = ReadHeader(*line))
      return Refused(refusal);
  }
  request_.keep_alive = request_.keep_alive && !close_;
  return {.status = RequestReading::Status::Complete, .request = std::move(request_), .used = position_};
}

std::optional<std::string_view> HeadReader::NextLine() {
  const std::size_t end = bytes_.find('\n', position_);
  if (end == nowhere)
    return std::nullopt;
  std::string_view line = bytes_.substr(position_, end - position_);
  position_ = end + 1;
  if (line.ends_with('\r'))
    line.remove_suffix(1);
  return line;
}

RequestReading HeadReader::Unfinished(std::size_t limit, int refusal) {
  if (bytes_.size() > limit)
    return Refused(refusal);
  return {.status = RequestReading::Status::Incomplete, .request = std::move(request_), .refused_beyond = limit};
}

RequestReading HeadReader::UnfinishedRequestLine() {
  // What cannot be a request line is refused at once, without waiting for its end.
  if (position_ < bytes_.size() && bytes_[position_] != '\r' && !IsTokenCharacter(bytes_[position_]))
    return Refused(400);
  const std::size_t limit = position_ + limits_.method + 1 + limits_.target + version_form.size() + 1;
  const std::size_t blank = bytes_.find(' ', position_);
  if (bytes_.size() > limit && blank != nowhere)
    TakeTarget(bytes_.substr(blank + 1));
  return Unfinished(limit, 414);
}

RequestReading HeadReader::Refused(int status) {
  return {.status = RequestReading::Status::Refused, .request = std::move(request_), .refusal = status};
}

int HeadReader::ReadRequestLine(std::string_view line) {
  const std::size_t blank = line.find(' ');
  const std::size_t version = line.rfind(" HTTP/");
  // What is refused has its target, too, since the form of the refusal depends on it.
  const std::string_view target =
      blank == nowhere || version <= blank ? "" : line.substr(blank + 1, version - blank - 1);
  TakeTarget(target);
  if (line.find_first_of(std::string_view("\r\0", 2)) != nowhere)
    return 400;
  if (blank == nowhere || version == nowhere || line.size() != version + version_form.size())
    return line.size() > limits_.target ? 414 : 400;
  const char major = line[version + 6];
  const char minor = line[version + 8];
  if (major < '0' || major > '9' || line[version + 7] != '.' || minor < '0' || minor > '9')
    return 400;
  if (const int refusal = ReadMethod(line.substr(0, blank)))
    return refusal;
  if (major != '1')
    return 505;
  request_.keep_alive = minor != '0';
  if (target.size() > limits_.target)
    return 414;
  return request_.target.startsWith('/') ? 0 : 400;
}

int HeadReader::ReadMethod(std::string_view method) {
  static constexpr std::array<std::string_view, 7> others = {"POST",  "PUT",   "DELETE", "OPTIONS",
                                                             "PATCH", "TRACE", "CONNECT"};
  if (!IsToken(method) || method.size() > limits_.method)
    return 400;
  request_.method = QByteArrayView(method).toByteArray();
  if (method == "GET" || method == "HEAD")
    return 0;
  return std::find(others.begin(), others.end(), method) != others.end() ? 405 : 501;
}

void HeadReader::TakeTarget(std::string_view target) {
  // A client that takes the mirror for a proxy names the host in the target.
  constexpr std::string_view scheme = "http://";
  if (target.size() > scheme.size() && EqualInAnyCase(target.substr(0, scheme.size()), scheme)) {
    target.remove_prefix(scheme.size());
    const std::size_t path = std::min(target.find('/'), target.size());
    request_.host = QByteArrayView(target.substr(0, path)).toByteArray();
    host_is_in_target_ = true;
    target.remove_prefix(path);
    if (target.empty())
      target = "/";
  }
  request_.target = QByteArrayView(target).toByteArray();
}

int HeadReader::ReadHeader(std::string_view line) {
  if (line.find_first_of(std::string_view("\r\0", 2)) != nowhere)
    return 400;
  const std::size_t colon = line.find(':');
  if (colon == nowhere || !IsToken(line.substr(0, colon)))
    return 400;
  return ReadHeaderValue(line.substr(0, colon), WithoutSpace(line.substr(colon + 1)));
}

int HeadReader::ReadHeaderValue(std::string_view name, std::string_view value) {
  if (EqualInAnyCase(name, "Host")) {
    if (has_host_)
      return 400;
    has_host_ = true;
    if (!host_is_in_target_)
      request_.host = QByteArrayView(value).toByteArray();
  } else if (EqualInAnyCase(name, "Connection")) {
    ReadConnection(value);
  } else if (EqualInAnyCase(name, "Origin")) {
    request_.has_origin = true;
  } else if (EqualInAnyCase(name, "Sec-Fetch-Site")) {
    request_.fetch_site += QByteArrayView(value).toByteArray();
  } else if (EqualInAnyCase(name, "Transfer-Encoding")) {
    return 501;
  } else if (EqualInAnyCase(name, "Content-Length")) {
    if (value.empty() || value.find_first_not_of("0123456789") != nowhere)
      return 400;
    if (value.find_first_not_of('0') != nowhere)
      return 413;
  }
  return 0;
}

void HeadReader::ReadConnection(std::string_view value) {
  while (!value.empty()) {
    const std::size_t comma = std::min(value.find(','), value.size());
    const std::string_view word = WithoutSpace(value.substr(0, comma));
    if (EqualInAnyCase(word, "close"))
      close_ = true;
    else if (EqualInAnyCase(word, "keep-alive"))
      request_.keep_alive = true;
    value.remove_prefix(std::min(comma + 1, value.size()));
  }
}

}  // namespace

RequestReading ReadRequest(std::string_view bytes, const Limits &limits) { return HeadReader(bytes, limits).Read(); }

QByteArray PathOf(const QByteArray &target) {
  const auto end = std::find_if(target.begin(), target.end(), [](char c) { return c == '?' || c == '#'; });
  return target.first(end - target.begin());
}

}  // namespace borvane::mirror
