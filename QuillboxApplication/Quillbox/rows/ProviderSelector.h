#pragma once

#include <memory>
#include <string>

#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

class TabRowProvider;

/// The title at the top of a row: the name of its provider. Main thread.
class ProviderSelector : public View {
 public:
  /// Without a provider it asks the user to select one.
  static std::shared_ptr<ProviderSelector> create(const Rect& frame,
                                                  const std::shared_ptr<TabRowProvider>& provider);

  bool isFlipped() const override { return true; }
  using View::setFrame;
  void setFrame(const Rect& frame) override;

  void setProvider(const std::shared_ptr<TabRowProvider>& provider);
  void setProviderName(const std::string& name);
  /// As wide as it wants to be.
  double naturalWidth() const;
  LabelView& nameLabel() { return *nameLabel_; }

 private:
  explicit ProviderSelector(const Rect& frame);
  void arrange();

  std::shared_ptr<LabelView> nameLabel_;
};

}  // namespace qb
