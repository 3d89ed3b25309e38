#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <cstring>
#include <string>

namespace qb::test {

/// A socket on which somebody listens who never takes a connection.
class Listener {
 public:
  explicit Listener(int backlog) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_ = folder_.filePath("a bus").toStdString();
    std::strncpy(address.sun_path, path_.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(socket_, backlog), 0);
  }
  ~Listener() { close(socket_); }
  std::string address() const { return "unix:path=" + folder_.path().toStdString() + "/a%20bus"; }

 private:
  QTemporaryDir folder_;
  std::string path_;
  int socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

}  // namespace qb::test
