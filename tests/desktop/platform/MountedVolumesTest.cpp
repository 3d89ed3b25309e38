#include "PlatformDesktop/files/MountedVolumes.h"

#include <gmock/gmock.h>

#include "TemporaryFolder.h"

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MountedVolumes, AreThoseThatUsersKnowOf) {
  constexpr const char* table =
      "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
      "23 22 0:5 / /proc rw,nosuid - proc proc rw\n"
      "24 22 0:22 / /run/user/1000 rw - tmpfs tmpfs rw\n"
      "25 22 8:2 / /home rw - ext4 /dev/sda2 rw\n"
      "26 22 8:17 / /media/user/My\\040Disk rw - vfat /dev/sdb1 rw\n"
      "27 22 8:18 / /run/media/user/Stick rw - ext4 /dev/sdb2 rw\n"
      "28 22 8:19 / /mnt/data rw shared:7 master:2 - ext4 /dev/sdc1 rw\n"
      "29 25 0:50 / /home/user/Cloud rw - fuse.cloud cloud rw\n"
      "30 25 0:51 / /home/user/.cache/doc rw - fuse.portal portal rw\n"
      "31 25 0:52 / /home/other/Cloud rw - fuse.cloud cloud rw\n";
  EXPECT_THAT(volumesOfMountTable(table, "/home/user"),
              ElementsAre("/", "/home/user/Cloud", "/media/user/My Disk", "/mnt/data",
                          "/run/media/user/Stick"));
}

TEST(MountedVolumes, DamagedLinesAreNone) {
  EXPECT_THAT(volumesOfMountTable("", "/home/user"), IsEmpty());
  EXPECT_THAT(volumesOfMountTable("\n1 2 3\n1 2 3 4 relative x\n\\", "/home/user"), IsEmpty());
  EXPECT_THAT(volumesOfMountTable("1 2 3:4 / /mnt/a\\04", "/home/user"), ElementsAre("/mnt/a\\04"));
}

TEST(MountedVolumes, TheRootIsOneAndAnOrdinaryFolderIsNot) {
  const TemporaryFolder folder;
  EXPECT_TRUE(isMountedVolume("/"));
  EXPECT_FALSE(isMountedVolume(folder.path()));
  EXPECT_FALSE(isMountedVolume("/proc"));
  EXPECT_FALSE(isMountedVolume("/no/such/folder"));
}

TEST(MountedVolumes, ALinkToOneIsOne) {
  const TemporaryFolder folder;
  std::filesystem::create_directory_symlink("/", folder.path("root"));
  EXPECT_TRUE(isMountedVolume(folder.path("root")));
}

}  // namespace
}  // namespace qb
