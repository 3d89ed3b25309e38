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

/// Says who is there, as every connection begins, and waits for a word.
bool answers(int connection, std::chrono::milliseconds limit) {
  QByteArray greeting("\0AUTH EXTERNAL ", 15);
  greeting += QByteArray::number(getuid()).toHex() + "\r\n";
  const auto length = static_cast<std::size_t>(greeting.size());
  // One that has hung up does not hold anybody up.
  if (send(connection, greeting.data(), length, MSG_NOSIGNAL) < 0) return true;
  pollfd waiting{connection, POLLIN, 0};
  int ready = 0;
  do {
    ready = poll(&waiting, 1, static_cast<int>(limit.count()));
  } while (ready < 0 && errno == EINTR);
  return ready != 0;
}

}  // namespace

bool isSilentBus(const std::string& address, std::chrono::milliseconds limit) {
  for (const QByteArray& each : QByteArray::fromStdString(address).split(';')) {
    const auto socketName = socketOf(each);
    if (!socketName) continue;
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int result = connect(connection, reinterpret_cast<const sockaddr*>(&socketName->address),
                               socketName->length);
    // A queue that is full of others who wait.
    const bool isFull = result < 0 && errno == EAGAIN;
    const bool isSilent = isFull || (result == 0 && !answers(connection, limit));
    close(connection);
    // The next one is for those whom this one refuses.
    if (isFull || result == 0) return isSilent;
  }
  return false;
}

void turnSilentSessionBusOff() {
  if (!isSilentBus(SessionBus::addressOfSession().toStdString(), longestSilence)) return;
  log("The session bus does not answer, so Quillbox goes on without it.");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

}  // namespace qb
