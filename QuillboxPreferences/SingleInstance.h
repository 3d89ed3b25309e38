#pragma once

#include <QLocalServer>
#include <QString>
#include <functional>

namespace qb {

/// Lets only one of this program run on a display: a second one hands its wish over to the first.
class SingleInstance {
 public:
  /// True when another one runs and has been given the page to show.
  static bool handOver(const QString& page);

  /// Calls `wished` with the page that another start asked for; it may be empty.
  explicit SingleInstance(std::function<void(const QString&)> wished);

 private:
  void take();

  std::function<void(const QString&)> wished_;
  QLocalServer server_;
};

}  // namespace qb
