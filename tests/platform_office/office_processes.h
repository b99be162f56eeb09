// Finds running offices in the process table, and waits for what an office does in its own time.
#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <functional>
#include <thread>
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

inline bool WaitUntil(const std::function<bool()>& holds) {
  QElapsedTimer waiting;
  waiting.start();
  while (!holds()) {
    if (waiting.hasExpired(20'000)) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return true;
}

}  // namespace vesk::test
