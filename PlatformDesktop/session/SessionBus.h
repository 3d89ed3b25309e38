#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qb {

/// The session's message bus.
///
/// A bus may take long to answer or never do, so the connection is made on a thread of its own.
/// Without a bus the log says so once and everything that was to be sent is dropped. Main thread.
class SessionBus : public QObject {
  Q_OBJECT

 public:
  using Task = std::function<void(QDBusConnection&)>;

  /// Starts to connect to the bus at `address`.
  explicit SessionBus(const QString& address = addressOfSession());
  ~SessionBus() override;

  /// Calls `task` once the connection stands: at once when it does already, never when it does not
  /// come about. Tasks keep their order.
  void whenConnected(Task task);
  /// For those who would rather do something else than wait.
  bool isConnected() const { return state_ == State::Connected; }

  /// Where the session's bus is by the environment; empty when there is none. No bus is ever
  /// started for us.
  static QString addressOfSession();

 private Q_SLOTS:
  void busHasGone();

 private:
  enum class State { Connecting, Connected, Absent };
  struct Attempt;

  void finished(const QString& error);
  void giveUp(const QString& why);

  State state_ = State::Connecting;
  QString name_;
  std::shared_ptr<Attempt> attempt_;
  std::optional<QDBusConnection> connection_;
  std::vector<Task> tasks_;
};

}  // namespace qb
