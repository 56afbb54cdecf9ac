#include "desktop/services/mirror_starter.h"

#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkProxy>
#include <cstdio>
#include <utility>

#include "common/attendance.h"
#include "common/mirror_probe.h"

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace borvane {

namespace {

using namespace std::chrono_literals;

/// The last line of what a mirror wrote on standard error, without its name in front.
QString LastLine(const QByteArray &errors) {
  const QByteArray text = errors.trimmed();
  QByteArray line = text.mid(text.lastIndexOf('\n') + 1);
  const QByteArray name = "borvane-mirror: ";
  return QString::fromLocal8Bit(line.startsWith(name) ? line.mid(name.size()) : line);
}

}  // namespace

MirrorStarter::MirrorStarter(MirrorPlace place, Log log, MirrorTimes times)
    : place_(std::move(place)),
      log_(std::move(log)),
      times_(times),
      between_tries_(times.first_pause, times.longest_pause),
      while_starting_(times.first_pause, times.longest_while_starting) {
  next_look_.setSingleShot(true);
  next_look_.callOnTimeout(this, &MirrorStarter::Look);
  timeout_.setSingleShot(true);
  timeout_.callOnTimeout(this, [this] { OnNoMirror("does not answer"); });

  question_.setProxy(QNetworkProxy::NoProxy);
  connect(&question_, &QTcpSocket::connected, this,
          [this] { question_.write(mirror_probe.data(), mirror_probe.size()); });
  connect(&question_, &QTcpSocket::readyRead, this, &MirrorStarter::OnAnswer);
  connect(&question_, &QTcpSocket::errorOccurred, this, &MirrorStarter::OnQuestionFailed);
  connect(&attendance_, &QLocalSocket::disconnected, this, &MirrorStarter::OnMirrorGone);

  mirror_.setProgram(place_.executable);
  mirror_.setArguments({"--attended", place_.socket_folder});
  mirror_.setProcessChannelMode(QProcess::ForwardedOutputChannel);
  mirror_.setStandardInputFile(QProcess::nullDevice());
#ifdef Q_OS_UNIX
  // Other monitors may use the mirror: it outlives this one, also when this one is ended from a terminal.
  mirror_.setChildProcessModifier([] { ::setsid(); });
#endif
  connect(&mirror_, &QProcess::readyReadStandardError, this, &MirrorStarter::ForwardErrors);
  connect(&mirror_, &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
    OnMirrorEnded(how == QProcess::CrashExit ? "crashed" : QString("ended with status %1").arg(status));
  });
  connect(&mirror_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart)
      OnMirrorEnded("cannot be started");
  });
}

MirrorStarter::~MirrorStarter() {
  mirror_.kill();
  mirror_.waitForFinished();
}

void MirrorStarter::Start() { LookAfter(0ms); }

void MirrorStarter::LookAfter(std::chrono::milliseconds pause) {
  timeout_.stop();
  question_.abort();
  next_look_.start(pause);
}

void MirrorStarter::Look() {
  if (is_found_)
    between_tries_.Reset();
  if (attendance_.state() != QLocalSocket::UnconnectedState)
    return;
  answer_.clear();
  timeout_.start(times_.answer_timeout);
  question_.connectToHost(QHostAddress(QHostAddress::LocalHost), place_.port);
}

void MirrorStarter::OnAnswer() {
  answer_ += question_.readAll().toStdString();
  if (IsUnfinishedHead(answer_))
    return;
  if (IsMirrorOfOurPages(answer_))
    OnMirrorFound();
  else if (MirrorVersion(answer_))
    OnNoMirror("is a borvane-mirror whose pages this version cannot read");
  else
    OnNoMirror("is not borvane-mirror");
}

void MirrorStarter::OnQuestionFailed(QAbstractSocket::SocketError error) {
  if (error == QAbstractSocket::ConnectionRefusedError)
    OnNobodyListens();
  else
    OnNoMirror("is not borvane-mirror");
}

/// A mirror that somebody else has started has no socket for this: then it is asked again from time to time, in case it
/// ends.
void MirrorStarter::OnMirrorFound() {
  is_found_ = true;
  end_.clear();
  if (!trouble_.isEmpty())
    log_("the data source is back: borvane-mirror answers at " + PlaceText());
  trouble_.clear();
  ForwardErrors();
  LookAfter(times_.between_looks_at_a_mirror);
  const std::string socket = AttendanceSocket(QFile::encodeName(place_.socket_folder).toStdString(), place_.port);
  attendance_.connectToServer(QFile::decodeName(socket.c_str()));
}

void MirrorStarter::OnMirrorGone() {
  is_found_ = false;
  LookAfter(between_tries_.Next());
}

/// A mirror that is starting or ending may take a connection and not answer it.
void MirrorStarter::OnNoMirror(const QString &what) {
  is_found_ = false;
  if (IsStarting()) {
    LookAfter(while_starting_.Next());
    return;
  }
  SetTrouble(QString("the program that listens at %1 %2").arg(PlaceText(), what));
  LookAfter(between_tries_.Next());
}

void MirrorStarter::OnNobodyListens() {
  is_found_ = false;
  if (IsStarting()) {
    LookAfter(while_starting_.Next());
    return;
  }
  if (!QFileInfo(place_.executable).isExecutable()) {
    SetTrouble(QString("nothing listens at %1, and there is no %2 to start").arg(PlaceText(), place_.executable));
    LookAfter(between_tries_.Next());
    return;
  }
  if (!end_.isEmpty())
    SetTrouble(end_);
  while_starting_.Reset();
  LookAfter(while_starting_.Next());
  mirror_.start();
}

void MirrorStarter::OnMirrorEnded(const QString &how) {
  const QString reason = LastLine(TakeErrors());
  end_ = place_.executable + ' ' + how + (reason.isEmpty() ? QString() : ": " + reason);
  LookAfter(between_tries_.Next());
}

/// While no mirror answers, its errors are kept for the line that says why.
void MirrorStarter::ForwardErrors() {
  if (!is_found_)
    return;
  const QByteArray errors = TakeErrors();
  std::fwrite(errors.constData(), 1, static_cast<std::size_t>(errors.size()), stderr);
}

QByteArray MirrorStarter::TakeErrors() { return mirror_.isOpen() ? mirror_.readAllStandardError() : QByteArray(); }

bool MirrorStarter::IsStarting() const { return mirror_.state() != QProcess::NotRunning; }

void MirrorStarter::SetTrouble(const QString &trouble) {
  if (trouble != trouble_)
    log_("no data source: " + trouble);
  trouble_ = trouble;
}

QString MirrorStarter::PlaceText() const { return QString("127.0.0.1:%1").arg(place_.port); }

}  // namespace borvane
