#pragma once

#include <QEventLoop>
#include <QThread>
#include <future>
#include <memory>

#include "http/server.h"

namespace borvane::mirror {

/// A server in a thread of its own, with a handler that lives there, too.
template <class SomeHandler>
class ServerInAThread {
 public:
  explicit ServerInAThread(Limits limits = {}) {
    thread_.reset(QThread::create([this, limits] {
      SomeHandler handler;
      Server server(limits, handler);
      handler_ = &handler;
      ready_.set_value(server.Listen(QHostAddress::LocalHost, 0).value_or(0));
      QEventLoop().exec();
    }));
    thread_->start();
    port_ = ready_.get_future().get();
  }
  ServerInAThread(const ServerInAThread &) = delete;
  ServerInAThread &operator=(const ServerInAThread &) = delete;
  ~ServerInAThread() {
    thread_->quit();
    thread_->wait();
  }

  quint16 Port() const { return port_; }

 protected:
  /// Its functions run beside the server's thread.
  const SomeHandler &handler() const { return *handler_; }

 private:
  const SomeHandler *handler_ = nullptr;
  std::promise<quint16> ready_;
  std::unique_ptr<QThread> thread_;
  quint16 port_ = 0;
};

}  // namespace borvane::mirror
