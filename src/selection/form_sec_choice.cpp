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
    c_.LeftParts = Named(new QSplitter(Qt::Vertical, &form_), "LeftParts");
    c_.LeftParts->addWidget(Place());
    c_.LeftParts->addWidget(StationsAndYears());
    c_.Label8 = Named(new QLabel(language_.Text(Caption::Files), &form_), "Label8");
    c_.ListOrjDos = List("ListOrjDos");
    c_.LeftParts->addWidget(Titled(c_.Label8, c_.ListOrjDos));
    auto* left = new QWidget(&form_);
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(c_.LeftParts, 1);
    column->addWidget(RatingCurveBox());
    return left;
  }

 private:
  QWidget* Place() {
    c_.Drive1 = Named(new DriveList(Say(Wording{u"Ev dizini", u"Home"}), &form_), "Drive1");
    c_.Dir1 = Named(new DirList(&form_), "Dir1");
    c_.Dir1->setMinimumHeight(3 * form_.fontMetrics().height());
    auto* title = new QLabel(Text(u"Sürücüler  ve  Dizinler", Caption::DriveAndDirectory), &form_);
    c_.Drive1->setAccessibleName(title->text());
    QWidget* part = Titled(title, c_.Dir1);
    static_cast<QVBoxLayout*>(part->layout())->insertWidget(1, c_.Drive1);
    return part;
  }

  QWidget* StationsAndYears() {
    c_.ListIst = List("ListIst");
    c_.Label2 = Named(new QLabel(language_.Text(Caption::StationCount), &form_), "Label2");
    c_.Text1 = Box("Text1", 3, true);
    c_.Text1->setMaximumWidth(c_.Text1->minimumWidth());
    auto* count = new QHBoxLayout;
    count->addWidget(c_.Label2);
    count->addWidget(c_.Text1);
    count->addStretch();
    c_.ListSuYili = List("ListSuYili");
    c_.ListSuYili->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* part = new QWidget(&form_);
    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    auto* stations = new QLabel(Text(u"İstasyonlar", Caption::StationsTab), &form_);
    auto* years = new QLabel(Text(u"Su Yılları", Caption::WaterYear), &form_);
    row->addWidget(Titled(stations, c_.ListIst, count), 1);
    row->addWidget(Titled(years, c_.ListSuYili), 1);
    return part;
  }

  QWidget* RatingCurveBox() {
    c_.RatingFrame = Named(new QGroupBox(language_.Text(Caption::RatingCurve), &form_), "RatingFrame");
    c_.Text7 = Box("Text7", 8);
    c_.Text7->setReadOnly(true);
    c_.Text7->setAccessibleName(language_.Text(Caption::RatingCurve));
    c_.Command2 = Button(QStringLiteral("Anahtar Dir."), "Command2");
    auto* row = new QHBoxLayout(c_.RatingFrame);
    row->setContentsMargins(kGap, kGap / 2, kGap, kGap);
    row->addWidget(c_.Text7, 1);
    row->addWidget(c_.Command2);
    return c_.RatingFrame;
  }
};

}  // namespace

QWidget* MakeChoiceColumn(QWidget& form, const Language& language, FormSecControls& controls) {
  return ChoiceColumn(form, language, controls).LeftColumn();
}

}  // namespace vesk
