#include "shell/anamenu.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QScreen>
#include <QStatusBar>

#include "platform/spreadsheet.h"
#include "shell/child_windows.h"
#include "shell/communication.h"
#include "shell/form_genel_setup.h"
#include "shell/frm_logo.h"

namespace vesk {
namespace {

constexpr QPoint kTopLeft(0, 0);
constexpr QPoint kLogoPlace(5, 3);  // 75 and 40 twips

QString LogoName() {
  return QStringLiteral("FrmLogo");
}

}  // namespace

Anamenu::Anamenu(RunValues& run, WindowMakers makers) : run_(run), makers_(std::move(makers)) {
  setObjectName(QStringLiteral("Anamenu"));
  setWindowTitle(QStringLiteral("Vesk4"));
  setWindowIcon(LogoIcon());
  area_ = new ChildWindows(this);
  setCentralWidget(area_);
  connect(area_, &ChildWindows::EmptyAreaClicked, this, &Anamenu::CloseLogo);
  connect(area_, &ChildWindows::WindowClosed, this, &Anamenu::ShowDataDirectory);
  dataDirectory_ = new QLabel;
  dataDirectory_->setObjectName(QStringLiteral("LblDataDirectory"));
  statusBar()->addWidget(dataDirectory_);
  CreateMenus();
  ApplyMenuCaptions();
  resize(QSize(1280, 720).boundedTo(screen()->availableSize()));
}

Anamenu::~Anamenu() {
  disconnect(area_, nullptr, this, nullptr);
  delete area_;  // the windows in it still call this frame while they go
}

void Anamenu::Open(const StartUpReport& report) {
  ShowLogo();
  QStringList texts;
  for (const Error& problem : report.problems) texts += run_.language.Say(problem);
  if (!texts.isEmpty()) Tell(texts.join(QStringLiteral("\n\n")));
}

Spreadsheet& Anamenu::Office() {
  if (!office_) office_ = makers_.office();
  return *office_;
}

void Anamenu::ShowChild(QWidget* window) {
  area_->ShowAt(window, kTopLeft);
}

bool Anamenu::CloseChild(const QString& objectName) {
  return area_->Close(objectName);
}

void Anamenu::StartCommunication() {
  CloseLogo();
  const Status started = StartCommunicationProgram(run_);
  if (!started) Tell(run_.language.Say(started.Failure()));
}

void Anamenu::OpenDataFile() {
  OpenSelection(WorkMode::DataFile);
}

void Anamenu::OpenMultipleGraph() {
  run_.stationMode = StationMode::Multiple;
  OpenSelection(WorkMode::MultipleGraph);
}

void Anamenu::OpenSelection(WorkMode mode) {
  CloseLogo();
  if (!CloseChild(QStringLiteral("FormSec"))) return;
  run_.workMode = mode;
  ShowChild(makers_.selection(*this));
}

void Anamenu::OpenOnce(const QString& objectName, const std::function<QWidget*(MainFrame&)>& make) {
  CloseLogo();
  if (QMdiSubWindow* open = area_->Find(objectName)) {
    area_->setActiveSubWindow(open);
  } else {
    ShowChild(make(*this));
  }
}

void Anamenu::OpenOptions() {
  CloseLogo();
  CloseChild(QStringLiteral("FormGenelSetup"));
  ShowChild(new FormGenelSetup(*this));
}

void Anamenu::ShowLogo() {
  CloseLogo();
  area_->ShowAt(new FrmLogo, kLogoPlace);
}

void Anamenu::CloseLogo() {
  CloseChild(LogoName());
}

void Anamenu::Switch(LanguageChoice choice) {
  SwitchLanguage(run_, choice);
  ApplyMenuCaptions();
  const Status stored = StoreLanguage(run_);  // behind the toolkit's texts: they word the reason of a failure
  if (!stored) Tell(run_.language.Say(stored.Failure()));
}

void Anamenu::Exit() {
  CloseLogo();
  if (!area_->CloseAll()) return;
  const Status stored = StoreDataDirectory(run_);
  if (stored) {
    close();
  } else {
    Tell(run_.language.Say(stored.Failure()), [this] { close(); });
  }
}

void Anamenu::Tell(const QString& text, const std::function<void()>& afterwards) {
  auto* box =
      new QMessageBox(QMessageBox::Warning, run_.language.attentionTitle, text, QMessageBox::Ok, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  if (afterwards) connect(box, &QMessageBox::finished, this, afterwards);
  box->open();
}

void Anamenu::closeEvent(QCloseEvent* event) {
  event->setAccepted(area_->CloseAll());
}

bool Anamenu::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) ShowDataDirectory();
  return QMainWindow::event(event);
}

}  // namespace vesk
