// The left column of the selection window: what to choose.
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSplitter>

#include "selection/form_sec_maker.h"
#include "shell/folder_lists.h"

namespace vesk {
namespace {

class ChoiceColumn : public FormSecMaker {
 public:
  using FormSecMaker::FormSecMaker;

  QWidget* LeftColumn() {
    c_.leftParts = Named(new QSplitter(Qt::Vertical, &form_), "LeftParts");
    c_.leftParts->addWidget(Place());
    c_.leftParts->addWidget(StationsAndYears());
    c_.filesTitle = Named(new QLabel(language_.Text(Caption::Files), &form_), "Label8");
    c_.rawFiles = List("ListOrjDos");
    c_.leftParts->addWidget(Titled(c_.filesTitle, c_.rawFiles));
    auto* left = new QWidget(&form_);
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(c_.leftParts, 1);
    column->addWidget(RatingCurveBox());
    return left;
  }

 private:
  QWidget* Place() {
    c_.volumes = Named(new DriveList(Say(Wording{u"Ev dizini", u"Home"}), &form_), "Drive1");
    c_.folders = Named(new DirList(&form_), "Dir1");
    c_.folders->setMinimumHeight(3 * form_.fontMetrics().height());
    auto* title = new QLabel(Text(u"Sürücüler  ve  Dizinler", Caption::DriveAndDirectory), &form_);
    c_.volumes->setAccessibleName(title->text());
    QWidget* part = Titled(title, c_.folders);
    static_cast<QVBoxLayout*>(part->layout())->insertWidget(1, c_.volumes);
    return part;
  }

  QWidget* StationsAndYears() {
    c_.stations = List("ListIst");
    c_.stationCountLabel = Named(new QLabel(language_.Text(Caption::StationCount), &form_), "Label2");
    c_.stationCount = Box("Text1", 3, true);
    c_.stationCount->setMaximumWidth(c_.stationCount->minimumWidth());
    auto* count = new QHBoxLayout;
    count->addWidget(c_.stationCountLabel);
    count->addWidget(c_.stationCount);
    count->addStretch();
    c_.waterYears = List("ListSuYili");
    c_.waterYears->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* part = new QWidget(&form_);
    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    auto* stations = new QLabel(Text(u"İstasyonlar", Caption::StationsTab), &form_);
    auto* years = new QLabel(Text(u"Su Yılları", Caption::WaterYear), &form_);
    row->addWidget(Titled(stations, c_.stations, count), 1);
    row->addWidget(Titled(years, c_.waterYears), 1);
    return part;
  }

  QWidget* RatingCurveBox() {
    c_.ratingFrame = Named(new QGroupBox(language_.Text(Caption::RatingCurve), &form_), "RatingFrame");
    c_.ratingPath = Box("Text7", 8);
    c_.ratingPath->setReadOnly(true);
    c_.ratingPath->setAccessibleName(language_.Text(Caption::RatingCurve));
    c_.chooseRating = Button(QStringLiteral("Anahtar Dir."), "Command2");
    auto* row = new QHBoxLayout(c_.ratingFrame);
    row->setContentsMargins(kGap, kGap / 2, kGap, kGap);
    row->addWidget(c_.ratingPath, 1);
    row->addWidget(c_.chooseRating);
    return c_.ratingFrame;
  }
};

}  // namespace

QWidget* MakeChoiceColumn(QWidget& form, const Language& language, FormSecControls& controls) {
  return ChoiceColumn(form, language, controls).LeftColumn();
}

}  // namespace vesk
