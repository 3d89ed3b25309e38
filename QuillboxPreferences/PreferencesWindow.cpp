#include "QuillboxPreferences/PreferencesWindow.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "QuillboxPreferences/Theme.h"
#include "QuillboxPreferences/pages/AccessPage.h"
#include "QuillboxPreferences/pages/ActivationPage.h"
#include "QuillboxPreferences/pages/AppearancePage.h"
#include "QuillboxPreferences/pages/GeneralPage.h"

namespace qb {

namespace {

/// What a window manager adds around a window.
constexpr QSize roomForFrame(16, 48);

}  // namespace

PreferencesWindow::PreferencesWindow(PreferencesModel& model) : model_(model) {
  setWindowTitle(QStringLiteral("Quillbox Preferences"));
  resize(QSize(820, 640).boundedTo(screen()->availableSize() - roomForFrame));
  setMinimumSize(720, 480);
  pages_.push_back(std::make_unique<ActivationPage>(model));
  pages_.push_back(std::make_unique<AppearancePage>(model));
  pages_.push_back(std::make_unique<GeneralPage>(model));
  pages_.push_back(std::make_unique<AccessPage>(model));

  sidebar_ = new QListWidget;
  sidebar_->setObjectName(QStringLiteral("sidebar"));
  sidebar_->setFixedWidth(170);
  sidebar_->addItems({QStringLiteral("Activation"), QStringLiteral("Appearance"),
                      QStringLiteral("General"), QStringLiteral("Access")});
  auto* const stack = new QStackedWidget;
  for (const auto& page : pages_) stack->addWidget(page->widget());
  connect(sidebar_, &QListWidget::currentRowChanged, stack, &QStackedWidget::setCurrentIndex);
  sidebar_->setCurrentRow(0);

  auto* const right = new QVBoxLayout;
  right->setSpacing(0);
  right->addWidget(stack, 1);
  right->addWidget(makeFooter());
  auto* const whole = new QHBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->setSpacing(0);
  whole->addWidget(sidebar_);
  whole->addLayout(right, 1);
  refresh();
  model.addObserver([this] { refresh(); });
}

QWidget* PreferencesWindow::makeFooter() {
  auto* const footer = new QWidget;
  footer->setObjectName(QStringLiteral("footer"));
  footer->setAttribute(Qt::WA_StyledBackground);
  auto* const row = new QHBoxLayout(footer);
  row->setContentsMargins(28, 12, 28, 12);
  access_ = new QLabel;
  row->addWidget(access_, 1);
  auto* const preview = new QPushButton(QStringLiteral("&Preview Quillbox"));
  preview->setDefault(true);
  connect(preview, &QPushButton::clicked, this, [this] { model_.preview(); });
  row->addWidget(preview);
  return footer;
}

void PreferencesWindow::refresh() {
  for (const auto& page : pages_) page->refresh();
  const auto access = model_.publishedAccess();
  const Theme& theme = Theme::current();
  const QColor color = !access ? theme.secondaryText : *access ? theme.good : theme.bad;
  access_->setText(
      QStringLiteral("<span style='color:%1'>\u25cf</span>&nbsp; %2")
          .arg(color.name(), !access   ? QStringLiteral("Quillbox has not run yet")
                             : *access ? QStringLiteral("Quillbox has access to the keys")
                                       : QStringLiteral("Quillbox has no access to the keys")));
}

void PreferencesWindow::showPage(const QString& name) {
  for (int i = 0; i < sidebar_->count(); ++i) {
    if (sidebar_->item(i)->text().compare(name, Qt::CaseInsensitive) == 0) {
      sidebar_->setCurrentRow(i);
    }
  }
}

void PreferencesWindow::comeForward() {
  show();
  setWindowState(windowState() & ~Qt::WindowMinimized);
  raise();
  activateWindow();
}

void PreferencesWindow::keyPressEvent(QKeyEvent* event) {
  const bool closes = event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close) ||
                      event->matches(QKeySequence::Quit);
  if (closes) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace qb
