// The rating curve of the loaded readings: choosing it, and what follows from it.
#include <QFileInfo>
#include <QMenu>
#include <QToolButton>

#include "ratings/curve_file.h"
#include "ratings/curve_source.h"
#include "ratings/form_anahtar.h"
#include "ratings/open_rating.h"
#include "ratings/recorded_levels.h"
#include "review/change_log.h"
#include "review/review_decisions.h"
#include "review/review_grid_model.h"
#include "selection/chooser_panel.h"
#include "selection/form_sec.h"
#include "selection/message_list.h"
#include "selection/review_grid_view.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "stations/station_curve.h"
#include "stations/station_register.h"
#include "tables/form5.h"

namespace vesk {

void FormSec::ConnectCurve() {
  auto* menu = new QMenu(c_.curve);
  menu->addAction(Say(Wording{u"Eğri seç...", u"Choose a curve..."}), this, &FormSec::ChooseRatingCurve)
      ->setObjectName(QStringLiteral("EgriSec"));
  dropCurve_ = menu->addAction(Say(Wording{u"Eğrisiz (debi yok)", u"No curve (no discharges)"}), this,
                               [this] { UseCurve({}); });
  dropCurve_->setObjectName(QStringLiteral("EgriYok"));
  menu->addSeparator();
  lastCurve_ = menu->addAction(QString(), this, [this] {
    if (const UsedCurve last = LastCurve(); !last.path.isEmpty()) UseCurve(last.path);
  });
  lastCurve_->setObjectName(QStringLiteral("EgriSon"));
  stationCurve_ = menu->addAction(QString(), this, &FormSec::UseStationCurve);
  stationCurve_->setObjectName(QStringLiteral("EgriIstasyon"));
  keepCurve_ =
      menu->addAction(Say(Wording{u"Bu eğriyi istasyonun eğrisi yap", u"Keep this curve for the station"}),
                      this, &FormSec::KeepStationCurve);
  keepCurve_->setObjectName(QStringLiteral("EgriSakla"));
  menu->addSeparator();
  gaugings_ =
      menu->addAction(Say(Wording{u"Debi ölçümleri...", u"Gaugings..."}), this, &FormSec::OpenGaugings);
  gaugings_->setObjectName(QStringLiteral("Olcumler"));
  curveWindow_ = menu->addAction(Say(Wording{u"Anahtar eğrisi penceresi...", u"Rating curve window..."}),
                                 this, &FormSec::OpenCurveWindow);
  curveWindow_->setObjectName(QStringLiteral("EgriPenceresi"));
  connect(menu, &QMenu::aboutToShow, this, &FormSec::ShowStationCurve);
  c_.curve->setMenu(menu);
  connect(c_.chooser, &ChooserPanel::RatingCurveCleared, this, [this] { UseCurve({}); });
  model_->SetDischargeText([this](int row) {
    const StationSeries& series = session_.Series();
    const auto value = series.CurveDischargeOf(row);
    return value ? run_.language.Say(series.Curve()->Explain(series.At(row).Time(), value->flag)) : QString();
  });
  ShowCurve();
}

/// The curve that the register keeps for the station of the choice; empty when it keeps none.
QString FormSec::StationCurve() const {
  const StationId station = StationOfCurve();
  if (station.IsEmpty()) return {};
  const auto facts = LookupStationFacts(run_.stationDatabasePath, station.Number());
  return facts ? StationCurvePath(run_.stationDatabasePath, facts->curve) : QString();
}

/// The logs whose records keep what was chosen for the readings on the screen; empty without any.
QStringList FormSec::LogsOfCurve() const {
  QStringList logs;
  if (!ChoiceIsLoaded()) return logs;
  for (const StationWaterYear& year : YearsOf(session_.Series().Chosen()))
    logs += ChangeLogToRead(run_.dataDirectory, loaded_->station, year);
  return logs;
}

/// The curve that was chosen last for the first of the loaded water years that has one.
UsedCurve FormSec::LastCurve() const {
  for (const QString& log : LogsOfCurve()) {
    const auto decisions = ReadReviewDecisions(log);
    if (decisions && !decisions->curve.path.isEmpty()) return decisions->curve;
  }
  return {};
}

/// For the next opening of these water years. Nothing depends on it: what cannot be kept is told and passed
/// over.
void FormSec::RememberCurve() {
  if (!curve_) return;
  const UsedCurve used{QFileInfo(curve_->Path()).absoluteFilePath(), curve_->Sha256()};
  for (const QString& log : LogsOfCurve()) {
    const auto known = ReadReviewDecisions(log);
    if (known && known->curve == used) continue;
    if (const Status kept = KeepCurveChoice(log, used); !kept) c_.messages->Add(kept.Failure().Said());
  }
}

/// The menu as it opens: others may have changed the register.
void FormSec::ShowStationCurve() {
  const UsedCurve last = LastCurve();
  lastCurve_->setEnabled(!last.path.isEmpty());
  if (last.path.isEmpty()) {
    lastCurve_->setText(Say(Wording{u"Son seçilen eğri (yok)", u"Curve chosen last (none)"}));
  } else {
    const auto now = ReadCurveFileWithDigest(last.path);
    const Message state = !now ? Message(Wording{u"artık okunamıyor", u"can no longer be read"})
                          : now->sha256 != last.sha256
                              ? Message(Wording{u"o zamandan beri değişti", u"changed since"})
                              : Message(Wording{u"değişmedi", u"unchanged"});
    lastCurve_->setText(Say(Wording{u"Son seçilen eğri: %1 (%2)", u"Curve chosen last: %1 (%2)"},
                            QFileInfo(last.path).fileName(), state));
  }
  const QString path = StationCurve();
  stationCurve_->setText(
      path.isEmpty()
          ? Say(Wording{u"İstasyonun eğrisi (yok)", u"Curve of the station (none)"})
          : Say(Wording{u"İstasyonun eğrisi: %1", u"Curve of the station: %1"}, QFileInfo(path).fileName()));
  stationCurve_->setEnabled(!path.isEmpty());
  const bool hasStation = !StationOfCurve().IsEmpty();
  keepCurve_->setEnabled(hasStation && curve_ != nullptr && curve_->Path() != path);
  gaugings_->setEnabled(hasStation);
  curveWindow_->setEnabled(hasStation);
}

void FormSec::UseStationCurve() {
  if (const QString path = StationCurve(); !path.isEmpty()) UseCurve(path);
}

void FormSec::KeepStationCurve() {
  if (!curve_) return;
  const QString number = StationOfCurve().Number();
  const auto keep = [&]() -> Result<bool> {
    auto stations = OpenStationDatabase(run_.stationDatabasePath);
    if (!stations) return stations.Failure();
    const auto read = stations->FactsOf(number);
    if (!read) return read.Failure();
    StationFacts facts = *read;
    facts.curve = QFileInfo(curve_->Path()).absoluteFilePath();
    return stations->SetFacts(number, *read, facts);
  };
  const Result<bool> kept = keep();
  if (!kept) return questions_->Warn(this, run_.language.attentionTitle, run_.language.Say(kept.Failure()));
  const QString name = QFileInfo(curve_->Path()).fileName();
  c_.messages->Add(
      *kept ? Message{Wording{u"%1: istasyonun eğrisi artık %2.", u"%1: the station's curve is %2 now."},
                      number, name}
            : Message{Wording{u"%1: başka biri istasyonu bu arada değiştirdi; %2 kaydedilmedi.",
                              u"%1: somebody else has changed the station meanwhile; %2 was not kept."},
                      number, name});
}

void FormSec::OpenGaugings() {
  const QString number = StationOfCurve().Number();
  const auto name = LookupStationName(run_.stationDatabasePath, number);
  frame_.ShowChild(MakeGaugingsWindow(frame_, number, name ? *name : QString()));
}

/// On the curve that makes the discharges, or a new one; the station's gaugings beside it. What is saved
/// there is at once what makes the discharges here.
void FormSec::OpenCurveWindow() {
  const QString number = StationOfCurve().Number();
  std::vector<Gauging> gaugings;
  const auto stations = StationRegister::Open(run_.stationDatabasePath, StationRegister::Access::ReadOnly);
  const auto stored = stations ? stations->GaugingsOf(number) : stations.Failure();
  if (stored) {
    for (const StoredGauging& one : *stored) gaugings.push_back(one.gauging);
    RecordedLevels levels(run_.dataDirectory, number);
    TakeRecordedLevels(gaugings, levels, run_.language.Choice());
  }
  auto* form = new FormAnahtar(frame_, number, curve_ ? curve_->Path() : QString(), gaugings);
  connect(form, &FormAnahtar::CurveSaved, this, [this](const QString& path) {
    if (curve_ && QFileInfo(curve_->Path()) == QFileInfo(path)) UseCurve(path);
  });
  frame_.ShowChild(form);
}

void FormSec::ChooseRatingCurve() {
  auto* form = new Form5(frame_);
  connect(form, &Form5::CurveChosen, this, [this](const QString& path) {
    UseCurve(path);
    activateWindow();
    c_.grid->setFocus();
  });
  frame_.ShowChild(form);
}

/// Whose curve is asked for: that of the choice, loaded or to be loaded.
StationId FormSec::StationOfCurve() const {
  if (ChoiceIsLoaded()) return loaded_->station;
  if (const auto file = browser_.ChosenFile())
    return browser_.Files()[static_cast<std::size_t>(*file)].Station();
  return browser_.Station();
}

/// path: of the curve that makes the discharges from here on; empty: none. One that cannot be used is told
/// and leaves no curve: figures of the one before would pass for its own.
void FormSec::UseCurve(const QString& path) {
  curve_.reset();
  if (!path.isEmpty()) {
    auto opened = OpenCurve(path, StationOfCurve().Number());
    if (opened) {
      curve_ = *std::move(opened);
    } else {
      questions_->Warn(this, run_.language.attentionTitle, run_.language.Say(opened.Failure()));
    }
  }
  // Of a choice that is not loaded yet: the readings on the screen are others.
  session_.UseCurve(ChoiceIsLoaded() ? curve_ : nullptr);
  RememberCurve();
  c_.chooser->ShowRatingCurve(curve_ ? path : QString());
  if (curve_ && curve_->Curve().station.isEmpty()) {
    c_.messages->Add(
        {Wording{u"%1: eğri hangi istasyonun olduğunu söylemiyor; istasyon denetlenemedi.",
                 u"%1: the curve does not say which station it is of; that could not be checked."},
         QFileInfo(path).fileName()});
  }
  ShowCurve();
}

void FormSec::ShowCurve() {
  c_.curve->setText(
      curve_ ? Say(Wording{u"Eğri: %1 (F9)", u"Curve: %1 (F9)"}, QFileInfo(curve_->Path()).fileName())
             : Say(Wording{u"Eğri yok (F9)", u"No curve (F9)"}));
  c_.curve->setToolTip(curve_ ? curve_->Path()
                              : Say(Wording{u"Debileri hesaplayan anahtar eğrisi",
                                            u"The rating curve that makes the discharges"}));
  dropCurve_->setEnabled(curve_ != nullptr);
}

}  // namespace vesk
