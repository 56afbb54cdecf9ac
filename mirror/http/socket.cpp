#include "http/socket.h"

#include <QtGlobal>
#include <array>

#ifdef Q_OS_WIN
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <cerrno>

#ifdef Q_OS_LINUX
#include <sys/sendfile.h>
#endif

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace borvane::mirror {

namespace {

constexpr std::size_t chunk_size = 16 * 1024;

#ifdef Q_OS_WIN

using Handle = SOCKET;
using Length = int;
constexpr int end_sending = SD_SEND;
constexpr int no_signal = 0;
constexpr int more = 0;

bool IsBlocked() { return ::WSAGetLastError() == WSAEWOULDBLOCK; }
bool IsGone() { return ::WSAGetLastError() == WSAECONNRESET; }
void CloseHandle(Handle handle) { ::closesocket(handle); }

bool MakeNonBlocking(Handle handle) {
  u_long on = 1;
  return ::ioctlsocket(handle, FIONBIO, &on) == 0;
}

#else

using Handle = int;
using Length = std::size_t;
constexpr int end_sending = SHUT_WR;
#ifdef MSG_MORE
constexpr int more = MSG_MORE;
#else
constexpr int more = 0;
#endif
#ifdef MSG_NOSIGNAL
constexpr int no_signal = MSG_NOSIGNAL;
#else
constexpr int no_signal = 0;  // the program ignores the signal
#endif

bool IsBlocked() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }
bool IsGone() { return errno == ECONNABORTED || errno == EPROTO || errno == EPERM; }
void CloseHandle(Handle handle) { ::close(handle); }

bool MakeNonBlocking(Handle handle) {
  return ::fcntl(handle, F_SETFL, ::fcntl(handle, F_GETFL) | O_NONBLOCK) == 0 &&
         ::fcntl(handle, F_SETFD, FD_CLOEXEC) == 0;
}

#endif

Handle HandleOf(qintptr descriptor) { return static_cast<Handle>(descriptor); }

}  // namespace

Socket::Socket(qintptr descriptor, const std::function<void()> &on_receivable, const std::function<void()> &on_sendable)
    : descriptor_(descriptor),
      receivable_(descriptor, QSocketNotifier::Read),
      sendable_(descriptor, QSocketNotifier::Write) {
  sendable_.setEnabled(false);
  // Answers go out at once, without waiting for more to send.
  const int on = 1;
  ::setsockopt(HandleOf(descriptor), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char *>(&on), sizeof on);
  QObject::connect(&receivable_, &QSocketNotifier::activated, on_receivable);
  QObject::connect(&sendable_, &QSocketNotifier::activated, on_sendable);
}

Socket::~Socket() {
  receivable_.setEnabled(false);
  sendable_.setEnabled(false);
  CloseDescriptor(descriptor_);
}

Received Socket::Receive(QByteArray &bytes) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): recv fills it, and every request would pay for zeros
  std::array<char, chunk_size> chunk;
  const auto count = ::recv(HandleOf(descriptor_), chunk.data(), static_cast<Length>(chunk.size()), 0);
  if (count == 0)
    return Received::End;
  if (count < 0)
    return IsBlocked() ? Received::Nothing : Received::Failure;
  bytes.append(chunk.data(), static_cast<qsizetype>(count));
  return Received::Bytes;
}

qsizetype Socket::Send(QByteArrayView bytes, bool more_follows) {
  const auto count = ::send(HandleOf(descriptor_), bytes.data(), static_cast<Length>(bytes.size()),
                            no_signal | (more_follows ? more : 0));
  if (count < 0)
    return IsBlocked() ? 0 : -1;
  return static_cast<qsizetype>(count);
}

#ifdef Q_OS_LINUX

qsizetype Socket::SendFile(const MemoryFile &file, qsizetype from, qsizetype size) {
  off_t offset = from;
  const auto count = ::sendfile(HandleOf(descriptor_), file.descriptor(), &offset, static_cast<std::size_t>(size));
  if (count < 0)
    return IsBlocked() ? 0 : -1;
  return count;
}

#else

// There is no such file.
qsizetype Socket::SendFile(const MemoryFile & /*file*/, qsizetype /*from*/, qsizetype /*size*/) { return -1; }

#endif

void Socket::EndSending() { ::shutdown(HandleOf(descriptor_), end_sending); }

QHostAddress PeerAddress(qintptr descriptor) {
  sockaddr_storage address = {};
  socklen_t length = sizeof address;
  auto *generic = reinterpret_cast<sockaddr *>(&address);
  if (::getpeername(HandleOf(descriptor), generic, &length) != 0)
    return {};
  return QHostAddress(generic);
}

void CloseDescriptor(qintptr descriptor) { CloseHandle(HandleOf(descriptor)); }

qintptr Accept(qintptr listener, bool &is_exhausted) {
  is_exhausted = false;
  for (;;) {
    const Handle handle = ::accept(HandleOf(listener), nullptr, nullptr);
    if (handle != static_cast<Handle>(-1)) {
      if (MakeNonBlocking(handle))
        return static_cast<qintptr>(handle);
      CloseHandle(handle);
    } else if (!IsGone()) {
      is_exhausted = !IsBlocked();
      return -1;
    }
  }
}

}  // namespace borvane::mirror
