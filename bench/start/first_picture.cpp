// Preloaded into a program: when it first sends a picture of a window's size to the X server, this prints the clock,
// the processor time and the resident memory, and ends the program.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include <dlfcn.h>
#include <unistd.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace {

constexpr int smallest_side = 100;

void ReportIfWindow(int width, int height) {
  if (width < smallest_side || height < smallest_side)
    return;
  // On Linux this is the machine's monotonic clock, which bench_start.py reads, too.
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line) && !line.starts_with("VmRSS:")) {
  }
  const double processor_seconds = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
  std::printf("%lld %.6f %s\n", static_cast<long long>(std::chrono::nanoseconds(now).count()), processor_seconds,
              line.c_str());
  std::fflush(stdout);
  _exit(EXIT_SUCCESS);
}

/// The library's own function. It is looked up in that library, which only Qt's plugin for X11 links.
template <class F>
F *Own(const char *library, const char *name) {
  return reinterpret_cast<F *>(dlsym(dlopen(library, RTLD_LAZY), name));
}

}  // namespace

extern "C" {

xcb_void_cookie_t xcb_put_image(xcb_connection_t *connection, uint8_t format, xcb_drawable_t drawable,
                                xcb_gcontext_t context, uint16_t width, uint16_t height, int16_t x, int16_t y,
                                uint8_t left_pad, uint8_t depth, uint32_t length, const uint8_t *data) {
  static auto *const own = Own<decltype(xcb_put_image)>("libxcb.so.1", "xcb_put_image");
  const xcb_void_cookie_t cookie =
      own(connection, format, drawable, context, width, height, x, y, left_pad, depth, length, data);
  ReportIfWindow(width, height);
  return cookie;
}

xcb_void_cookie_t xcb_shm_put_image(xcb_connection_t *connection, xcb_drawable_t drawable, xcb_gcontext_t context,
                                    uint16_t total_width, uint16_t total_height, uint16_t from_x, uint16_t from_y,
                                    uint16_t width, uint16_t height, int16_t to_x, int16_t to_y, uint8_t depth,
                                    uint8_t format, uint8_t send_event, uint32_t segment, uint32_t offset) {
  static auto *const own = Own<decltype(xcb_shm_put_image)>("libxcb-shm.so.0", "xcb_shm_put_image");
  const xcb_void_cookie_t cookie = own(connection, drawable, context, total_width, total_height, from_x, from_y, width,
                                       height, to_x, to_y, depth, format, send_event, segment, offset);
  ReportIfWindow(width, height);
  return cookie;
}
}
