#include "shell/language.h"

#include <gtest/gtest.h>

#include "shell/error_texts.h"

namespace vesk {
namespace {

TEST(Language, ChoiceTextsAreComparedExactly) {
  const struct {
    const char* text;
    LanguageChoice choice;
  } cases[] = {{"TURKCE", LanguageChoice::Turkish},   {"ENGLISH", LanguageChoice::English},
               {"English", LanguageChoice::Unknown},  {"TÜRKÇE", LanguageChoice::Unknown},
               {" ENGLISH", LanguageChoice::Unknown}, {"", LanguageChoice::Unknown}};
  for (const auto& c : cases) {
    const QString text = QString::fromUtf8(c.text);
    EXPECT_EQ(LanguageChoiceOf(text), c.choice) << c.text;
    if (c.choice != LanguageChoice::Unknown) {
      EXPECT_EQ(LanguageSlotText(c.choice), text);
    }
  }
}

TEST(Language, EveryTextIsEmptyUntilALanguageIsChosen) {
  const Language language;
  for (int i = 0; i < kCaptionCount; ++i) {
    EXPECT_TRUE(language.Text(static_cast<Caption>(i)).isEmpty()) << i;
  }
  EXPECT_TRUE(language.Message(1).isEmpty());
  EXPECT_TRUE(language.templateName.isEmpty());
  EXPECT_EQ(Either(language, QStringLiteral("tr"), QStringLiteral("en")), QStringLiteral("tr"));
}

TEST(Language, BothTablesNameTheSameEntriesApartFromOne) {
  Language turkish;
  turkish.FillTurkish();
  Language english;
  english.FillEnglish();
  int filled = 0;
  for (int i = 0; i < kCaptionCount; ++i) {
    const auto caption = static_cast<Caption>(i);
    if (caption == Caption::FirstRecordTime) continue;
    EXPECT_EQ(turkish.Text(caption).isEmpty(), english.Text(caption).isEmpty()) << i;
    if (!english.Text(caption).isEmpty()) ++filled;
  }
  EXPECT_EQ(filled, 128);
  for (int i = 1; i <= 7; ++i) {
    EXPECT_FALSE(turkish.Message(i).isEmpty());
    EXPECT_FALSE(english.Message(i).isEmpty());
  }
}

TEST(Language, TextsKeepTheirBlanksAndLineEnds) {
  const struct {
    Caption caption;
    const char* turkish;
    const char* english;
  } cases[] = {
      {Caption::LabelStationNo, " İstasyon No.....................:", " Station Number..................:"},
      {Caption::LabelLastRecordTime,
       " Son Kayıt Zamanı................:", " Date of Last Record.............:"},
      {Caption::AreaCode, "Bölge Kodu", "Area Code "},
      {Caption::DateTimeLevelHeadingCopy, "    Tarih            Zaman              Seviye,cm",
       "    Date         Time         Level(cm)"},
      {Caption::OkCopy, "Tamam", "Ok."},
      {Caption::ExitCopy, "Çık", "Exit"},
      {Caption::OmitInstantaneousValuesCopy, "Anlık değerler tabloya dahil edilmeyecek.",
       "Don't write instantaneous values"},
      {Caption::MenuData, "               DATA/İLETİŞİM", "               DATA/COMMUNICATION"},
      {Caption::MenuLanguage, "               DİL / LANGUAGE", "               LANGUAGE / DİL"},
      {Caption::OpenExcelFiles, "ÖNCEDEN OLUŞTURULMUŞ EXCEL TABLOLARINI &AÇ", "OPEN EXCEL FILES"},
      {Caption::LevelAndDischargeTable, "EXCEL  FORMATINDA  SEVİYE-&DEBİ  TABLOSU  OLUŞTUR",
       "WATER LEVEL AND DISCARGE TABLE IN EXCEL FORMAT"},
  };
  Language turkish;
  turkish.FillTurkish();
  Language english;
  english.FillEnglish();
  for (const auto& c : cases) {
    EXPECT_EQ(turkish.Text(c.caption).toStdString(), c.turkish);
    EXPECT_EQ(english.Text(c.caption).toStdString(), c.english);
  }
  EXPECT_EQ(turkish.Message(3).toStdString(),
            " Dosyası VER4'den farklı...\r Bu nedenle, bu dosya atlanacak..");
  EXPECT_EQ(english.Message(1).toStdString(),
            "passing of the day numbers after last resetting logger should be;\r ");
  EXPECT_EQ(english.templateName, QStringLiteral("Sablon_E.xls"));
  EXPECT_EQ(turkish.addWord, QStringLiteral("Ekle"));
}

TEST(Language, TurkishLeavesTheEntryThatItLacksAsItWas) {
  Language language;
  language.FillTurkish();
  EXPECT_TRUE(language.Text(Caption::FirstRecordTime).isEmpty());
  language.FillEnglish();
  language.FillTurkish();
  EXPECT_EQ(language.Text(Caption::FirstRecordTime), QStringLiteral("Time of First Record"));
  EXPECT_EQ(language.Text(Caption::Print), QStringLiteral("Yazdır"));
}

TEST(Language, TheWorkModeLosesTheFirstAccessKeyMarkOnly) {
  const struct {
    QString caption;
    QString mode;
  } cases[] = {{QStringLiteral("OPEN DATA FILE"), QStringLiteral("OPEN DATA FILE")},
               {QStringLiteral("SEVİYE-&DEBİ &X"), QStringLiteral("SEVİYE-DEBİ &X")},
               {QStringLiteral("&"), {}},
               {QLatin1Char('&') + QString(250, QLatin1Char('x')), QString(200, QLatin1Char('x'))}};
  for (const auto& c : cases) EXPECT_EQ(WithoutAccessKey(c.caption), c.mode) << c.caption.toStdString();
}

TEST(ErrorText, SpeaksTheOperatorsLanguageWhereItKnowsTheWords) {
  Language language;
  const Error error{QStringLiteral("The settings file could not be written"), QStringLiteral("/x/vesk4.ini"),
                    QStringLiteral("a reason of the system")};
  language.FillEnglish();
  EXPECT_EQ(ErrorText(error, language), error.Text());
  language.FillTurkish();
  EXPECT_EQ(ErrorText(error, language),
            QStringLiteral("Ayar dosyası yazılamadı: /x/vesk4.ini: a reason of the system"));
}

}  // namespace
}  // namespace vesk
