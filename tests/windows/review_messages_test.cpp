// Every text that loading and tidying can put into the message list has its Turkish wording.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include "selection/message_texts.h"
#include "shell/language.h"

namespace vesk::test {
namespace {

/// The English sentences among a source file's texts, with figures in the places of %1, %2 ...
QStringList SentencesOf(QString source) {
  static const QRegularExpression comment(QStringLiteral("//[^\n]*"));
  static const QRegularExpression broken(QStringLiteral("(?<!\\\\)\"\\s+\""));  // one text over several lines
  static const QRegularExpression text(QStringLiteral("(?<![u\\\\])\"((?:[^\"\\\\\n]|\\\\.)*)\""));
  static const QRegularExpression words(QStringLiteral("[a-z]{2,} [a-z]{2,}"));
  static const QRegularExpression place(QStringLiteral("%\\d"));
  source.remove(comment).remove(broken);
  QStringList sentences;
  for (const auto& match : text.globalMatch(source)) {
    const QString sentence = match.captured(1).replace(QStringLiteral("\\\""), QStringLiteral("\""));
    if (sentence.contains(words)) sentences += QString(sentence).replace(place, QStringLiteral("7"));
  }
  return sentences;
}

TEST(ReviewMessages, EveryOneHasItsTurkishWording) {
  const QStringList inBothLanguages = {
      QStringLiteral("setup_parameters.cpp"), QStringLiteral("review_questions.cpp"),
      QStringLiteral("not_whole_note.cpp"),   QStringLiteral("header_checks.cpp"),
      QStringLiteral("message_texts.cpp"),    QStringLiteral("window_build_questions.cpp"),
      QStringLiteral("form_sec_tables.cpp")};
  const QStringList commandLineOnly = {
      QStringLiteral("7 renamed to 7"),
      QStringLiteral("7 took the name of another file, which is now in Arsiv")};
  Language language;
  language.FillTurkish();
  int seen = 0;
  for (const char* folder : {"review", "datafiles"}) {
    QDirIterator files(QLatin1String(QT_TESTCASE_SOURCEDIR "/../../src/") + QLatin1String(folder),
                       {QStringLiteral("*.cpp")});
    while (files.hasNext()) {
      QFile file(files.next());
      if (inBothLanguages.contains(files.fileName())) continue;
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      for (const QString& sentence : SentencesOf(QString::fromUtf8(file.readAll()))) {
        if (commandLineOnly.contains(sentence)) continue;
        ++seen;
        EXPECT_NE(MessageText(sentence, language).toStdString(), sentence.toStdString())
            << files.fileName().toStdString();
      }
    }
  }
  EXPECT_GT(seen, 40);
}

}  // namespace
}  // namespace vesk::test
