// FormGraf: mouse, wheel and keys over the picture.
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <cmath>

#include "datafiles/dates.h"
#include "graphs/form_graf.h"
#include "graphs/graph_picture.h"

namespace vesk {
namespace {

constexpr double kNotchFactor = 0.8;   // time range left by one turn towards the graph
constexpr double kLeastDragUnits = 3;  // a click that trembles is no rectangle

}  // namespace

void FormGraf::ConnectPicture() {
  picture_->installEventFilter(this);
  connect(picture_, &GraphPicture::Resized, this, [this] { DrawPage(Mode::Eski); });
  connect(picture_, &GraphPicture::Hovered, this, &FormGraf::ShowReadout);
  connect(picture_, &GraphPicture::Pressed, this, &FormGraf::StartRectangle);
  connect(picture_, &GraphPicture::Dragged, this, &FormGraf::StretchRectangle);
  connect(picture_, &GraphPicture::Released, this, [this] { press_.reset(); });
  connect(picture_, &GraphPicture::DoubleClicked, this, &FormGraf::DrawFirst);
  connect(picture_, &GraphPicture::WheelTurned, this,
          [this](QPointF point, double notches) { ZoomBy(point.x(), std::pow(kNotchFactor, notches)); });
}

void FormGraf::ShowReadout(QPointF point) {
  GraphCorner corner = CornerAt(scale_, sheet_.firstDay, point);
  corner.levelCm = CornerAt(scale_, sheet_.firstDay, {point.x(), point.y() + mouseAdjustment_}).levelCm;
  const auto place = NearestReading(sheet_, scale_, point);
  if (place) return ShowReading(*place, CursorText(corner));
  readout_->setText(CursorText(corner));
  picture_->SetMark(std::nullopt);
}

void FormGraf::ShowReading(ReadoutPlace place, const QString& prefix) {
  place_ = place;
  const QString reading = ReadingText(sheet_, place);
  const QString apart = prefix.isEmpty() ? QString() : QStringLiteral("        ");
  readout_->setText(prefix + apart + Words(Wording{u"Okuma: ", u"Reading: "}) + reading);
  const QPointF mark = PointOfReading(sheet_, scale_, place);
  picture_->SetMark(mark.y() >= scale_.PlotTop() ? std::optional(mark) : std::nullopt);
}

void FormGraf::MoveReadout(int readings, int series) {
  if (!place_) {
    place_ = EdgeReading(sheet_, scale_, false);
  } else if (series != 0) {
    place_ = StepSeries(sheet_, scale_, *place_, series);
  } else {
    place_ = StepReading(sheet_, scale_, *place_, readings);
  }
  if (place_) TellReading();
}

void FormGraf::TellReading() {
  ShowReading(*place_, {});
  // A screen reader speaks the new name of the control that has the focus.
  picture_->setAccessibleName(ReadingText(sheet_, *place_));
}

void FormGraf::StartRectangle(QPointF point) {
  SetRectangle(std::nullopt);
  press_ = point;
}

void FormGraf::StretchRectangle(QPointF point) {
  if (!press_) return;
  const QPointF moved = point - *press_;
  if (!rectangle_ && std::hypot(moved.x(), moved.y()) < kLeastDragUnits) return;
  SetRectangle(ZoomRectangle(scale_, *press_, point));
}

void FormGraf::ZoomBy(double cursorX, double factor) {
  if (!rectangle_ && factor >= 1) return;
  SetRectangle(
      ScaledRectangle(scale_, pages_.Current().maximumCm, rectangle_.value_or(QRectF()), cursorX, factor));
}

void FormGraf::SetRectangle(const std::optional<QRectF>& rectangle) {
  const bool changed = rectangle.has_value() != rectangle_.has_value();
  rectangle_ = rectangle;
  picture_->SetRectangle(rectangle);
  ShowCorners();
  if (!changed) return;
  if (!rectangle) return ShowPageMessages();
  Say(Words(
      Wording{u"Enter: seçilmiş bölgeyi çiz, Esc: vazgeç", u"Enter: draw the selected area, Esc: drop it"}));
}

void FormGraf::ShowCorners() {
  for (std::size_t i = 0; i < corners_.size(); ++i) {
    QStringList texts = {{}, {}, {}};
    if (rectangle_) {
      corners_[i] =
          CornerAt(scale_, sheet_.firstDay, i == 0 ? rectangle_->topLeft() : rectangle_->bottomRight());
      texts = DateTimeText(corners_[i].time).split(QLatin1Char(' '));
      texts.append(QString::number(corners_[i].levelCm));
    }
    for (std::size_t field = 0; field < 3; ++field) {
      cornerFields_[i][field]->setText(texts[static_cast<qsizetype>(field)]);
    }
  }
}

// Arrows, Home and End: from reading to reading.
bool FormGraf::MoveByKey(int key) {
  switch (key) {
    case Qt::Key_Left:
      MoveReadout(-1, 0);
      return true;
    case Qt::Key_Right:
      MoveReadout(1, 0);
      return true;
    case Qt::Key_Up:
      MoveReadout(0, 1);
      return true;
    case Qt::Key_Down:
      MoveReadout(0, -1);
      return true;
    case Qt::Key_Home:
    case Qt::Key_End:
      place_ = EdgeReading(sheet_, scale_, key == Qt::Key_End);
      if (place_) TellReading();
      return true;
    default:
      return false;
  }
}

bool FormGraf::HandleKey(int key) {
  if (MoveByKey(key)) return true;
  const double x =
      place_ ? PointOfReading(sheet_, scale_, *place_).x() : (scale_.PlotLeft() + scale_.PlotRight()) / 2;
  switch (key) {
    case Qt::Key_Plus:
      ZoomBy(x, kNotchFactor);
      return true;
    case Qt::Key_Minus:
      ZoomBy(x, 1 / kNotchFactor);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      DrawSelection();
      return true;
    case Qt::Key_Escape:
      SetRectangle(std::nullopt);
      return true;
    default:
      return false;
  }
}

bool FormGraf::eventFilter(QObject* watched, QEvent* event) {
  if (watched == picture_ && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (HandleKey(key->key())) return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace vesk
