// Choosing and loading in the selection window.
#include <gmock/gmock.h>

#include <QDir>
#include <QTableWidget>

#include "shell/folder_lists.h"
#include "windows/review_fixture.h"

namespace vesk::test {
namespace {

class Choosing : public ReviewWindowTest {};

class ChoosingInEnglish : public ReviewWindowTest {
 protected:
  ChoosingInEnglish() : ReviewWindowTest(LanguageChoice::English) {}
};

QString Texts(const char* text) {
  return QString::fromUtf8(text);
}

TEST_F(Choosing, OpensWithStationsListedFilesRenamedAndMenusOff) {
  Open();
  EXPECT_EQ(form_->windowTitle(), Texts("DATA DOSYASINI OKU"));
  EXPECT_FALSE(frame_.menusEnabled);
  EXPECT_EQ(Entries("ListIst"), QStringList({Texts("001-12345"), Texts("001-20000")}));
  EXPECT_EQ(Find<QLineEdit>("Text1").text(), Texts("2"));
  EXPECT_TRUE(Entries("ListOrjDos").isEmpty());
  EXPECT_TRUE(QFile::exists(Data() + Texts("001-12345-010203=0091.txt")));
  EXPECT_FALSE(Button("CmdTamam").isEnabled());
  auto& setup = Find<QTableWidget>("VS0");
  EXPECT_EQ(setup.item(14, 0)->text(), Texts("Kapsadığı Su Yılları"));
  EXPECT_TRUE(setup.item(0, 1)->text().isEmpty());
}

TEST_F(Choosing, TwoWaterYearsAreLoadedTogether) {
  Open();
  Click("ListIst", 0);
  EXPECT_EQ(Entries("ListSuYili"), QStringList({Texts("2010 "), Texts("2011 ")}));
  Click("ListSuYili", 1);
  EXPECT_EQ(Find<QLabel>("Label8").text(), Texts("Dosyalar:"));
  EXPECT_EQ(Entries("ListOrjDos"),
            QStringList({Texts("001-12345-010203=0091.txt"), Texts("001-12345-010204=0010.txt<")}));
  Click("ListSuYili", 0, Qt::ControlModifier);
  EXPECT_EQ(Button("CmdTamam").text(), Texts("Su Yılını Oku"));
  Push("CmdTamam");
  EXPECT_EQ(Readings(), (92 + 11) * 26);
  EXPECT_EQ(Cell(1, GridColumn::Date), Texts("01/11/2009"));
  EXPECT_EQ(Cell(Readings() + 1, GridColumn::Date), QString());
  EXPECT_EQ(Find<QLabel>("LoadedLabel").text(), Texts("001-12345  ·  tablo ve grafik: 2011  ·  2010, 2011"));
  EXPECT_EQ(Entries("ListOrjDos").last(), Texts("001-12345-010204=0010.txt"));
  EXPECT_TRUE(Find<QTableWidget>("VS_Dosyalar").isVisible());
  EXPECT_TRUE(Button("Command3").isEnabled());
  EXPECT_FALSE(Button("Command10").isEnabled());
  EXPECT_FALSE(Find<QLineEdit>("Text8").isEnabled());
  EXPECT_EQ(Find<QLineEdit>("Text5").text(), Texts("Toplam 0 adet"));
  EXPECT_EQ(Find<QTableWidget>("VS0").item(11, 1)->text(), Texts("--"));
  EXPECT_EQ(Grid().CurrentRow(), 1);
  EXPECT_EQ(Grid().currentIndex().column(), 2);
}

TEST_F(Choosing, ATableIsOnlyOfferedForWhatTheListsShow) {
  const QString other = Data() + Texts("other");
  ASSERT_TRUE(QDir().mkpath(other));
  for (const char* name : {"001-12345-010203.txt", "001-12345-010204.txt"}) {
    ASSERT_TRUE(QFile::copy(Data() + Texts(name), other + Texts("/") + Texts(name)));
  }
  Open();
  LoadWaterYear();
  EXPECT_TRUE(Button("Command3").isEnabled());
  EXPECT_EQ(Find<QLineEdit>("Text8").text(), Texts("30/09/2010 23:59")) << "the year's end, not the file's";
  Click("ListSuYili", 1);
  EXPECT_FALSE(Button("Command3").isEnabled());
  EXPECT_FALSE(Button("CmdGrf").isEnabled());
  Click("ListIst", 1);
  Click("ListSuYili", 0);
  EXPECT_EQ(Chosen("ListSuYili"), QStringList({Texts("2010 ")})) << "the same year of another station";
  EXPECT_FALSE(Button("Command3").isEnabled());
  EXPECT_FALSE(Button("CmdGrf").isEnabled());
  Click("Dir1", Find<DirList>("Dir1").count() - 1);
  Click("ListIst", 0);
  Click("ListSuYili", 0);
  EXPECT_FALSE(Button("Command3").isEnabled());
  EXPECT_FALSE(Button("CmdGrf").isEnabled());
  Click("ListOrjDos", 0);
  Push("CmdTamam");
  EXPECT_TRUE(Button("CmdGrf").isEnabled());
  Click("ListOrjDos", 1);
  EXPECT_FALSE(Button("CmdGrf").isEnabled());
}

TEST_F(Choosing, TheKeyboardGoesFromTheStationToItsYearAndTheLoadIsSummedUp) {
  Open();
  auto& stations = Find<QListWidget>("ListIst");
  ASSERT_TRUE(stations.hasFocus());
  stations.setCurrentRow(1);
  QTest::keyClick(&stations, Qt::Key_Return);
  auto& years = Find<QListWidget>("ListSuYili");
  EXPECT_TRUE(years.hasFocus());
  EXPECT_EQ(Chosen("ListSuYili"), QStringList({Texts("2010 ")})) << "there is no other";
  stations.setCurrentRow(0);
  QTest::keyClick(&stations, Qt::Key_Return);
  EXPECT_TRUE(Chosen("ListSuYili").isEmpty());
  QTest::keyClick(&years, Qt::Key_Down);
  EXPECT_EQ(Chosen("ListSuYili"), QStringList({Texts("2010 ")}));
  QTest::keyClick(&years, Qt::Key_Return);
  EXPECT_EQ(Find<QLabel>("StatusLine").text(), Texts("98 gün var, 267 gün eksik"));
}

TEST_F(Choosing, ARawFileShowsItsHeaderAndIsLoadedByADoubleClick) {
  Open();
  Click("ListIst", 0);
  Click("ListSuYili", 0);
  Click("ListOrjDos", 1);
  EXPECT_TRUE(Chosen("ListSuYili").isEmpty());
  EXPECT_EQ(Find<QLabel>("Label8").text(), Texts("Dosyalar"));
  EXPECT_EQ(Button("CmdTamam").text(), Texts("Dosyayı Oku"));
  EXPECT_EQ(Find<QTableWidget>("VS0").item(9, 1)->text(), Texts("05/10/2010 23:59"));
  EXPECT_TRUE(Find<QLineEdit>("Text7").isVisible());
  auto& files = Find<QListWidget>("ListOrjDos");
  QTest::mouseDClick(files.viewport(), Qt::LeftButton, {}, files.visualItemRect(files.item(1)).center());
  EXPECT_EQ(Readings(), 11 * 26);
  EXPECT_EQ(Cell(1, GridColumn::Label), Texts("01-ort"));
  EXPECT_EQ(Find<QLineEdit>("Text8").text(), Texts("05/10/2010 23:59"));
  EXPECT_TRUE(Button("Command10").isEnabled());
  EXPECT_FALSE(Button("Command3").isEnabled());
  EXPECT_FALSE(Find<QTableWidget>("VS_Dosyalar").isVisible());
}

TEST_F(Choosing, AMissingRegisterIsToldOnce) {
  const auto told = [this] { return Entries("ListMsj").filter(frame_.Run().stationDatabasePath).size(); };
  Open();
  Click("ListIst", 0);
  EXPECT_EQ(told(), 1);
  LoadWaterYear(1);
  EXPECT_EQ(told(), 0);
}

TEST_F(Choosing, ALoadThatFailsSaysSoAndLeavesTheWindowAsItWas) {
  Open();
  LoadWaterYear();
  const QString label = Find<QLabel>("LoadedLabel").text();
  ASSERT_TRUE(QDir().mkpath(Data() + Texts("001-12345-Degisiklikler2011.txt")));  // cannot be read as a file
  Click("ListSuYili", 1, Qt::ControlModifier);
  Push("CmdTamam");
  ASSERT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(operator_.told.first().startsWith(Texts("Hiçbir veri yüklenmedi; ")));
  EXPECT_TRUE(operator_.told.first().contains(Texts("Degisiklikler2011.txt: bu bir dosya değil")));
  EXPECT_EQ(Find<QLabel>("LoadedLabel").text(), label);
  EXPECT_EQ(Readings(), (92 + 6) * 26);
  EXPECT_FALSE(Button("Command3").isEnabled());
  Click("ListSuYili", 0);
  EXPECT_TRUE(Button("Command3").isEnabled());
}

TEST_F(Choosing, ADirectoryPressListsThatFolderAndKeepsItInTheSettings) {
  const QString other = Data() + Texts("other");
  ASSERT_TRUE(QDir().mkpath(other));
  Open();
  auto& folders = Find<DirList>("Dir1");
  const int row = folders.count() - 1;
  ASSERT_EQ(folders.item(row)->text().trimmed(), Texts("other"));
  Click("Dir1", row);
  EXPECT_TRUE(Entries("ListIst").isEmpty());
  EXPECT_EQ(Find<QLineEdit>("Text1").text(), Texts("0"));
  EXPECT_EQ(frame_.dataDirectoryShown, other + Texts("/"));
  Push("CmdVazgec");
  EXPECT_EQ(form_, nullptr);
  EXPECT_TRUE(frame_.menusEnabled);
  EXPECT_EQ(frame_.Run().settings.ReadSetting(Texts("Genel"), Texts("DataDirectory")), other + Texts("/"));
  EXPECT_THAT(frame_.closeRequests, testing::ElementsAre(Texts("FormGraf")));
}

TEST_F(Choosing, AFolderThatCannotBeWrittenIsToldAndReadAllTheSame) {
  const QString blocked = Data() + Texts("001-20000-010203=0001.txt/inside");
  ASSERT_TRUE(QDir().mkpath(blocked));  // the new name is taken by a folder, so renaming fails for anyone
  Open();
  EXPECT_TRUE(Entries("ListMsj").join(QLatin1Char('\n')).contains(Texts("yazılamıyor")));
  LoadWaterYear(1);
  EXPECT_EQ(Readings(), 2 * 26);
}

TEST_F(Choosing, DeleteInTheWaterYearListStartsTheStationAfresh) {
  Open();
  Click("ListIst", 0);
  Click("ListSuYili", 1);
  QTest::keyClick(&Find<QListWidget>("ListSuYili"), Qt::Key_Delete);
  EXPECT_EQ(Entries("ListSuYili").size(), 2);
  EXPECT_TRUE(Chosen("ListSuYili").isEmpty());
  EXPECT_EQ(Find<QListWidget>("ListSuYili").currentRow(), 1);
  EXPECT_EQ(Button("CmdTamam").text(), Texts("..."));
}

TEST_F(Choosing, TabFollowsTheOperatorsWay) {
  Open();
  LoadWaterYear();
  Find<QWidget>("CmdVazgec").setFocus();
  QStringList way;
  for (int i = 0; i < 24; ++i) {
    way += QApplication::focusWidget()->objectName();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(way.join(QLatin1Char(' ')).toStdString(),
            "CmdVazgec CmdTamam SecimGoster AnahtarEgrisi HidrografGoster SifirdanBaslat VS1 KuralSecimi "
            "BulguListesi BulguKabul YilOnay SinirlarDugmesi Hidrograf AralikIslem AralikIlk AralikTam "
            "AralikOnizle "
            "AralikUygula DuzeltmeNedeni "
            "Command7 Command6 Text6 Command8 Command3");
}

TEST_F(Choosing, SizesAreKeptInASectionOfTheirOwn) {
  Open();
  form_->resize(1180, 640);
  Settle();
  form_->close();
  EXPECT_EQ(frame_.Run().settings.ReadSetting(Texts("FormSec"), Texts("Size")), Texts("1180,640"));
  Settle();
  Open();
  EXPECT_EQ(form_->size(), QSize(1180, 640));
}

TEST_F(Choosing, MultipleGraphsCollectUpToFourEntriesInsteadOfReadings) {
  for (int year = 2014; year <= 2018; ++year) {
    Write("30000", QByteArray::number(100000 + year).constData(), At(year, 2, 1), At(year, 2, 2));
  }
  Open(WorkMode::MultipleGraph);
  for (const char* hidden : {"Frame3", "ListMsj", "VS0"}) EXPECT_FALSE(Find<QWidget>(hidden).isVisible());
  EXPECT_TRUE(Find<QListWidget>("ListGraf").isVisible());
  EXPECT_FALSE(Find<QListWidget>("ListOrjDos").isEnabled());
  EXPECT_EQ(Button("CmdTamam").text(), Texts("Ekle"));
  EXPECT_FALSE(Button("CmdCiz").isEnabled());
  LoadWaterYear(1);
  Push("CmdTamam");
  EXPECT_EQ(Entries("ListGraf"), QStringList({Texts("001-20000/2010")}));  // once is enough
  Click("ListIst", 2);
  Click("ListSuYili", 0);
  Click("ListSuYili", 4, Qt::ShiftModifier);
  Push("CmdTamam");
  EXPECT_EQ(Entries("ListGraf").size(), 4);
  EXPECT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(Button("CmdCiz").isEnabled());
  Find<QListWidget>("ListGraf").setCurrentRow(0);
  QTest::keyClick(&Find<QListWidget>("ListGraf"), Qt::Key_Delete);
  EXPECT_EQ(Entries("ListGraf").size(), 3);
  EXPECT_EQ(Entries("ListGraf").front(), Texts("001-30000/2014"));
  Push("CmdListSil");
  EXPECT_TRUE(Entries("ListGraf").isEmpty());
}

TEST_F(Choosing, MessagesOfALoadAreInTheOperatorsLanguage) {
  const auto damage = [this](const char* name, const char* from, const char* to) {
    QFile raw(Data() + Texts(name));
    ASSERT_TRUE(raw.open(QIODevice::ReadWrite));
    const QByteArray content = raw.readAll().replace(from, to);
    ASSERT_TRUE(raw.seek(0));
    ASSERT_EQ(raw.write(content), content.size());
  };
  damage("001-20000-010203.txt", "1.03", "1x03");
  damage("001-20000-010203.txt", "01/03/2010  09:00", "41/03/2010  09:00");
  Write("12345", "010205", At(2010, 3, 1, 1), At(2010, 3, 3));
  damage("001-12345-010205.txt", "Version                   10", "Version                   12");
  Open();
  Click("ListIst", 0);
  EXPECT_EQ(Entries("ListMsj").front(),
            Texts("Version Hatasi: 001-12345-010205.txt, 3. satır: \"12\" sürümü okunamıyor; beklenen: "
                  "10, 11 veya 21"));
  LoadWaterYear(1);
  const QString line = Texts("001-20000-010203=0001.txt, %1. satır yüklenmedi; beklenen: %2");
  EXPECT_EQ(Entries("ListMsj"),
            QStringList({line.arg(19).arg(Texts("23-27. sütunlarda metre olarak seviye")),
                         line.arg(24).arg(Texts("1-10. sütunlarda gg/aa/yyyy biçiminde tarih"))}));
}

TEST_F(ChoosingInEnglish, CaptionsAreEnglishWhereTheyAreTranslated) {
  Open();
  EXPECT_EQ(form_->windowTitle(), Texts("OPEN DATA FILE"));
  EXPECT_EQ(Find<QLabel>("Label2").text(), Texts("Number:"));
  LoadWaterYear();
  EXPECT_EQ(Button("CmdTamam").text(), Texts("Su Yılını Oku"));  // the same in both languages
  EXPECT_EQ(Button("Command3").text(), Texts("Make Table"));
  EXPECT_FALSE(Find<QLineEdit>("Text7").isVisible());
  Click("ListOrjDos", 0);
  EXPECT_EQ(Button("CmdTamam").text(), Texts("Read Data File"));
  EXPECT_FALSE(Find<QLineEdit>("Text7").isVisible());
}

}  // namespace
}  // namespace vesk::test
