#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Platform/Graphics.h"
#include "PlatformDesktop/graphics/PixelImage.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Finds the icon of a file. Used on background threads, by several at once.
class IconSource {
 public:
  virtual ~IconSource() = default;
  /// The picture for the file or application at `path`, at least `pixels` high and wide where it
  /// can be had; null when there is none but the generic one.
  virtual QImage icon(const std::string& path, int pixels) = 0;
  /// Whether the generic icon is that of an application; without looking at the disk.
  virtual bool isApplication(const std::string& path) const = 0;
};

/// Text measurement and pictures. Main thread.
class DesktopGraphics : public Graphics {
 public:
  /// `host` runs the look-ups of `icons`; `scale` is the device pixels of a point, the greatest of
  /// all displays. `host` must outlive it and end its background blocks before.
  DesktopGraphics(RunLoopHost& host, std::shared_ptr<IconSource> icons, double scale);
  ~DesktopGraphics() override;

  Size measureText(std::string_view text, const Font& font) const override;
  Image imageNamed(const std::string& name) override;
  std::vector<std::string> imageNames(std::string_view prefix) const override;
  Image imageWithSize(Size size, std::function<void(Canvas&)> draw) override;
  Image imageWithData(const PropertyList::Data& data, std::optional<Size> largest) override;
  std::optional<PropertyList::Data> pngDataOfImage(const Image& image) const override;
  Image iconForFile(const std::string& path, std::function<void(const Image&)> update) override;
  void freeIconForFile(const std::string& path) override;
  void loadImageOfFile(const std::string& path, Size largest,
                       std::function<void(const Image&)> completion) override;
  void loadPNGDataOfFile(const std::string& path,
                         std::function<void(const PropertyList::Data&)> completion) override;

  /// Icons asked for from now on are looked up anew: the theme or an application has changed. What
  /// is known is shown until then.
  void forgetIcons();

 private:
  struct IconRecord {
    Image image;
    bool known = false, loading = false;
    /// What is being loaded may be the icon of what was there before.
    bool outdated = false;
    std::vector<std::function<void(const Image&)>> waiting;
  };

  void load(const std::string& path);
  void loaded(const std::string& path, std::shared_ptr<const PixelImage> icon);
  Image genericIcon(const std::string& path);

  RunLoopHost& host_;
  std::shared_ptr<IconSource> icons_;
  double scale_;
  std::map<std::string, Image> named_;
  std::unordered_map<std::string, IconRecord> records_;
  /// Expires with this object, for answers that come later.
  std::shared_ptr<const bool> lifeSign_ = std::make_shared<const bool>(true);
};

}  // namespace qb
