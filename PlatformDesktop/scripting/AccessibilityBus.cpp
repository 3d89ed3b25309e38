#include "PlatformDesktop/scripting/AccessibilityBus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <algorithm>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

#include "PlatformDesktop/session/SilentBus.h"
#include "QuillboxCommon/scripting/ScriptError.h"

namespace qb {

namespace {

constexpr std::chrono::milliseconds lookInterval{2};
/// More than any menu or window has; whoever tells of more has them cut off.
constexpr std::size_t mostChildren = 1000;

const QString daemonService = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
const QString actionInterface = QStringLiteral("org.a11y.atspi.Action");
const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
const QString nullPath = QStringLiteral("/org/a11y/atspi/null");

[[noreturn]] void failUnreachable(const QString& why) {
  throw ScriptError{ScriptErrorNoAssistiveAccess,
                    "The menus of other programs cannot be reached: " + why.toStdString() + ".",
                    ""};
}

[[noreturn]] void failLate() { throw ScriptError{ScriptErrorTimeout, "AppleEvent timed out.", ""}; }

QDBusMessage daemonCall(const QString& member) {
  return QDBusMessage::createMethodCall(daemonService, daemonPath, daemonService, member);
}

QDBusMessage call(const AccessibleObject& object, const QString& interface, const QString& member) {
  return QDBusMessage::createMethodCall(object.program, object.path, interface, member);
}

QDBusMessage nameCall(const AccessibleObject& object) {
  return call(object, propertiesInterface, QStringLiteral("Get"))
         << accessibleInterface << QStringLiteral("Name");
}

/// The first argument of an answer, whatever that is; null for an error.
QVariant answerIn(const QDBusMessage& reply) {
  return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

/// The two halves of the states.
std::uint64_t statesIn(const QDBusMessage& reply) {
  const QVariant answer = answerIn(reply);
  if (!answer.canConvert<QDBusArgument>()) return 0;
  const auto argument = answer.value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("au")) return 0;
  std::uint64_t states = 0;
  int shift = 0;
  argument.beginArray();
  while (!argument.atEnd() && shift < 64) {
    quint32 half = 0;
    argument >> half;
    states |= std::uint64_t{half} << shift;
    shift += 32;
  }
  argument.endArray();
  return states;
}

std::vector<AccessibleObject> objectsIn(const QDBusMessage& reply) {
  std::vector<AccessibleObject> objects;
  const QVariant answer = answerIn(reply);
  if (!answer.canConvert<QDBusArgument>()) return objects;
  const auto argument = answer.value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("a(so)")) return objects;
  argument.beginArray();
  while (!argument.atEnd() && objects.size() < mostChildren) {
    QString program;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> program >> path;
    argument.endStructure();
    if (path.path() != nullPath) objects.push_back({program, path.path()});
  }
  return objects;
}

/// What the connecting thread and whoever waits for it share: the thread may be held by a bus that
/// hangs.
struct Attempt {
  std::mutex mutex;
  bool isAbandoned = false;
  /// What went wrong; empty when the connection stands.
  std::promise<QString> reason;
};

/// Connects to a bus that answers: of a silent one Qt would wait for an answer, and its other
/// connections with it.
QDBusConnection connectedTo(const QString& address, const QString& name, const Deadline& deadline) {
  // In half of the time, so that there is some left to say so.
  const std::chrono::milliseconds limit(deadline.milliseconds() / 2);
  return isSilentBus(address.toStdString(), limit) ? QDBusConnection(name)
                                                   : QDBusConnection::connectToBus(address, name);
}

/// Where the accessibility bus is; empty when there is none.
QString accessibilityAddress(const QString& sessionAddress, const QString& name,
                             const Deadline& deadline, QString& reason) {
  QDBusConnection session = connectedTo(sessionAddress, name, deadline);
  QString address;
  if (session.isConnected()) {
    const QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    address = answerIn(session.call(question, QDBus::Block, deadline.milliseconds())).toString();
    if (address.isEmpty()) reason = QStringLiteral("this desktop has no accessibility bus");
  } else {
    reason = QStringLiteral("the session bus does not answer");
  }
  QDBusConnection::disconnectFromBus(name);
  return address;
}

/// Empty, or what went wrong.
QString connectAs(const QString& name, const QString& sessionAddress, const Deadline& deadline) {
  QString reason;
  const QString address =
      accessibilityAddress(sessionAddress, name + QStringLiteral("-session"), deadline, reason);
  if (address.isEmpty()) return reason;
  if (connectedTo(address, name, deadline).isConnected()) return {};
  return QStringLiteral("the accessibility bus does not answer");
}

}  // namespace

Deadline::Deadline(TimeInterval fromNow)
    : end_(Clock::now() +
           std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(fromNow))) {}

int Deadline::milliseconds() const {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
  return static_cast<int>(std::max<std::int64_t>(left.count(), 1));
}

void Deadline::rest() { std::this_thread::sleep_for(lookInterval); }

std::unique_ptr<AccessibilityBus> AccessibilityBus::connect(const QString& sessionAddress,
                                                            const Deadline& deadline) {
  static int number = 0;
  if (sessionAddress.isEmpty()) failUnreachable(QStringLiteral("there is no session bus"));
  const QString name = QStringLiteral("quillbox-accessibility-%1").arg(++number);
  const auto attempt = std::make_shared<Attempt>();
  auto outcome = attempt->reason.get_future();
  std::thread([attempt, name, sessionAddress, deadline] {
    const QString reason = connectAs(name, sessionAddress, deadline);
    const std::lock_guard lock(attempt->mutex);
    if (attempt->isAbandoned || !reason.isEmpty()) QDBusConnection::disconnectFromBus(name);
    attempt->reason.set_value(reason);
  }).detach();
  if (outcome.wait_for(std::chrono::milliseconds(deadline.milliseconds())) !=
      std::future_status::ready) {
    const std::lock_guard lock(attempt->mutex);
    attempt->isAbandoned = true;
    // It may have come about just now.
    if (outcome.wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
      QDBusConnection::disconnectFromBus(name);
    }
    failLate();
  }
  if (const QString why = outcome.get(); !why.isEmpty()) failUnreachable(why);
  return std::unique_ptr<AccessibilityBus>(new AccessibilityBus(name));
}

AccessibilityBus::~AccessibilityBus() { QDBusConnection::disconnectFromBus(name_); }

/// By the processes behind the connections, which the bus itself knows: no program is asked.
std::vector<AccessibleObject> AccessibilityBus::programsOf(std::int32_t pid,
                                                           const Deadline& deadline) const {
  QStringList programs =
      answerIn(askAll({daemonCall(QStringLiteral("ListNames"))}, deadline).front()).toStringList();
  std::vector<QDBusMessage> questions;
  programs.removeIf([&](const QString& name) { return !name.startsWith(u':'); });
  for (const QString& program : programs) {
    questions.push_back(daemonCall(QStringLiteral("GetConnectionUnixProcessID")) << program);
  }
  const auto replies = askAll(questions, deadline);
  std::vector<AccessibleObject> found;
  for (std::size_t i = 0; i < replies.size(); ++i) {
    const bool isHis = answerIn(replies[i]).toLongLong() == pid;
    if (isHis) found.push_back({programs[static_cast<qsizetype>(i)], rootPath});
  }
  return found;
}

std::vector<AccessibilityBus::Description> AccessibilityBus::describe(
    const std::vector<AccessibleObject>& objects, const Deadline& deadline) const {
  std::vector<QDBusMessage> questions;
  for (const AccessibleObject& object : objects) {
    questions.push_back(nameCall(object));
    questions.push_back(call(object, accessibleInterface, QStringLiteral("GetRole")));
    questions.push_back(call(object, accessibleInterface, QStringLiteral("GetState")));
  }
  const auto replies = askAll(questions, deadline);
  std::vector<Description> descriptions;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const QString name = answerIn(replies[3 * i]).value<QDBusVariant>().variant().toString();
    descriptions.push_back(
        {objects[i], name, answerIn(replies[3 * i + 1]).toUInt(), statesIn(replies[3 * i + 2])});
  }
  return descriptions;
}

std::vector<std::vector<AccessibleObject>> AccessibilityBus::childrenOf(
    const std::vector<AccessibleObject>& objects, const Deadline& deadline) const {
  std::vector<QDBusMessage> questions;
  for (const AccessibleObject& object : objects) {
    questions.push_back(call(object, accessibleInterface, QStringLiteral("GetChildren")));
  }
  std::vector<std::vector<AccessibleObject>> children;
  for (const QDBusMessage& reply : askAll(questions, deadline)) {
    children.push_back(objectsIn(reply));
  }
  return children;
}

/// What a click sets off may ask the user something, in a loop of its own, and the answer to the
/// call comes only after that. A question that was asked behind it is answered by then: the calls
/// of one connection are dealt with in order. Other programs do it the other way round, and are
/// deaf once they have answered; so whichever comes first counts.
bool AccessibilityBus::act(const AccessibleObject& object, const Deadline& deadline) const {
  const QDBusPendingCall action =
      ask(call(object, actionInterface, QStringLiteral("DoAction")) << 0, deadline);
  const QDBusPendingCall behind =
      ask(call(object, accessibleInterface, QStringLiteral("GetRole")), deadline);
  while (!action.isFinished() && !behind.isFinished()) {
    if (deadline.hasPassed()) failLate();
    Deadline::rest();
  }
  if (action.isFinished()) return answerIn(action.reply()).toBool();
  if (deadline.hasPassed()) failLate();
  return true;
}

QDBusPendingCall AccessibilityBus::ask(const QDBusMessage& question,
                                       const Deadline& deadline) const {
  return connection_.asyncCall(question, deadline.milliseconds());
}

std::vector<QDBusMessage> AccessibilityBus::askAll(const std::vector<QDBusMessage>& questions,
                                                   const Deadline& deadline) const {
  std::vector<QDBusPendingCall> calls;
  for (const QDBusMessage& question : questions) calls.push_back(ask(question, deadline));
  std::vector<QDBusMessage> replies;
  for (QDBusPendingCall& each : calls) {
    each.waitForFinished();
    if (deadline.hasPassed()) failLate();
    replies.push_back(each.reply());
  }
  return replies;
}

}  // namespace qb
