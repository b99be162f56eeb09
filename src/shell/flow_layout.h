// Controls side by side, going on in a further row where the width ends; so large letters clip nothing.
#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace vesk {

class FlowLayout : public QLayout {
 public:
  explicit FlowLayout(int gap);  ///< gap: pixels between controls and between rows
  ~FlowLayout() override = default;

  void addItem(QLayoutItem* item) override;
  [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
  [[nodiscard]] QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override { return Arrange(QRect(0, 0, width, 0), false); }
  [[nodiscard]] QSize minimumSize() const override;
  [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
  void setGeometry(const QRect& rect) override;

 private:
  /// Height that the items take in that width; place: also moves them there.
  int Arrange(const QRect& rect, bool place) const;

  int gap_;
  int width_ = 0;  ///< that it was last given, pixels
  std::vector<std::unique_ptr<QLayoutItem>> items_;
};

}  // namespace vesk
