#pragma once

#include <QTextDocument>
#include <QWidget>

namespace qb {

/// Plain text of a given width, broken between words or, where a word is too long, inside it.
class WrappedText : public QWidget {
 public:
  WrappedText(const QString& text, const QFont& font, int width);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QTextDocument document_;
};

}  // namespace qb
