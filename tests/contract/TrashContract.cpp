#include "Platform/Trash.h"

#include "ContractTest.h"
#include "Platform/FileSystem.h"

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class TrashContract : public ContractTest {
 protected:
  std::string write(const std::string& name) {
    const std::string path = desktop_->folder() + '/' + name;
    desktop_->writeRawFile(path, "contents");
    return path;
  }
  bool exists(const std::string& path) { return platform_.fileSystem().fileExistsAtPath(path); }
  /// Answers what the user is to be told, or an empty text.
  std::string recycle(std::vector<std::string> paths) {
    int calls = 0;
    std::string told;
    platform_.trash().recycle(std::move(paths), [&](const std::optional<std::string>& error) {
      ++calls;
      told = error.value_or("");
    });
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(waitUntil([&] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
    return told;
  }

  const std::size_t before_ = desktop_->numberOfThingsInTrash();
};

TEST_F(TrashContract, AFileGoes) {
  const std::string file = write("old.txt"), other = write("other.txt");
  EXPECT_EQ(recycle({file}), "");
  EXPECT_FALSE(exists(file));
  EXPECT_TRUE(exists(other));
  EXPECT_EQ(desktop_->numberOfThingsInTrash(), before_ + 1);
}

TEST_F(TrashContract, OnePathGoesAtOnce) {
  const std::string file = write("old.txt");
  EXPECT_TRUE(platform_.trash().trashItemAtPath(file));
  EXPECT_FALSE(exists(file));
  EXPECT_EQ(desktop_->numberOfThingsInTrash(), before_ + 1);
  EXPECT_FALSE(platform_.trash().trashItemAtPath(file));
  EXPECT_EQ(desktop_->numberOfThingsInTrash(), before_ + 1);
}

TEST_F(TrashContract, NamesakesAreBothKept) {
  for (int round = 0; round < 2; ++round) EXPECT_EQ(recycle({write("same.txt")}), "");
  EXPECT_EQ(desktop_->numberOfThingsInTrash(), before_ + 2);
}

TEST_F(TrashContract, AFolderGoesWithAllThatIsInIt) {
  const std::string folder = desktop_->folder() + "/things";
  ASSERT_TRUE(platform_.fileSystem().createDirectoryAtPath(folder));
  write("things/one.txt");
  EXPECT_EQ(recycle({folder}), "");
  EXPECT_FALSE(exists(folder));
  EXPECT_EQ(desktop_->numberOfThingsInTrash(), before_ + 1);
}

TEST_F(TrashContract, WhatIsNotThereIsTold) {
  EXPECT_THAT(recycle({desktop_->folder() + "/nowhere.txt"}), HasSubstr("nowhere.txt"));
  EXPECT_EQ(desktop_->numberOfThingsInTrash(), before_);
}

TEST_F(TrashContract, WhatCannotGoKeepsNothingElseBack) {
  const std::string first = write("first.txt"), last = write("last.txt");
  EXPECT_THAT(recycle({first, desktop_->folder() + "/nowhere.txt", last}),
              HasSubstr("nowhere.txt"));
  EXPECT_THAT(desktop_->filesIn(desktop_->folder()), ElementsAre());
  EXPECT_EQ(desktop_->numberOfThingsInTrash(), before_ + 2);
}

TEST_F(TrashContract, NothingToThrowAwayIsNoError) { EXPECT_EQ(recycle({}), ""); }

}  // namespace
}  // namespace qb
