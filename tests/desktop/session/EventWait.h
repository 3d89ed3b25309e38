#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <functional>

namespace qb::test {

/// Serves Qt's events until it holds; false when that takes much too long.
inline bool waitFor(const std::function<bool()>& condition) {
  constexpr int timeLimit = 60000;
  QElapsedTimer time;
  time.start();
  QTimer look;
  look.start(5);
  while (!condition()) {
    if (time.hasExpired(timeLimit)) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

}  // namespace qb::test
