#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Processes.h"
#include "Quillbox/rows/SelectionHalo.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/ModalSession.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

class BorderlessWindow;
class Item;

/// A window with the look of a row in which the user chooses one of some items, by the keys or by
/// the pointer. Another application coming to the front cancels it. Main thread.
class ItemChooserWindowController {
 public:
  /// Gets the chosen item, or null.
  using Completion = std::function<void(const std::shared_ptr<Item>&)>;

  /// At least one item.
  ItemChooserWindowController(const std::string& title, std::vector<std::shared_ptr<Item>> items,
                              Size itemSize, Completion completion);
  ~ItemChooserWindowController();
  ItemChooserWindowController(const ItemChooserWindowController&) = delete;
  ItemChooserWindowController& operator=(const ItemChooserWindowController&) = delete;

  /// Shows the window and returns when the choice has been made and completed. To be called once.
  void runModal();

  const std::shared_ptr<Item>& selectedItem() const { return selectedItem_; }
  /// Null takes the selection away.
  void setSelectedItem(const std::shared_ptr<Item>& item, std::int32_t method);
  /// Round the ends.
  void selectNextItem();
  void selectPreviousItem();
  void chooseSelectedItem();
  void cancel();

  void keyDown(const Event& event);
  /// `location` is in the coordinates of the background, whose y grows downward.
  void mouseMoved(Point location);
  void mouseDown();

  BorderlessWindow& window() const { return *window_; }
  RoundedRectangleView& backgroundView() const { return *backgroundView_; }
  LabelView& titleView() const { return *titleView_; }
  SelectionHalo& selectionHalo() { return selectionHalo_; }

 private:
  class BackgroundView;
  void createViews(const std::string& title);
  void selectItemAtDistance(std::int64_t distance);
  /// What no event tells: where the pointer is, and who is in front.
  void watch();
  Point pointerLocation() const;
  /// The one that the user was in; none when there is none.
  static ProcessSerialNumber applicationBehind();
  void dismiss();
  void complete(const std::shared_ptr<Item>& choice);

  std::vector<std::shared_ptr<Item>> items_;
  Size itemSize_;
  Completion completionBlock_;
  std::unique_ptr<BorderlessWindow> window_;
  std::shared_ptr<RoundedRectangleView> backgroundView_;
  std::shared_ptr<LabelView> titleView_;
  SelectionHalo selectionHalo_;
  std::shared_ptr<Item> selectedItem_;
  /// While the window is up.
  std::unique_ptr<ModalSession> session_;
  std::shared_ptr<RunLoopTimer> watchTimer_;
  Point lastMouseLocation_;
  ProcessSerialNumber applicationBehind_;
};

}  // namespace qb
