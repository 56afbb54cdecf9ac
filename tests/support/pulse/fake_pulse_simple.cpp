// A sound library that writes down what it is asked for, and what it is handed, into the folder that PULSE_SERVER
// names.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

void Append(const char *file, const std::string &bytes) {
  std::ofstream(std::string(std::getenv("PULSE_SERVER")) + "/" + file, std::ios::app | std::ios::binary) << bytes;
}

}  // namespace

extern "C" {

void *pa_simple_new(const char *server, const char *program, int direction, const char *device, const char *stream,
                    const void *form, const void *channel_map, const std::uint32_t *sizes, int *error) {
  struct Form {
    int format;
    std::uint32_t rate;
    std::uint8_t channels;
  };
  const auto &sample = *static_cast<const Form *>(form);
  Append("calls",
         std::string("new ") + program + "/" + stream + " " + std::to_string(direction) + ", format " +
             std::to_string(sample.format) + ", " + std::to_string(sample.rate) + " Hz, " +
             std::to_string(sample.channels) + " channel, target " + std::to_string(sizes[1]) + ", plays from " +
             std::to_string(sizes[2]) +
             (server == nullptr && device == nullptr && channel_map == nullptr && error == nullptr ? "\n"
                                                                                                   : " with more\n"));
  static int connection = 0;
  return &connection;
}

int pa_simple_write(void * /*connection*/, const void *data, std::size_t bytes, int * /*error*/) {
  Append("calls", "write " + std::to_string(bytes) + "\n");
  Append("samples", std::string(static_cast<const char *>(data), bytes));
  return 0;
}

int pa_simple_drain(void * /*connection*/, int * /*error*/) {
  Append("calls", "drain\n");
  return -1;
}

void pa_simple_free(void * /*connection*/) { Append("calls", "free\n"); }

}  // extern "C"
