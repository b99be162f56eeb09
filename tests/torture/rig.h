// What every part of the torture run shares: seeds, counts, processes and folders.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace vesk::torture {

/// The same numbers for the same seed, on every machine.
class Random {
 public:
  /// Neighbouring seeds give numbers that have nothing in common.
  explicit Random(std::uint64_t seed) : state_(seed) { state_ = Next() ^ (seed << 32U); }
  std::uint64_t Next();
  /// 0 to n - 1; n above 0.
  int Below(int n) { return static_cast<int>(Next() % static_cast<std::uint64_t>(n)); }
  bool OneIn(int n) { return Below(n) == 0; }

 private:
  std::uint64_t state_;
};

/// One part's run: how many rounds, from which seed, and what came out.
class Run {
 public:
  Run(std::string part, int rounds, std::uint64_t seed, QString scratch, bool isShort)
      : part_(std::move(part)), rounds_(rounds), seed_(seed), scratch_(std::move(scratch)), short_(isShort) {}

  [[nodiscard]] int Rounds() const { return rounds_; }
  [[nodiscard]] std::uint64_t SeedOf(int round) const { return seed_ + static_cast<std::uint64_t>(round); }
  /// Folder for whatever the part writes, with its trailing separator.
  [[nodiscard]] const QString& Scratch() const { return scratch_; }

  /// The form of the test suite: a part may take samples.
  [[nodiscard]] bool IsShort() const { return short_; }

  void Count(const std::string& what, long n = 1) { counts_[what] += n; }
  /// rule: a few words, the same for every breach of it; the first breaches of each are printed in full.
  void Fail(std::uint64_t seed, const std::string& rule, const QByteArray& detail);
  /// Prints the counts; true when no rule was broken.
  bool Report(std::chrono::milliseconds taken) const;

 private:
  std::string part_;
  int rounds_;
  std::uint64_t seed_;
  QString scratch_;
  bool short_;
  std::map<std::string, long> counts_, broken_;
};

/// A process of its own. What it says comes line by line; a line that it did not finish does not count.
class Child {
 public:
  /// Say: writes one line (no line end in it) before it returns.
  using Say = std::function<void(const QByteArray&)>;
  explicit Child(const std::function<void(const Say&)>& work);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// Everything that it says until its end.
  QByteArrayList Lines();
  /// The same, with SIGKILL sent after that time when it has not ended by then.
  QByteArrayList LinesUntil(std::chrono::microseconds killAfter);
  [[nodiscard]] bool WasKilled() const { return killed_; }
  /// True when it ended by itself and well.
  [[nodiscard]] bool EndedWell() const { return endedWell_; }
  /// What it has said so far, without waiting.
  void Poll();
  [[nodiscard]] pid_t Id() const { return id_; }
  void Kill();

 private:
  void Reap();
  QByteArrayList Whole() const;

  pid_t id_ = -1;
  int pipe_ = -1;
  QByteArray said_;
  bool killed_ = false, endedWell_ = false;
};

/// A new empty folder below another one, with its trailing separator.
QString NewFolder(const QString& below);
void RemoveFolder(const QString& folder);
/// RemoveFolder does nothing from now on.
void KeepFolders();
/// Copies every file, sub-folders included, into an empty folder.
void CopyFolder(const QString& from, const QString& to);
QByteArray Content(const QString& path);
void Put(const QString& path, const QByteArray& content);

}  // namespace vesk::torture
