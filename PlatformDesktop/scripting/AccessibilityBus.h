#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// The end of the time that something may take.
class Deadline {
 public:
  explicit Deadline(TimeInterval fromNow);

  bool hasPassed() const { return Clock::now() >= end_; }
  /// For calls on a bus, at least 1.
  int milliseconds() const;
  /// Sleeps for as long as one should between two looks at something.
  static void rest();

 private:
  using Clock = std::chrono::steady_clock;

  Clock::time_point end_;
};

/// Something that a program shows on the bus: a window, a menu, an entry.
struct AccessibleObject {
  /// The program's unique name on the bus.
  QString program;
  QString path;
};

/// A connection of our own to the bus on which programs show what is in their windows to assistive
/// technologies (AT-SPI over D-Bus).
///
/// Whatever is asked is asked with a deadline, and of many objects at once: what counts is the time
/// in all, not that of one call. A program that has not answered at the deadline makes the
/// operation throw `ScriptError`, as a time-out; one that has gone gives empty answers. Main
/// thread.
class AccessibilityBus {
 public:
  /// Asks the session's bus for the way, which starts the accessibility bus where the desktop has
  /// one. Throws `ScriptError`.
  static std::unique_ptr<AccessibilityBus> connect(const QString& sessionAddress,
                                                   const Deadline& deadline);
  ~AccessibilityBus();
  AccessibilityBus(const AccessibilityBus&) = delete;
  AccessibilityBus& operator=(const AccessibilityBus&) = delete;

  /// What stands for all that a process shows; several where several parts of it do so on their
  /// own.
  std::vector<AccessibleObject> programsOf(std::int32_t pid, const Deadline& deadline) const;

  struct Description {
    AccessibleObject object;
    QString name;
    /// As AT-SPI counts roles.
    std::uint32_t role = 0;
    /// The bits of AT-SPI's states.
    std::uint64_t states = 0;
  };
  std::vector<Description> describe(const std::vector<AccessibleObject>& objects,
                                    const Deadline& deadline) const;
  /// The children of each, in the order of `objects`.
  std::vector<std::vector<AccessibleObject>> childrenOf(
      const std::vector<AccessibleObject>& objects, const Deadline& deadline) const;
  /// Has the program do the first thing that an object offers. False when it refuses. A program
  /// that asks its user something before it answers counts as having done it.
  bool act(const AccessibleObject& object, const Deadline& deadline) const;

 private:
  explicit AccessibilityBus(const QString& name) : name_(name), connection_(name) {}

  QDBusPendingCall ask(const QDBusMessage& question, const Deadline& deadline) const;
  std::vector<QDBusMessage> askAll(const std::vector<QDBusMessage>& questions,
                                   const Deadline& deadline) const;

  QString name_;
  QDBusConnection connection_;
};

}  // namespace qb
