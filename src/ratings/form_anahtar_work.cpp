// What the rating curve window does: fitting, shaping, fields, files.
#include <QCloseEvent>
#include <QComboBox>
#include <QCryptographicHash>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QTableWidget>
#include <QThread>

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "platform/whole_file.h"
#include "ratings/curve_file.h"
#include "ratings/curve_folder.h"
#include "ratings/curve_plot.h"
#include "ratings/form_anahtar.h"
#include "ratings/gaugings_csv.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

constexpr Wording kReadFailed{u"Anahtar eğrisi okunamadı", u"The rating curve could not be read"};
constexpr Wording kNoNumber{u"%1 “%2”; beklenen bir sayı", u"%1 \"%2\"; expected a number"};
constexpr Wording kNoTime{u"%1 “%2”; beklenen gg/aa/yyyy ss:dd", u"%1 \"%2\"; expected dd/mm/yyyy hh:mm"};

QByteArray DigestOf(const QString& path) {
  const auto bytes = ReadWholeFile(path, kReadFailed);
  return bytes ? QCryptographicHash::hash(*bytes, QCryptographicHash::Sha256).toHex() : QByteArray();
}

}  // namespace

FitWeights FormAnahtar::Weights() const {
  return weights_->currentIndex() == 0 ? FitWeights::FromUncertainties : FitWeights::Equal;
}

QString FormAnahtar::CurveFolder() const {
  if (!path_.isEmpty()) return QFileInfo(path_).absolutePath();
  const QString kept =
      frame_.Run().settings.ReadSetting(QStringLiteral("Genel"), QStringLiteral("AnahtarDirectory"));
  return kept.isEmpty() ? frame_.Run().dataDirectory : kept;
}

void FormAnahtar::RequestFit(int segments) {
  if (!running_.empty()) {
    wantedSegments_ = segments;
    return;
  }
  wantedSegments_ = 0;
  fitSegments_ = segments;
  ShowMessage(Say(Wording{u"Uyduruluyor...", u"Fitting..."}), false);
  auto made = std::make_shared<std::optional<Result<FitComparison>>>();
  QThread* thread = QThread::create([made, gaugings = draft_.Period().gaugings, weights = Weights()] {
    made->emplace(CompareFits(gaugings, kMostSegments, weights));
  });
  running_.push_back(thread);
  connect(thread, &QThread::finished, this,
          [this, thread, made, asked = draft_.State(), weights = Weights()] {
            std::erase(running_, thread);
            thread->deleteLater();
            if (wantedSegments_ != 0) return RequestFit(wantedSegments_);
            // A curve that was shaped meanwhile is not taken away by an older wish.
            const bool current = asked == draft_.State() && weights == Weights() && made->has_value();
            if (current) return TakeFit(**made);
            ShowFaults();
          });
  thread->start();
}

void FormAnahtar::TakeFit(const Result<FitComparison>& made) {
  comparison_.reset();
  if (made) comparison_ = *made;
  const auto wanted = static_cast<std::size_t>(fitSegments_);
  if (!comparison_ || comparison_->fits.size() < wanted) {
    ShowAll();
    // Why there is none stands in the fit's own words.
    const auto alone = FitCurve(draft_.Period().gaugings, fitSegments_, Weights());
    if (!alone) ShowMessage(frame_.Run().language.Say(alone.Failure()));
    return;
  }
  draft_.Change(draft_.WithFit(comparison_->fits[wanted - 1]));
  ShowAll();
}

void FormAnahtar::SetGaugings(std::vector<Gauging> gaugings) {
  CurvePeriod period = draft_.Period();
  period.gaugings = std::move(gaugings);
  comparison_.reset();
  draft_.ChangePeriod(period, 0);
  ShowAll();
}

void FormAnahtar::Toggle(std::size_t gauging) {
  CurvePeriod period = draft_.Period();
  if (gauging >= period.gaugings.size()) return;
  period.gaugings[gauging].used = !period.gaugings[gauging].used;
  const int segments = draft_.State().segments;
  comparison_.reset();
  draft_.ChangePeriod(period, segments);
  ShowAll();
  if (segments > 0) RequestFit(segments);  // a fitted curve follows its gaugings, one shaped by hand stays
}

void FormAnahtar::DropNode(std::size_t node, const CurveNode& to) {
  const auto moved = WithNodeMoved(draft_.Period(), node, to);
  if (!moved) {
    ShowPlot();
    return ShowMessage(
        Say(Wording{u"Eğri oradan geçemez: seviyeler ve debiler artmalı, üs 0.3 ile 8 arasında kalmalı.",
                    u"The curve cannot run there: levels and discharges must rise, the exponent "
                    u"stays from 0.3 to 8."}));
  }
  draft_.ChangePeriod(*moved, 0);
  ShowAll();
}

void FormAnahtar::TakeFields() {
  if (showing_) return;
  const auto text = [this](Field field) { return fields_[field]->text().trimmed(); };
  static constexpr Wording kNames[FieldCount] = {{u"İstasyon no:", u"Station:"},
                                                 {u"Ad:", u"Name:"},
                                                 {u"Başlangıç:", u"Valid from:"},
                                                 {u"Bitiş:", u"Valid to:"},
                                                 {u"En düşük ölçülen:", u"Lowest gauged:"},
                                                 {u"En yüksek ölçülen:", u"Highest gauged:"},
                                                 {u"Altına uzatma:", u"Extrapolate below:"},
                                                 {u"Üstüne uzatma:", u"Extrapolate above:"},
                                                 {u"Belirsizlik:", u"Uncertainty:"}};
  DraftState next = draft_.State();
  CurvePeriod& period = next.curve.periods[next.period];
  next.curve.station = text(Station);
  next.curve.name = text(Name);
  const QString remarks = remarks_->toPlainText();
  next.curve.remarks = remarks.isEmpty() ? QStringList() : remarks.split(u'\n');
  for (const auto& [field, place] : {std::pair{From, &period.from}, std::pair{To, &period.to}}) {
    const auto time = ReadDateTime(text(field));
    if (!time && !text(field).isEmpty())
      return ShowMessage(Say({kNoTime, Message(kNames[field]), text(field)}));
    *place = time;
  }
  const std::pair<Field, double*> figures[] = {{Lowest, &period.lowestCm},
                                               {Highest, &period.highestCm},
                                               {Below, &period.belowCm},
                                               {Above, &period.aboveCm}};
  for (const auto& [field, place] : figures) {
    const auto figure = ReadWholeNumber(text(field));
    if (!figure) return ShowMessage(Say({kNoNumber, Message(kNames[field]), text(field)}));
    *place = *figure;
  }
  period.uncertaintyPercent.reset();
  if (!text(Uncertainty).isEmpty()) {
    period.uncertaintyPercent = ReadWholeNumber(text(Uncertainty));
    if (!period.uncertaintyPercent)
      return ShowMessage(Say({kNoNumber, Message(kNames[Uncertainty]), text(Uncertainty)}));
  }
  if (next == draft_.State()) return;
  draft_.Change(next);
  ShowAll();
}

/// Rows of which a cell is still empty wait for it.
void FormAnahtar::TakeShifts() {
  static constexpr Wording kShift{u"Kayma:", u"Shift:"};
  CurvePeriod period = draft_.Period();
  period.shifts.clear();
  for (int row = 0; row < shifts_->rowCount(); ++row) {
    const auto text = [this, row](int column) {
      const QTableWidgetItem* item = shifts_->item(row, column);
      return item != nullptr ? item->text().trimmed() : QString();
    };
    if (text(0).isEmpty() && text(1).isEmpty()) continue;
    const auto time = ReadDateTime(text(0));
    if (!time && !text(0).isEmpty()) return ShowMessage(Say({kNoTime, Message(kShift), text(0)}));
    const auto shift = ReadWholeNumber(text(1));
    if (!shift && !text(1).isEmpty()) return ShowMessage(Say({kNoNumber, Message(kShift), text(1)}));
    if (!time || !shift) return;
    period.shifts.push_back({*time, *shift});
  }
  std::ranges::stable_sort(period.shifts, {}, &CurveShift::time);
  if (period == draft_.Period()) return;
  draft_.ChangePeriod(period, draft_.State().segments);
  // Behind the table, which still has to close its editor.
  QMetaObject::invokeMethod(this, &FormAnahtar::ShowAll, Qt::QueuedConnection);
}

void FormAnahtar::AddPeriod() {
  DraftState next = draft_.State();
  CurvePeriod period = draft_.Period();
  period.from = period.to ? std::optional(*period.to + std::chrono::minutes(1)) : std::nullopt;
  period.to.reset();
  period.shifts.clear();
  next.curve.periods.insert(next.curve.periods.begin() + static_cast<std::ptrdiff_t>(next.period) + 1,
                            period);
  ++next.period;
  next.segments = 0;
  draft_.Change(next);
  ShowAll();
}

void FormAnahtar::RemovePeriod() {
  DraftState next = draft_.State();
  if (next.curve.periods.size() < 2)
    return ShowMessage(
        Say(Wording{u"Bir eğrinin en az bir dönemi olur.", u"A curve has one period at least."}));
  next.curve.periods.erase(next.curve.periods.begin() + static_cast<std::ptrdiff_t>(next.period));
  next.period = std::min(next.period, next.curve.periods.size() - 1);
  next.segments = 0;
  draft_.Change(next);
  ShowAll();
}

/// Of the time that the period is of; one without a time goes into a period that is open at both ends.
void FormAnahtar::TakeStationGaugings() {
  const CurvePeriod& period = draft_.Period();
  std::vector<Gauging> taken;
  for (const Gauging& gauging : stationGaugings_) {
    const bool open = !period.from && !period.to;
    const bool inside = gauging.time && (!period.from || *gauging.time >= *period.from) &&
                        (!period.to || *gauging.time <= *period.to);
    if (open || inside) taken.push_back(gauging);
  }
  SetGaugings(std::move(taken));
}

void FormAnahtar::OpenGaugingsFile() {
  const QString path = QFileDialog::getOpenFileName(this, windowTitle(), CurveFolder(),
                                                    QStringLiteral("CSV (*.csv *.txt *.tsv);;* (*)"));
  if (path.isEmpty()) return;
  const auto read = ReadGaugingsCsv(path);
  if (!read) return ShowMessage(frame_.Run().language.Say(read.Failure()));
  SetGaugings(read->gaugings);
  if (read->refused.empty()) return;
  ShowMessage(Say({Wording{u"%1 satır alınmadı; ilki: %2", u"%1 lines were left out; the first: %2"},
                   read->refused.size(), read->refused.front()}));
}

void FormAnahtar::Undo() {
  draft_.Undo();
  comparison_.reset();
  ShowAll();
}

void FormAnahtar::Redo() {
  draft_.Redo();
  comparison_.reset();
  ShowAll();
}

void FormAnahtar::OpenFile(const QString& path) {
  auto read = ReadCurveFileWithDigest(path);
  if (!read) return ShowMessage(frame_.Run().language.Say(read.Failure()));
  draft_ = CurveDraft(read->curve);
  path_ = path;
  sha256_ = read->sha256;
  comparison_.reset();
  ShowAll();
}

void FormAnahtar::CompareWith(const QString& path) {
  auto read = ReadCurveFile(path);
  if (!read) return ShowMessage(frame_.Run().language.Say(read.Failure()));
  older_ = *std::move(read);
  ShowPlot();
}

bool FormAnahtar::Save() {
  if (path_.isEmpty()) return SaveAs();
  if (DigestOf(path_) != sha256_) {
    const QString question =
        Say({Wording{u"%1 açıldıktan sonra değişmiş. Bu eğri onun yerine yazılsın mı?",
                     u"%1 has changed since it was opened. Write this curve in its place?"},
             path_});
    const auto answer = QMessageBox::question(this, frame_.Run().language.attentionTitle, question,
                                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes) return false;
  }
  return SaveTo(path_);
}

bool FormAnahtar::SaveAs() {
  const QString proposed = CurveFolder() + QStringLiteral("/E%1.dat").arg(draft_.Curve().station);
  const QString path = QFileDialog::getSaveFileName(this, windowTitle(), path_.isEmpty() ? proposed : path_,
                                                    QStringLiteral("E*.dat (E*.dat)"));
  if (path.isEmpty()) return false;
  if (!IsCurveFileName(QFileInfo(path).fileName())) {
    ShowMessage(
        Say({Wording{u"“%1”; beklenen E12345.dat gibi bir ad", u"\"%1\"; expected a name like E12345.dat"},
             QFileInfo(path).fileName()}));
    return false;
  }
  return SaveTo(path);
}

bool FormAnahtar::SaveTo(const QString& path) {
  const Status written = WriteCurveFile(path, draft_.Curve());
  if (!written) {
    ShowMessage(frame_.Run().language.Say(written.Failure()));
    return false;
  }
  path_ = path;
  sha256_ = DigestOf(path);
  draft_.MarkSaved();
  ShowAll();
  ShowMessage(Say({Wording{u"Kaydedildi: %1", u"Saved: %1"}, path}), false);
  Q_EMIT CurveSaved(path);
  return true;
}

void FormAnahtar::ExportTo(const QString& path) {
  const Status written = WriteCurvePicture(path, PlotNow(), frame_.Run().language.Choice());
  if (!written) return ShowMessage(frame_.Run().language.Say(written.Failure()));
  ShowMessage(Say({Wording{u"Yazıldı: %1", u"Written: %1"}, path}), false);
}

void FormAnahtar::Print() {
  QPrinter printer;
  printer.setDocName(windowTitle());
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  QPainter painter;
  if (!painter.begin(&printer))
    return ShowMessage(Say(Wording{u"Yazdırılamadı.", u"It could not be printed."}));
  const QRectF page(QPointF(0, 0), printer.pageLayout().paintRectPixels(printer.resolution()).size());
  DrawCurveReport(painter, page, PlotNow(), frame_.Run().language.Choice(),
                  [&printer] { return printer.newPage(); });
}

bool FormAnahtar::MayLeave() {
  if (draft_.IsSaved()) return true;
  const auto answer = QMessageBox::question(
      this, frame_.Run().language.attentionTitle,
      Say(Wording{u"Eğri değişti ve kaydedilmedi. Kaydedilsin mi?", u"The curve has changed. Save it?"}),
      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  if (answer == QMessageBox::Save) return Save();
  return answer == QMessageBox::Discard;
}

void FormAnahtar::closeEvent(QCloseEvent* event) {
  setFocus();  // ends an edit that is still open
  event->setAccepted(MayLeave());
}

}  // namespace vesk
