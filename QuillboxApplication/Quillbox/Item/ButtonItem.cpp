#include "Quillbox/Item/ButtonItem.h"

#include <utility>

#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

class ItemButton : public Button {
 public:
  explicit ItemButton(const Rect& frame) : Button(frame) {}
  using Button::setFrame;
  void setFrame(const Rect& frame) override {
    Button::setFrame(frame);
    setImageSize(frame.size);
  }
};

std::shared_ptr<View> createButton(const Rect& frame, const Image& image, Button::Action action) {
  auto button = std::make_shared<ItemButton>(frame);
  button->setImage(image.withSize(frame.size));
  button->setAction(std::move(action));
  return button;
}

}  // namespace

std::shared_ptr<ButtonItem> ButtonItem::create(const Rect& frame, const Image& image,
                                               const std::string& name, Button::Action action) {
  return std::shared_ptr<ButtonItem>(new ButtonItem(frame, image, name, std::move(action)));
}

ButtonItem::ButtonItem(const Rect& frame, const Image& image, const std::string& name,
                       Button::Action action)
    : Item(createButton(frame, image, std::move(action)), name, {}) {}

std::shared_ptr<AddButtonItem> AddButtonItem::create(const Rect& frame, const std::string& name,
                                                     Button::Action action) {
  return std::shared_ptr<AddButtonItem>(new AddButtonItem(frame, name, std::move(action)));
}

AddButtonItem::AddButtonItem(const Rect& frame, const std::string& name, Button::Action action)
    : ButtonItem(frame, quillbox->imageNamed("AddItemButton"), name, std::move(action)) {}

std::shared_ptr<RevealButtonItem> RevealButtonItem::create(const Rect& frame,
                                                           const std::string& name,
                                                           Button::Action action) {
  return std::shared_ptr<RevealButtonItem>(new RevealButtonItem(frame, name, std::move(action)));
}

RevealButtonItem::RevealButtonItem(const Rect& frame, const std::string& name,
                                   Button::Action action)
    : ButtonItem(frame, quillbox->imageNamed("openinfinder"), name, std::move(action)) {}

}  // namespace qb
