// Gaugings as files and spreadsheets bring them: what is read, what is refused and why.
#include "ratings/gaugings_csv.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <cmath>
#include <random>

#include "datafiles/dates.h"
#include "datafiles/gauging_fields.h"

namespace vesk {
namespace {

/// "time|level|discharge|uncertainty|used|method|party|remark" of each, in lines.
std::string Shown(const std::vector<Gauging>& gaugings) {
  QString text;
  for (const Gauging& gauging : gaugings) {
    QStringList cells;
    for (const GaugingField field :
         {GaugingField::Time, GaugingField::Level, GaugingField::Discharge, GaugingField::Uncertainty,
          GaugingField::Used, GaugingField::Method, GaugingField::Party, GaugingField::Remark})
      cells += TextOf(gauging, field);
    text += cells.join(u'|') + u'\n';
  }
  return text.toStdString();
}

Result<GaugingsRead> Read(const QByteArray& bytes) {
  return ReadGaugingsBytes(bytes, QStringLiteral("f.csv"));
}

std::string All(const std::vector<Message>& messages) {
  QStringList lines;
  for (const Message& message : messages) lines += message.English();
  return lines.join(u'\n').toStdString();
}

TEST(GaugingsCsv, ReadsTheShapesThatOfficesHave) {
  const struct {
    const char* what;
    QByteArray bytes;
    const char* expected;
  } kCases[] = {
      {"the public sets",
       "level_cm,discharge_m3s,uncertainty_percent\r\n209,201.37,3.501\r\n2239.8,0.0026,\r\n",
       "|209|201.37|3.501|1|||\n|2239.8|0.0026||1|||\n"},
      {"columns in any order, others left out, no last line end",
       "used,remark,time,operator,discharge_m3s,level_cm\n"
       "0,\"ice, upstream\",05/03/2024 14:07,x,12.5,-31\n"
       "1,,2024-03-06T09:00:30,x,3,40",
       "05/03/2024 14:07|-31|12.5||0|||ice, upstream\n06/03/2024 09:00|40|3||1|||\n"},
      {"a Turkish spreadsheet",
       "\xEF\xBB\xBF"
       "Tarih ve saat;Seviye (cm);Debi (m\xC2\xB3/s);Belirsizlik (%);"
       "Yöntem;Ekip;Açıklama;Kullan\r\n5.3.2024 14:07;147,5;1,234;5,5;Muline;Ali, Veli;;Hayır\r\n"
       "5.3.2024 24:00;150;1,5;;;;;Evet\r\n",
       "05/03/2024 14:07|147.5|1.234|5.5|0|Muline|Ali, Veli|\n05/03/2024 23:59|150|1.5||1|||\n"},
      {"commas quoted, as some spreadsheets save them", "level_cm,discharge_m3s\n\"147,5\",\"22,25\"\n",
       "|147.5|22.25||1|||\n"},
      {"without a header", "147.5;22.25;5;05/03/2024 14:07;a;b;c;1\n",
       "05/03/2024 14:07|147.5|22.25|5|1|a|b|c\n"},
      {"without a header, times in front", "05/03/2024 14:07\t147,5\t22,25\n\t148\t23\n",
       "05/03/2024 14:07|147.5|22.25||1|||\n|148|23||1|||\n"},
      {"date and clock apart, a separator line",
       "sep=;\nTarih;Saat;Debi (m3/s);Seviye (cm)\n05.03.2024;14:07;2;10\n", "05/03/2024 14:07|10|2||1|||\n"},
      {"exponents and signs",
       "discharge_m3s,level_cm\n8.5E-05,+12\n.5,\xE2\x88\x92"
       "3.25\n",
       "|12|0.000085||1|||\n|-3.25|0.5||1|||\n"},
      {"cells over several lines, quotes in them, guarded formulas",
       "level_cm,discharge_m3s,remark\n1,2,\"a \"\"b\"\"\r\nc\"\n3,4,'=1+1\n5,6,5\" pipe\n",
       "|1|2||1|||a \"b\"\r\nc\n|3|4||1|||=1+1\n|5|6||1|||5\" pipe\n"},
      {"the header alone", "level_cm,discharge_m3s\n", ""},
      {"Windows-1254", "level_cm,discharge_m3s,party\n1,2,\xDEi\xFElik\n", "|1|2||1||Şişlik|\n"},
  };
  for (const auto& c : kCases) {
    const auto read = Read(c.bytes);
    ASSERT_TRUE(read) << c.what << ": " << read.Failure().English().toStdString();
    EXPECT_EQ(All(read->refused), "") << c.what;
    EXPECT_EQ(Shown(read->gaugings), c.expected) << c.what;
  }
  QStringEncoder utf16(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
  const auto read = Read(utf16.encode(u"Level (cm)\tDischarge (m3/s)\tParty\r\n1\t2\tĞ\r\n"));
  EXPECT_TRUE(read && Shown(read->gaugings) == "|1|2||1||Ğ|\n") << "Unicode text of a spreadsheet";
}

TEST(GaugingsCsv, LeavesOutWhatIsNoGaugingAndSaysWhy) {
  const QByteArray header = "level_cm,discharge_m3s,uncertainty_percent,time,remark,used\n";
  const struct {
    const char* line;
    const char* said;  ///< behind "f.csv, line 3: "
  } kCases[] = {
      {"1,0,,,,1", "Discharge (m³/s): \"0\"; expected a number from 0.000001 to 1000000 (m3/s)"},
      {"1,-2,,,,1", "Discharge (m³/s): \"-2\"; expected"},
      {"1,,,,,1", "Discharge (m³/s): \"\"; expected"},
      {"1,nan,,,,1", "\"nan\"; expected"},
      {"1,inf,,,,1", "\"inf\"; expected"},
      {"1,1e999,,,,1", "\"1e999\"; expected"},
      {"1,2000000,,,,1", "\"2000000\"; expected"},
      {"1,2 m3/s,,,,1", "\"2 m3/s\"; expected"},
      {"high,2,,,,1", "Level (cm): \"high\"; expected a number from -1000000 to 1000000 (cm)"},
      {"1e9,2,,,,1", "Level (cm): \"1e9\"; expected"},
      {"1,2,0,,,1", "Uncertainty (%): \"0\"; expected a number from 0.001 to 1000 (%)"},
      {"1,2,,31/02/2024 10:00,,1", "Time: \"31/02/2024 10:00\"; expected a date and time dd/mm/yyyy hh:mm"},
      {"1,2,,01/02/24 10:00,,1", "Time: \"01/02/24 10:00\"; expected"},
      {"1,2,,01/02/2024 25:00,,1", "expected a date and time"},
      {",2,,01/02/2024,,1", "neither a level nor a clock time"},
      {"1,2,,,,maybe", "Used: \"maybe\"; expected 1 (used) or 0 (not used)"},
      {"\"1,234\",2,,,,1", "Level (cm): \"1,234\"; expected a number without marks of thousands"},
      {"1,\"1.234,5\",,,,1", "Discharge (m³/s): \"1.234,5\"; expected a number"},
      {"1,2,,,,1,7", "expected 6 cells, found 7"},
      {"1,2,,,\"open,1", "the quotes do not match; expected one at the end"},
      {"1,2,,,\"a\"b,1", "the quotes do not match"},
      {"level_cm,discharge_m3s,uncertainty_percent,time,remark,used", "the header once more"},
  };
  for (const auto& c : kCases) {
    const auto read = Read(header + "10.5,2,,,first,1\n" + c.line + "\n30,4,,,last,1\n");
    ASSERT_TRUE(read) << c.line;
    EXPECT_EQ(Shown(read->gaugings), "|10.5|2||1|||first\n|30|4||1|||last\n") << c.line;
    EXPECT_EQ(read->lines, std::vector<int>({2, 4})) << c.line;
    ASSERT_EQ(read->refused.size(), 1U) << c.line;
    const QString said = read->refused[0].English();
    EXPECT_TRUE(said.startsWith(QStringLiteral("f.csv, line 3: ") + QString::fromUtf8(c.said)) ||
                said.contains(QString::fromUtf8(c.said)))
        << said.toStdString();
    EXPECT_TRUE(said.startsWith(QStringLiteral("f.csv, line 3: "))) << said.toStdString();
  }
}

// A cut file gives what is whole; nothing of its last line, which may have lost the end of a figure.
TEST(GaugingsCsv, OfAFileThatWasCutTheWholeLinesCount) {
  std::vector<Gauging> gaugings(3);
  for (Gauging& gauging : gaugings) {
    gauging = {
        .levelCm = 209.25, .dischargeM3s = 201.37, .remark = QStringLiteral("a, \"b\"\nc"), .used = false};
  }
  const QByteArray whole = GaugingsCsv(gaugings);
  const auto lastLine = whole.lastIndexOf("\n209") + 1;
  for (auto size = lastLine + 1; size < whole.size() - 1; ++size) {
    const auto read = Read(whole.left(size));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->gaugings.size(), 2U) << whole.mid(lastLine, size - lastLine).toStdString();
    EXPECT_GE(read->refused.size(), 1U);
  }
}

TEST(GaugingsCsv, MarksOfThousandsAreNotTakenForDecimals) {
  const struct {
    const char* text;
    const char* expected;  ///< discharges
    int refused;
  } kCases[] = {
      {"1;1,234\n1;22,5\n", "1.234 22.5 ", 0},
      {"1;1.234\n1;22,5\n", "22.5 ", 1},
      {"1;1,234\n1;22.5\n", "22.5 ", 1},
      {"1;1,234\n", "", 1},
      {"1;1.234\n", "", 1},
      {"1,1.234\n", "1.234 ", 0},
      {"1;0,234\n1;1,234\n", "0.234 1.234 ", 0},
      {"1;1.234\n1;0.5\n", "1.234 0.5 ", 0},
      {"1;1.234.567\n1;2\n", "2 ", 1},
      {"1;1 234\n1;2\n", "2 ", 1},
  };
  for (const auto& c : kCases) {
    const auto read = Read(c.text);
    ASSERT_TRUE(read) << c.text << read.Failure().English().toStdString();
    QString discharges;
    for (const Gauging& gauging : read->gaugings) discharges += ExactNumberText(gauging.dischargeM3s) + u' ';
    EXPECT_EQ(discharges.toStdString(), c.expected) << c.text;
    EXPECT_EQ(read->refused.size(), static_cast<std::size_t>(c.refused)) << c.text;
  }
}

TEST(GaugingsCsv, AFileThatDoesNotSayWhatIsWhatIsRefused) {
  const struct {
    QByteArray bytes;
    const char* said;
  } kCases[] = {
      {"", "f.csv: empty"},
      {"\xEF\xBB\xBF\r\n  \r\n", "f.csv: empty"},
      {"level_cm,discharge_m3s,level_cm\n1,2,3\n",
       "f.csv: line 1: \"level_cm\" is there twice; expected columns: level_cm"},
      {"level_cm,Seviye (cm),discharge_m3s\n1,2,3\n", "is there twice"},
      {"level_cm,q\n1,2\n", "there is no column discharge_m3s"},
      {"discharge_m3s,party\n1,2\n", "there is no column level_cm"},
      {"level_m,discharge_m3s,time\n1,2,\n", "column \"level_m\" does not tell its unit"},
      {"Q;h\n1;2\n", "neither a header nor a gauging"},
      {";147,5;22,5\n;150;23\n", "neither a header nor a gauging"},
      {QByteArray("level_cm,discharge_m3s\n1,\0\n", 27), "it is no text"},
  };
  for (const auto& c : kCases) {
    const auto read = Read(c.bytes);
    ASSERT_FALSE(read) << c.bytes.toStdString();
    EXPECT_TRUE(read.Failure().English().contains(QLatin1String(c.said)))
        << read.Failure().English().toStdString();
  }
  const QTemporaryDir folder;
  for (const QString& path : {folder.filePath(QStringLiteral("none.csv")), folder.path()}) {
    const auto read = ReadGaugingsCsv(path);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.Failure().path, path);
  }
  const auto noted = Read("level_cm,discharge_m3s,date,weather\n1,2,05/03/2024,sun\n3,4,06/03/2024,rain\n");
  EXPECT_EQ(All(noted->notes),
            "f.csv, line 1: column \"weather\" is not known; it is left out\n"
            "f.csv, line 2: there is no clock time; this line and others like it are taken as 00:00");
}

/// Any gauging that there can be, figures with all their digits.
Gauging AnyGauging(std::mt19937& random) {
  const auto below = [&random](unsigned n) { return static_cast<int>(random() % n); };
  const auto figure = [&random](double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(random);
  };
  const auto text = [&] {
    static const QString kLetters = QStringLiteral("'=+-@\t\r\n\",;. a1Şİ€");
    QString made;
    for (int i = below(6); i > 0; --i) made += kLetters[below(static_cast<unsigned>(kLetters.size()))];
    return made;
  };
  Gauging gauging{.dischargeM3s = std::pow(10, figure(-5.9, 5.9)),
                  .method = text(),
                  .party = text(),
                  .remark = text(),
                  .used = below(2) == 0};
  if (below(4) != 0) gauging.levelCm = below(2) != 0 ? figure(-1e6, 1e6) : below(3000) / 1000.0;
  if (below(4) != 0)
    gauging.time = DateTime(*ReadDate(u"01/01/1700")) + std::chrono::minutes(below(150'000'000));
  if (below(4) != 0) gauging.uncertaintyPercent = figure(0.001, 1000);
  if (below(2) != 0) gauging.dischargeM3s = (1 + below(9'999'999)) / 1000.0;
  return gauging;
}

TEST(GaugingsCsv, WhatIsWrittenReadsBackTheSame) {
  std::mt19937 random(12);  // NOLINT: the same gaugings on every run
  for (int round = 0; round < 300; ++round) {
    std::vector<Gauging> gaugings;
    for (auto i = random() % 5; i > 0; --i) gaugings.push_back(AnyGauging(random));
    const auto file = Read(GaugingsCsv(gaugings));
    ASSERT_TRUE(file);
    ASSERT_EQ(file->gaugings, gaugings) << All(file->refused) << GaugingsCsv(gaugings).toStdString();
    for (const LanguageChoice language : {LanguageChoice::Turkish, LanguageChoice::English}) {
      const QString tabbed = GaugingsTabbed(gaugings, language);
      const auto pasted = ReadGaugingsText(tabbed, Message::Verbatim(QStringLiteral("clipboard")));
      ASSERT_TRUE(pasted) << tabbed.toStdString();
      ASSERT_EQ(pasted->gaugings, gaugings) << All(pasted->refused) << tabbed.toStdString();
    }
  }
  const QByteArray formula = GaugingsCsv({{.dischargeM3s = 1, .remark = QStringLiteral("=HYPERLINK(1)")}});
  EXPECT_TRUE(formula.contains("'=HYPERLINK")) << "no spreadsheet runs it";
}

}  // namespace
}  // namespace vesk
