#pragma once

#include "Quillbox/activation/utilities/FileItems.h"
#include "Quillbox/activation/utilities/FileNames.h"
#include "Quillbox/activation/utilities/FileOperations.h"
#include "Quillbox/activation/utilities/MailSharing.h"
#include "Quillbox/activation/utilities/SystemFolders.h"
#include "Quillbox/activation/utilities/WindowImages.h"

namespace qb {

class FileSystem;
class Quillbox;

/// What the facade hands on to others for files, mail and pictures of windows. None of them keeps
/// anything between two calls. Main thread.
struct SystemUtilities {
  SystemUtilities(Quillbox& facade, const FileSystem& fileSystem)
      : folders(fileSystem),
        names(fileSystem, folders),
        items(facade),
        operations(facade, names),
        mail(facade),
        windowImages(facade) {}
  SystemUtilities(const SystemUtilities&) = delete;
  SystemUtilities& operator=(const SystemUtilities&) = delete;

  SystemFolders folders;
  FileNames names;
  FileItems items;
  FileOperations operations;
  MailSharing mail;
  WindowImages windowImages;
};

}  // namespace qb
