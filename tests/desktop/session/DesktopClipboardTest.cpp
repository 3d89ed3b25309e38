#include "PlatformDesktop/clipboard/DesktopClipboard.h"

#include <gmock/gmock.h>

#include <QByteArray>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "EventWait.h"
#include "PlatformDesktop/clipboard/ClipboardForms.h"
#include "XClient.h"
#include "XServer.h"

namespace qb::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class DesktopClipboardTest : public ::testing::Test {
 protected:
  DesktopClipboardTest() : before_(qgetenv("DISPLAY")) {
    qputenv("DISPLAY", server_.display().c_str());
    clipboard_ = std::make_unique<DesktopClipboard>();
    other_ = std::make_unique<SelectionOwner>();
  }
  ~DesktopClipboardTest() override { qputenv("DISPLAY", before_); }

  /// Another program offers these bytes by these names.
  void offer(const std::vector<std::pair<std::string, std::string>>& contents) {
    std::vector<SelectionForm> forms;
    for (const auto& [target, bytes] : contents) {
      forms.push_back(
          {target, [bytes = bytes] { return PropertyList::Data(bytes.begin(), bytes.end()); }});
    }
    ASSERT_TRUE(other_->own(std::move(forms), XCB_CURRENT_TIME));
  }
  static xcb_atom_t atom(const XClient& client, const std::string& name) {
    xcb_connection_t* const x = client.xcb();
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr));
    return reply->atom;
  }
  std::string text() const {
    const auto data = clipboard_->dataForType("public.utf8-plain-text");
    return data ? std::string(data->begin(), data->end()) : "none";
  }

  const XServer server_;
  const QByteArray before_;
  std::unique_ptr<DesktopClipboard> clipboard_;
  std::unique_ptr<SelectionOwner> other_;
};

TEST_F(DesktopClipboardTest, AnEmptyClipboardHasNoItems) {
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
  EXPECT_EQ(clipboard_->changeCount(), 0);
}

TEST_F(DesktopClipboardTest, WhatWasThereBeforeIsThereAndNoChange) {
  offer({{"UTF8_STRING", "old"}});
  clipboard_ = std::make_unique<DesktopClipboard>();
  EXPECT_EQ(clipboard_->changeCount(), 0);
  EXPECT_EQ(text(), "old");
}

TEST_F(DesktopClipboardTest, TheBestNameOfATypeIsAskedFor) {
  offer({{"STRING", "wrong"}, {"text/plain", "plain"}, {"UTF8_STRING", "best"}});
  EXPECT_EQ(text(), "best");
  offer({{"STRING", "caf\xe9"}});
  EXPECT_EQ(text(), "caf\xc3\xa9");
}

TEST_F(DesktopClipboardTest, SecretsAreNotRead) {
  offer({{"UTF8_STRING", "password"}, {"x-kde-passwordManagerHint", "secret"}});
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
  EXPECT_EQ(text(), "none");
  offer({{"UTF8_STRING", "no password"}, {"x-kde-passwordManagerHint", "public"}});
  EXPECT_EQ(text(), "no password");
}

TEST_F(DesktopClipboardTest, SeveralItemsOfAnotherOfOurProgramsAreSeveral) {
  ASSERT_TRUE(other_->own(formsOfItems({{{"public.utf8-plain-text", {'1'}}},
                                        {{"public.png", {'2'}}, {"public.tiff", {'3'}}}}),
                          XCB_CURRENT_TIME));
  const auto items = clipboard_->pasteboardItems();
  ASSERT_THAT(items, SizeIs(2));
  EXPECT_EQ(items[0]->dataForType("public.utf8-plain-text"), PropertyList::Data{'1'});
  EXPECT_EQ(items[1]->dataForType("public.tiff"), PropertyList::Data{'3'});
}

TEST_F(DesktopClipboardTest, AnOwnerThatHangsHasNothing) {
  XClient hanging(server_.display());
  hanging.openBypassWindow(0, 0, 10, 10);
  xcb_connection_t* const x = hanging.xcb();
  xcb_set_selection_owner(x, hanging.window(), atom(hanging, "CLIPBOARD"), XCB_CURRENT_TIME);
  hanging.sync();
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
  EXPECT_EQ(clipboard_->changeCount(), 1);
}

TEST_F(DesktopClipboardTest, AnItemGivesNothingOnceItsOwnerHasGone) {
  offer({{"UTF8_STRING", "theirs"}});
  const auto items = clipboard_->pasteboardItems();
  ASSERT_THAT(items, SizeIs(1));
  other_.reset();
  EXPECT_TRUE(waitFor([&] { return clipboard_->changeCount() == 2; }));
  EXPECT_EQ(items[0]->dataForType("public.utf8-plain-text"), std::nullopt);
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
}

TEST_F(DesktopClipboardTest, AnItemMayOutliveTheClipboard) {
  offer({{"UTF8_STRING", "theirs"}});
  const auto items = clipboard_->pasteboardItems();
  ASSERT_THAT(items, SizeIs(1));
  clipboard_.reset();
  EXPECT_EQ(items[0]->dataForType("public.utf8-plain-text"), std::nullopt);
}

TEST_F(DesktopClipboardTest, APasteIsOverWhenTheContentHasBeenTakenOrNobodyWantsIt) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds longestWait{500};
  clipboard_->clearContents();
  ASSERT_TRUE(clipboard_->setData({'o'}, "public.utf8-plain-text"));
  XClient program(server_.display());
  program.openBypassWindow(0, 0, 10, 10);
  std::atomic<bool> asks = false;
  auto begin = Clock::now();
  std::thread user([&] {
    asks = true;
    xcb_convert_selection(program.xcb(), program.window(), atom(program, "CLIPBOARD"),
                          atom(program, "UTF8_STRING"), atom(program, "TAKEN"), XCB_CURRENT_TIME);
    program.sync();
  });
  clipboard_->waitUntilTaken();
  EXPECT_TRUE(asks || Clock::now() - begin >= longestWait);
  user.join();
  begin = Clock::now();
  clipboard_->waitUntilTaken();
  EXPECT_GE(Clock::now() - begin, longestWait);
}

TEST_F(DesktopClipboardTest, ManagersNeverSeeAnEmptyClipboardBetweenClearingAndWriting) {
  offer({{"UTF8_STRING", "old"}});
  DesktopClipboard manager;
  clipboard_->clearContents();
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
  const auto seen = manager.dataForType("public.utf8-plain-text");
  EXPECT_EQ(seen, (PropertyList::Data{'o', 'l', 'd'}));
  EXPECT_TRUE(clipboard_->setData({'n'}, "public.utf8-plain-text"));
  EXPECT_EQ(manager.dataForType("public.utf8-plain-text"), PropertyList::Data{'n'});
  EXPECT_EQ(manager.changeCount(), 1);
}

}  // namespace
}  // namespace qb::test
