// The clipboard, on which another program puts things and from which it takes them.

#include "ContractTest.h"
#include "Platform/Pasteboards.h"

namespace qb {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* textType = "public.utf8-plain-text";

class Object : public PasteboardWriting {
 public:
  Object(std::string type, const std::string& data) : type_(std::move(type)) {
    data_ = PropertyList::Data(data.begin(), data.end());
  }
  std::vector<std::string> writableTypesForPasteboard(const Pasteboard&) const override {
    if (type_.empty()) return {};
    return {type_};
  }
  std::uint32_t writingOptionsForType(const std::string&, const Pasteboard&) const override {
    return 0;
  }
  PropertyList pasteboardPropertyListForType(const std::string&) const override { return data_; }

 private:
  std::string type_;
  PropertyList data_;
};

class PasteboardsContract : public ContractTest {
 protected:
  bool write(const std::string& type, const std::string& data) {
    const Object object(type, data);
    return clipboard_->writeObjects({&object});
  }
  /// What the items have of that type; "none" where one has nothing.
  std::vector<std::string> itemsAs(const std::string& type) {
    std::vector<std::string> all;
    for (const auto& item : clipboard_->pasteboardItems()) {
      const auto data = item->dataForType(type);
      all.push_back(data ? std::string(data->begin(), data->end()) : "none");
    }
    return all;
  }
  /// Returns once the platform has noticed.
  bool putByOther(const std::vector<std::pair<std::string, std::string>>& contents) {
    const std::int64_t before = clipboard_->changeCount();
    desktop_->putOnClipboard(contents);
    return waitUntil([&] { return clipboard_->changeCount() > before; });
  }

  std::shared_ptr<Pasteboard> clipboard_ = platform_.pasteboards().generalPasteboard();
};

TEST_F(PasteboardsContract, WhatAnotherProgramPutsThereIsAnItem) {
  ASSERT_TRUE(putByOther({{"text/plain", "caf\xc3\xa9"}}));
  EXPECT_EQ(itemsAs(textType), std::vector<std::string>{"caf\xc3\xa9"});
  EXPECT_EQ(itemsAs("public.png"), std::vector<std::string>{"none"});
  EXPECT_EQ(clipboard_->dataForType("public.png"), std::nullopt);
}

TEST_F(PasteboardsContract, AnotherProgramsItemHasAllItsTypes) {
  const std::string png("\x89PNG\0\xff", 6);
  ASSERT_TRUE(putByOther({{"text/rtf", "{\\rtf1 a}"}, {"text/plain", "a"}, {"image/png", png}}));
  EXPECT_EQ(itemsAs("public.rtf"), std::vector<std::string>{"{\\rtf1 a}"});
  EXPECT_EQ(itemsAs(textType), std::vector<std::string>{"a"});
  EXPECT_EQ(itemsAs("public.png"), std::vector<std::string>{png});
}

TEST_F(PasteboardsContract, AnotherProgramGetsWhatIsWritten) {
  const std::string png("\x89PNG\0\xff", 6);
  const struct {
    const char* type;
    const char* name;
    std::string data;
  } cases[] = {{textType, "text/plain", "caf\xc3\xa9"},
               {"public.rtf", "text/rtf", "{\\rtf1 a}"},
               {"public.png", "image/png", png}};
  for (const auto& each : cases) {
    clipboard_->clearContents();
    ASSERT_TRUE(write(each.type, each.data));
    EXPECT_EQ(desktop_->readFromClipboard(each.name), each.data) << each.type;
  }
}

TEST_F(PasteboardsContract, ItemsComeBesideEachOther) {
  const std::int64_t count = clipboard_->clearContents();
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
  ASSERT_TRUE(write(textType, "one"));
  ASSERT_TRUE(write("public.png", "two"));
  EXPECT_EQ(itemsAs(textType), (std::vector<std::string>{"one", "none"}));
  EXPECT_EQ(itemsAs("public.png"), (std::vector<std::string>{"none", "two"}));
  EXPECT_EQ(clipboard_->dataForType("public.png"), (PropertyList::Data{'t', 'w', 'o'}));
  EXPECT_EQ(clipboard_->changeCount(), count) << "writing is no change of its own";
  EXPECT_EQ(desktop_->readFromClipboard("text/plain"), "one") << "others get the first";
  EXPECT_EQ(clipboard_->clearContents(), count + 1);
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
}

TEST_F(PasteboardsContract, NothingIsLeftForOthersAfterClearing) {
  clipboard_->clearContents();
  ASSERT_TRUE(write(textType, "one"));
  ASSERT_EQ(desktop_->readFromClipboard("text/plain"), "one");
  clipboard_->clearContents();
  EXPECT_TRUE(waitUntil([&] { return !desktop_->readFromClipboard("text/plain"); }));
}

TEST_F(PasteboardsContract, AnotherProgramsContentTakesThePlaceOfOurs) {
  clipboard_->clearContents();
  ASSERT_TRUE(write(textType, "ours"));
  ASSERT_TRUE(putByOther({{"text/plain", "theirs"}}));
  EXPECT_EQ(itemsAs(textType), std::vector<std::string>{"theirs"});
  ASSERT_TRUE(write(textType, "ours again"));
  EXPECT_EQ(itemsAs(textType), std::vector<std::string>{"ours again"});
}

TEST_F(PasteboardsContract, ChangesAreSignalledWhoeverMakesThem) {
  ChangeNotice& changed = platform_.pasteboards().generalPasteboardChanged();
  std::uint64_t before = changed.generation();
  clipboard_->clearContents();
  EXPECT_EQ(changed.generation(), before + 1);
  ASSERT_TRUE(write(textType, "ours"));
  ASSERT_EQ(desktop_->readFromClipboard("text/plain"), "ours");
  EXPECT_EQ(changed.generation(), before + 1) << "writing is no change of its own";
  for (const char* theirs : {"theirs", "theirs again"}) {
    before = changed.generation();
    const std::int64_t count = clipboard_->changeCount();
    desktop_->putOnClipboard({{"text/plain", theirs}});
    // Nobody asks the clipboard anything.
    ASSERT_TRUE(waitUntil([&] { return changed.generation() > before; }));
    EXPECT_GT(clipboard_->changeCount(), count);
    EXPECT_EQ(itemsAs(textType), std::vector<std::string>{theirs});
  }
  before = changed.generation();
  EXPECT_EQ(itemsAs(textType), std::vector<std::string>{"theirs again"});
  EXPECT_EQ(changed.generation(), before) << "looking changes nothing";
}

TEST_F(PasteboardsContract, AnEmptyValueIsSomething) {
  clipboard_->clearContents();
  ASSERT_TRUE(write(textType, ""));
  EXPECT_EQ(itemsAs(textType), std::vector<std::string>{""});
}

TEST_F(PasteboardsContract, WhatHasNoTypeCannotBeWritten) {
  clipboard_->clearContents();
  EXPECT_FALSE(write("", "data"));
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
}

TEST_F(PasteboardsContract, LongContentGoesBothWays) {
  std::string content;
  for (int i = 0; content.size() < 3'000'000; ++i) content += std::to_string(i) + ' ';
  clipboard_->clearContents();
  ASSERT_TRUE(write(textType, content));
  EXPECT_TRUE(desktop_->readFromClipboard("text/plain") == content);
  content += "end";
  ASSERT_TRUE(putByOther({{"text/plain", content}}));
  EXPECT_TRUE(itemsAs(textType) == std::vector<std::string>{content});
}

TEST_F(PasteboardsContract, DataGoesIntoTheFirstItem) {
  clipboard_->clearContents();
  ASSERT_TRUE(clipboard_->setData({'a'}, textType));
  ASSERT_TRUE(clipboard_->setData({'b'}, "public.rtf"));
  ASSERT_TRUE(clipboard_->setData({'c'}, textType));
  EXPECT_THAT(clipboard_->pasteboardItems(), SizeIs(1));
  EXPECT_EQ(itemsAs(textType), std::vector<std::string>{"c"});
  EXPECT_EQ(itemsAs("public.rtf"), std::vector<std::string>{"b"});
}

TEST_F(PasteboardsContract, NamedPasteboardsHaveItemsToo) {
  clipboard_ = platform_.pasteboards().pasteboardWithName("Contract items");
  clipboard_->clearContents();
  ASSERT_TRUE(write(textType, "one"));
  ASSERT_TRUE(write(textType, "two"));
  EXPECT_EQ(itemsAs(textType), (std::vector<std::string>{"one", "two"}));
  EXPECT_FALSE(write("", "data"));
  clipboard_->clearContents();
  EXPECT_THAT(clipboard_->pasteboardItems(), IsEmpty());
}

}  // namespace
}  // namespace qb
