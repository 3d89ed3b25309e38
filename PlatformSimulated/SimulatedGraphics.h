#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Platform/Graphics.h"
#include "PlatformSimulated/RecordingCanvas.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"

namespace qb {

/// A picture that is nothing but a name and a size.
class SimulatedImageSource : public ImageSource {
 public:
  SimulatedImageSource(std::string name, Size size) : name_(std::move(name)), size_(size) {}
  Size naturalSize() const override { return size_; }
  const std::string& name() const { return name_; }

 private:
  std::string name_;
  Size size_;
};

/// The name of a simulated image; empty for an empty one.
std::string simulatedImageName(const Image& image);
/// What was drawn to make an image of `imageWithSize`; nothing for any other.
std::vector<DrawOperation> simulatedImageOperations(const Image& image);

/// Text as wide as half its font size for each character and 1.2 font sizes high, and images by
/// name.
class SimulatedGraphics : public Graphics {
 public:
  explicit SimulatedGraphics(SimulatedRunLoopHost& host) : host_(host) {}

  /// A character is a UTF-8 code point; "\n" and "\r" end a line.
  Size measureText(std::string_view text, const Font& font) const override;
  /// Every name is known but those set missing; 32 by 32 points unless set otherwise. The same
  /// name gives the same image.
  Image imageNamed(const std::string& name) override;
  /// Those given by `setImageNames`; at first none.
  std::vector<std::string> imageNames(std::string_view prefix) const override;
  /// An image named "drawn". Draws once, at once; see `simulatedImageOperations`.
  Image imageWithSize(Size size, std::function<void(Canvas&)> draw) override;
  /// The image of that name where the bytes are "image NAME"; an empty one for others.
  Image imageWithData(const PropertyList::Data& data, std::optional<Size> largest) override;
  /// Such bytes.
  std::optional<PropertyList::Data> pngDataOfImage(const Image& image) const override;
  /// An image named "icon:PATH"; until it has been delivered, one named "generic icon". Both have
  /// 128 by 128 points. Delivery is due at once, unless held.
  Image iconForFile(const std::string& path, std::function<void(const Image&)> update) override;
  void freeIconForFile(const std::string& path) override { icons_.erase(path); }
  /// Those put by `putImageFile`, named "file:PATH"; they come at once, unless held.
  void loadImageOfFile(const std::string& path, Size largest,
                       std::function<void(const Image&)> completion) override;
  /// Of such a file the text "PNG of PATH".
  void loadPNGDataOfFile(const std::string& path,
                         std::function<void(const PropertyList::Data&)> completion) override;

  void setImageSize(const std::string& name, Size size);
  void setImageNames(std::set<std::string> names) { names_ = std::move(names); }
  void setImageMissing(const std::string& name) { missing_.insert(name); }
  /// The file at that path holds a picture of so many points.
  void putImageFile(const std::string& path, Size size) { imageFiles_[path] = size; }
  /// While held, the pictures of files wait for `deliverImages`.
  void holdImages(bool hold) { imagesAreHeld_ = hold; }
  void deliverImages();
  /// The wish of the last `loadImageOfFile` or `imageWithData`.
  std::optional<Size> largestImageWanted() const { return largestImageWanted_; }

  /// While held, icons wait for `deliverIcons`.
  void holdIcons(bool hold) { iconsAreHeld_ = hold; }
  void deliverIcons();
  /// How often an icon was asked for.
  int numberOfIconRequests(const std::string& path) const;

 private:
  struct PendingIcon {
    std::string path;
    std::function<void(const Image&)> update;
  };

  struct PendingImage {
    std::string path;
    std::function<void(const Image&)> completion;
  };

  SimulatedRunLoopHost& host_;
  std::map<std::string, Size> sizes_, imageFiles_;
  std::set<std::string> missing_, names_;
  std::map<std::string, Image> images_;
  std::map<std::string, Image> icons_;
  std::map<std::string, int> iconRequests_;
  std::vector<PendingIcon> pendingIcons_;
  std::vector<PendingImage> pendingImages_;
  std::optional<Size> largestImageWanted_;
  bool iconsAreHeld_ = false, imagesAreHeld_ = false;
};

}  // namespace qb
