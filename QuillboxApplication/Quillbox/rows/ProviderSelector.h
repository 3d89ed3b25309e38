#pragma once

#include <memory>
#include <string>

#include "Quillbox/rows/RowButton.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

class ConfigureTip;
class TabRow;
class TabRowProvider;

/// The title at the top of a row: the name of its provider. Under the pointer it lights up, with an
/// arrow for the menu of kinds that it opens and a gear for the provider's own menu. Without a
/// provider it throbs. Main thread.
class ProviderSelector : public View {
 public:
  /// Without a provider it asks the user to select one.
  static std::shared_ptr<ProviderSelector> create(const std::shared_ptr<TabRow>& tabRow,
                                                  const Rect& frame,
                                                  const std::shared_ptr<TabRowProvider>& provider);
  ~ProviderSelector() override;

  bool isFlipped() const override { return true; }
  using View::setFrame;
  void setFrame(const Rect& frame) override;
  void mouseDown(const Event& event) override;
  void rightMouseDown(const Event& event) override;
  /// The press has done it all: the release is none on the row.
  void mouseUp(const Event& /*event*/) override {}
  void rightMouseUp(const Event& /*event*/) override {}

  /// A tip for a kind of provider whose gear has not been pointed out comes half a second later.
  void setProvider(const std::shared_ptr<TabRowProvider>& provider);
  /// Ends the throbbing.
  void setProviderName(const std::string& name);
  /// As wide as it wants to be.
  double naturalWidth() const;

  void beginThrobbing();
  void endThrobbing();
  bool isThrobbing() const { return throbTimer_ != nullptr; }
  /// Lit up without a provider, under the pointer and beside a tip.
  void maintainHilite();
  bool isHilited() const { return hilited_; }
  void maintainConfigureButtonVisibility();
  void mouseEntered();
  /// The pointer has left it, told by the row.
  void mouseExited() override;

  // The panel opens and closes.
  void owningTabRowWillBeDisplayed();
  void owningTabRowWasDisplayed();
  void owningTabRowWillBeDismissed();
  /// Ends all that would still come.
  void prepareForDeallocation();

  /// Nothing for a provider that cannot be configured, and for a kind whose tip was closed once.
  void displayConfigureTip();
  void removeConfigureTipWithAnimation(bool animate);
  /// Null while no tip shows.
  ConfigureTip* configureTip() const { return tip_.get(); }
  /// Of the row's coordinates.
  Rect tipViewFrame() const;

  LabelView& nameLabel() { return *nameLabel_; }
  RoundedRectangleView& hiliteView() { return *hiliteView_; }
  ImageView& arrowView() { return *arrowView_; }
  RowButton& configureButton() { return *configureButton_; }

 private:
  ProviderSelector(const std::shared_ptr<TabRow>& tabRow, const Rect& frame,
                   const std::shared_ptr<TabRowProvider>& provider);
  void arrange();
  void showNameOfProvider();
  void throb(RunLoopTimer& timer);
  void setHilited(bool hilited);
  bool canBeConfigured() const;
  void configureButtonPressed();
  void tipViewCloseButtonPressed();
  std::string acknowledgementKey() const;
  bool hasConfigureTipBeenAcknowledged() const;
  void acknowledgeConfigureTip();

  std::weak_ptr<TabRow> tabRow_;
  std::weak_ptr<TabRowProvider> provider_;
  std::shared_ptr<RoundedRectangleView> hiliteView_;
  std::shared_ptr<LabelView> nameLabel_;
  std::shared_ptr<ImageView> arrowView_;
  std::shared_ptr<RowButton> configureButton_;
  std::unique_ptr<ConfigureTip> tip_;
  std::shared_ptr<RunLoopTimer> throbTimer_;
  double throbDelta_ = 0;
  /// Nobody sees the throbbing of a closed panel: the timer rests until this is signalled.
  ChangeNotice displayed_;
  bool hilited_ = false, mouseIsWithinView_ = false;
};

}  // namespace qb
