#include "selection/message_texts.h"

#include <QRegularExpression>

#include <utility>
#include <vector>

#include "shell/error_texts.h"

namespace vesk {
namespace {

struct Sentence {
  QRegularExpression english;  ///< of the whole line
  QString turkish;             ///< %1, %2 ...: what the pattern caught
};

// The first pattern that fits is taken, so the more particular ones come first.
constexpr std::pair<const char16_t*, const char16_t*> kSentences[] = {
    {u"(.*), line (\\d+): not loaded; expected (.*)", u"%1, %2. satır yüklenmedi; beklenen: %3"},
    {u"(.*): (\\d+) lines were not loaded in all", u"%1: toplam %2 satır yüklenmedi"},
    {u"(.*): not loaded; water year (\\d+) has more than (\\d+) files",
     u"%1: yüklenmedi; %2 su yılının %3 dosyadan fazlası var"},
    {u"(.*): not loaded; the file is no longer there", u"%1: yüklenmedi; dosya artık yerinde değil"},
    {u"(.*) is a folder, not a raw file", u"%1 bir klasör, ham dosya değil"},
    {u"(.*) is no file that can be read; it is skipped", u"%1 okunabilir bir dosya değil; atlandı"},
    {u"(.*) is skipped; its name is no valid UTF-8", u"%1 atlandı; adı geçerli UTF-8 değil"},
    {u"(.*) is not read; (.*) goes under the same name", u"%1 okunmuyor; %2 aynı adla geçiyor"},
    {u"(.*) is a link; it is read, but neither stamped nor renamed",
     u"%1 bir bağlantı; okunur, ama işaretlenmez ve adı değiştirilmez"},
    {u"(.*), line 1: the marker of a fresh file in a line of another length; left as it is",
     u"%1, 1. satır: yeni dosya işareti başka uzunlukta bir satırda; olduğu gibi bırakıldı"},
    {u"(.*), line 3: version \"(.*)\" is not read; expected 10, 11 or 21",
     u"%1, 3. satır: \"%2\" sürümü okunamıyor; beklenen: 10, 11 veya 21"},
    {u"(.*): not loaded for water year (\\d+); a refused file ended the load",
     u"%1: %2 su yılı için yüklenmedi; kabul edilmeyen bir dosya yüklemeyi bitirdi"},
    {u"(.*); the header promises (.*) samples up to (.*)",
     u"%1; başlığa göre %3 tarihine kadar %2 örnek olmalı"},
    {u"(.*), line (\\d+): the end mark; (\\d+) lines behind it were left unread, (\\d+) of them readings "
     u"that "
     u"belong here",
     u"%1, %2. satır: bitiş işareti; ardındaki %3 satır okunmadı, bunların %4 tanesi buraya ait kayıt"},
    {u"(.*), line (\\d+): a reading behind the water year ends the file; (\\d+) lines behind it were left "
     u"unread, "
     u"(\\d+) of them of that year",
     u"%1, %2. satır: su yılından sonraki bir kayıt okumayı bitirdi; ardındaki %3 satır okunmadı, bunların "
     u"%4 tanesi "
     u"o yıla ait"},
    {u"(.*), line (\\d+): dated before the water year among readings of it; (\\d+) such lines were left out",
     u"%1, %2. satır: tarihi su yılından önce, ama o yılın kayıtları arasında; böyle %3 satır alınmadı"},
    {u"(.*), line (\\d+): the last reading read is that of (.*)", u"%1, %2. satır: okunan son kayıt %3"},
    {u"(.*), line (\\d+): no reading up to the end of the file",
     u"%1, %2. satır: dosyanın sonuna kadar kayıt yok"},
    {u"(.*), line (\\d+): the raw level is (.*) cm now; it was (.*) cm when it was corrected",
     u"%1, %2. satır: ham seviye şimdi %3 cm; düzeltildiğinde %4 cm idi"},
    {u"(.*), line (\\d+): (.*) belongs to no reading of this load; it is kept for the next save",
     u"%1, %2. satır: %3 yüklenen hiçbir kayda ait değil; bir sonraki kaydetme için saklandı"},
    {u"(.*), line (\\d+): (.*) can be meant for the reading or for the extreme record of that minute; it is "
     u"not applied, but kept",
     u"%1, %2. satır: %3 o dakikanın kaydı için de uç değeri için de olabilir; uygulanmadı, saklandı"},
    {u"(.*), line (\\d+): another reading stands behind column 27; (\\d+) such lines are read in part",
     u"%1, %2. satır: 27. sütunun ardında başka bir kayıt var; böyle %3 satır kısmen okundu"},
    {u"(.*), line (\\d+): dated (.*), behind the last record that the header names",
     u"%1, %2. satır: tarihi %3, başlıktaki son kayıttan sonra"},
    {u"(.*), line (\\d+): the header is damaged and holds readings; they are not read",
     u"%1, %2. satır: başlık bozuk ve içinde kayıtlar var; bunlar okunmadı"},
    {u"(.*), line (\\d+): the file ends without the last day's Max and Min records and without an end mark; "
     u"it "
     u"may be cut",
     u"%1, %2. satır: dosya son günün Max ve Min kayıtları ve bitiş işareti olmadan bitiyor; kesilmiş "
     u"olabilir"},
    {u"(.*): its first reading is dated (.*), before the first record that the header names",
     u"%1: ilk kaydın tarihi %2, başlıktaki ilk kayıttan önce"},
    {u"(.*): (\\d+) line\\(s\\) could not be read; their files have the logger's times",
     u"%1: %2 satır okunamadı; bunların dosyaları cihazın zamanlarını gösterir"},
    {u"(.*): changed by another program since it was saved; its review record fits in part",
     u"%1: kaydedildikten sonra başka bir programla değiştirilmiş; inceleme kaydı kısmen uyuyor"},
    {u"(.*): the corrected record of (.*) is no longer in (.*); its correction is kept",
     u"%1: düzeltilmiş %2 uç değeri artık %3 içinde yok; düzeltmesi saklandı"},
    {u"(.*): (\\d+) correction\\(s\\) of (.*), which is not loaded, lie on equal readings of another "
     u"read-out",
     u"%1: yüklenmemiş %3 dosyasının %2 düzeltmesi başka bir okumanın eşit kayıtlarına uygulandı"},
    {u"(.*): the logger's (.*) record is (.*) cm, but by the corrected readings it is (.*) cm",
     u"%1: cihazın %2 kaydı %3 cm, ancak düzeltilen kayıtlara göre %4 cm"},
    {u"(.*): further lines are not named", u"%1: öteki satırlar tek tek yazılmadı"},
    {u"(.*): has a date correction of its own \\(last reading (.*)\\), which a water year does not take "
     u"over; "
     u"these are the logger's times",
     u"%1: kendi tarih düzeltmesi var (son kayıt %2); su yılı bunu almaz, zamanlar cihazınkilerdir"},
    {u"(.*), line (\\d+): expected (.*)", u"%1, %2. satır; beklenen: %3"},
    {u"(.*): the saved date correction does not fit these readings",
     u"%1: kaydedilmiş tarih düzeltmesi bu kayıtlara uymuyor"},
    {u"(.*): the readings are re-timed as saved, the last one to (.*)",
     u"%1: kayıt zamanları kaydedildiği gibi düzeltildi; son kayıt %2"},
    {u"(.*) could not be renamed to (.*): (.*)", u"%1 dosyasının adı %2 yapılamadı: %3"},
    {u"(.*) could not be stamped", u"%1 dosyasının okunma işareti silinemedi"},
    // What was expected of a line.
    {u"15 header lines", u"15 başlık satırı"},
    {u"a last record that is not before the first", u"ilk kayıttan önce olmayan son kayıt"},
    {u"a date dd/mm/yyyy hh:mm from column 27 on", u"27. sütundan başlayan gg/aa/yyyy ss:dd"},
    {u"a line of at least 23 columns", u"en az 23 sütunluk satır"},
    {u"a whole line; the file ends in the middle of this one",
     u"tam satır; dosya bu satırın ortasında bitiyor"},
    {u"(.*) in columns (\\d+-\\d+)", u"%2. sütunlarda %1"},
    {u"a date dd/mm/yyyy", u"gg/aa/yyyy biçiminde tarih"},
    {u"a time hh:mm", u"ss:dd biçiminde saat"},
    {u"a level in cm", u"cm olarak seviye"},
    {u"a level in metres", u"metre olarak seviye"},
};

std::vector<Sentence> ReadSentences() {
  std::vector<Sentence> sentences;
  for (const auto& [english, turkish] : kSentences) {
    sentences.push_back({QRegularExpression(QRegularExpression::anchoredPattern(QStringView(english))),
                         QString::fromUtf16(turkish)});
  }
  return sentences;
}

QString Translated(const QString& text, const Language& language);

/// Puts what was caught in the places of %1, %2 ...; by hand, as a file name may hold a "%1" of its own.
QString Filled(const QString& sentence, const QRegularExpressionMatch& match, const Language& language) {
  QString text;
  for (qsizetype i = 0; i < sentence.size(); ++i) {
    const bool place = sentence[i] == QLatin1Char('%') && i + 1 < sentence.size();
    const int number = place ? sentence[i + 1].digitValue() : -1;
    if (number < 1) {
      text += sentence[i];
    } else {
      text += Translated(match.captured(number), language);
      ++i;
    }
  }
  return text;
}

/// Anything else is a reason, or an error's parts one behind the other.
QString PartsTranslated(const QString& text, const Language& language) {
  QStringList parts = text.split(QStringLiteral(": "));
  for (QString& part : parts) part = ErrorPart(part, language);
  return parts.join(QStringLiteral(": "));
}

QString Translated(const QString& text, const Language& language) {
  static const std::vector<Sentence> kTurkish = ReadSentences();
  for (const Sentence& sentence : kTurkish) {
    const QRegularExpressionMatch match = sentence.english.match(text);
    if (match.hasMatch()) return Filled(sentence.turkish, match, language);
  }
  return PartsTranslated(text, language);
}

}  // namespace

QString MessageText(const QString& english, const Language& language) {
  return language.Choice() == LanguageChoice::English ? english : Translated(english, language);
}

}  // namespace vesk
