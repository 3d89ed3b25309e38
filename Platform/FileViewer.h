#pragma once

#include <string>

namespace qb {

/// The desktop's file manager at the service of other programs. Nothing waits for it: what it
/// cannot do, or takes too long to answer, is answered with the next best thing that the desktop
/// has. Paths are absolute. Main thread.
class FileViewer {
 public:
  virtual ~FileViewer() = default;
  /// `NSWorkspace selectFile`: a window of the file's folder, with the file selected in it.
  virtual void selectFile(const std::string& path) = 0;
  /// The window that tells of one file: its kind, its size, who may read it.
  virtual void openInformationWindow(const std::string& path) = 0;
  /// A quick look at what is in a file, without the program that it belongs to. Where the desktop
  /// has no such thing the file is opened.
  virtual void previewFile(const std::string& path) = 0;
};

}  // namespace qb
