#include "PlatformDesktop/session/DesktopSharing.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QImage>
#include <map>
#include <memory>

#include "PlatformDesktop/files/Descriptor.h"
#include "PlatformDesktop/graphics/PixelImage.h"
#include "PlatformDesktop/processes/DesktopEntry.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "TemporaryFolder.h"

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

TEST(MailDraft, ThunderbirdTakesItEncodedWhateverIsInIt) {
  const MailDraft draft{
      "It's, \"new\" = 100%", "Line 1\nLine, 2 \xc3\xa9\n", {"/work/a, b.txt", "/work/50%.png"}};
  EXPECT_THAT(argumentsForThunderbird(draft),
              ElementsAre("-compose",
                          "format=2,subject=It%27s%2C%20%22new%22%20%3D%20100%25,"
                          "body=Line%201%0ALine%2C%202%20%C3%A9%0A,"
                          "attachment=file%3A%2F%2F%2Fwork%2Fa%252C%2520b.txt%2C"
                          "file%3A%2F%2F%2Fwork%2F50%2525.png"));
  EXPECT_THAT(argumentsForThunderbird({"a", "b", {}}),
              ElementsAre("-compose", "format=2,subject=a,body=b"));
}

TEST(MailDraft, XdgEmailTakesItAsItIs) {
  EXPECT_THAT(argumentsForXdgEmail({"Subject", "a\nb", {"/work/a b.txt", "/work/c"}}),
              ElementsAre("--utf8", "--subject", "Subject", "--body", "a\nb", "--attach",
                          "/work/a b.txt", "--attach", "/work/c"));
}

TEST(MailDraft, AnAddressHoldsItAll) {
  EXPECT_EQ(mailtoUrl({"A & B", "a\nb?", {"/work/a b.txt"}}),
            "mailto:?subject=A%20%26%20B&body=a%0D%0Ab%3F&attach=/work/a%20b.txt");
}

TEST(MailDraft, EachLineEndCountsOnce) {
  EXPECT_EQ(withPlainLineEnds("a\r\n\r\nb\r\rc\n\n d\r"), "a\n\nb\n\nc\n\n d\n");
  EXPECT_EQ(withPlainLineEnds(""), "");
}

/// A desktop of its own with one mail program, a script that writes down what it is called with.
class DesktopSharingTest : public ::testing::Test {
 protected:
  DesktopSharingTest() {
    setVariable("HOME", folder_.path());
    setVariable("XDG_DATA_HOME", folder_.path("data"));
    setVariable("XDG_DATA_DIRS", folder_.path("none"));
    setVariable("XDG_CONFIG_HOME", folder_.path("config"));
    setVariable("XDG_CONFIG_DIRS", folder_.path("none"));
    setVariable("PATH", folder_.path("bin") + ":/bin:/usr/bin");
    mkfifo(folder_.path("told").c_str(), 0600);
    host_.setRunLoop(&loop_);
  }
  ~DesktopSharingTest() override {
    host_.finishBackgroundWork();
    host_.setRunLoop(nullptr);
    for (const auto& [name, value] : before_) {
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
  }

  void installProgram(const std::string& name) {
    const std::string path = folder_.write(
        "bin/" + name, "#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\" end > " + folder_.path("told"));
    chmod(path.c_str(), 0755);
  }
  /// The program that opens mail addresses.
  void installMailProgram(const std::string& id, const std::string& exec) {
    folder_.write("data/applications/" + id + ".desktop",
                  "[Desktop Entry]\nType=Application\nName=Mail\nExec=" + exec + "\n");
    folder_.write("config/mimeapps.list",
                  "[Default Applications]\nx-scheme-handler/mailto=" + id + ".desktop\n");
  }
  bool compose(const EmailMessage& message) {
    ApplicationCatalogue catalogue(host_);
    return DesktopSharing(catalogue, folder_.path("mail")).composeEmail(message);
  }
  /// What the program was called with, once it has been.
  std::vector<std::string> told() {
    // Both ends are open here, so that neither waits for the other to begin.
    const Descriptor pipe(open(folder_.path("told").c_str(), O_RDWR | O_CLOEXEC));
    std::string text;
    while (!text.ends_with("\nend\n")) {
      pollfd wait{pipe.get(), POLLIN, 0};
      if (poll(&wait, 1, 30000) <= 0) return {"nothing"};
      char block[4096];
      const ssize_t got = read(pipe.get(), block, sizeof block);
      if (got > 0) text.append(block, static_cast<std::size_t>(got));
    }
    return splitList(text, '\n');
  }
  static AttributedString text(const std::string& words) {
    AttributedString result;
    result.append(words, Font());
    return result;
  }

  TemporaryFolder folder_;

 private:
  void setVariable(const std::string& name, const std::string& value) {
    const char* const present = getenv(name.c_str());
    before_[name] = present ? std::optional<std::string>(present) : std::nullopt;
    setenv(name.c_str(), value.c_str(), 1);
  }

  std::map<std::string, std::optional<std::string>> before_;
  QtRunLoopHost host_;
  RunLoop loop_{host_};
};

TEST_F(DesktopSharingTest, ThunderbirdOpensTheMessageWithItsFile) {
  installProgram("thunderbird");
  installMailProgram("thunderbird", "thunderbird %u");
  ASSERT_TRUE(compose({"a.txt", {text("Hi:\r\n\r\n"), SharedFile{"/work/a.txt"}}}));
  EXPECT_THAT(told(), ElementsAre(folder_.path("bin/thunderbird"), "-compose",
                                  "format=2,subject=a.txt,body=Hi%3A%0A%0A,"
                                  "attachment=file%3A%2F%2F%2Fwork%2Fa.txt",
                                  "end"));
}

TEST_F(DesktopSharingTest, AnyOtherProgramIsLeftToXdgEmail) {
  installProgram("mailer");
  installProgram("xdg-email");
  installMailProgram("org.mailer", "mailer %u");
  ASSERT_TRUE(compose({"Information", {text("a "), text("b")}}));
  EXPECT_THAT(told(), ElementsAre(folder_.path("bin/xdg-email"), "--utf8", "--subject",
                                  "Information", "--body", "a b", "end"));
}

TEST_F(DesktopSharingTest, WithoutMailProgramNothingIsShared) {
  EXPECT_FALSE(compose({"Information", {text("a")}}));
}

TEST_F(DesktopSharingTest, AProgramThatCannotBeStartedIsNone) {
  installMailProgram("thunderbird", folder_.path("bin/none") + " %u");
  EXPECT_FALSE(compose({"Information", {text("a")}}));
}

TEST_F(DesktopSharingTest, AnImageGoesAsAFileOfItsOwn) {
  installProgram("thunderbird");
  installMailProgram("thunderbird", "thunderbird %u");
  QImage pixels(40, 30, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(QColor(10, 20, 30));
  const Image image(std::make_shared<const PixelImage>(pixels, Size{40, 30}));
  ASSERT_TRUE(compose({"Image for You", {text("Hi"), image}}));
  ASSERT_THAT(told().back(), "end");
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.path("mail"))) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].filename(), "Image.png");
  const QImage written(QString::fromStdString(files[0].string()));
  EXPECT_EQ(written.size(), QSize(40, 30));
  EXPECT_EQ(written.pixelColor(20, 15), QColor(10, 20, 30));
}

TEST_F(DesktopSharingTest, ImagesOfDaysAgoGo) {
  installProgram("thunderbird");
  installMailProgram("thunderbird", "thunderbird %u");
  folder_.write("mail/old/Image.png", "");
  folder_.write("mail/young/Image.png", "");
  std::filesystem::last_write_time(
      folder_.path("mail/old"),
      std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
  QImage pixels(4, 3, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::white);
  ASSERT_TRUE(compose({"Image", {Image(std::make_shared<const PixelImage>(pixels, Size{4, 3}))}}));
  EXPECT_EQ(told().back(), "end");
  EXPECT_FALSE(std::filesystem::exists(folder_.path("mail/old")));
  EXPECT_TRUE(std::filesystem::exists(folder_.path("mail/young/Image.png")));
}

}  // namespace
}  // namespace qb
