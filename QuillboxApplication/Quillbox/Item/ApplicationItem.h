#pragma once

#include "Platform/Workspace.h"
#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/Item/ItemInformation.h"

namespace qb {

/// The bundle identifier under which the desktop's file manager goes.
inline constexpr std::string_view kFinderBundleIdentifier = "com.apple.finder";

/// One application. Invoking it brings the application forward, or starts it.
///
/// An item whose represented object is a `std::shared_ptr<Process>` stands for that one process:
/// on this desktop several may run under one bundle. Main thread.
class ApplicationItem : public FileSystemItem {
 public:
  /// Named after the file, without its extension.
  static std::shared_ptr<ApplicationItem> create(const Rect& frame, const std::string& path);
  /// With the bundle identifier of the application at `path`.
  static std::shared_ptr<ApplicationItem> create(const Rect& frame, const std::string& name,
                                                 const std::string& path);
  static std::shared_ptr<ApplicationItem> create(const Rect& frame,
                                                 const std::string& bundleIdentifier,
                                                 const std::string& name, const std::string& path);
  /// Intended: such an item has no bundle identifier of its own.
  static std::shared_ptr<ApplicationItem> create(const Rect& frame, const PropertyList& savedState);

  static ItemInformation information();

  std::int32_t type() const override { return ItemTypeApplication; }
  const std::string& bundleIdentifier() const { return bundleIdentifier_; }

  void invoke() override;
  /// Asks the application to quit and selects the next item. Nothing for the file manager.
  void quit() override;
  void hide() override;

 protected:
  ApplicationItem(const Rect& frame, const std::string& bundleIdentifier, const std::string& name,
                  const std::string& path);
  ApplicationItem(const Rect& frame, const PropertyList& savedState);
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;
  bool isFinder() const override;

 private:
  /// Of the application that is at the path now.
  std::string bundleIdentifierAtPath() const;
  std::optional<ProcessSerialNumber> representedProcess() const;
  /// The process that the item stands for, otherwise the first instance of the bundle; null when
  /// it does not run.
  std::shared_ptr<RunningApplication> runningApplication(const std::string& identifier) const;

  std::string bundleIdentifier_;
};

}  // namespace qb
