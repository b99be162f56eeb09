#include "shell/communication.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/folders.h"
#include "platform/process_start.h"

namespace vesk {
namespace {

constexpr qsizetype kLongestFileName = 80;  // characters
constexpr qsizetype kFirstBackslash = 3;    // counted from 0; "C:\" is no split point

QString SectionOf(const Language& language) {
  return language.Say(Wording{u"ILETISIM PROGRAMLARI", u"COMMUNICATION PROGRAMS"});
}

/// An error that also says where the path is set.
Error Failure(const RunValues& run, const QString& path, const Message& reason) {
  return {Wording{u"İletişim programı başlatılamadı", u"The communication program could not be started"},
          path,
          Message(Wording{u"%1. Ayar: %2, [%3] bölümü, RS232 anahtarı (%4)",
                          u"%1. Setting: %2, section [%3], key RS232 (%4)"},
                  reason, run.settings.Path(), SectionOf(run.language), run.settings.EncodingName())};
}

/// The file itself, its name matched without regard to case; the text as it is when there is no such file.
QString ProgramFile(const QString& path) {
  const QFileInfo info(path);
  return FindEntry(info.path(), info.fileName()).value_or(path);
}

}  // namespace

SplitPath SplitProgramPath(const QString& path) {
  const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
  qsizetype at = path.lastIndexOf(QLatin1Char('\\'));
  if (at < kFirstBackslash) at = -1;
  at = std::max(at, slash);
  if (at < 0) return {};
  const QString folder = at == 0 ? path.first(1) : path.first(at);
  return {folder, path.mid(at + 1, kLongestFileName)};
}

Result<CommunicationProgram> FindCommunicationProgram(const RunValues& run,
                                                      const QStringList& searchFolders) {
  const QString text = run.settings.ReadSetting(SectionOf(run.language), QStringLiteral("RS232")).trimmed();
  if (text.isEmpty()) {
    return Failure(run, {}, Wording{u"yolu girilmemiş", u"no path is set"});
  }
  const QString program = ProgramFile(TranslatePathText(text, run.settings.Home(), run.programFolder));
  if (!SplitProgramPath(text).folder.isEmpty()) {
    return CommunicationProgram{program, WithTrailingSlash(QFileInfo(program).path())};
  }
  const QString found = QFileInfo(program).isFile()
                            ? program
                            : QStandardPaths::findExecutable(QFileInfo(program).fileName(), searchFolders);
  if (found.isEmpty()) {
    return Failure(run, text, Wording{u"bulunamadı", u"it was not found"});
  }
  return CommunicationProgram{found, run.programFolder};
}

Status StartCommunicationProgram(const RunValues& run) {
  const QStringList path = qEnvironmentVariable("PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
  const Result<CommunicationProgram> found = FindCommunicationProgram(run, path);
  if (!found) return found.Failure();
  const Status started = StartProgram(found.Value().program, found.Value().workingFolder);
  if (started) return {};
  return Failure(run, started.Failure().path, started.Failure().reason);
}

}  // namespace vesk
