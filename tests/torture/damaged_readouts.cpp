// Read-outs as a bad cable, a full stick or a careless editor leaves them. Rows that are not those of the
// intact file, and rows that are gone without a message, are what must not be.
#include "datafiles/water_year.h"
#include "torture/desk.h"
#include "torture/parts.h"
#include "torture/world.h"

#include <QProcess>

#include <set>

#include "datafiles/data_lines.h"

namespace vesk::torture {
namespace {

constexpr int kHeader = 15;
constexpr int kYear = 2024;
constexpr int kBatchEvery = 25;  // rounds in which the command line is asked, too

enum class Damage {
  Cut,
  CutAtLineEnd,
  Swapped,
  Doubled,
  WrongYear,
  EndMark,
  Flipped,
  LineEnds,
  HeaderLineGone,
  HeaderFlipped,
  LineGone,
  Zeros,
};
constexpr const char* kDamageNames[] = {"cut at a byte",        "cut at a line end", "lines swapped",
                                        "line doubled",         "wrong year",        "end mark inside",
                                        "bytes flipped",        "line ends damaged", "header line gone",
                                        "header bytes flipped", "line gone",         "zeros"};

class ReadOut {
 public:
  ReadOut(Run& run, std::uint64_t seed) : run_(run), seed_(seed), random_(seed) {}

  void Play(bool batch) {
    folder_ = NewFolder(run_.Scratch());
    Choice choice = Make();
    Desk intact;
    if (!intact.Open(choice).isEmpty() || intact.Rows() == 0)
      return run_.Fail(seed_, "the intact file loads", {});
    for (const ScreenRow& row : intact.Shown()) intact_.insert(row.Text());
    Spoil();
    Put(folder_ + name_, bytes_);
    run_.Count(kDamageNames[static_cast<int>(damage_)]);
    CheckTally();
    Desk desk;
    const QString why = desk.Open(choice);
    if (why.isEmpty()) CheckRows(desk, choice);
    if (why.isEmpty() && batch) CheckBatch(desk, choice);
    if (!why.isEmpty()) run_.Count("loads refused with a reason");
    RemoveFolder(folder_);
  }

 private:
  Choice Make() {
    sample::RawFilePlan plan;
    plan.first = sample::At(2024, 1 + random_.Below(5), 2, 1);
    plan.count = 24 + random_.Below(90);
    plan.firstLine = "        ";
    plan.levelCm = [seed = seed_](DateTime time) {
      return Random(seed ^ static_cast<std::uint64_t>(time.time_since_epoch().count())).Below(1200) - 40;
    };
    plan.dayCount = CountedNameOf(plan).mid(17, 4).toInt();
    name_ = sample::RawFileName(plan);
    bytes_ = sample::RawFileBytes(plan);
    Put(folder_ + name_, bytes_);
    Choice choice{folder_, name_.left(9), {}, name_.left(16)};
    if (random_.OneIn(2)) choice.years = {kYear};
    return choice;
  }

  int AnyLine(const QByteArrayList& lines) {
    return kHeader + random_.Below(static_cast<int>(lines.size()) - kHeader - 2);
  }

  void Spoil() {
    damage_ = static_cast<Damage>(random_.Below(12));
    QByteArrayList lines = bytes_.split('\n');
    const int at = AnyLine(lines);
    const int other = AnyLine(lines);
    switch (damage_) {
      case Damage::Cut:
        bytes_.truncate(random_.Below(static_cast<int>(bytes_.size())));
        return;
      case Damage::CutAtLineEnd:
        lines = lines.mid(0, at) + QByteArrayList{QByteArray()};
        break;
      case Damage::Swapped:
        lines.swapItemsAt(at, other);
        break;
      case Damage::Doubled:
        lines.insert(other, lines[at]);
        break;
      case Damage::WrongYear:
        WrongYear(lines[at]);
        break;
      case Damage::EndMark:
        lines.insert(at, QByteArray(20, '*') + '\r');
        break;
      case Damage::Flipped:
        return Flip(lines.mid(0, kHeader).join('\n').size() + 1, bytes_.size());
      case Damage::LineEnds:
        return SpoilLineEnd(lines, at);
      case Damage::HeaderLineGone:
        lines.removeAt(random_.Below(kHeader));
        break;
      case Damage::HeaderFlipped:
        return Flip(0, lines.mid(0, kHeader).join('\n').size());
      case Damage::LineGone:
        lines.removeAt(at);
        break;
      case Damage::Zeros: {
        const auto from = random_.Below(static_cast<int>(bytes_.size()));
        for (qsizetype i = from; i < std::min<qsizetype>(from + 64, bytes_.size()); ++i) bytes_[i] = '\0';
        return;
      }
    }
    bytes_ = lines.join('\n');
  }

  void WrongYear(QByteArray& line) {
    const bool extreme = line.startsWith("Max") || line.startsWith("Min");
    static constexpr const char* kYears[] = {"2025", "2023", "2042", "1924", "0000"};
    if (line.size() > 14) line.replace(extreme ? 10 : 6, 4, kYears[random_.Below(5)]);
  }

  void Flip(qsizetype from, qsizetype to) {
    for (int i = 0; i <= random_.Below(4); ++i) {
      const qsizetype at = from + random_.Below(static_cast<int>(to - from));
      bytes_[at] = static_cast<char>(bytes_[at] ^ (1 << random_.Below(8)));
    }
  }

  void SpoilLineEnd(QByteArrayList lines, int at) {
    switch (random_.Below(5)) {
      case 0:
        lines[at].chop(1);
        break;  // no CR
      case 1:
        lines[at] += lines.takeAt(at + 1);
        break;  // no LF
      case 2:
        lines[at].insert(random_.Below(static_cast<int>(lines[at].size())), "\r\n");
        break;
      case 3:
        lines[at].chop(1), lines[at] += lines.takeAt(at + 1);
        break;  // neither
      default:
        for (QByteArray& line : lines) line.chop(line.endsWith('\r') ? 1 : 0);  // none in the whole file
    }
    bytes_ = lines.join('\n');
  }

  [[nodiscard]] static qint64 LinesIn(QByteArrayView bytes) {
    if (bytes.isEmpty()) return 0;
    return std::count(bytes.begin(), bytes.end(), '\n') + (bytes.back() == '\n' ? 0 : 1);
  }

  /// Lines that the tally knows are all lines behind the header.
  void CheckTally() {
    const HeaderReading reading = ReadRawHeader(bytes_, {}, name_);
    header_ = reading ? std::optional(*reading) : std::nullopt;
    if (!header_) return;
    for (const bool window : {false, true}) {
      std::vector<Reading> out;
      std::optional<DayWindow> days;
      if (window) days = DayWindow{WaterYearFirstDay(kYear), WaterYearLastDay(kYear)};
      const DataLineTally tally = DecodeDataLines(bytes_, header_->HeaderEnd, 1, days, out);
      const qint64 told = tally.kept + tally.outsideWindow + tally.blank + tally.refused + tally.afterEnd;
      const qint64 lines = LinesIn(QByteArrayView(bytes_).sliced(header_->HeaderEnd - 1));
      if (told != lines)
        Break("the line counts do not add up", QByteArray::number(told) + " of " + QByteArray::number(lines));
      if (tally.kept != static_cast<qint64>(out.size())) Break("the count of kept lines is wrong", {});
      run_.Count("lines accounted for", static_cast<long>(told));
    }
  }

  /// Lines with text behind the first 15, but for a closing end mark.
  [[nodiscard]] qint64 LinesWithText() const {
    QByteArrayList lines = bytes_.split('\n').mid(kHeader);
    lines.removeIf([](const QByteArray& line) { return line.trimmed().isEmpty(); });
    if (!lines.isEmpty() && lines.last().trimmed() == QByteArray(20, '*')) lines.removeLast();
    return lines.size();
  }

  /// Readings that should have come: those of the intact file, where none was taken out of it.
  [[nodiscard]] qint64 Expected() const {
    const auto before = static_cast<qint64>(intact_.size());
    switch (damage_) {
      case Damage::LineGone:
        return LinesWithText();  // nothing is left that could tell
      case Damage::Flipped:
      case Damage::Doubled:
      case Damage::Zeros:
        return std::max(before, LinesWithText());
      default:
        return before;
    }
  }

  [[nodiscard]] bool SaysSo(const QStringList& messages) const {
    return std::any_of(messages.begin(), messages.end(),
                       [this](const QString& message) { return message.contains(name_.left(16)); });
  }

  void CheckRows(const Desk& desk, const Choice& choice) {
    const Screen shown = desk.Shown();
    run_.Count("rows loaded", static_cast<long>(shown.size()));
    const bool sameRows = damage_ != Damage::Flipped && damage_ != Damage::WrongYear &&
                          damage_ != Damage::Zeros && damage_ != Damage::HeaderFlipped;
    for (const ScreenRow& row : shown) {
      if (!sameRows || intact_.contains(row.Text())) continue;
      if (SaysSo(desk.Messages())) {
        run_.Count("wrong rows in a load that says it is damaged");
        continue;
      }
      return Break("a row that no logger wrote, without a word", row.Text());
    }
    lost_ = static_cast<qint64>(shown.size()) < Expected();
    if (lost_ && header_ && !choice.years.empty() &&
        (header_->FirstWaterYear > kYear || header_->LastWaterYear < kYear)) {
      lost_ = false;
      run_.Count("files whose header speaks of another year");
      return;
    }
    if (!lost_) return;
    run_.Count("loads with lost lines");
    if (!SaysSo(desk.Messages())) {
      Break("lines are lost without a word",
            QByteArray::number(shown.size()) + " rows of " + QByteArray::number(Expected()) +
                "; messages: " + desk.Messages().join(QLatin1String(" | ")).toUtf8());
    }
  }

  void CheckBatch(const Desk& desk, const Choice& choice) {
    QStringList arguments{QStringLiteral("readings"), folder_};
    if (choice.years.empty()) {
      arguments << QStringLiteral("--file") << name_;
    } else {
      arguments << QStringLiteral("--station") << choice.station << QStringLiteral("--water-year")
                << QString::number(kYear);
    }
    QProcess batch;
    batch.start(QStringLiteral(VESK_BATCH_PROGRAM), arguments);
    batch.waitForFinished();
    run_.Count("command lines asked");
    const bool lost = lost_ || !desk.Whole();
    if (batch.exitStatus() != QProcess::NormalExit) return Break("the command line crashes", {});
    if (lost && batch.exitCode() == 0)
      Break("lines are lost and the exit code is 0", batch.readAllStandardError());
    if (lost && batch.readAllStandardError().isEmpty())
      Break("the command line says nothing of lost lines", {});
  }

  void Break(const char* rule, const QByteArray& detail) {
    run_.Fail(seed_, std::string(rule) + ", " + kDamageNames[static_cast<int>(damage_)], detail);
  }

  Run& run_;
  std::uint64_t seed_;
  Random random_;
  QString folder_, name_;
  QByteArray bytes_;
  Damage damage_ = Damage::Cut;
  std::multiset<QByteArray> intact_;
  std::optional<RawHeader> header_;
  bool lost_ = false;
};

}  // namespace

void DamagedReadOuts(Run& run) {
  for (int round = 0; round < run.Rounds(); ++round) {
    const std::uint64_t seed = run.SeedOf(round);
    ReadOut(run, seed).Play(seed % kBatchEvery == 0);
  }
}

}  // namespace vesk::torture
