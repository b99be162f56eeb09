// The command line program, run as a user runs it.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace vesk {

struct Outcome {
  int exit = -1;
  QString out, err;
  [[nodiscard]] QStringList Lines() const { return out.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
};

inline Outcome RunProgram(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  Outcome run;
  if (!process.waitForFinished(60'000)) return run;
  run.exit = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  run.out = QString::fromUtf8(process.readAllStandardOutput());
  run.err = QString::fromUtf8(process.readAllStandardError());
  return run;
}

inline Outcome Batch(const QStringList& arguments) {
  return RunProgram(QStringLiteral(VESK_BATCH_PROGRAM), arguments);
}

}  // namespace vesk
