#include "torture/rig.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace vesk::torture {
namespace {

constexpr long kBreachesPrinted = 3;

bool keepsFolders = false;  // set once, from the command line

/// The rig itself must not fail: a torture whose own folder is full proves nothing.
void Require(bool fine, const QString& what) {
  if (fine) return;
  std::fprintf(stderr, "torture: %s\n", qPrintable(what));
  std::abort();
}

}  // namespace

std::uint64_t Random::Next() {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
  return z ^ (z >> 31U);
}

void Run::Fail(std::uint64_t seed, const std::string& rule, const QByteArray& detail) {
  if (++broken_[rule] > kBreachesPrinted) return;
  std::printf("BROKEN %s: %s\n  again: torture --only %s --seed %llu --rounds 1\n  %s\n", part_.c_str(),
              rule.c_str(), part_.c_str(), static_cast<unsigned long long>(seed), detail.constData());
  std::fflush(stdout);
}

bool Run::Report(std::chrono::milliseconds taken) const {
  std::printf("%-10s %d rounds from seed %llu, %.1f s\n", part_.c_str(), rounds_,
              static_cast<unsigned long long>(seed_), static_cast<double>(taken.count()) / 1000);
  for (const auto& [what, count] : counts_) std::printf("  %8ld %s\n", count, what.c_str());
  for (const auto& [rule, count] : broken_) std::printf("  BROKEN %ld times: %s\n", count, rule.c_str());
  std::fflush(stdout);
  return broken_.empty();
}

Child::Child(const std::function<void(const Say&)>& work) {
  int ends[2];
  Require(::pipe(ends) == 0, QStringLiteral("no pipe"));
  std::fflush(stdout);
  id_ = ::fork();
  Require(id_ >= 0, QStringLiteral("no process"));
  if (id_ == 0) {
    ::close(ends[0]);
    work([to = ends[1]](const QByteArray& line) {
      const QByteArray bytes = line + '\n';
      qsizetype done = 0;
      while (done < bytes.size()) {
        const ssize_t n =
            ::write(to, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (n <= 0) ::_exit(3);
        done += n;
      }
    });
    ::_exit(0);
  }
  ::close(ends[1]);
  pipe_ = ends[0];
}

Child::~Child() {
  if (id_ > 0) {
    ::kill(id_, SIGKILL);
    Reap();
  }
  ::close(pipe_);
}

void Child::Reap() {
  int state = 0;
  while (::waitpid(id_, &state, 0) < 0 && errno == EINTR) {
  }
  killed_ = WIFSIGNALED(state) && WTERMSIG(state) == SIGKILL;
  endedWell_ = WIFEXITED(state) && WEXITSTATUS(state) == 0;
  id_ = -1;
}

QByteArrayList Child::Whole() const {
  QByteArrayList lines = said_.split('\n');
  lines.removeLast();  // empty, or not finished
  return lines;
}

QByteArrayList Child::Lines() {
  return LinesUntil(std::chrono::minutes(10));
}

QByteArrayList Child::LinesUntil(std::chrono::microseconds killAfter) {
  const auto end = std::chrono::steady_clock::now() + killAfter;
  for (;;) {
    const auto left =
        std::chrono::duration_cast<std::chrono::nanoseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0 && id_ > 0) Kill();
    pollfd wait{pipe_, POLLIN, 0};
    const timespec time{std::max<long>(left.count(), 0) / 1000000000,
                        std::max<long>(left.count(), 0) % 1000000000};
    if (::ppoll(&wait, 1, id_ > 0 ? &time : nullptr, nullptr) <= 0) continue;
    char bytes[65536];
    const ssize_t n = ::read(pipe_, bytes, sizeof bytes);
    if (n <= 0) break;
    said_.append(bytes, n);
  }
  if (id_ > 0) Reap();
  return Whole();
}

void Child::Kill() {
  ::kill(id_, SIGKILL);
  Reap();
}

QString NewFolder(const QString& below) {
  QByteArray name = QFile::encodeName(below + QStringLiteral("run-XXXXXX"));
  Require(::mkdtemp(name.data()) != nullptr, below);
  return QFile::decodeName(name) + QLatin1Char('/');
}

void KeepFolders() {
  keepsFolders = true;
}

void RemoveFolder(const QString& folder) {
  if (!keepsFolders) QDir(folder).removeRecursively();
}

void CopyFolder(const QString& from, const QString& to) {
  QDirIterator entries(from, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
  while (entries.hasNext()) {
    const QString path = entries.next();
    const QString copy = to + path.mid(from.size());
    Require(QDir().mkpath(QFileInfo(copy).path()), copy);
    if (QFileInfo(path).isSymLink()) {
      QFile::link(QFile::symLinkTarget(path), copy);
      continue;
    }
    Put(copy, Content(path));
  }
}

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Put(const QString& path, const QByteArray& content) {
  QFile file(path);
  Require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush(), path);
}

}  // namespace vesk::torture
