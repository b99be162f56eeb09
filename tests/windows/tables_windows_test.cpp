// Form5 and Form2 through the operator's events.
#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "tables/folder_lists.h"
#include "tables/form2.h"
#include "tables/form5.h"
#include "tables/recording_spreadsheet.h"
#include "windows/frame_double.h"

namespace vesk {
namespace {

template <class Control>
Control* Find(QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QLatin1String(name));
  EXPECT_NE(control, nullptr) << name;
  return control;
}

void Touch(const QString& path) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

void Press(QListWidget& list, int row, bool twice = false) {
  const QPoint at = list.visualItemRect(list.item(row)).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
  if (twice) QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
}

/// As on a desktop that opens entries by a single click.
void OpenBySingleClick(QWidget& list) {
  list.setStyleSheet(QStringLiteral("QListWidget { activate-on-singleclick: 1 }"));
}

class Form5Test : public testing::Test {
 protected:
  void OpenIn(const QString& folder, LanguageChoice language = LanguageChoice::Turkish) {
    frame_ = std::make_unique<test::FrameDouble>(language);
    RunValues& run = frame_->Run();
    curves_ = run.dataDirectory + QStringLiteral("curves");
    ASSERT_TRUE(QDir().mkpath(curves_ + QStringLiteral("/old")));
    Touch(curves_ + QStringLiteral("/E1.dat"));
    Touch(curves_ + QStringLiteral("/old/E9.dat"));
    ASSERT_TRUE(run.settings.WriteSetting(QStringLiteral("Genel"), QStringLiteral("AnahtarDirectory"),
                                          folder == QLatin1String("curves") ? curves_ : folder));
    form_ = new Form5(*frame_);
    spy_ = std::make_unique<QSignalSpy>(form_, &Form5::CurveChosen);
    frame_->ShowChild(form_);
  }
  QString Stored() {
    return frame_->Run().settings.ReadSetting(QStringLiteral("Genel"), QStringLiteral("AnahtarDirectory"));
  }

  std::unique_ptr<test::FrameDouble> frame_;
  QString curves_;
  Form5* form_ = nullptr;
  std::unique_ptr<QSignalSpy> spy_;
};

TEST_F(Form5Test, OkHandsOverThePathAndKeepsTheFolder) {
  OpenIn(QStringLiteral("curves"));
  EXPECT_EQ(form_->windowTitle(), QStringLiteral("Anahtar eğrisinin seçimi"));
  auto* files = Find<QListWidget>(*form_, "File1");
  auto* ok = Find<QPushButton>(*form_, "Command2");
  EXPECT_FALSE(ok->isEnabled());
  ASSERT_EQ(files->count(), 1);
  Press(*files, 0);
  EXPECT_TRUE(ok->isEnabled());
  QTest::mouseClick(ok, Qt::LeftButton);
  ASSERT_EQ(spy_->count(), 1);
  EXPECT_EQ(spy_->first().first().toString(), curves_ + QStringLiteral("/E1.dat"));
  EXPECT_EQ(frame_->Child(QStringLiteral("Form5")), nullptr);
  EXPECT_EQ(Stored(), curves_);
}

TEST_F(Form5Test, APressShowsAFoldersFilesAndADoubleClickOpensIt) {
  OpenIn(QStringLiteral("curves"), LanguageChoice::English);
  EXPECT_EQ(form_->windowTitle(), QStringLiteral("Selection of rating curve files"));
  auto* folders = Find<DirList>(*form_, "Dir1");
  auto* files = Find<QListWidget>(*form_, "File1");
  const int last = folders->count() - 1;
  ASSERT_EQ(folders->item(last)->text().trimmed(), QStringLiteral("old"));
  Press(*folders, last);
  ASSERT_EQ(files->count(), 1);
  EXPECT_EQ(files->item(0)->text(), QStringLiteral("E9.dat"));
  EXPECT_EQ(folders->Path(), curves_);  // listed, not yet opened
  Press(*folders, last, true);
  EXPECT_EQ(folders->Path(), curves_ + QStringLiteral("/old"));
  Press(*files, 0, true);
  ASSERT_EQ(spy_->count(), 1);
  EXPECT_EQ(spy_->first().first().toString(), curves_ + QStringLiteral("/old/E9.dat"));
}

TEST_F(Form5Test, OneClickChoosesAndReturnAccepts) {
  OpenIn(QStringLiteral("curves"));
  auto* files = Find<QListWidget>(*form_, "File1");
  OpenBySingleClick(*files);
  Press(*files, 0);
  EXPECT_EQ(spy_->count(), 0);
  QTest::keyClick(files, Qt::Key_Return);
  EXPECT_EQ(spy_->count(), 1);
}

TEST_F(Form5Test, CancelGivesAnEmptyPathAndAMissingFolderOpensAtHome) {
  OpenIn(QStringLiteral("/no/such/folder"));
  EXPECT_EQ(Find<DirList>(*form_, "Dir1")->Path(), QDir::cleanPath(QDir::homePath()));
  QTest::keyClick(form_, Qt::Key_Escape);
  ASSERT_EQ(spy_->count(), 1);
  EXPECT_TRUE(spy_->first().first().toString().isEmpty());
  EXPECT_EQ(Stored(), QStringLiteral("/no/such/folder"));
}

class Form2Test : public testing::Test {
 protected:
  void Open(LanguageChoice language = LanguageChoice::Turkish) {
    frame_ = std::make_unique<test::FrameDouble>(language);
    frame_->office = &office_;
    data_ = frame_->Run().dataDirectory;
    Touch(data_ + QStringLiteral("Tablo-12345(2011).xls"));
    Touch(data_ + QStringLiteral("Tablo-12345(2012).xls"));
    form_ = new Form2(*frame_);
    form_->trash = [](const QString&) { return false; };
    frame_->ShowChild(form_);
    files_ = Find<QListWidget>(*form_, "File3");
  }
  QString Message() { return Find<QLabel>(*form_, "Message")->text(); }

  test::RecordingSpreadsheet office_;
  std::unique_ptr<test::FrameDouble> frame_;
  QString data_;
  Form2* form_ = nullptr;
  QListWidget* files_ = nullptr;
};

TEST_F(Form2Test, OpensTheChosenWorkbook) {
  Open();
  EXPECT_EQ(form_->windowTitle(), QStringLiteral("Excel rapor dosyasını aç"));
  EXPECT_EQ(Find<QLabel>(*form_, "Label1")->text(), data_);
  QTest::mouseClick(Find<QPushButton>(*form_, "Command1"), Qt::LeftButton);
  EXPECT_FALSE(Message().isEmpty());  // nothing chosen yet
  EXPECT_TRUE(office_.steps.isEmpty());
  Press(*files_, 1, true);
  ASSERT_FALSE(office_.steps.isEmpty());
  EXPECT_EQ(office_.steps.first(), QStringLiteral("open ") + data_ + QStringLiteral("Tablo-12345(2012).xls"));
  EXPECT_EQ(office_.steps.last(), QStringLiteral("select Gunluk"));
  EXPECT_TRUE(Message().isEmpty());
}

TEST_F(Form2Test, OneClickChoosesAndReturnOpens) {
  Open();
  OpenBySingleClick(*files_);
  Press(*files_, 1);
  EXPECT_TRUE(office_.steps.isEmpty());
  QTest::keyClick(files_, Qt::Key_Return);
  EXPECT_EQ(office_.steps.count(QStringLiteral("select Gunluk")), 1);
}

TEST_F(Form2Test, TellsWhenAWorkbookCannotBeOpened) {
  Open(LanguageChoice::English);
  Press(*files_, 0);
  office_.failing = {QStringLiteral("open ") + data_ + QStringLiteral("Tablo-12345(2011).xls")};
  QTest::mouseClick(Find<QPushButton>(*form_, "Command1"), Qt::LeftButton);
  EXPECT_TRUE(Message().startsWith(QStringLiteral("The file could not be opened.")));
}

TEST_F(Form2Test, DeleteTakesTheChosenWorkbookAwayAtOnce) {
  Open();
  QTest::keyClick(files_, Qt::Key_Delete);
  EXPECT_EQ(files_->count(), 2);  // nothing chosen
  Press(*files_, 0);
  QTest::keyClick(files_, Qt::Key_Delete);
  ASSERT_EQ(files_->count(), 1);
  EXPECT_EQ(files_->item(0)->text(), QStringLiteral("Tablo-12345(2012).xls"));
  EXPECT_FALSE(QFile::exists(data_ + QStringLiteral("Tablo-12345(2011).xls")));
  QTest::mouseClick(Find<QPushButton>(*form_, "CmdVazgec"), Qt::LeftButton);
  EXPECT_EQ(frame_->Child(QStringLiteral("Form2")), nullptr);
}

}  // namespace
}  // namespace vesk
