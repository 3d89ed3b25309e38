#pragma once

#include <QProcess>
#include <QString>

namespace qb::test {

/// A session bus of its own.
class PrivateBus {
 public:
  PrivateBus() {
    process_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
    if (process_.waitForStarted() && process_.waitForReadyRead()) {
      address_ = QString::fromUtf8(process_.readLine()).trimmed();
    }
  }
  ~PrivateBus() {
    process_.kill();
    process_.waitForFinished();
  }
  const QString& address() const { return address_; }

 private:
  QProcess process_;
  QString address_;
};

}  // namespace qb::test
