#include "Quillbox/activation/QuillboxNotifications.h"

#include "Platform/Graphics.h"
#include "Platform/UserNotifications.h"
#include "Platform/WindowServer.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/managers/PrimaryScreen.h"
#include "QuillboxCommon/views/Animation.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

constexpr double fontSize = 24;
/// Around the text.
constexpr double margin = 25;
constexpr double cornerRadius = 10;
constexpr TimeInterval timeToFade = 1;
/// Also where the screens are not desktops to begin with: it belongs to no application.
constexpr std::uint64_t stationary = 16;

/// A text of its own natural size.
std::shared_ptr<LabelView> textField(const TextMeasurer& measurer, const std::string& text,
                                     const Color& color) {
  auto field = std::make_shared<LabelView>(measurer, Rect::make(0, 0, 500, 30));
  field->setRenderBackground(false);
  field->setFont(Font::systemFontOfSize(fontSize));
  field->setTextColor(color);
  field->setText(text);
  field->setFrameSize({field->textWidth(), field->textHeight()});
  return field;
}

}  // namespace

QuillboxNotifications::QuillboxNotifications(Quillbox& facade) : facade_(facade) {
  facade_.platform().userNotifications().setShouldPresent(
      [](const UserNotification&) { return true; });
}

QuillboxNotifications::~QuillboxNotifications() {
  facade_.platform().userNotifications().setShouldPresent({});
}

std::shared_ptr<Window> QuillboxNotifications::display(const std::string& text,
                                                       TimeInterval duration, TimeInterval delay) {
  std::shared_ptr<Window> window = create(text);
  executeBlockAfterDelay([window] { window->makeKeyAndOrderFront(); }, delay);
  executeBlockAfterDelay([window] { window->contentView()->animator().setAlphaValue(0); },
                         delay + duration);
  executeBlockAfterDelay([window] { window->orderOut(); }, delay + duration + timeToFade);
  return window;
}

std::shared_ptr<Window> QuillboxNotifications::create(const std::string& text) const {
  Platform& platform = facade_.platform();
  const auto white = textField(platform.graphics(), text, Color::white());
  const auto black = textField(platform.graphics(), text, Color::black());

  auto window =
      std::make_shared<Window>(platform.windowServer(), inset(white->frame(), -margin, -margin));
  window->setCollectionBehavior(stationary);
  window->setHasShadow(false);
  window->setOpaque(false);
  window->setStyleMask(0);
  window->setBackgroundColor(Color::clear());
  window->setLevel(platform.windowServer().windowLevelForKey(WindowLevelKeyScreenSaver));
  window->center(primaryScreen(platform.displays()).visibleFrame);
  window->setBackgroundBlurRadius(facade_.settings().backdropBlurPercent());

  View& content = *window->contentView();
  const auto background = std::make_shared<RoundedRectangleView>(content.bounds());
  background->setCornerRadius(cornerRadius);
  background->setBackgroundColor(facade_.settings().tabRowColor());
  content.addSubview(background);
  const Rect textFrame = centered(white->frame().size, content.bounds());
  white->setFrame(textFrame);
  // A shadow without a blur.
  black->setFrame(offset(textFrame, 0, 1));
  content.addSubview(black);
  content.addSubview(white);
  return window;
}

void QuillboxNotifications::displaySystemNotification(const std::string& title,
                                                      const std::string& details) {
  facade_.platform().userNotifications().deliverNotification(
      {title, details, UserNotificationDefaultSoundName});
}

}  // namespace qb
