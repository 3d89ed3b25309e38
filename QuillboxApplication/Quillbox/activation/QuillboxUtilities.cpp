// What the facade hands on for files, mail, pictures of windows and diagnostics.

#include <string>

#include "Platform/Graphics.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/utilities/Diagnostics.h"
#include "Quillbox/activation/utilities/InternetAccess.h"
#include "Quillbox/activation/utilities/SystemUtilities.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"

namespace qb {

bool Quillbox::hasInternetAccess() const {
  return qb::hasInternetAccess(platform_.networkReachability());
}

// Files and folders.

std::string Quillbox::fileNameFromFullPath(const std::string& path, bool withPathExtension) {
  return qb::fileNameFromFullPath(path, withPathExtension);
}

std::string Quillbox::availableFileNameInFolder(const std::string& folder,
                                                const std::string& withFileName,
                                                const std::string& extension,
                                                bool includePrecedingSlash) const {
  return utilities_->names.availableFileNameInFolder(folder, withFileName, extension,
                                                     includePrecedingSlash);
}

std::string Quillbox::desktopPathWithName(const std::string& name,
                                          const std::string& extension) const {
  return utilities_->names.desktopPathWithName(name, extension);
}

std::string Quillbox::filePathForSystemFolderWithID(std::int32_t folderID) const {
  return utilities_->folders.filePathForSystemFolderWithID(folderID);
}

std::vector<std::string> Quillbox::contentsForSystemFolderWithID(std::int32_t folderID) const {
  return utilities_->folders.contentsForSystemFolderWithID(folderID);
}

std::string Quillbox::reconcileBogusFolderPath(const std::string& path) const {
  return utilities_->folders.reconcileBogusFolderPath(path);
}

std::int32_t Quillbox::itemTypeForFileSystemObjectAtPath(const std::string& path) const {
  return utilities_->items.itemTypeForFileSystemObjectAtPath(path);
}

std::shared_ptr<FileSystemItem> Quillbox::createFileSystemItemWithFrame(
    const Rect& frame, const std::string& name, const std::string& atPath) const {
  return utilities_->items.createFileSystemItemWithFrame(frame, name, atPath);
}

void Quillbox::performSelectionActionForFileAtPath(const std::string& path) {
  utilities_->items.performSelectionActionForFileAtPath(path);
}

void Quillbox::moveItems(const std::vector<std::string>& paths, const std::string& toFolder) {
  utilities_->operations.moveItems(paths, toFolder);
}

void Quillbox::copyItems(const std::vector<std::string>& paths, const std::string& toFolder) {
  utilities_->operations.copyItems(paths, toFolder);
}

// Mail.

void Quillbox::shareFileViaEmail(const std::string& path) {
  utilities_->mail.shareFileViaEmail(path);
}

void Quillbox::shareTextViaEmail(const AttributedString& text) {
  utilities_->mail.shareTextViaEmail(text);
}

void Quillbox::shareImageViaEmail(const Image& image) {
  utilities_->mail.shareImageViaEmail(image);
}

void Quillbox::shareCubbiesViaEmail(const std::vector<std::shared_ptr<Cubby>>& cubbies) {
  utilities_->mail.shareCubbiesViaEmail(cubbies);
}

// Images.

Image Quillbox::imageNamed(const std::string& name) const {
  Graphics& graphics = platform_.graphics();
  if (isYosemiteOrLater()) {
    if (Image image = graphics.imageNamed(stringWithFormat("%@Yosemite", name))) return image;
  }
  return graphics.imageNamed(name);
}

Image Quillbox::generateWindowImageWithID(std::uint32_t windowID,
                                          const std::shared_ptr<RunningApplication>&, Size size,
                                          double margin, const Image& defaultImage) const {
  return utilities_->windowImages.generateWindowImageWithID(windowID, size, margin, defaultImage);
}

Image Quillbox::generateWindowImageWithID(std::uint32_t windowID,
                                          const std::shared_ptr<RunningApplication>&,
                                          const MaximumSize& maximumSize, double margin,
                                          const Image& defaultImage) const {
  return utilities_->windowImages.generateWindowImageWithID(windowID, maximumSize, margin,
                                                            defaultImage);
}

// Diagnostics.

void Quillbox::logRect(const Rect& rect) {
  log(stringWithFormat("RECT: %@", stringFromCGRect(rect)));
}

void Quillbox::logPoint(Point point) {
  log(stringWithFormat("POINT: %@", stringFromCGPoint(point)));
}

void Quillbox::breakOnDebugFlagSet() const {
  if (debugFlag_) log("Breaking on Debug Flag");
}

void Quillbox::debug() { logPanelViews(*this); }

}  // namespace qb
