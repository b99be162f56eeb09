// FormGraf: pages and commands.
#include "graphs/form_graf.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPaintEngine>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScrollArea>
#include <QTimer>

#include "datafiles/dates.h"
#include "graphs/graph_notes.h"
#include "graphs/graph_output.h"
#include "graphs/graph_picture.h"
#include "graphs/graph_print.h"

namespace vesk {

FormGraf::FormGraf(GraphSheet sheet, const Language& language, double mouseAdjustment, QString saveDirectory,
                   QWidget* parent)
    : QMainWindow(parent),
      sheet_(std::move(sheet)),
      language_(language),
      mouseAdjustment_(mouseAdjustment),
      saveDirectory_(std::move(saveDirectory)),
      pages_(WholePeriodPage(sheet_)) {
  setObjectName(QStringLiteral("FormGraf"));
  setWindowTitle(language_.Text(Caption::GraphicTab) + QStringLiteral(" - ") + sheet_.texts.title);
  CreateActions();
  CreateMenus();
  CreateWidgets();
  ConnectPicture();
  resize(1440, 820);  // as far as the main window has room
  // The frame gives the focus to the window itself, or takes it: keys belong to the picture.
  setFocusProxy(picture_);
  picture_->setFocus();
  DrawPage(Mode::Yeni);
}

QString FormGraf::InWords(const Message& message) const {
  return language_.Say(message);
}

void FormGraf::Say(const QString& message) {
  message_->setText(message);
  message_->setToolTip(message);
}

void FormGraf::DrawPage(Mode mode) {
  const double ratio = picture_->devicePixelRatioF();
  const QSize size = picture_->size();
  SetRectangle(std::nullopt);
  place_.reset();
  readout_->clear();
  picture_->SetMark(std::nullopt);
  picture_->setAccessibleName(sheet_.texts.title);
  scale_ = ScaleOfPage(pages_.Current(), sheet_, size);
  QImage image;
  if (mode == Mode::Eski) image = images_.Load(pages_.Number(), (QSizeF(size) * ratio).toSize(), ratio);
  if (image.isNull()) {
    image = GraphPageImage(pages_.Current(), sheet_, size, ratio);
    images_.Save(pages_.Number(), image);
  }
  picture_->SetImage(image);
  ShowPageFields();
  ShowPageMessages();
}

void FormGraf::ShowPageFields() {
  const auto apart = [](DateTime time) {
    return DateTimeText(time).replace(QLatin1Char(' '), QStringLiteral("  "));
  };
  pageStart_->setText(apart(pages_.Current().start));
  pageEnd_->setText(apart(pages_.Current().end));
  levelBottom_->setText(QString::number(static_cast<qint64>(scale_.bottomCm)));
  levelTop_->setText(QString::number(static_cast<qint64>(scale_.topCm)));
  previous_->setEnabled(pages_.CanGoBack());
  next_->setEnabled(pages_.CanGoOn());
  pageLabel_->setText(QStringLiteral("%1 %2 / %3")
                          .arg(language_.Text(Caption::Page))
                          .arg(pages_.Number() + 1)
                          .arg(pages_.LastNumber() + 1));
}

void FormGraf::ShowPageMessages() {
  Say(AllNotes(NotesOfPage(pages_.Current(), sheet_)).join(QStringLiteral("; ")));
}

void FormGraf::AddPage(const GraphPage& page) {
  const bool room = pages_.Add(page);
  DrawPage(Mode::Yeni);
  if (room) return;
  Say(Words(Wording{u"En çok 11 sayfa olabilir: son sayfanın yerine çizildi.",
                    u"There can be 11 pages at most: the last page has been replaced."}));
}

void FormGraf::DrawFirst() {
  pages_.GoFirst();
  DrawPage(Mode::Eski);
}

void FormGraf::DrawPrevious() {
  pages_.GoBack();
  DrawPage(Mode::Eski);
}

void FormGraf::DrawNext() {
  pages_.GoOn();
  DrawPage(Mode::Eski);
}

void FormGraf::DrawSelection() {
  if (!rectangle_) return QApplication::beep();
  AddPage(PageOfCorners(corners_[0], corners_[1]));
}

void FormGraf::ShowDateEntry() {
  startEntry_->setText(QStringLiteral("1.10"));
  endEntry_->setText(QStringLiteral("30.9"));
  dateMessage_->clear();
  dateBox_->show();
  startEntry_->setFocus();
  startEntry_->selectAll();
  // Once the box has its place.
  QTimer::singleShot(0, this, [this] { scroll_->ensureWidgetVisible(dateBox_); });
}

void FormGraf::DrawDates() {
  const auto refuse = [this](QLineEdit* entry, const QString& message) {
    dateMessage_->setText(message);
    Say(message);
    entry->setFocus();
    entry->selectAll();
    QApplication::beep();
  };
  constexpr Wording kNoDate{u"\"%1\" gün.ay değil", u"\"%1\" is no day.month"};
  const auto start = ReadDayOfWaterYear(startEntry_->text(), sheet_.waterYear);
  if (!start) return refuse(startEntry_, Words(kNoDate, startEntry_->text()));
  const auto end = ReadDayOfWaterYear(endEntry_->text(), sheet_.waterYear);
  if (!end) return refuse(endEntry_, Words(kNoDate, endEntry_->text()));
  if (*end < *start)
    return refuse(endEntry_, Words(Wording{u"Bitiş başlangıçtan önce", u"The end lies before the start"}));
  dateMessage_->clear();
  AddPage(PageOfDates(*start, *end, pages_.First().maximumCm));
  picture_->setFocus();
}

Status FormGraf::PrintPage(QPrinter& printer) {
  const QString file = printer.outputFileName();
  const Status printed = PrintGraphPage(printer, pages_.Current(), sheet_);
  if (printed && file.isEmpty()) {
    Say(Words(Wording{u"Yazıcıya gönderildi: %1", u"Sent to the printer: %1"}, printer.printerName()));
  } else if (printed) {
    Say(Words(Wording{u"Dosyaya yazdırıldı: %1", u"Printed to the file: %1"}, file));
  }
  return printed;
}

void FormGraf::PrepareForPaper(QPrinter& printer) const {
  printer.setPageSize(QPageSize(QPageSize::A4));
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(sheet_.texts.title);
}

void FormGraf::Print() {
  ShowPageMessages();  // what was said of an earlier copy or save is over
  QPrinter printer(QPrinter::HighResolution);
  PrepareForPaper(printer);
  QPrintDialog dialog(&printer, this);
  dialog.setWindowTitle(language_.Text(Caption::Print));
  if (dialog.exec() != QDialog::Accepted) return;
  if (const Status printed = PrintPage(printer); !printed) {
    QMessageBox::warning(this, language_.attentionTitle, language_.Say(printed.Failure()));
  }
}

void FormGraf::Preview() {
  ShowPageMessages();
  QPrinter printer(QPrinter::HighResolution);
  PrepareForPaper(printer);
  QPrintPreviewDialog dialog(&printer, this);
  dialog.setWindowTitle(preview_->text());
  connect(&dialog, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* paper) {
    const bool onScreen = paper->paintEngine()->type() == QPaintEngine::Picture;
    const Status drawn = onScreen ? PrintGraphPage(*paper, pages_.Current(), sheet_) : PrintPage(*paper);
    if (!drawn) Say(language_.Say(drawn.Failure()));
  });
  dialog.resize(size().expandedTo({900, 640}));
  dialog.exec();
}

Status FormGraf::SavePage(const QString& path) const {
  return SaveGraphPage(path, pages_.Current(), sheet_, picture_->size());
}

void FormGraf::Save() {
  ShowPageMessages();
  QFileDialog dialog(this, save_->text(), saveDirectory_);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilters({QStringLiteral("PNG (*.png)"), QStringLiteral("PDF (*.pdf)"),
                         QStringLiteral("SVG (*.svg)"), QStringLiteral("CSV (*.csv)")});
  // The dialog adds the ending itself, so that it asks before a file of the whole name is replaced.
  const auto addEnding = [&dialog](const QString& filter) {
    dialog.setDefaultSuffix(filter.left(3).toLower());
  };
  addEnding(dialog.nameFilters().constFirst());  // a desktop's own dialog names its choice only when shown
  connect(&dialog, &QFileDialog::filterSelected, this, addEnding);
  dialog.selectFile(ProposedFileName(pages_.Current(), sheet_) + QStringLiteral(".png"));
  if (dialog.exec() != QDialog::Accepted) return;
  const QString path = dialog.selectedFiles().value(0);
  const Status saved = SavePage(path);
  if (saved) return Say(Words(Wording{u"Kaydedildi: %1", u"Saved: %1"}, path));
  QMessageBox::warning(this, language_.attentionTitle, language_.Say(saved.Failure()));
}

void FormGraf::Copy() {
  QApplication::clipboard()->setImage(GraphPageImage(pages_.Current(), sheet_, picture_->size()));
  Say(Words(Wording{u"Grafik panoya kopyalandı", u"The graph has been copied"}));
}

}  // namespace vesk
