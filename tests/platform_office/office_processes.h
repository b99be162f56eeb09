// Finds running offices in the process table.
#pragma once

#include <QDir>
#include <QFile>

#include <vector>

namespace vesk::test {

/// Offices whose command line holds that text.
inline std::vector<int> OfficesStartedWith(const QByteArray& text) {
  std::vector<int> found;
  for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    QFile command(QStringLiteral("/proc/%1/cmdline").arg(entry));
    if (entry.toInt() == 0 || !command.open(QIODevice::ReadOnly)) continue;
    const QByteArray line = command.readAll();
    if (line.contains("soffice.bin") && line.contains(text)) found.push_back(entry.toInt());
  }
  return found;
}

}  // namespace vesk::test
