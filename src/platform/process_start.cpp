#include "platform/process_start.h"

#include <QFileInfo>
#include <QProcess>

#include "platform/folders.h"
#include "platform/system_reason.h"

namespace vesk {

Status StartProgram(const QString& program, const QString& workingFolder) {
  const Message what = Wording{u"Program başlatılamadı", u"The program could not be started"};
  const QFileInfo info(program);
  if (!info.isFile()) return Error{what, program, Wording{u"böyle bir dosya yok", u"there is no such file"}};
  if (!info.isExecutable())
    return Error{what, program, Wording{u"çalıştırma izni yok", u"it may not be executed"}};
  if (!IsReachableFolder(workingFolder)) {
    return Error{what, workingFolder, Wording{u"klasörüne girilemiyor", u"its folder cannot be entered"}};
  }
  QProcess process;
  process.setProgram(program);
  process.setWorkingDirectory(workingFolder);
  if (!process.startDetached()) return Error{what, program, SystemReason(process.errorString())};
  return {};
}

}  // namespace vesk
