#include "platform/libreoffice/office_process.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QUrl>

#include <cerrno>
#include <csignal>
#include <cstring>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/system_reason.h"

namespace vesk {
namespace {

constexpr int kStartMeAnew = 81;  // exit code by which the office asks for a second start

QString OfficeProgram(QLatin1String name) {
  return QStringLiteral(VESK_OFFICE_PROGRAM "/") + name;
}

QString ProfilePrefix() {
  return QStringLiteral("vesk4-office-");
}

/// The office makes its sockets in /tmp, whatever the temporary folder of a process is.
QString SocketPath(const QString& pipeName) {
  return QStringLiteral("/tmp/OSL_PIPE_%1_%2").arg(getuid()).arg(pipeName);
}

/// The pipe by which a second start of an office finds the first: a digest of the profile's URL in UTF-16,
/// each byte written in hexadecimal without a leading zero.
QString SingleInstancePipe(const QString& profilePath) {
  const QString url = QString::fromLatin1(QUrl::fromLocalFile(profilePath).toEncoded());
  QCryptographicHash digest(QCryptographicHash::Md5);
  digest.addData(QByteArrayView(reinterpret_cast<const char*>(url.utf16()), url.size() * 2));
  QString name = QStringLiteral("SingleOfficeIPC_");
  for (const char byte : digest.result()) name += QString::number(static_cast<unsigned char>(byte), 16);
  return name;
}

/// True when somebody listens on that socket. The office takes an empty message for a mere knock.
bool Answers(const QString& socketPath) {
  const QByteArray path = QFile::encodeName(socketPath);
  sockaddr_un address{};
  if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) return false;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (socket < 0) return false;
  const bool connected = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  ::close(socket);
  return connected;
}

void RemoveSockets(const QString& profilePath) {
  QFile::remove(SocketPath(SingleInstancePipe(profilePath)));
  QFile::remove(SocketPath(QFileInfo(profilePath).fileName()));
}

/// Removes profiles and sockets of programs that were killed before they could tidy up.
void SweepForsakenProfiles() {
  const QDir folder(QDir::tempPath());
  const QStringList names = folder.entryList({ProfilePrefix() + QLatin1Char('*')}, QDir::Dirs);
  for (const QString& name : names) {
    const QString path = folder.filePath(name);
    const int owner = name.mid(ProfilePrefix().size()).section(QLatin1Char('-'), 0, 0).toInt();
    const bool ownerLives = owner <= 0 || ::kill(owner, 0) == 0 || errno != ESRCH;
    if (ownerLives || QFileInfo(path).ownerId() != getuid()) continue;
    if (Answers(SocketPath(SingleInstancePipe(path)))) continue;
    RemoveSockets(path);
    QDir(path).removeRecursively();
  }
}

QString ProfileTemplate() {
  return QDir(QDir::tempPath())
      .filePath(ProfilePrefix() + QStringLiteral("%1-XXXXXX").arg(QCoreApplication::applicationPid()));
}

QProcessEnvironment PrivateEnvironment() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));  // the same office on every desk
  environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"), QStringLiteral("svp"));
  environment.remove(QStringLiteral("DISPLAY"));
  return environment;
}

Error StartFailure(const QString& program, const Message& reason) {
  return {Wording{u"Tablolama programı başlatılamadı", u"The spreadsheet application could not be started"},
          program, reason};
}

QString ListenArgument(const QString& pipeName) {
  return QStringLiteral("--accept=pipe,name=%1;urp;").arg(pipeName);
}

}  // namespace

PrivateOffice::PrivateOffice() : profile_(ProfileTemplate()) {
  process_.setProcessEnvironment(PrivateEnvironment());
  process_.setStandardInputFile(QProcess::nullDevice());
  process_.setStandardOutputFile(QProcess::nullDevice());
  process_.setStandardErrorFile(QProcess::nullDevice());
  process_.setProgram(OfficeProgram(QLatin1String("soffice.bin")));
  process_.setArguments({QStringLiteral("--headless"), QStringLiteral("--invisible"),
                         QStringLiteral("--nologo"), QStringLiteral("--nodefault"),
                         QStringLiteral("--norestore"), QStringLiteral("--nolockcheck"),
                         QStringLiteral("--nofirststartwizard"),
                         QStringLiteral("-env:UserInstallation=") +
                             QString::fromLatin1(QUrl::fromLocalFile(profile_.path()).toEncoded()),
                         ListenArgument(PipeName())});
  process_.setChildProcessModifier([] {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  });
}

PrivateOffice::~PrivateOffice() {
  End(std::chrono::milliseconds(0));
}

Result<std::unique_ptr<PrivateOffice>> PrivateOffice::Start() {
  SweepForsakenProfiles();
  std::unique_ptr<PrivateOffice> office(new PrivateOffice);
  if (!office->profile_.isValid()) {
    return StartFailure(QDir::tempPath(), {Wording{u"profili için geçici klasör yok: %1",
                                                   u"no temporary folder for its profile: %1"},
                                           SystemReason(office->profile_.errorString())});
  }
  if (const Status launched = office->Launch(); !launched) return launched.Failure();
  return office;
}

Status PrivateOffice::Launch() {
  process_.start(QIODevice::NotOpen);
  if (!process_.waitForStarted())
    return StartFailure(process_.program(), SystemReason(process_.errorString()));
  group_ = static_cast<int>(process_.processId());
  return {};
}

QString PrivateOffice::PipeName() const {
  return QFileInfo(profile_.path()).fileName();
}

bool PrivateOffice::IsRunning() {
  if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(0)) return true;
  const bool wantsAnotherStart =
      group_ != 0 && process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == kStartMeAnew;
  group_ = 0;
  return wantsAnotherStart && Launch().Ok();
}

bool PrivateOffice::End(std::chrono::milliseconds limit) {
  bool byItself = true;
  if (process_.state() != QProcess::NotRunning) {
    byItself = process_.waitForFinished(static_cast<int>(limit.count()));
    if (!byItself) {
      Kill();
      process_.waitForFinished();
    }
  }
  group_ = 0;
  RemoveSockets(profile_.path());
  profile_.remove();
  return byItself;
}

void PrivateOffice::Kill() {
  if (const int group = group_; group > 0) ::kill(-group, SIGKILL);
}

bool OperatorOfficeRuns() {
  const QString configuration = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return Answers(SocketPath(SingleInstancePipe(configuration + QStringLiteral("/libreoffice/4"))));
}

Status LetOperatorOfficeListen(const QString& pipeName) {
  if (Answers(SocketPath(pipeName))) return {};  // it was told so before
  QProcess starter;
  starter.setProgram(OfficeProgram(QLatin1String("soffice")));
  starter.setArguments({QStringLiteral("--nologo"), QStringLiteral("--nodefault"), ListenArgument(pipeName)});
  starter.setStandardOutputFile(QProcess::nullDevice());
  starter.setStandardErrorFile(QProcess::nullDevice());
  if (starter.startDetached()) return {};
  return StartFailure(starter.program(), Wording{u"kurulu mu?", u"is it installed?"});
}

}  // namespace vesk
