#include "desktop/services/mirror_starter.h"

#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QProcess>
#include <algorithm>
#include <charconv>
#include <utility>

#include "feed/hosts.h"
#include "mirror/attendance.h"

namespace borvane {

namespace {

// How long a look waits, and how long the next one is put off. A mirror takes some ten milliseconds to start.
constexpr int milliseconds_for_an_answer = 2000;
constexpr int milliseconds_until_a_new_mirror_listens = 100;
constexpr int milliseconds_between_looks = 10000;

/// More than the head of any answer of the mirror.
constexpr qsizetype longest_head = 4096;

}  // namespace

MirrorStarter::MirrorStarter(quint16 port, QString executable, QStringList arguments)
    : port_(port), executable_(std::move(executable)), arguments_(std::move(arguments)) {
  question_.setProxy(QNetworkProxy::NoProxy);
  connect(&question_, &QTcpSocket::connected, this,
          [this] { question_.write("GET / HTTP/1.0\r\nHost: localhost\r\n\r\n"); });
  connect(&question_, &QTcpSocket::readyRead, this, &MirrorStarter::Heard);
  connect(&question_, &QTcpSocket::errorOccurred, this, &MirrorStarter::NobodyAnswered);
  connect(&attendance_, &QLocalSocket::disconnected, this, [this] { next_look_.start(0); });
  next_look_.setSingleShot(true);
  next_look_.callOnTimeout(this, &MirrorStarter::Ask);
}

void MirrorStarter::Start() { next_look_.start(0); }

void MirrorStarter::Ask() {
  if (attendance_.state() != QLocalSocket::UnconnectedState)
    return;
  answer_.clear();
  question_.abort();
  // Where nothing comes back in time, the next look asks again.
  next_look_.start(milliseconds_for_an_answer);
  question_.connectToHost(QHostAddress(QHostAddress::LocalHost), port_);
}

void MirrorStarter::Heard() {
  answer_ += question_.readAll();
  const bool is_mirror = answer_.contains("\r\nServer: borvane-mirror/");
  if (!is_mirror && !answer_.contains("\r\n\r\n") && answer_.size() < longest_head)
    return;
  question_.abort();
  if (is_mirror)
    Attend();
  else
    next_look_.start(milliseconds_between_looks);
}

void MirrorStarter::NobodyAnswered(QAbstractSocket::SocketError error) {
  if (error == QAbstractSocket::ConnectionRefusedError)
    StartMirror();
  else if (error == QAbstractSocket::RemoteHostClosedError)
    Heard();
}

void MirrorStarter::StartMirror() {
  if (!QFileInfo(executable_).isExecutable())
    return;
  QProcess::startDetached(executable_, arguments_);
  next_look_.start(milliseconds_until_a_new_mirror_listens);
}

/// A mirror that somebody else has started has no socket for this: then it is asked again from time to time, in case it
/// ends.
void MirrorStarter::Attend() {
  next_look_.start(milliseconds_between_looks);
  attendance_.connectToServer(mirror::AttendanceSocketName(port_));
}

std::optional<quint16> PortOfDefaultHosts() {
  const auto is_default = [](const EndpointHost &row) { return HostOf(row.endpoint) == row.default_host; };
  const auto *const row = std::find_if(endpoint_hosts.begin(), endpoint_hosts.end(), is_default);
  if (row == endpoint_hosts.end())
    return {};
  const std::string_view port = row->default_host.substr(row->default_host.find(':') + 1);
  quint16 number = 0;
  std::from_chars(port.data(), port.data() + port.size(), number);
  return number;
}

}  // namespace borvane
