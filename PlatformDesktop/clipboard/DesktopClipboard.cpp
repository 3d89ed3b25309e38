#include "PlatformDesktop/clipboard/DesktopClipboard.h"

#include <xcb/xfixes.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "PlatformDesktop/clipboard/ClipboardForms.h"
#include "PlatformDesktop/clipboard/PasteboardTypes.h"

namespace qb {

namespace {

/// By which programs that keep passwords ask others not to look.
constexpr const char* secretTarget = "x-kde-passwordManagerHint";
constexpr std::string_view secretHint = "secret";

/// What one of this program's text fields has copied. Asked for by the server it would not come:
/// both are served by the same thread.
PasteboardContents contentsOfTextField() {
  PasteboardContents contents;
  const QMimeData* const copied = QGuiApplication::clipboard()->mimeData();
  if (copied == nullptr) return contents;
  for (const QString& format : copied->formats()) {
    const QByteArray bytes = copied->data(format);
    contents.emplace_back(typeOfTarget(format.toStdString()),
                          PropertyList::Data(bytes.begin(), bytes.end()));
  }
  return contents;
}

bool contains(const std::vector<std::string>& targets, std::string_view target) {
  return std::find(targets.begin(), targets.end(), target) != targets.end();
}

}  // namespace

class DesktopClipboard::ForeignItem : public PasteboardItem {
 public:
  ForeignItem(std::shared_ptr<Foreign> foreign, std::vector<std::string> targets)
      : foreign_(std::move(foreign)),
        generation_(foreign_->generation),
        targets_(std::move(targets)) {}

  std::optional<PropertyList::Data> dataForType(const std::string& type) const override {
    for (const std::string& target : targetsOfType(type)) {
      if (isSilent_ || foreign_->generation != generation_) return std::nullopt;
      if (!contains(targets_, target) || typeOfTarget(target) != type) continue;
      if (auto data = foreign_->reader.data(target)) return bytesOfTarget(target, *std::move(data));
      // Every further question would cost as long a wait.
      isSilent_ = !foreign_->reader.wasAnswered();
    }
    return std::nullopt;
  }

 private:
  std::shared_ptr<Foreign> foreign_;
  std::int64_t generation_;
  std::vector<std::string> targets_;
  mutable bool isSilent_ = false;
};

DesktopClipboard::DesktopClipboard()
    : connection_([this](const SelectionConnection::Event& event) { handle(event); }),
      foreign_(std::make_shared<Foreign>(connection_)) {
  if (connection_.isUsable()) listen();
}

// Its items may be held for longer.
DesktopClipboard::~DesktopClipboard() { ++foreign_->generation; }

void DesktopClipboard::listen() {
  xcb_connection_t* const x = connection_.get();
  const auto* const extension = xcb_get_extension_data(x, &xcb_xfixes_id);
  if (extension == nullptr || !extension->present) return;
  firstXFixesEvent_ = extension->first_event;
  const XReply<xcb_xfixes_query_version_reply_t> version(
      xcb_xfixes_query_version_reply(x, xcb_xfixes_query_version(x, 5, 0), nullptr));
  xcb_xfixes_select_selection_input(x, connection_.x().root(), connection_.atom("CLIPBOARD"),
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY);
  const XReply<xcb_get_selection_owner_reply_t> present(xcb_get_selection_owner_reply(
      x, xcb_get_selection_owner(x, connection_.atom("CLIPBOARD")), nullptr));
  if (present) presentOwner_ = present->owner;
  timeWindow_ = connection_.makeWindow();
  connection_.drain();
}

void DesktopClipboard::catchUp() const {
  if (!connection_.isUsable()) return;
  // Events that come before an answer are here when that is.
  xcb_connection_t* const x = connection_.get();
  const XReply<xcb_get_input_focus_reply_t> answer(
      xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
  connection_.drain();
}

void DesktopClipboard::handle(const SelectionConnection::Event& event) {
  const auto type = event.response_type & 0x7F;
  if (firstXFixesEvent_ == 0 || type != firstXFixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) return;
  const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  presentOwner_ = notice.owner;
  if (isOwn()) return;
  ++foreign_->generation;
  isCleared_ = false;
  items_.clear();
  countChange();
}

void DesktopClipboard::countChange() {
  ++changeCount_;
  changed_.signal();
}

std::int64_t DesktopClipboard::clearContents() {
  catchUp();
  items_.clear();
  ++foreign_->generation;
  isCleared_ = true;
  publishClearingLater();
  countChange();
  return changeCount_;
}

void DesktopClipboard::publishClearingLater() {
  QTimer::singleShot(0, [this, alive = std::weak_ptr<const bool>(lifeSign_)] {
    if (!alive.lock()) return;
    catchUp();
    if (isCleared_) publish({});
  });
}

bool DesktopClipboard::setData(const PropertyList::Data& data, const std::string& type) {
  catchUp();
  std::vector<PasteboardContents> items = items_;
  if (items.empty()) items.emplace_back();
  std::erase_if(items.front(), [&type](const auto& each) { return each.first == type; });
  items.front().emplace_back(type, data);
  return publish(std::move(items));
}

bool DesktopClipboard::writeObjects(const std::vector<const PasteboardWriting*>& objects) {
  catchUp();
  std::vector<PasteboardContents> items = items_;
  for (const PasteboardWriting* object : objects) {
    auto contents = contentsOfObject(*object, *this);
    if (!contents) return false;
    items.push_back(*std::move(contents));
  }
  return publish(std::move(items));
}

bool DesktopClipboard::publish(std::vector<PasteboardContents> items) {
  if (!owner_.own(formsOfItems(items), connection_.serverTime(timeWindow_))) return false;
  catchUp();
  isCleared_ = false;
  // Another program may have come in the meantime.
  if (isOwn()) items_ = std::move(items);
  return true;
}

std::optional<PropertyList::Data> DesktopClipboard::dataForType(const std::string& type) const {
  for (const auto& item : pasteboardItems()) {
    if (auto data = item->dataForType(type)) return data;
  }
  return std::nullopt;
}

std::vector<std::shared_ptr<const PasteboardItem>> DesktopClipboard::pasteboardItems() const {
  catchUp();
  if (!isCleared_ && !isOwn()) return foreignItems();
  std::vector<std::shared_ptr<const PasteboardItem>> all;
  for (const auto& each : items_) all.push_back(std::make_shared<KeptPasteboardItem>(each));
  return all;
}

std::vector<std::shared_ptr<const PasteboardItem>> DesktopClipboard::foreignItems() const {
  if (isOfTextField()) return {std::make_shared<KeptPasteboardItem>(contentsOfTextField())};
  const auto targets = foreign_->reader.targets();
  if (targets.empty() || isSecret(targets)) return {};
  std::vector<std::shared_ptr<const PasteboardItem>> all;
  if (contains(targets, severalItemsTarget)) {
    const auto data = foreign_->reader.data(std::string(severalItemsTarget));
    for (auto& each : itemsOfSeveralItems(data.value_or(PropertyList::Data()))) {
      all.push_back(std::make_shared<KeptPasteboardItem>(std::move(each)));
    }
  }
  if (all.empty()) all.push_back(std::make_shared<ForeignItem>(foreign_, targets));
  return all;
}

bool DesktopClipboard::isOfTextField() const {
  const auto* const qt = qApp->nativeInterface<QNativeInterface::QX11Application>();
  if (qt == nullptr || qt->connection() == nullptr || presentOwner_ == XCB_NONE) return false;
  const xcb_setup_t* const setup = xcb_get_setup(qt->connection());
  return (presentOwner_ & ~setup->resource_id_mask) == setup->resource_id_base;
}

bool DesktopClipboard::isSecret(const std::vector<std::string>& targets) const {
  if (!contains(targets, secretTarget)) return false;
  const auto hint = foreign_->reader.data(secretTarget);
  // Whoever marks it and does not say how means it.
  return !hint || std::string_view(reinterpret_cast<const char*>(hint->data()), hint->size())
                      .starts_with(secretHint);
}

void DesktopClipboard::waitUntilTaken() {
  catchUp();
  if (isOwn()) owner_.waitUntilTaken();
}

std::int64_t DesktopClipboard::changeCount() const {
  catchUp();
  return changeCount_;
}

}  // namespace qb
