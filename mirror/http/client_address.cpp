#include "http/client_address.h"

#include <algorithm>

namespace borvane::mirror {

namespace {

constexpr int network_bits = 64;

}  // namespace

QHostAddress ClientOf(const QHostAddress &address) {
  bool is_ipv4 = false;
  const quint32 ipv4 = address.toIPv4Address(&is_ipv4);
  if (is_ipv4)
    return QHostAddress(ipv4);
  Q_IPV6ADDR network = address.toIPv6Address();
  std::fill(network.c + network_bits / 8, network.c + sizeof network.c, quint8(0));
  return QHostAddress(network);
}

}  // namespace borvane::mirror
