#include "QuillboxPreferences/pages/AppearancePage.h"

#include <QColorDialog>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "QuillboxPreferences/controls/PanelPreview.h"
#include "QuillboxPreferences/controls/Swatch.h"

namespace qb {

namespace {

int percentOf(double part) { return static_cast<int>(std::lround(part * 100)); }

}  // namespace

AppearancePage::AppearancePage(PreferencesModel& model) : model_(model) {
  widget_ = makePage(QStringLiteral("Appearance"), [this](QVBoxLayout& page) {
    preview_ = new PanelPreview(model_.settings());
    page.addSpacing(6);
    page.addWidget(preview_);
    fillRowColors(page);
    fillBackdrop(page);
    fillSizes(page);
  });
  refresh();
}

void AppearancePage::change(PreferencesModel::Change change) {
  model_.change(std::move(change));
  preview_->update();
}

void AppearancePage::chooseColor(const QString& title, const QColor& present,
                                 const std::function<void(const QColor&)>& chosen) {
  const QColor color =
      QColorDialog::getColor(present, widget_->window(), title, QColorDialog::ShowAlphaChannel);
  if (color.isValid()) chosen(color);
}

void AppearancePage::fillRowColors(QVBoxLayout& page) {
  QVBoxLayout& card = *addCard(page, QStringLiteral("TAB ROWS"));
  swatches_ = new SwatchGrid([this](const Color& color) {
    change([color](Settings& settings) {
      settings.setTabRowColorWithRed(color.red(), color.green(), color.blue());
      settings.setTabRowColorAlpha(color.alpha());
    });
    refresh();
  });
  addWideRow(card, swatches_);
  freeColor_ = new Swatch(Qt::black);
  QObject::connect(freeColor_, &QAbstractButton::clicked, freeColor_, [this] {
    freeColor_->setChecked(false);
    chooseColor(QStringLiteral("Colour of the Tab Rows"), toQColor(model_.settings().tabRowColor()),
                [this](const QColor& color) {
                  change([color](Settings& settings) {
                    settings.setTabRowColorWithRed(color.redF(), color.greenF(), color.blueF());
                    settings.setTabRowColorAlpha(color.alphaF());
                  });
                  refresh();
                });
  });
  addRow(card, QStringLiteral("Any other colour"), {}, freeColor_);
  // Rows stay visible: less than a quarter is not to be had.
  rowOpacity_ =
      addSlider(card, QStringLiteral("Opacity"), {}, 25, 100, QStringLiteral(" %"), [this](int n) {
        change([n](Settings& settings) { settings.setTabRowColorAlpha(n / 100.0); });
        swatches_->show(model_.settings().tabRowColor());
        freeColor_->setColor(toQColor(model_.settings().tabRowColor()));
      });
}

void AppearancePage::fillBackdrop(QVBoxLayout& page) {
  QVBoxLayout& card = *addCard(page, QStringLiteral("BACKDROP"));
  backdropColor_ = new Swatch(Qt::black);
  QObject::connect(backdropColor_, &QAbstractButton::clicked, backdropColor_, [this] {
    backdropColor_->setChecked(false);
    chooseColor(QStringLiteral("Colour of the Backdrop"),
                toQColor(model_.settings().backdropColor()), [this](const QColor& color) {
                  change([color](Settings& settings) {
                    settings.setBackdropColorWithRed(color.redF(), color.greenF(), color.blueF());
                    settings.setBackdropColorAlpha(color.alphaF());
                  });
                  refresh();
                });
  });
  addRow(card, QStringLiteral("Colour"), QStringLiteral("Laid over the desktop behind the panel."),
         backdropColor_);
  backdropOpacity_ =
      addSlider(card, QStringLiteral("Opacity"), {}, 0, 100, QStringLiteral(" %"), [this](int n) {
        change([n](Settings& settings) { settings.setBackdropColorAlpha(n / 100.0); });
        backdropColor_->setColor(toQColor(model_.settings().backdropColor()));
      });
  blur_ = addSlider(
      card, QStringLiteral("Blur"), QStringLiteral("Where the desktop's compositor can."), 0, 100,
      QStringLiteral(" %"),
      [this](int n) { change([n](Settings& settings) { settings.setBackdropBlurPercent(n); }); });
}

void AppearancePage::fillSizes(QVBoxLayout& page) {
  QVBoxLayout& card = *addCard(page, QStringLiteral("SIZES"));
  largest_ = addSlider(
      card, QStringLiteral("Largest items"), QStringLiteral("As long as all of them have room."),
      30, 200, QStringLiteral(" pt"), [this](int n) {
        change([n](Settings& settings) { settings.setUpperTabRowItemHaloHeight(n); });
      });
  smallest_ =
      addSlider(card, QStringLiteral("Smallest items"),
                QStringLiteral("When there are many; a row that still overflows scrolls."), 30, 200,
                QStringLiteral(" pt"), [this](int n) {
                  change([n](Settings& settings) { settings.setLowerTabRowItemHaloHeight(n); });
                });
  width_ = addSlider(card, QStringLiteral("Width of the panel"),
                     QStringLiteral("Of the screen, at most."), 20, 100, QStringLiteral(" %"),
                     [this](int n) {
                       change([n](Settings& settings) { settings.setMaxHostViewWidthPercent(n); });
                     });
}

void AppearancePage::refresh() {
  const Settings& settings = model_.settings();
  swatches_->show(settings.tabRowColor());
  freeColor_->setColor(toQColor(settings.tabRowColor()));
  backdropColor_->setColor(toQColor(settings.backdropColor()));
  rowOpacity_.show(percentOf(settings.tabRowColorAlpha()));
  backdropOpacity_.show(percentOf(settings.backdropColorAlpha()));
  blur_.show(static_cast<int>(settings.backdropBlurPercent()));
  largest_.show(static_cast<int>(settings.upperTabRowItemHaloHeight()));
  smallest_.show(static_cast<int>(settings.lowerTabRowItemHaloHeight()));
  width_.show(static_cast<int>(settings.maxHostViewWidthPercent()));
  preview_->update();
}

}  // namespace qb
