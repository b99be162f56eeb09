// "history" and "readings --with-history": what was corrected, by whom and why.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "programs/batch_run.h"
#include "review/editing.h"
#include "review/raw_files.h"
#include "review/review_decisions.h"
#include "tools/sample_data.h"

namespace vesk {
namespace {

class BatchHistory : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(sample::WriteRawFile(data_.path(), {}));
    LoadRequest request;
    request.dataDirectory = data_.path() + QLatin1Char('/');
    request.station = StationId(QStringLiteral("101-12001"));
    request.files = ListRawFiles(request.dataDirectory);
    request.choice = WaterYears{{{WaterYear{2024}}}};
    auto loaded = LoadReadings(request);
    ASSERT_TRUE(loaded);
    log_ = loaded->changeLogs.front().saveTo;
    EditSession session;
    session.Begin(std::move(*loaded));
    ASSERT_TRUE(
        session.Correct({{3, 150}, {2, 151}}, {QStringLiteral("shift"), QStringLiteral("şamandıra, \"2\"")}));
    ASSERT_TRUE(session.Save());
  }
  [[nodiscard]] Outcome Run(const QStringList& arguments) const {
    QStringList line = arguments;
    line.insert(1, data_.path());
    return Batch(line + QStringList{QStringLiteral("--station"), QStringLiteral("12001"),
                                    QStringLiteral("--water-year"), QStringLiteral("2024")});
  }

  QTemporaryDir data_;
  QString log_;
};

TEST_F(BatchHistory, TellsEveryCorrection) {
  const Outcome run = Run({QStringLiteral("history")});
  EXPECT_EQ(run.exit, 0) << run.err.toStdString();
  const QStringList lines = run.Lines();
  ASSERT_EQ(lines.size(), 3);
  EXPECT_TRUE(
      lines[1].startsWith(QStringLiteral("12001,2024,101-12001-231002,01/10/2023 02:00,ort,100,151,,"
                                         "\"şamandıra, \"\"2\"\"\",shift,")))
      << lines[1].toStdString();
  EXPECT_TRUE(lines[2].contains(QStringLiteral("03:00,ort,100,150,")));
  EXPECT_TRUE(lines[1].contains(PresentAuthor().login));
  const Outcome readings = Run({QStringLiteral("readings"), QStringLiteral("--with-history")});
  EXPECT_TRUE(readings.Lines()[2].contains(QStringLiteral(",151,100,\"şamandıra")))
      << readings.Lines()[2].toStdString();
  EXPECT_TRUE(readings.Lines()[4].endsWith(QStringLiteral(",100,100,,,")));
  EXPECT_FALSE(Run({QStringLiteral("readings")}).out.contains(QStringLiteral("raw_cm")));
}

// An approval is told on the command line, too, and that it no longer holds.
TEST_F(BatchHistory, AnApprovalThatNoLongerHoldsIsTold) {
  const QString folder = data_.path() + QLatin1Char('/');
  const ReadOut readOut{.file = QStringLiteral("101-12001-231002"),
                        .diskName = QStringLiteral("101-12001-231002.txt")};
  auto state = PresentState(folder, {readOut}, log_, StationSeries());
  ASSERT_TRUE(state);
  state->readings = 26;
  state->by.login = QStringLiteral("ali");
  ASSERT_TRUE(AddApproval(log_, *state));
  EXPECT_TRUE(Run({QStringLiteral("readings")}).err.contains(QStringLiteral("is approved: ali")));
  QFile raw(folder + readOut.diskName);
  ASSERT_TRUE(raw.open(QIODevice::Append));
  raw.write("\r\n");
  raw.close();
  const QString said = Run({QStringLiteral("readings")}).err;
  EXPECT_TRUE(said.contains(QStringLiteral("no longer as it was approved"))) << said.toStdString();
  EXPECT_TRUE(said.contains(QStringLiteral("101-12001-231002.txt: has changed since"))) << said.toStdString();
}

// Another program has changed the log behind the record: its lines are told as they are.
TEST_F(BatchHistory, ALogThatIsNotTheRecordsIsToldAsItIs) {
  QFile log(log_);
  ASSERT_TRUE(log.open(QIODevice::Append));
  log.write("01/10/2023\t05:00\t77\t\r\nrubbish\r\n");
  log.close();
  const Outcome run = Run({QStringLiteral("history")});
  EXPECT_EQ(run.exit, 0);
  EXPECT_EQ(run.Lines().size(), 4);
  EXPECT_TRUE(run.Lines()[3].startsWith(QStringLiteral("12001,2024,,01/10/2023 05:00,,,77,")));
  EXPECT_TRUE(run.err.contains(QStringLiteral("another content")) &&
              run.err.contains(QStringLiteral("could not be read")));
}

TEST_F(BatchHistory, TellsDecisions) {
  const AcceptedFinding finding{.rule = QStringLiteral("gap"),
                                .rawFile = QStringLiteral("101-12001-231002"),
                                .from = sample::At(2023, 10, 1),
                                .to = sample::At(2023, 10, 2),
                                .value = 3,
                                .by = {QStringLiteral("ayşe"), {}, {}, {{}, QStringLiteral("bakım")}}};
  ASSERT_TRUE(AcceptFinding(log_, finding));
  ASSERT_TRUE(
      AddApproval(log_, {.by = {QStringLiteral("ali"), {}, {}, {}}, .readings = 26, .corrections = 2}));
  EXPECT_TRUE(Run({QStringLiteral("history"), QStringLiteral("--findings")})
                  .Lines()
                  .back()
                  .startsWith(QStringLiteral(
                      "12001,2024,gap,01/10/2023 00:00,02/10/2023 00:00,101-12001-231002,3,bakım,ayşe")));
  EXPECT_TRUE(Run({QStringLiteral("history"), QStringLiteral("--approvals")})
                  .Lines()
                  .back()
                  .startsWith(QStringLiteral("12001,2024,approved,26,2,0,0,,,ali")));
  EXPECT_EQ(
      Run({QStringLiteral("history"), QStringLiteral("--approvals"), QStringLiteral("--findings")}).exit, 2);
  EXPECT_EQ(Batch({QStringLiteral("history"), data_.path(), QStringLiteral("--station"),
                   QStringLiteral("99999"), QStringLiteral("--water-year"), QStringLiteral("2024")})
                .exit,
            1);
}

}  // namespace
}  // namespace vesk
