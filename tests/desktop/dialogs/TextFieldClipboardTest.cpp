// The clipboard between the program's own text fields, which are Qt's, and the rest of it.

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>

#include "DialogDesk.h"
#include "PlatformDesktop/clipboard/DesktopClipboard.h"

namespace qb::test {
namespace {

constexpr const char* textType = "public.utf8-plain-text";

class TextFieldClipboardTest : public DialogDesk {
 protected:
  DesktopClipboard clipboard_;
};

TEST_F(TextFieldClipboardTest, WhatATextFieldHasCopiedIsThere) {
  const std::int64_t before = clipboard_.changeCount();
  QGuiApplication::clipboard()->setText("copied");
  EXPECT_EQ(clipboard_.changeCount(), before + 1);
  const auto items = clipboard_.pasteboardItems();
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(items.front()->dataForType(textType),
            (PropertyList::Data{'c', 'o', 'p', 'i', 'e', 'd'}));
}

TEST_F(TextFieldClipboardTest, ATextFieldPastesWhatIsThere) {
  clipboard_.clearContents();
  ASSERT_TRUE(clipboard_.setData({'o', 'u', 'r', 's'}, textType));
  EXPECT_TRUE(waitFor([] { return QGuiApplication::clipboard()->text() == "ours"; }));
}

}  // namespace
}  // namespace qb::test
