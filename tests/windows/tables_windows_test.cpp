// Form5 and Form2 through the operator's events.
#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "shell/folder_lists.h"
#include "tables/form2.h"
#include "tables/form5.h"
#include "tables/recording_spreadsheet.h"
#include "windows/frame_double.h"

namespace vesk {
namespace {

void Press(QListWidget& list, int row, bool twice = false) {
  // As on a desktop that opens entries by a single click: the windows wait for the second one all the same.
  list.setStyleSheet(QStringLiteral("QListWidget { activate-on-singleclick: 1 }"));
  const QPoint at = list.visualItemRect(list.item(row)).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
  if (twice) QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
}

class TableWindow : public testing::Test {
 protected:
  void Touch(std::initializer_list<const char*> names) {
    for (const char* name : names) EXPECT_TRUE(QFile(Data(name)).open(QIODevice::WriteOnly)) << name;
  }
  QString Data(const char* name = "") { return frame_.Run().dataDirectory + QLatin1String(name); }
  template <class Control>
  Control& Find(QWidget& window, const char* name) {
    return *window.findChild<Control*>(QLatin1String(name));
  }

  test::FrameDouble frame_;
};

class Form5Test : public TableWindow {
 protected:
  Form5& OpenIn(const QString& folder) {
    EXPECT_TRUE(QDir(Data()).mkpath(QStringLiteral("curves/old")));
    Touch({"curves/E1.dat", "curves/e10.DAT", "curves/F1.dat", "curves/E1.dat.bak", "curves/old/E9.dat"});
    EXPECT_TRUE(frame_.Run().settings.WriteSetting(QStringLiteral("Genel"),
                                                   QStringLiteral("AnahtarDirectory"), folder));
    auto* form = new Form5(frame_);
    QObject::connect(form, &Form5::CurveChosen, form, [this](const QString& path) { chosen_ += path; });
    frame_.ShowChild(form);
    return *form;
  }
  QString Stored() {
    return frame_.Run().settings.ReadSetting(QStringLiteral("Genel"), QStringLiteral("AnahtarDirectory"));
  }

  QStringList chosen_;
};

TEST_F(Form5Test, FilesAreChosenByOkDoubleClickAndReturn) {
  for (const char* by : {"ok", "double click", "return"}) {
    Form5& form = OpenIn(Data("curves/"));
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Anahtar eğrisinin seçimi"));
    auto& files = Find<QListWidget>(form, "File1");
    auto& ok = Find<QPushButton>(form, "Command2");
    EXPECT_FALSE(ok.isEnabled());
    ASSERT_EQ(files.count(), 2);
    chosen_.clear();
    Press(files, 1, *by == 'd');
    EXPECT_EQ(chosen_.size(), *by == 'd' ? 1 : 0);
    if (*by == 'o') QTest::mouseClick(&ok, Qt::LeftButton);
    if (*by == 'r') QTest::keyClick(&files, Qt::Key_Return);
    EXPECT_EQ(chosen_, QStringList(Data("curves/e10.DAT")));
    EXPECT_EQ(frame_.Child(QStringLiteral("Form5")), nullptr);
    EXPECT_EQ(Stored(), Data("curves"));
  }
}

TEST_F(Form5Test, APressShowsAFoldersFilesAndADoubleClickOpensIt) {
  for (const bool opened : {false, true}) {
    Form5& form = OpenIn(Data("curves"));
    auto& folders = Find<DirList>(form, "Dir1");
    Press(folders, folders.count() - 1, opened);
    Press(Find<QListWidget>(form, "File1"), 0, true);
    EXPECT_EQ(chosen_.last(), Data("curves/old/E9.dat"));
    EXPECT_EQ(Stored(), Data(opened ? "curves/old" : "curves"));
  }
}

TEST_F(Form5Test, CancelGivesAnEmptyPathAndAMissingFolderOpensAtHome) {
  Form5& form = OpenIn(QStringLiteral("/no/such/folder"));
  EXPECT_EQ(Find<DirList>(form, "Dir1").Path(), QDir::cleanPath(QDir::homePath()));
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_EQ(chosen_, QStringList(QString()));
  EXPECT_EQ(Stored(), QStringLiteral("/no/such/folder"));
}

class Form2Test : public TableWindow {
 protected:
  void SetUp() override {
    frame_.office = &office_;
    Touch({"tablo-12345(2011).XLS", "Tablo-12345(2012).xls", "Tablo-12345(2012).xlsx"});
    form_->trash = [](const QString&) { return false; };
    frame_.ShowChild(form_);
  }
  QListWidget& Files() { return Find<QListWidget>(*form_, "File3"); }
  QString Message() { return Find<QLabel>(*form_, "Message").text(); }

  test::RecordingSpreadsheet office_;
  Form2* form_ = new Form2(frame_);
};

TEST_F(Form2Test, OpensTheChosenWorkbook) {
  auto& open = Find<QPushButton>(*form_, "Command1");
  QTest::mouseClick(&open, Qt::LeftButton);
  EXPECT_EQ(Message(), QStringLiteral("Önce listeden bir dosya seçiniz."));
  office_.failing = {QStringLiteral("open")};
  Press(Files(), 1, true);
  EXPECT_EQ(Message(), QStringLiteral("Refused: %1: open").arg(Data("Tablo-12345(2012).xls")));
  office_.failing.clear();
  office_.steps.clear();
  Press(Files(), 1);
  EXPECT_TRUE(office_.steps.isEmpty());
  QTest::keyClick(&Files(), Qt::Key_Return);
  EXPECT_EQ(office_.steps,
            QStringList({QStringLiteral("open ") + Data("Tablo-12345(2012).xls"), QStringLiteral("show"),
                         QStringLiteral("window"), QStringLiteral("select Gunluk")}));
  EXPECT_TRUE(Message().isEmpty());
}

TEST_F(Form2Test, AWorkbookThatWentAwayIsToldInTheOperatorsLanguageOnly) {
  ASSERT_TRUE(QFile::remove(Data("Tablo-12345(2012).xls")));  // after it was listed
  Press(Files(), 1, true);
  EXPECT_EQ(Message(), QStringLiteral("Tablo dosyası açılamadı: %1: Böyle bir dosya veya dizin yok")
                           .arg(Data("Tablo-12345(2012).xls")));
  frame_.Run().language.FillEnglish();
  QTest::keyClick(&Files(), Qt::Key_Return);
  EXPECT_EQ(Message(), QStringLiteral("The workbook could not be opened: %1: No such file or directory")
                           .arg(Data("Tablo-12345(2012).xls")));
  EXPECT_TRUE(office_.steps.isEmpty()) << "the office never saw it";
}

TEST_F(Form2Test, APressThatBringsTheWindowBackChoosesTheEntryUnderIt) {
  for (int i = 10; i < 99; ++i) Touch({qPrintable(QStringLiteral("A%1.xls").arg(i))});
  QWidget other;
  other.show();
  QApplication::setActiveWindow(&other);
  QApplication::setActiveWindow(form_);
  Press(Files(), 0);
  QListWidgetItem* aimedAt = Files().item(60);
  Files().scrollToItem(aimedAt);
  const QPoint at = Files().visualItemRect(aimedAt).center();
  QApplication::setActiveWindow(&other);
  QApplication::setActiveWindow(form_);
  QTest::mouseClick(Files().viewport(), Qt::LeftButton, {}, at);
  EXPECT_EQ(Files().selectedItems().value(0)->text(), QStringLiteral("A70.xls"));
}

TEST_F(Form2Test, DeleteTakesAwayTheChosenOneOfTheDirectoryAsItIsNow) {
  QTest::keyClick(&Files(), Qt::Key_Delete);
  EXPECT_EQ(Files().count(), 2) << "nothing chosen";
  Press(Files(), 0);
  QTest::keyClick(&Files(), Qt::Key_Delete);
  ASSERT_EQ(Files().count(), 1);
  EXPECT_EQ(Files().item(0)->text(), QStringLiteral("Tablo-12345(2012).xls"));
  EXPECT_FALSE(QFile::exists(Data("tablo-12345(2011).XLS")));
  EXPECT_EQ(Message(), QStringLiteral("Çöp kutusu yok; kalıcı olarak silindi: tablo-12345(2011).XLS"));

  QWidget other;
  other.show();
  QApplication::setActiveWindow(&other);
  ASSERT_TRUE(QDir(Data()).mkdir(QStringLiteral("second")));
  frame_.Run().dataDirectory += QStringLiteral("second/");
  Touch({"Tablo-1(2013).xls"});
  QApplication::setActiveWindow(form_);
  EXPECT_EQ(Find<QLabel>(*form_, "Label1").text(), Data());
  ASSERT_EQ(Files().count(), 1);
  EXPECT_EQ(Files().item(0)->text(), QStringLiteral("Tablo-1(2013).xls"));
}

}  // namespace
}  // namespace vesk
