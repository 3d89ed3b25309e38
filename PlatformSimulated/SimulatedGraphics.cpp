#include "PlatformSimulated/SimulatedGraphics.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace qb {

namespace {

constexpr Size defaultImageSize{32, 32};
constexpr Size iconSize{128, 128};
constexpr double widthOfCharacter = 0.5;
constexpr double heightOfLine = 1.2;
constexpr std::string_view beginningOfImageData = "image ";

/// A picture that was drawn, as the record of the drawing.
class DrawnImageSource : public SimulatedImageSource {
 public:
  DrawnImageSource(Size size, std::vector<DrawOperation> operations)
      : SimulatedImageSource("drawn", size), operations_(std::move(operations)) {}
  const std::vector<DrawOperation>& operations() const { return operations_; }

 private:
  std::vector<DrawOperation> operations_;
};

Image makeImage(const std::string& name, Size size) {
  return Image(std::make_shared<SimulatedImageSource>(name, size));
}

}  // namespace

std::string simulatedImageName(const Image& image) {
  const auto* source = dynamic_cast<const SimulatedImageSource*>(image.source().get());
  return source == nullptr ? std::string() : source->name();
}

std::vector<DrawOperation> simulatedImageOperations(const Image& image) {
  const auto* source = dynamic_cast<const DrawnImageSource*>(image.source().get());
  return source == nullptr ? std::vector<DrawOperation>() : source->operations();
}

Size SimulatedGraphics::measureText(std::string_view text, const Font& font) const {
  std::size_t widest = 0;
  std::size_t line = 0;
  for (const char byte : text) {
    if (byte == '\n' || byte == '\r') {
      line = 0;
    } else if ((static_cast<unsigned char>(byte) & 0xc0U) != 0x80U) {
      widest = std::max(widest, ++line);
    }
  }
  return {widthOfCharacter * font.size * static_cast<double>(widest), heightOfLine * font.size};
}

Image SimulatedGraphics::imageNamed(const std::string& name) {
  if (missing_.contains(name)) return {};
  Image& image = images_[name];
  if (!image) {
    const auto size = sizes_.find(name);
    image = makeImage(name, size == sizes_.end() ? defaultImageSize : size->second);
  }
  return image;
}

std::vector<std::string> SimulatedGraphics::imageNames(std::string_view prefix) const {
  std::vector<std::string> names;
  std::copy_if(names_.begin(), names_.end(), std::back_inserter(names),
               [prefix](const std::string& name) { return name.starts_with(prefix); });
  return names;
}

Image SimulatedGraphics::imageWithSize(Size size, std::function<void(Canvas&)> draw) {
  const Rect all{{0, 0}, size};
  if (all.isEmpty()) return {};
  RecordingCanvas canvas(all);
  draw(canvas);
  return Image(std::make_shared<DrawnImageSource>(size, canvas.operations()));
}

Image SimulatedGraphics::imageWithData(const PropertyList::Data& data,
                                       std::optional<Size> largest) {
  largestImageWanted_ = largest;
  const std::string text(data.begin(), data.end());
  return text.starts_with(beginningOfImageData)
             ? imageNamed(text.substr(beginningOfImageData.size()))
             : Image();
}

std::optional<PropertyList::Data> SimulatedGraphics::pngDataOfImage(const Image& image) const {
  if (!image) return std::nullopt;
  const std::string text = std::string(beginningOfImageData) + simulatedImageName(image);
  return PropertyList::Data(text.begin(), text.end());
}

Image SimulatedGraphics::iconForFile(const std::string& path,
                                     std::function<void(const Image&)> update) {
  ++iconRequests_[path];
  if (const auto known = icons_.find(path); known != icons_.end()) return known->second;
  pendingIcons_.push_back({path, std::move(update)});
  host_.schedule(0, [this] {
    if (!iconsAreHeld_) deliverIcons();
  });
  Image& generic = images_["generic icon"];
  if (!generic) generic = makeImage("generic icon", iconSize);
  return generic;
}

void SimulatedGraphics::loadPNGDataOfFile(
    const std::string& path, std::function<void(const PropertyList::Data&)> completion) {
  const std::string text = imageFiles_.contains(path) ? "PNG of " + path : std::string();
  host_.schedule(0, [data = PropertyList::Data(text.begin(), text.end()),
                     completion = std::move(completion)] { completion(data); });
}

void SimulatedGraphics::loadImageOfFile(const std::string& path, Size largest,
                                        std::function<void(const Image&)> completion) {
  largestImageWanted_ = largest;
  pendingImages_.push_back({path, std::move(completion)});
  host_.schedule(0, [this] {
    if (!imagesAreHeld_) deliverImages();
  });
}

void SimulatedGraphics::deliverImages() {
  for (const PendingImage& pending : std::exchange(pendingImages_, {})) {
    const auto file = imageFiles_.find(pending.path);
    pending.completion(file == imageFiles_.end() ? Image()
                                                 : makeImage("file:" + pending.path, file->second));
  }
}

void SimulatedGraphics::setImageSize(const std::string& name, Size size) {
  sizes_[name] = size;
  images_.erase(name);
}

void SimulatedGraphics::deliverIcons() {
  for (const PendingIcon& pending : std::exchange(pendingIcons_, {})) {
    Image& icon = icons_[pending.path];
    if (!icon) icon = makeImage("icon:" + pending.path, iconSize);
    const Image delivered = icon;
    if (pending.update) pending.update(delivered);
  }
}

int SimulatedGraphics::numberOfIconRequests(const std::string& path) const {
  const auto found = iconRequests_.find(path);
  return found == iconRequests_.end() ? 0 : found->second;
}

}  // namespace qb
