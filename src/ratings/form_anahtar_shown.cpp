// What the rating curve window shows of its draft.
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/discharge.h"
#include "datafiles/numbers.h"
#include "ratings/curve_plot_view.h"
#include "ratings/form_anahtar.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

constexpr QRgb kFaultColour = 0xB00000;

QString Figure(double value) {
  constexpr int kDigits = 4;
  return QString::number(value, 'g', kDigits);
}

QTableWidgetItem* Cell(const QString& text, bool figure = true) {
  auto* item = new QTableWidgetItem(text);
  if (figure) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return item;
}

QString PeriodName(std::size_t place, const CurvePeriod& period) {
  const QString from = period.from ? DateTimeText(*period.from) : QStringLiteral("...");
  const QString to = period.to ? DateTimeText(*period.to) : QStringLiteral("...");
  return QStringLiteral("%1: %2 - %3").arg(place + 1).arg(from, to);
}

}  // namespace

void FormAnahtar::ShowMessage(const QString& text, bool isFault) {
  QPalette palette;
  if (isFault) palette.setColor(QPalette::WindowText, QColor(kFaultColour));
  message_->setPalette(palette);
  message_->setText(text);
}

/// The figures of the period's curve against its gaugings, whoever shaped it.
void FormAnahtar::Judge() {
  fit_.reset();
  const CurvePeriod& period = draft_.Period();
  if (period.segments.empty()) return;
  if (auto judged = JudgeCurve(period.gaugings, period.segments, Weights())) fit_ = *std::move(judged);
}

CurvePlot FormAnahtar::PlotNow() const {
  CurvePlot plot;
  plot.curve = draft_.Curve();
  plot.period = draft_.State().period;
  plot.fit = fit_;
  plot.logarithmic = logarithmic_->isChecked();
  if (!older_) return plot;
  const auto& periods = older_->periods;
  const auto same = std::ranges::find(periods, draft_.Period().from, &CurvePeriod::from);
  plot.older = same != periods.end() ? *same : periods.back();
  return plot;
}

void FormAnahtar::ShowPlot(const CurvePeriod* preview) {
  CurvePlot plot = PlotNow();
  plot.handles = true;
  if (preview != nullptr) plot.curve.periods[plot.period] = *preview;
  plot_->Show(std::move(plot));
}

void FormAnahtar::ShowAll() {
  showing_ = true;
  Judge();
  ShowFields();
  ShowGaugings();
  ShowFigures();
  ShowPlot();
  ShowTable();
  undo_->setEnabled(draft_.CanUndo());
  redo_->setEnabled(draft_.CanRedo());
  take_->setEnabled(!stationGaugings_.empty());
  const QString file = path_.isEmpty() ? Say(Wording{u"yeni", u"new"}) : QFileInfo(path_).fileName();
  setWindowTitle(
      Say({Wording{u"Anahtar eğrisi: %1 (%2)", u"Rating curve: %1 (%2)"}, draft_.Curve().station, file}) +
      (draft_.IsSaved() ? QString() : QStringLiteral(" *")));
  showing_ = false;
  ShowFaults();
}

void FormAnahtar::ShowFaults() {
  const std::vector<CurveFault> faults = CheckCurve(draft_.Curve());
  if (faults.empty()) return ShowMessage({}, false);
  constexpr std::size_t kMost = 3;
  QStringList lines;
  for (std::size_t i = 0; i < std::min(kMost, faults.size()); ++i) {
    const CurveFault& fault = faults[i];
    lines += fault.period < 0
                 ? Say(fault.what)
                 : Say({Wording{u"Dönem %1: %2", u"Period %1: %2"}, fault.period + 1, fault.what});
  }
  if (faults.size() > kMost)
    lines += Say({Wording{u"... ve %1 kusur daha", u"... and %1 faults more"}, faults.size() - kMost});
  ShowMessage(lines.join(u'\n'));
}

void FormAnahtar::ShowFigures() {
  const auto rows = fit_ ? static_cast<int>(fit_->parameters.size()) : 0;
  parameters_->setRowCount(rows);
  for (int row = 0; row < rows; ++row) {
    const FittedParameter& one = fit_->parameters[static_cast<std::size_t>(row)];
    parameters_->setItem(row, 0, Cell(one.name, false));
    const double figures[] = {one.value, one.standardError, one.low95, one.high95};
    for (int column = 0; column < 4; ++column)
      parameters_->setItem(row, column + 1, Cell(Figure(figures[column])));
  }
  const int made = draft_.State().segments;
  if (draft_.Period().segments.empty()) {
    origin_->setText(
        draft_.Period().points.empty()
            ? Say(Wording{u"Henüz eğri yok.", u"There is no curve yet."})
            : Say({Wording{u"%1 noktalık tablo.", u"Table of %1 points."}, draft_.Period().points.size()}));
  } else {
    origin_->setText(
        made > 0 ? Say({Wording{u"%1 parçalı, ölçümlere uyduruldu.", u"Segments: %1, fitted."}, made})
                 : Say({Wording{u"%1 parçalı, dosyadan veya elle.", u"Segments: %1, from a file or by hand."},
                        draft_.Period().segments.size()}));
  }
  QStringList lines;
  if (fit_) {
    lines += Say({Wording{u"%1 ölçüm, standart hata %2 (yüzde), AICc %3",
                          u"%1 gaugings, standard error %2 per cent, AICc %3"},
                  fit_->gaugings, Figure(fit_->standardErrorPercent), Figure(fit_->aicc)});
    for (const ResidualTest& test : fit_->tests) {
      const Message name = test.name == QLatin1String("signs")  ? Message(Wording{u"İşaretler", u"Signs"})
                           : test.name == QLatin1String("runs") ? Message(Wording{u"Diziler", u"Runs"})
                                                                : Message(Wording{u"Yanlılık", u"Bias"});
      const Message verdict = test.Passed() ? Message(Wording{u"kuşku yok", u"no doubt"})
                                            : Message(Wording{u"KUŞKULU", u"DOUBTFUL"});
      lines += Say({Wording{u"%1: olasılık %2, %3", u"%1: probability %2, %3"}, name,
                    QString::number(test.probability, 'f', 3), verdict});
    }
  }
  tests_->setText(lines.join(u'\n'));
  QStringList proposal;
  if (comparison_) {
    for (std::size_t i = 0; i < comparison_->fits.size(); ++i)
      proposal += QStringLiteral("%1: %2").arg(i + 1).arg(comparison_->fits[i].aicc, 0, 'f', 1);
    proposal_->setText(Say({Wording{u"AICc önerisi: %1 parça (%2)", u"AICc proposes segments: %1 (%2)"},
                            comparison_->proposed, proposal.join(QStringLiteral(";  "))}));
  } else {
    proposal_->setText(Say(Wording{u"AICc önerisi uydurunca görünür.", u"Fit to see what AICc proposes."}));
  }
}

void FormAnahtar::ShowGaugings() {
  const std::vector<Gauging>& gaugings = draft_.Period().gaugings;
  gaugings_->setRowCount(static_cast<int>(gaugings.size()));
  for (int row = 0; row < gaugings_->rowCount(); ++row) {
    const Gauging& one = gaugings[static_cast<std::size_t>(row)];
    auto* time = Cell(one.time ? DateTimeText(*one.time) : QStringLiteral("-"), false);
    time->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    time->setCheckState(one.used ? Qt::Checked : Qt::Unchecked);
    gaugings_->setItem(row, 0, time);
    gaugings_->setItem(row, 1, Cell(one.levelCm ? NumberText(*one.levelCm) : QString()));
    gaugings_->setItem(row, 2, Cell(DischargeDigits(one.dischargeM3s)));
    gaugings_->setItem(row, 3, Cell(QString()));
  }
  if (!fit_) return;
  for (const GaugingResidual& residual : fit_->residuals) {
    if (residual.gauging < gaugings_->rowCount())
      gaugings_->item(residual.gauging, 3)->setText(QString::number(residual.percent, 'f', 1));
  }
}

void FormAnahtar::ShowFields() {
  const CurvePeriod& period = draft_.Period();
  const auto time = [](const std::optional<DateTime>& one) { return one ? DateTimeText(*one) : QString(); };
  const QString texts[FieldCount] = {
      draft_.Curve().station,
      draft_.Curve().name,
      time(period.from),
      time(period.to),
      NumberText(period.lowestCm),
      NumberText(period.highestCm),
      NumberText(period.belowCm),
      NumberText(period.aboveCm),
      period.uncertaintyPercent ? NumberText(*period.uncertaintyPercent) : QString()};
  for (int i = 0; i < FieldCount; ++i) fields_[static_cast<std::size_t>(i)]->setText(texts[i]);
  const QString remarks = draft_.Curve().remarks.join(u'\n');
  if (remarks_->toPlainText() != remarks) remarks_->setPlainText(remarks);
  periods_->clear();
  for (std::size_t i = 0; i < draft_.Curve().periods.size(); ++i)
    periods_->addItem(PeriodName(i, draft_.Curve().periods[i]));
  periods_->setCurrentIndex(static_cast<int>(draft_.State().period));
  shifts_->setRowCount(static_cast<int>(period.shifts.size()) + 1);
  for (int row = 0; row < shifts_->rowCount(); ++row) {
    const bool empty = row + 1 == shifts_->rowCount();
    const CurveShift shift = empty ? CurveShift() : period.shifts[static_cast<std::size_t>(row)];
    shifts_->setItem(row, 0, Cell(empty ? QString() : DateTimeText(shift.time), false));
    shifts_->setItem(row, 1, Cell(empty ? QString() : NumberText(shift.shiftCm)));
  }
  if (draft_.State().segments > 0) segments_->setCurrentIndex(draft_.State().segments - 1);
}

/// Only while it is looked at: thousands of lines.
void FormAnahtar::ShowTable() {
  if (tabs_->currentWidget() != table_) return;
  constexpr std::size_t kMostLines = 5000;
  std::vector<double> levels = TableLevels(draft_.Period(), 1);
  const bool usable = CheckCurve(draft_.Curve()).empty();
  if (!usable) levels.clear();
  if (levels.size() > kMostLines) levels.resize(kMostLines);
  const std::vector<CurveTableLine> lines = CurveTableOf(draft_.Period(), levels);
  table_->setRowCount(static_cast<int>(lines.size()));
  for (int row = 0; row < table_->rowCount(); ++row) {
    const CurveTableLine& line = lines[static_cast<std::size_t>(row)];
    table_->setItem(row, 0, Cell(NumberText(line.levelCm)));
    table_->setItem(
        row, 1, Cell(HasDischarge(line.discharge.flag) ? DischargeDigits(line.discharge.m3s) : QString()));
    table_->setItem(row, 2, Cell(line.band ? DischargeDigits(line.band->lowerM3s) : QString()));
    table_->setItem(row, 3, Cell(line.band ? DischargeDigits(line.band->upperM3s) : QString()));
    table_->setItem(
        row, 4, Cell(line.discharge.flag == DischargeFlag::None ? QString() : QStringLiteral("*"), false));
  }
}

void FormAnahtar::TellGauging(std::size_t gauging) {
  const Gauging& one = draft_.Period().gaugings[gauging];
  QString residual = QStringLiteral("-");
  if (fit_) {
    const auto found =
        std::ranges::find(fit_->residuals, static_cast<int>(gauging), &GaugingResidual::gauging);
    if (found != fit_->residuals.end()) residual = QString::number(found->percent, 'f', 1);
  }
  ShowMessage(Say({Wording{u"Ölçüm %1: %2 cm, %3 m³/s, artık yüzde %4 %5",
                           u"Gauging %1: %2 cm, %3 m³/s, residual %4 % %5"},
                   one.time ? DateTimeText(*one.time) : QString::number(gauging + 1),
                   one.levelCm ? NumberText(*one.levelCm) : QStringLiteral("-"),
                   DischargeDigits(one.dischargeM3s), residual, one.remark}),
              false);
}

}  // namespace vesk
