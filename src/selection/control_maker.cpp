#include "selection/control_maker.h"

#include <QStyle>

namespace vesk {

int WidthToShow(const QAbstractScrollArea& view, const QString& text) {
  const int textMargins = 2 * (view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
  return view.fontMetrics().horizontalAdvance(text) + textMargins + 2 * view.frameWidth() +
         view.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

}  // namespace vesk
