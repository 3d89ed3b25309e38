#include "Quillbox/rows/ProviderSelector.h"

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"

namespace qb {

namespace {

constexpr double nameLabelHeight = 18;
constexpr double naturalPadding = 44;

}  // namespace

std::shared_ptr<ProviderSelector> ProviderSelector::create(
    const Rect& frame, const std::shared_ptr<TabRowProvider>& provider) {
  std::shared_ptr<ProviderSelector> selector(new ProviderSelector(frame));
  selector->addSubview(selector->nameLabel_);
  selector->setProvider(provider);
  return selector;
}

ProviderSelector::ProviderSelector(const Rect& frame)
    : View(frame), nameLabel_(std::make_shared<LabelView>(quillbox->platform().graphics())) {
  nameLabel_->setRenderBackground(false);
  nameLabel_->setShadowed(true);
}

void ProviderSelector::setFrame(const Rect& frame) {
  View::setFrame(frame);
  arrange();
}

void ProviderSelector::setProvider(const std::shared_ptr<TabRowProvider>& provider) {
  setProviderName(provider ? provider->name() : "Select Contents:");
}

void ProviderSelector::setProviderName(const std::string& name) {
  nameLabel_->setText(name);
  arrange();
}

double ProviderSelector::naturalWidth() const { return nameLabel_->textWidth() + naturalPadding; }

void ProviderSelector::arrange() {
  const double width = nameLabel_->textWidth();
  nameLabel_->setFrame(Rect::make(bounds().width() / 2 - width / 2, 0, width, nameLabelHeight));
}

}  // namespace qb
