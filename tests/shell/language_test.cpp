#include "shell/language.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

TEST(Language, BothTablesNameTheSameEntriesApartFromOne) {
  Language turkish;
  turkish.FillTurkish();
  Language english;
  english.FillEnglish();
  int filled = 0;
  for (int i = 0; i < kCaptionCount; ++i) {
    const auto caption = static_cast<Caption>(i);
    const bool inBoth = !turkish.Text(caption).isEmpty() && !english.Text(caption).isEmpty();
    const bool inNone = turkish.Text(caption).isEmpty() && english.Text(caption).isEmpty();
    EXPECT_TRUE(inBoth || inNone || caption == Caption::FirstRecordTime) << i;
    if (inBoth) ++filled;
  }
  EXPECT_EQ(filled, 128);
}

TEST(Language, TextsKeepTheirBlanksAndLineEnds) {
  const struct {
    int number;
    const char* turkish;
    const char* english;
  } cases[] = {
      {99, " Son Kayıt Zamanı................:", " Date of Last Record.............:"},
      {67, "Bölge Kodu", "Area Code "},
      {13, "    Tarih            Zaman              Seviye,cm", "    Date         Time         Level(cm)"},
      {18, "Tamam", "Ok."},
      {19, "Çık", "Exit"},
      {21, "Anlık değerler tabloya dahil edilmeyecek.", "Don't write instantaneous values"},
      {204, "               DİL / LANGUAGE", "               LANGUAGE / DİL"},
      {210, "EXCEL  FORMATINDA  SEVİYE-&DEBİ  TABLOSU  OLUŞTUR",
       "WATER LEVEL AND DISCARGE TABLE IN EXCEL FORMAT"},
  };
  Language turkish;
  turkish.FillTurkish();
  Language english;
  english.FillEnglish();
  for (const auto& c : cases) {
    EXPECT_EQ(turkish.Text(static_cast<Caption>(c.number)).toStdString(), c.turkish);
    EXPECT_EQ(english.Text(static_cast<Caption>(c.number)).toStdString(), c.english);
  }
  EXPECT_EQ(turkish.Message(3),
            QStringLiteral(" Dosyası VER4'den farklı...\r Bu nedenle, bu dosya atlanacak.."));
  EXPECT_EQ(english.Message(1),
            QStringLiteral("passing of the day numbers after last resetting logger should be;\r "));
}

TEST(Language, TurkishLeavesTheEntryThatItLacksAsItWas) {
  Language language;
  language.FillEnglish();
  language.FillTurkish();
  EXPECT_EQ(language.Text(Caption::FirstRecordTime), QStringLiteral("Time of First Record"));
  EXPECT_EQ(language.Text(Caption::Print), QStringLiteral("Yazdır"));
}

TEST(Language, TheWorkModeLosesTheFirstAccessKeyMarkOnly) {
  EXPECT_EQ(WithoutAccessKey(QStringLiteral("SEVİYE-&DEBİ &X")), QStringLiteral("SEVİYE-DEBİ &X"));
  EXPECT_EQ(WithoutAccessKey(QLatin1Char('&') + QString(250, QLatin1Char('x'))).size(), 200);
}

}  // namespace
}  // namespace vesk
