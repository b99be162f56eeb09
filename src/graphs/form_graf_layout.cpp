// FormGraf: its controls and menus.
#include <QAction>
#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>

#include "graphs/form_graf.h"
#include "graphs/graph_picture.h"

namespace vesk {
namespace {

constexpr int kFieldMargin = 6;
constexpr int kFieldFrame = 16;  // what a field needs beside its text

QLineEdit* ShownField(QWidget* parent, const QString& name, const QString& widest,
                      const QString& accessible) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setReadOnly(true);
  field->setFocusPolicy(Qt::ClickFocus);
  field->setFixedWidth(field->fontMetrics().horizontalAdvance(widest) + kFieldFrame);
  field->setAccessibleName(accessible);
  return field;
}

QGridLayout* BoxLayout(QGroupBox* box) {
  auto* layout = new QGridLayout(box);
  layout->setContentsMargins(kFieldMargin, kFieldMargin, kFieldMargin, kFieldMargin);
  layout->setSpacing(kFieldMargin / 2);
  return layout;
}

}  // namespace

QAction* FormGraf::AddAction(const char* name, const QString& text, const QKeySequence& key,
                             void (FormGraf::*slot)()) {
  auto* action = new QAction(text, this);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(key);
  if (!key.isEmpty())
    action->setToolTip(text + QStringLiteral(" (") + key.toString(QKeySequence::NativeText) +
                       QLatin1Char(')'));
  connect(action, &QAction::triggered, this, slot);
  return action;
}

void FormGraf::CreateActions() {
  const auto caption = [this](Caption entry) { return language_.Text(entry); };
  first_ = AddAction("Mnuilk", caption(Caption::InitialDrawing), {}, &FormGraf::DrawFirst);
  previous_ = AddAction("MnuGeri", caption(Caption::PreviousPage), Qt::Key_PageUp, &FormGraf::DrawPrevious);
  next_ = AddAction("MnuIleri", caption(Caption::NextPage), Qt::Key_PageDown, &FormGraf::DrawNext);
  select_ = AddAction("MnuSec", caption(Caption::DrawSelectedArea), {}, &FormGraf::DrawSelection);
  dates_ = AddAction("MnuSecformKeyboard", caption(Caption::StartAndFinishDate), {Qt::CTRL | Qt::Key_D},
                     &FormGraf::ShowDateEntry);
  print_ = AddAction("MnuPrint", caption(Caption::Print), QKeySequence::Print, &FormGraf::Print);
  preview_ =
      AddAction("MnuPreview", Words(Wording{u"Baskı önizleme", u"Print preview"}), {}, &FormGraf::Preview);
  save_ = AddAction("MnuSave", Words(Wording{u"Farklı kaydet...", u"Save as..."}), QKeySequence::Save,
                    &FormGraf::Save);
  copy_ = AddAction("MnuCopy", Words(Wording{u"Kopyala", u"Copy"}), QKeySequence::Copy, &FormGraf::Copy);
  exit_ = new QAction(caption(Caption::ExitGraph), this);
  exit_->setObjectName(QStringLiteral("MnuCik"));
  connect(exit_, &QAction::triggered, this, &QWidget::close);
}

void FormGraf::CreateMenus() {
  QMenu* graph = menuBar()->addMenu(language_.Text(Caption::GraphicTab));
  graph->addActions({save_, copy_});
  graph->addSeparator();
  graph->addActions({preview_, print_});
  graph->addSeparator();
  graph->addAction(exit_);
  QMenu* page = menuBar()->addMenu(language_.Text(Caption::Page));
  page->addActions({first_, previous_, next_});
  QMenu* area = menuBar()->addMenu(language_.Text(Caption::SelectedArea));
  area->addActions({select_, dates_});
  CreateFlowMenu();
  auto* bar = new QToolBar(this);
  bar->setObjectName(QStringLiteral("ToolBar"));
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  bar->addActions({first_, previous_, next_});
  bar->addSeparator();
  bar->addActions({select_, dates_});
  bar->addSeparator();
  bar->addAction(print_);
  addToolBar(bar);
}

/// What is drawn from daily means and rating curves has windows of its own: the pages here are of levels.
void FormGraf::CreateFlowMenu() {
  flowMenu_ = menuBar()->addMenu(Words(Wording{u"Debi", u"Discharge"}));
  flowMenu_->setObjectName(QStringLiteral("MnuDebi"));
  const auto add = [this](const char* name, const Wording& text, const QKeySequence& key, FlowKind kind,
                          bool several, bool needsCurve) {
    QAction* action = flowMenu_->addAction(Words(text));
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setEnabled(false);
    action->setProperty("needsCurve", needsCurve);
    action->setStatusTip(Words(Wording{u"Bir istasyonun yüklenmiş okumalarını ve anahtar eğrisini ister",
                                       u"Needs loaded readings of one station, and its rating curve"}));
    connect(action, &QAction::triggered, this, [this, kind, several] { openFlow_(kind, several); });
  };
  add("MnuDebiGrafik", {u"Debi grafiği", u"Discharge hydrograph"}, Qt::CTRL | Qt::Key_1, FlowKind::Discharge,
      false, true);
  add("MnuSeviyeDebi", {u"Seviye ve debi", u"Level and discharge"}, Qt::CTRL | Qt::Key_2, FlowKind::Both,
      false, true);
  add("MnuSureklilik", {u"Süreklilik eğrisi", u"Duration curve"}, Qt::CTRL | Qt::Key_3, FlowKind::Duration,
      false, false);
  add("MnuYillar", {u"Yıllar üst üste", u"Years over one another"}, Qt::CTRL | Qt::Key_4, FlowKind::Level,
      true, false);
}

void FormGraf::SetFlow(OpenFlow open, bool hasCurve) {
  openFlow_ = std::move(open);
  for (QAction* action : flowMenu_->actions())
    action->setEnabled(openFlow_ && (hasCurve || !action->property("needsCurve").toBool()));
}

void FormGraf::CreateReadout(QWidget* parent) {
  readout_ = new QLabel(parent);
  readout_->setObjectName(QStringLiteral("Label3"));
  readout_->setAutoFillBackground(true);
  readout_->setMargin(3);
  readout_->setMinimumHeight(readout_->fontMetrics().height() + 2 * kFieldMargin);
  // A fixed least width: were it the text's own, a long one would widen the graph, which is then drawn anew
  // and takes the read-out away.
  const QString widest =
      QStringLiteral("Mouse:00/00/0000 00:00   H=000000        Reading: 00000  00/00/0000 00:00  000000 cm");
  readout_->setMinimumWidth(readout_->fontMetrics().horizontalAdvance(widest));
  QPalette colours = readout_->palette();
  colours.setColor(QPalette::Window, sheet_.style.background);
  colours.setColor(QPalette::WindowText, Qt::black);
  readout_->setPalette(colours);
}

void FormGraf::CreateStatusBar() {
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("LabelMessage"));
  message_->setIndent(kFieldMargin);
  message_->setMinimumWidth(1);  // a long message never widens the window
  pageLabel_ = new QLabel(this);
  pageLabel_->setObjectName(QStringLiteral("LabelPage"));
  statusBar()->addWidget(message_, 1);
  statusBar()->addPermanentWidget(pageLabel_);
}

void FormGraf::CreateWidgets() {
  auto* centre = new QWidget(this);
  auto* column = new QVBoxLayout(centre);
  column->setContentsMargins(kFieldMargin, kFieldMargin, kFieldMargin, 0);
  column->setSpacing(kFieldMargin);
  CreateReadout(centre);
  picture_ = new GraphPicture(centre);
  column->addWidget(readout_);
  column->addWidget(picture_, 1);

  auto* row = new QHBoxLayout;
  row->addWidget(MakePageFields());
  row->addWidget(MakeCornerFields());
  dateBox_ = MakeDateFields();
  row->addWidget(dateBox_);
  row->addStretch(1);
  auto* leave = new QPushButton(language_.Text(Caption::ExitGraph), centre);
  leave->setObjectName(QStringLiteral("CmdCik"));
  leave->setAutoDefault(false);
  connect(leave, &QPushButton::clicked, this, &QWidget::close);
  row->addWidget(leave, 0, Qt::AlignBottom);
  column->addLayout(row);
  // In a window too small for all of it (large letters) the graph keeps its size and the rest is scrolled to.
  scroll_ = new QScrollArea(this);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidgetResizable(true);
  scroll_->setWidget(centre);
  setCentralWidget(scroll_);
  CreateStatusBar();
}

QGroupBox* FormGraf::MakePageFields() {
  auto* box = new QGroupBox(language_.Text(Caption::Page), this);
  QGridLayout* layout = BoxLayout(box);
  const QString time = QStringLiteral("00/00/0000  00:00");
  const QString level = QStringLiteral("000000");
  const QString start = Words(Wording{u"Başlangıç", u"Start"});
  const QString end = Words(Wording{u"Bitiş", u"End"});
  const QString bottom = Words(Wording{u"Alt seviye, cm.", u"Bottom, cm."});
  const QString top = Words(Wording{u"Üst seviye, cm.", u"Top, cm."});
  pageStart_ = ShownField(box, QStringLiteral("Text8"), time, start);
  pageEnd_ = ShownField(box, QStringLiteral("Text10"), time, end);
  levelBottom_ = ShownField(box, QStringLiteral("Text9"), level, bottom);
  levelTop_ = ShownField(box, QStringLiteral("Text11"), level, top);
  layout->addWidget(new QLabel(start, box), 0, 0);
  layout->addWidget(pageStart_, 0, 1);
  layout->addWidget(new QLabel(end, box), 1, 0);
  layout->addWidget(pageEnd_, 1, 1);
  layout->addWidget(new QLabel(top, box), 0, 2);
  layout->addWidget(levelTop_, 0, 3);
  layout->addWidget(new QLabel(bottom, box), 1, 2);
  layout->addWidget(levelBottom_, 1, 3);
  return box;
}

QGroupBox* FormGraf::MakeCornerFields() {
  auto* box = new QGroupBox(language_.Text(Caption::SelectedArea), this);
  QGridLayout* layout = BoxLayout(box);
  const QStringList heading = language_.Text(Caption::DateTimeLevelHeading)
                                  .split(QRegularExpression(QStringLiteral("[ ,(]+")), Qt::SkipEmptyParts);
  const QStringList widest = {QStringLiteral("00/00/0000"), QStringLiteral("00:00"),
                              QStringLiteral("000000")};
  const std::array<QString, 2> names = {QStringLiteral("Text3_%1"), QStringLiteral("Text4_%1")};
  for (std::size_t corner = 0; corner < cornerFields_.size(); ++corner) {
    for (int field = 0; field < 3; ++field) {
      QLineEdit* shown = ShownField(box, names[corner].arg(field), widest[field], heading.value(field));
      shown->setPlaceholderText(heading.value(field));
      cornerFields_[corner][static_cast<std::size_t>(field)] = shown;
      layout->addWidget(shown, static_cast<int>(corner), field);
    }
  }
  box->setToolTip(language_.Text(Caption::DateTimeLevelHeading).simplified());
  return box;
}

QGroupBox* FormGraf::MakeDateFields() {
  auto* box = new QGroupBox(language_.Text(Caption::StartAndFinishDate), this);
  box->setObjectName(QStringLiteral("Frame1"));
  QGridLayout* layout = BoxLayout(box);
  const auto entry = [this, box](const char* name, const QString& accessible) {
    auto* field = new QLineEdit(box);
    field->setObjectName(QString::fromLatin1(name));
    field->setMaxLength(8);
    field->setAccessibleName(accessible);
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("00.00")) + kFieldFrame);
    connect(field, &QLineEdit::returnPressed, this, &FormGraf::DrawDates);
    connect(field, &QLineEdit::textEdited, this, [this] {
      if (dateMessage_->text().isEmpty()) return;
      dateMessage_->clear();  // it was said of another text
      ShowPageMessages();
    });
    return field;
  };
  startEntry_ = entry("Text1", Words(Wording{u"Başlangıç (gün.ay)", u"Start (day.month)"}));
  endEntry_ = entry("Text5", Words(Wording{u"Bitiş (gün.ay)", u"End (day.month)"}));
  auto* draw = new QPushButton(language_.Text(Caption::Ok), box);
  draw->setObjectName(QStringLiteral("Command1"));
  draw->setAutoDefault(false);
  connect(draw, &QPushButton::clicked, this, &FormGraf::DrawDates);
  dateMessage_ = new QLabel(box);
  dateMessage_->setObjectName(QStringLiteral("LabelDateMessage"));
  layout->addWidget(startEntry_, 0, 0);
  layout->addWidget(new QLabel(QStringLiteral("–"), box), 0, 1);
  layout->addWidget(endEntry_, 0, 2);
  layout->addWidget(draw, 0, 3);
  layout->addWidget(dateMessage_, 1, 0, 1, 4);
  box->hide();
  return box;
}

}  // namespace vesk
