#include "PlatformDesktop/files/DesktopFileViewer.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <string>
#include <utility>
#include <vector>

#include "EventWait.h"
#include "PrivateBus.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Notes what is to be opened.
class Opener : public ApplicationControl {
 public:
  std::vector<std::string> opened;

  bool openFile(const std::string& path) override {
    opened.push_back(path);
    return true;
  }
  bool openFile(const std::string&, const std::string&) override { return false; }
  std::string bundlePath() const override { return {}; }
  std::string shortVersionString() const override { return {}; }
  std::string humanReadableCopyright() const override { return {}; }
  std::string textResource(const std::string&, const std::string&) const override { return {}; }
  std::string operatingSystemVersionString() const override { return {}; }
  bool launchAppWithBundleIdentifier(const std::string&, std::uint32_t) override { return false; }
  bool openURL(const std::string&) override { return false; }
  void terminate() override {}
};

/// Another program that is known by a name on the bus, and notes its calls as one line each.
class Service : public QDBusVirtualObject {
 public:
  Service(const QString& bus, const QString& name, const QString& path)
      : name_(name), connection_(QDBusConnection::connectToBus(bus, name)) {
    EXPECT_TRUE(connection_.registerVirtualObject(path, this));
    EXPECT_TRUE(connection_.registerService(name));
  }
  ~Service() override { QDBusConnection::disconnectFromBus(name_); }

  std::vector<std::string> calls;
  bool refuses = false;

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    QString line = message.interface() + u'.' + message.member() + u' ' + message.signature();
    for (const QVariant& argument : message.arguments()) {
      line += u' ' + (argument.canConvert<QStringList>() ? argument.toStringList().join(u',')
                                                         : argument.toString());
    }
    calls.push_back(line.toStdString());
    if (refuses) {
      connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
    } else {
      connection.send(message.createReply());
    }
    return true;
  }

 private:
  QString name_;
  QDBusConnection connection_;
};

class FileViewerTest : public ::testing::Test {
 protected:
  FileViewerTest() {
    EXPECT_TRUE(waitFor([this] { return session_.isConnected(); }));
  }
  std::unique_ptr<Service> fileManager() {
    return std::make_unique<Service>(bus_.address(), "org.freedesktop.FileManager1",
                                     "/org/freedesktop/FileManager1");
  }
  std::unique_ptr<Service> previewer() {
    return std::make_unique<Service>(bus_.address(), "org.gnome.NautilusPreviewer",
                                     "/org/gnome/NautilusPreviewer");
  }
  bool waitForCalls(const Service& service, std::size_t count) {
    return waitFor([&] { return service.calls.size() >= count; });
  }

  PrivateBus bus_;
  SessionBus session_{bus_.address()};
  Opener opener_;
  DesktopFileViewer viewer_{session_, opener_};
};

TEST_F(FileViewerTest, TheFileManagerShowsTheFileAndTellsOfIt) {
  const auto manager = fileManager();
  viewer_.selectFile("/work/My Gr\u00fc\u00dfe, 100%.txt");
  viewer_.openInformationWindow("/work/a.txt");
  ASSERT_TRUE(waitForCalls(*manager, 2));
  EXPECT_THAT(manager->calls, ElementsAre("org.freedesktop.FileManager1.ShowItems ass "
                                          "file:///work/My%20Gr%C3%BC%C3%9Fe%2C%20100%25.txt ",
                                          "org.freedesktop.FileManager1.ShowItemProperties ass "
                                          "file:///work/a.txt "));
  EXPECT_THAT(opener_.opened, IsEmpty());
}

TEST_F(FileViewerTest, ThePreviewerShowsWhatIsInTheFile) {
  const auto shown = previewer();
  viewer_.previewFile("/work/a.txt");
  ASSERT_TRUE(waitForCalls(*shown, 1));
  EXPECT_THAT(shown->calls, ElementsAre("org.gnome.NautilusPreviewer2.ShowFile ssb "
                                        "file:///work/a.txt  false"));
  EXPECT_THAT(opener_.opened, IsEmpty());
}

TEST_F(FileViewerTest, WithoutThemTheFolderOrTheFileIsOpened) {
  viewer_.selectFile("/work/folder/a.txt");
  ASSERT_TRUE(waitFor([this] { return opener_.opened.size() == 1; }));
  viewer_.openInformationWindow("/a.txt");
  ASSERT_TRUE(waitFor([this] { return opener_.opened.size() == 2; }));
  viewer_.previewFile("/work/a.txt");
  ASSERT_TRUE(waitFor([this] { return opener_.opened.size() == 3; }));
  EXPECT_THAT(opener_.opened, ElementsAre("/work/folder", "/", "/work/a.txt"));
}

TEST_F(FileViewerTest, WhatTheyRefuseIsOpenedToo) {
  const auto manager = fileManager();
  manager->refuses = true;
  viewer_.selectFile("/work/a.txt");
  ASSERT_TRUE(waitFor([this] { return !opener_.opened.empty(); }));
  EXPECT_THAT(opener_.opened, ElementsAre("/work"));
}

TEST(FileViewerWithoutBusTest, OpensAtOnce) {
  Opener opener;
  SessionBus none{QString()};
  DesktopFileViewer viewer(none, opener);
  viewer.selectFile("/work/a.txt");
  viewer.previewFile("/work/a.txt");
  EXPECT_THAT(opener.opened, ElementsAre("/work", "/work/a.txt"));
}

}  // namespace
}  // namespace qb::test
