// No room left: from the n-th byte on, and on a real file system that is full.
#include <QFile>

#include <sys/mount.h>

#include "torture/parts.h"
#include "torture/theatre.h"

namespace vesk::torture {
namespace {

/// A small file system of its own for as long as it lives, where the machine allows it.
class SmallDisk {
 public:
  explicit SmallDisk(QString folder) : folder_(std::move(folder)) {
    mounted_ = ::mount("tmpfs", QFile::encodeName(folder_).constData(), "tmpfs", 0, "size=512k") == 0;
  }
  ~SmallDisk() {
    if (mounted_) ::umount2(QFile::encodeName(folder_).constData(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  [[nodiscard]] bool IsMounted() const { return mounted_; }

  /// Leaves that many pages of room.
  void Fill(int pages) const {
    constexpr int kPage = 4096;
    QFile file(folder_ + QStringLiteral("filler"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return;
    const QByteArray page(kPage, '.');
    qint64 size = 0;
    while (file.write(page) == kPage) size += kPage;
    file.resize(std::max<qint64>(size - qint64{kPage} * pages, 0));
  }
  void Empty() const { QFile::remove(folder_ + QStringLiteral("filler")); }

 private:
  QString folder_;
  bool mounted_ = false;
};

/// A real disk without room: an edit and a save, said to be done or not, then room again.
void PlaySmallDisk(Run& run, std::uint64_t seed) {
  Random random(seed);
  const QString folder = NewFolder(run.Scratch());
  {
    const SmallDisk disk(folder);
    if (!disk.IsMounted()) {
      run.Count("small disks that this machine does not allow");
    } else {
      World world = MakeWorld(random, WorldKind::Years);
      const Choice choice = WriteWorld(world, folder);
      Child child([&](const Child::Say& say) {
        Desk desk;
        if (!desk.Open(choice).isEmpty()) return;
        disk.Fill(random.Below(3));
        for (int row = 1; row <= 12; ++row) {
          const QString level = QString::number(600 + row);
          const auto edited = desk.Session().EditLevel(row, level);
          if (edited && !desk.JournalFailed()) say("row " + QByteArray::number(row));
          if (row % 4 == 0 && desk.Session().Save()) {
            for (int saved = 1; saved <= row; ++saved) say("row " + QByteArray::number(saved));
          }
        }
      });
      const QByteArrayList lines = child.Lines();
      disk.Empty();
      const Found found = Look(choice);
      const QByteArrayList rows = found.state.split(';');
      for (const QByteArray& line : lines) {
        const int row = line.mid(4).toInt();
        run.Count("edits acknowledged on a full disk");
        if (!rows.value(row - 1).endsWith(' ' + QByteArray::number(600 + row))) {
          run.Fail(seed, "an edit acknowledged on a full disk is lost",
                   rows.value(row - 1) + ' ' + found.why);
          break;
        }
      }
      run.Count("small disks filled");
    }
  }
  RemoveFolder(folder);
}

}  // namespace

void FullDisk(Run& run) {
  for (int round = 0; round < run.Rounds(); ++round) {
    const std::uint64_t seed = run.SeedOf(round);
    for (const Operation& operation : Operations()) {
      Theatre theatre(run, seed, operation);
      theatre.Rehearse();
      const long step = run.IsShort() ? 397 : 61;
      for (long bytes = 0; bytes < 9000; bytes += bytes < 200 && !run.IsShort() ? 7 : step) {
        theatre.Play({0, 0, false, bytes}, bytes % 2 == 0);
      }
    }
    PlaySmallDisk(run, seed);
  }
}

}  // namespace vesk::torture
