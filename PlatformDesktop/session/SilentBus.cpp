#include "PlatformDesktop/session/SilentBus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>

#include "PlatformDesktop/session/SessionBus.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

constexpr std::chrono::seconds longestSilence{5};
constexpr int steps = 5;

struct SocketAddress {
  sockaddr_un address{};
  socklen_t length = 0;
};

SocketAddress socketAddress(const QByteArray& name) {
  SocketAddress result;
  result.address.sun_family = AF_UNIX;
  std::memcpy(result.address.sun_path, name.data(), static_cast<std::size_t>(name.size()));
  result.length =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path)) + static_cast<socklen_t>(name.size());
  return result;
}

/// Of one address such as "unix:path=/run/user/1000/bus,guid=..."; none for other transports.
std::optional<SocketAddress> socketOf(const QByteArray& address) {
  if (!address.startsWith("unix:")) return std::nullopt;
  for (const QByteArray& pair : address.mid(static_cast<qsizetype>(strlen("unix:"))).split(',')) {
    const bool isAbstract = pair.startsWith("abstract=");
    if (!isAbstract && !pair.startsWith("path=")) continue;
    QByteArray name = QByteArray::fromPercentEncoding(pair.mid(pair.indexOf('=') + 1));
    if (isAbstract) name.prepend('\0');
    if (static_cast<std::size_t>(name.size()) < sizeof(sockaddr_un::sun_path)) {
      return socketAddress(name);
    }
  }
  return std::nullopt;
}

/// 0 when connected. Waits while the queue is full of others who want to.
int connectionError(int connection, const SocketAddress& name, std::chrono::milliseconds limit) {
  for (int step = 0;; ++step) {
    const auto* const address = reinterpret_cast<const sockaddr*>(&name.address);
    if (connect(connection, address, name.length) == 0) return 0;
    if (errno != EAGAIN || step == steps) return errno;
    poll(nullptr, 0, static_cast<int>(limit.count()) / steps);
  }
}

/// Says who is there, as every connection begins, and waits for a word.
bool answers(int connection, std::chrono::milliseconds limit) {
  QByteArray greeting("\0AUTH EXTERNAL ", 15);
  greeting += QByteArray::number(getuid()).toHex() + "\r\n";
  const auto length = static_cast<std::size_t>(greeting.size());
  // One that has hung up does not hold anybody up.
  if (send(connection, greeting.data(), length, MSG_NOSIGNAL) < 0) return true;
  // In steps, of which a machine that stands still for a while takes only one away.
  for (int step = 0; step < steps; ++step) {
    pollfd waiting{connection, POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(limit.count()) / steps) > 0) return true;
  }
  return false;
}

}  // namespace

bool isSilentBus(const std::string& address, std::chrono::milliseconds limit) {
  for (const QByteArray& each : QByteArray::fromStdString(address).split(';')) {
    const auto socketName = socketOf(each);
    if (!socketName) continue;
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int error = connectionError(connection, *socketName, limit);
    const bool isSilent = error == EAGAIN || (error == 0 && !answers(connection, limit));
    close(connection);
    // The next one is for those whom this one refuses.
    if (error == 0 || error == EAGAIN) return isSilent;
  }
  return false;
}

void turnSilentSessionBusOff() {
  if (!isSilentBus(SessionBus::addressOfSession().toStdString(), longestSilence)) return;
  log("The session bus does not answer, so Quillbox goes on without it.");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

}  // namespace qb
