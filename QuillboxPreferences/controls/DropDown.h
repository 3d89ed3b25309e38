#pragma once

#include <QComboBox>

namespace qb {

/// One choice of several, which come up below it. The wheel passes it by, on to the page.
class DropDown : public QComboBox {
 public:
  explicit DropDown(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qb
