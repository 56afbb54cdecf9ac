#pragma once

#include <cstdint>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace borvane {

/// A free port of the loopback address whose number the system gives to no other program while this object lives: a
/// test's server can listen there, end, and listen there again. Without it, any connection of the tests that run at the
/// same time may have the number meanwhile. Nothing listens there until a server does, which must allow its address to
/// be shared (SO_REUSEADDR), as servers do.
class ReservedPort {
 public:
  ReservedPort() {
    const int yes = 1;
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *bytes = reinterpret_cast<sockaddr *>(&address);
    EXPECT_EQ(::setsockopt(socket_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes), 0);
    EXPECT_EQ(::bind(socket_, bytes, size), 0);
    EXPECT_EQ(::getsockname(socket_, bytes, &size), 0);
    number_ = ntohs(address.sin_port);
  }
  ~ReservedPort() { ::close(socket_); }
  ReservedPort(const ReservedPort &) = delete;
  ReservedPort &operator=(const ReservedPort &) = delete;

  std::uint16_t Number() const { return number_; }

 private:
  int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::uint16_t number_ = 0;
};

}  // namespace borvane
