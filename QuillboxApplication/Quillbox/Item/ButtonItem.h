#pragma once

#include "Quillbox/Item/Item.h"
#include "QuillboxCommon/views/Button.h"

namespace qb {

/// A push button among the items. The row presses it instead of invoking it, and leaves the clicks
/// on it to the button. Its view is a Button whose picture is always as large as itself.
class ButtonItem : public Item {
 public:
  static std::shared_ptr<ButtonItem> create(const Rect& frame, const Image& image,
                                            const std::string& name, Button::Action action);

  std::int32_t type() const override { return ItemTypeButton; }

 protected:
  ButtonItem(const Rect& frame, const Image& image, const std::string& name, Button::Action action);
};

/// The button that adds items to its row.
class AddButtonItem : public ButtonItem {
 public:
  static std::shared_ptr<AddButtonItem> create(const Rect& frame, const std::string& name,
                                               Button::Action action);

 private:
  AddButtonItem(const Rect& frame, const std::string& name, Button::Action action);
};

/// The button that shows what its row is about in the file manager.
class RevealButtonItem : public ButtonItem {
 public:
  static std::shared_ptr<RevealButtonItem> create(const Rect& frame, const std::string& name,
                                                  Button::Action action);

 private:
  RevealButtonItem(const Rect& frame, const std::string& name, Button::Action action);
};

}  // namespace qb
