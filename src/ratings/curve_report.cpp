// Rating curves as pages and pictures.
#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cmath>

#include "datafiles/dates.h"
#include "datafiles/discharge.h"
#include "datafiles/numbers.h"
#include "platform/whole_file.h"
#include "ratings/curve_plot.h"

namespace vesk {
namespace {

constexpr Wording kFailed{u"Anahtar eğrisi çizimi yazılamadı",
                          u"The drawing of the rating curve could not be written"};
constexpr int kPointsSize = 9;

QString Figure(double value) {
  constexpr int kDigits = 6;
  return QString::number(value, 'g', kDigits);
}

/// Lines of text down the pages, columns at given letters.
class Lines {
 public:
  Lines(QPainter& painter, const QRectF& page, double top, const std::function<bool()>& newPage)
      : painter_(painter), page_(page), top_(top), newPage_(newPage) {}
  /// False when there is no further page.
  bool Add(const QStringList& cells, const std::vector<int>& at, bool bold = false) {
    const double line = painter_.fontMetrics().height() * 1.25;
    if (top_ + line > page_.bottom()) {
      if (!newPage_()) return false;
      top_ = page_.top();
    }
    const int letter = painter_.fontMetrics().averageCharWidth();  // bold ones are wider
    QFont font = painter_.font();
    font.setBold(bold);
    painter_.setFont(font);
    for (qsizetype i = 0; i < cells.size(); ++i) {
      const double left = page_.left() + at[static_cast<std::size_t>(i)] * letter;
      painter_.drawText(QRectF(left, top_, page_.right() - left, line), Qt::AlignLeft | Qt::AlignVCenter,
                        cells[i]);
    }
    top_ += line;
    font.setBold(false);
    painter_.setFont(font);
    return true;
  }
  void Skip() { top_ += painter_.fontMetrics().height() / 2.0; }

 private:
  QPainter& painter_;
  QRectF page_;
  double top_;
  const std::function<bool()>& newPage_;
};

void AddFigures(Lines& lines, const CurveFit& fit, LanguageChoice language) {
  const auto say = [language](const Message& message) { return message.In(language); };
  const std::vector<int> pair{0, 40}, columns{0, 16, 34, 54, 74};
  lines.Add({say(Wording{u"Ölçüm sayısı", u"Gaugings"}), QString::number(fit.gaugings)}, pair);
  lines.Add(
      {say(Wording{u"Artık kareleri toplamı (ln Q)", u"Sum of squared residuals (ln Q)"}), Figure(fit.sseLn)},
      pair);
  lines.Add({say(Wording{u"Standart hata (%)", u"Standard error (%)"}), Figure(fit.standardErrorPercent)},
            pair);
  lines.Add({QStringLiteral("AICc"), Figure(fit.aicc)}, pair);
  lines.Skip();
  lines.Add({say(Wording{u"Parametre", u"Parameter"}), say(Wording{u"Değer", u"Value"}),
             say(Wording{u"Standart hata", u"Standard error"}), say(Wording{u"Yüzde 95 alt", u"95 % lower"}),
             say(Wording{u"Yüzde 95 üst", u"95 % upper"})},
            columns, true);
  for (const FittedParameter& one : fit.parameters) {
    lines.Add({one.name, Figure(one.value), Figure(one.standardError), Figure(one.low95), Figure(one.high95)},
              columns);
  }
  lines.Skip();
  for (const ResidualTest& test : fit.tests) {
    const Message verdict = test.Passed() ? Message(Wording{u"kuşku yok", u"no doubt"})
                                          : Message(Wording{u"kuşkulu", u"doubtful"});
    lines.Add({say({Wording{u"Artık testi: %1", u"Test of residuals: %1"}, test.name}),
               say({Wording{u"olasılık %1: %2", u"probability %1: %2"}, Figure(test.probability), verdict})},
              pair);
  }
}

void AddResiduals(Lines& lines, const CurvePlot& plot, LanguageChoice language) {
  const auto say = [language](const Message& message) { return message.In(language); };
  const std::vector<int> columns{0, 24, 40, 58, 78};
  lines.Skip();
  lines.Add({say(Wording{u"Tarih ve saat", u"Time"}), say(Wording{u"Seviye (cm)", u"Level (cm)"}),
             say(Wording{u"Debi (m³/s)", u"Discharge (m³/s)"}), say(Wording{u"Eğri (m³/s)", u"Curve (m³/s)"}),
             say(Wording{u"Artık (%)", u"Residual (%)"})},
            columns, true);
  for (const GaugingResidual& residual : plot.fit->residuals) {
    const Gauging& gauging = plot.Period().gaugings[static_cast<std::size_t>(residual.gauging)];
    constexpr int kDecimals = 1;
    const bool added =
        lines.Add({gauging.time ? DateTimeText(*gauging.time) : QString(),
                   NumberText(gauging.levelCm.value_or(0)), DischargeDigits(gauging.dischargeM3s),
                   DischargeDigits(gauging.dischargeM3s * std::exp(-residual.lnResidual)),
                   QString::number(residual.percent, 'f', kDecimals)},
                  columns);
    if (!added) return;
  }
}

QString HeadingOf(const CurvePlot& plot, LanguageChoice language) {
  const Message heading{Wording{u"Anahtar eğrisi: istasyon %1 %2", u"Rating curve: station %1 %2"},
                        plot.curve.station, plot.curve.name};
  return heading.In(language).trimmed();
}

}  // namespace

void DrawCurveReport(QPainter& painter, const QRectF& page, const CurvePlot& plot, LanguageChoice language,
                     const std::function<bool()>& newPage) {
  QFont font = painter.font();
  font.setPointSize(kPointsSize);
  painter.setFont(font);
  const double line = painter.fontMetrics().height();
  Lines lines(painter, page, page.top(), newPage);
  lines.Add(QStringList(HeadingOf(plot, language)), {0}, true);
  constexpr double kShare = 0.52;  // of the page for the picture
  const QRectF picture(page.left(), page.top() + 2 * line, page.width(), page.height() * kShare);
  DrawCurvePlot(painter, picture, plot, language);
  if (!plot.fit) return;
  Lines below(painter, page, picture.bottom() + line, newPage);
  AddFigures(below, *plot.fit, language);
  AddResiduals(below, plot, language);
}

Status WriteCurveReport(const QString& path, const CurvePlot& plot, LanguageChoice language) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter pdf(&buffer);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setTitle(HeadingOf(plot, language));
    QPainter painter;
    if (!painter.begin(&pdf)) return Error{kFailed, path, {}};
    const QRectF page(0, 0, pdf.width(), pdf.height());
    DrawCurveReport(painter, page, plot, language, [&pdf] { return pdf.newPage(); });
  }
  return WriteWholeFile(path, bytes, kFailed);
}

Status WriteCurvePicture(const QString& path, const CurvePlot& plot, LanguageChoice language) {
  constexpr QSize kSize(1200, 900);
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == QLatin1String("pdf")) return WriteCurveReport(path, plot, language);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  const QRectF all(QPointF(0, 0), QSizeF(kSize));
  if (ending == QLatin1String("svg")) {
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(kSize);
    svg.setViewBox(all);
    svg.setTitle(HeadingOf(plot, language));
    QPainter painter(&svg);
    DrawCurvePlot(painter, all, plot, language);
  } else if (ending == QLatin1String("png")) {
    QImage image(kSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    DrawCurvePlot(painter, all, plot, language);
    painter.end();
    image.save(&buffer, "PNG");
  } else {
    return Error{kFailed, path,
                 Wording{u"beklenen .png, .pdf veya .svg ile biten bir ad",
                         u"expected a name ending in .png, .pdf or .svg"}};
  }
  if (bytes.isEmpty())  // an older file stays as it is
    return Error{kFailed, path, Wording{u"resim çizilemedi", u"the picture could not be drawn"}};
  return WriteWholeFile(path, bytes, kFailed);
}

}  // namespace vesk
