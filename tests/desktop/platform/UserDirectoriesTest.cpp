#include "PlatformDesktop/files/UserDirectories.h"

#include <gmock/gmock.h>

namespace qb {
namespace {

struct Row {
  const char* configuration;
  SearchPathDirectory directory;
  std::optional<std::string> path;
};

TEST(UserDirectories, AreReadFromTheUsersFile) {
  const Row rows[] = {
      {"", DesktopDirectory, "/home/user/Desktop"},
      {"", MoviesDirectory, "/home/user/Videos"},
      {"", SharedPublicDirectory, "/home/user/Public"},
      {"XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n", DesktopDirectory, "/home/user/Schreibtisch"},
      {"# comment\n XDG_MUSIC_DIR = \"/data/My Music/\" \n", MusicDirectory, "/data/My Music"},
      {"XDG_MUSIC_DIR=\"$HOME/\\\"Best\\\"\"", MusicDirectory, "/home/user/\"Best\""},
      {"XDG_PICTURES_DIR=\"$HOME/a\"\nXDG_PICTURES_DIR=\"$HOME/b\"\n", PicturesDirectory,
       "/home/user/b"},
      {"XDG_DOWNLOAD_DIR=\"$HOME/\"\n", DownloadsDirectory, std::nullopt},
      {"XDG_DOWNLOAD_DIR=\"$HOME\"\n", DownloadsDirectory, std::nullopt},
      {"XDG_DOCUMENTS_DIR=relative\n", DocumentDirectory, "/home/user/Documents"},
      {"XDG_DOCUMENTS_DIR=\"relative\"\n", DocumentDirectory, "/home/user/Documents"},
      {"XDG_DOCUMENTS_DIR=\"\n", DocumentDirectory, "/home/user/Documents"},
      {"XDG_DOCUMENTS_DIR", DocumentDirectory, "/home/user/Documents"},
      {"", static_cast<SearchPathDirectory>(14), std::nullopt},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(userDirectory(row.directory, row.configuration, "/home/user"), row.path)
        << row.configuration << " for " << row.directory;
  }
}

}  // namespace
}  // namespace qb
