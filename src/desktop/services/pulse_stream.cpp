#include "desktop/services/pulse_stream.h"

#include <QLibrary>
#include <bit>
#include <cstdint>
#include <optional>
#include <string>

#include "core/program_info.h"
#include "desktop/services/tone_generator.h"

namespace borvane {

namespace {

// What is used of the library's interface, which does not change within its version 0. Its header is not needed to
// build.

struct Connection;

struct SampleForm {
  int format;
  std::uint32_t rate;
  std::uint8_t channels;
};

/// In bytes; `server_decides` leaves a field to the server.
struct BufferSizes {
  std::uint32_t longest;
  std::uint32_t target;
  std::uint32_t before_it_plays;
  std::uint32_t least_request;
  std::uint32_t fragment;
};

constexpr auto server_decides = static_cast<std::uint32_t>(-1);
constexpr int to_loudspeaker = 1;
constexpr int signed_16_bits_little_endian = 3;
constexpr int signed_16_bits_big_endian = 4;

struct Library {
  Connection *(*open)(const char *server, const char *program, int direction, const char *device, const char *stream,
                      const SampleForm *form, const void *channel_map, const BufferSizes *sizes, int *error);
  int (*write)(Connection *connection, const void *data, std::size_t bytes, int *error);
  int (*drain)(Connection *connection, int *error);
  void (*close)(Connection *connection);
};

template <class Function>
bool Resolve(QLibrary &file, const char *name, Function &function) {
  function = reinterpret_cast<Function>(file.resolve(name));
  return function != nullptr;
}

std::optional<Library> Load(const QString &name) {
  QLibrary file(name, 0);
  Library library{};
  const bool is_complete =
      Resolve(file, "pa_simple_new", library.open) && Resolve(file, "pa_simple_write", library.write) &&
      Resolve(file, "pa_simple_drain", library.drain) && Resolve(file, "pa_simple_free", library.close);
  return is_complete ? std::optional(library) : std::nullopt;
}

class PulseStream final : public ToneStream {
 public:
  PulseStream(const Library &library, Connection &connection) : library_(library), connection_(connection) {}
  ~PulseStream() override { library_.close(&connection_); }

  bool Write(std::span<const std::int16_t> samples) override {
    return library_.write(&connection_, samples.data(), samples.size_bytes(), nullptr) >= 0;
  }

  bool Drain() override { return library_.drain(&connection_, nullptr) >= 0; }

 private:
  const Library library_;
  Connection &connection_;
};

}  // namespace

std::unique_ptr<ToneStream> OpenPulseStream() { return OpenPulseStream(QStringLiteral("pulse-simple")); }

std::unique_ptr<ToneStream> OpenPulseStream(const QString &library_name) {
  const std::optional<Library> library = Load(library_name);
  if (!library)
    return nullptr;

  constexpr std::uint32_t bytes_per_millisecond = ToneGenerator::samples_per_millisecond * sizeof(std::int16_t);
  constexpr SampleForm form{
      .format = std::endian::native == std::endian::little ? signed_16_bits_little_endian : signed_16_bits_big_endian,
      .rate = ToneGenerator::rate,
      .channels = 1};
  // The tones come in real time. They sound 100 ms late, so that no pause that is made up for is heard.
  constexpr BufferSizes sizes{.longest = server_decides,
                              .target = 200 * bytes_per_millisecond,
                              .before_it_plays = 100 * bytes_per_millisecond,
                              .least_request = server_decides,
                              .fragment = server_decides};
  Connection *connection = library->open(nullptr, std::string(program_title).c_str(), to_loudspeaker, nullptr, "Alarm",
                                         &form, nullptr, &sizes, nullptr);
  return connection == nullptr ? nullptr : std::make_unique<PulseStream>(*library, *connection);
}

}  // namespace borvane
