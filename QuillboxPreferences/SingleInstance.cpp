#include "QuillboxPreferences/SingleInstance.h"

#include <unistd.h>

#include <QLocalSocket>
#include <utility>

namespace qb {

namespace {

constexpr int patienceInMilliseconds = 500;

QString serverName() {
  QString display = qEnvironmentVariable("DISPLAY");
  return QStringLiteral("quillbox-preferences-%1-%2")
      .arg(getuid())
      .arg(display.replace(u'/', u'-'));
}

}  // namespace

bool SingleInstance::handOver(const QString& page) {
  QLocalSocket socket;
  socket.connectToServer(serverName());
  if (!socket.waitForConnected(patienceInMilliseconds)) return false;
  socket.write(page.toUtf8() + '\n');
  return socket.waitForBytesWritten(patienceInMilliseconds);
}

SingleInstance::SingleInstance(std::function<void(const QString&)> wished)
    : wished_(std::move(wished)) {
  // Nobody answered there, so what is left of that name belongs to one that has died.
  QLocalServer::removeServer(serverName());
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  server_.listen(serverName());
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { take(); });
}

void SingleInstance::take() {
  QLocalSocket* const socket = server_.nextPendingConnection();
  QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
  QObject::connect(socket, &QLocalSocket::readyRead, &server_, [this, socket] {
    if (!socket->canReadLine()) return;
    wished_(QString::fromUtf8(socket->readLine(64)).trimmed());
    socket->disconnectFromServer();
  });
}

}  // namespace qb
