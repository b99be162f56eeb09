#include "platform/process_start.h"

#include <QFileInfo>
#include <QProcess>

#include "platform/folders.h"

namespace vesk {

Status StartProgram(const QString& program, const QString& workingFolder) {
  const QString what = QStringLiteral("The program could not be started");
  const QFileInfo info(program);
  if (!info.isFile()) return Error{what, program, QStringLiteral("there is no such file")};
  if (!info.isExecutable()) return Error{what, program, QStringLiteral("it may not be executed")};
  if (!IsReachableFolder(workingFolder)) {
    return Error{what, workingFolder, QStringLiteral("its folder cannot be entered")};
  }
  QProcess process;
  process.setProgram(program);
  process.setWorkingDirectory(workingFolder);
  if (!process.startDetached()) return Error{what, program, process.errorString()};
  return {};
}

}  // namespace vesk
