#include "shell/error_texts.h"

#include <algorithm>
#include <string_view>

namespace vesk {
namespace {

struct Translation {
  std::u16string_view english;
  std::u16string_view turkish;
};

constexpr Translation kTranslations[] = {
    // What failed.
    {u"An earlier graph data file could not be deleted", u"Önceki bir grafik veri dosyası silinemedi"},
    {u"No raw file of that name", u"Bu adda ham dosya yok"},
    {u"No raw file of the station", u"İstasyonun ham dosyası yok"},
    {u"Not a data directory", u"Veri dizini değil"},
    {u"The change log could not be read", u"Değişiklik dosyası okunamadı"},
    {u"The change log could not be saved", u"Değişiklik dosyası kaydedilemedi"},
    {u"The date correction could not be saved", u"Tarih düzeltmesi kaydedilemedi"},
    {u"The review record could not be read", u"İnceleme kaydı okunamadı"},
    {u"The review record could not be saved", u"İnceleme kaydı kaydedilemedi"},
    {u"The saved date corrections could not be read", u"Kaydedilmiş tarih düzeltmeleri okunamadı"},
    {u"The dates were not corrected", u"Tarihler düzeltilmedi"},
    {u"The edit journal could not be read", u"Düzeltme günlüğü okunamadı"},
    {u"The edit journal could not be written", u"Düzeltme günlüğü yazılamadı"},
    {u"The edit journal could not be removed", u"Düzeltme günlüğü silinemedi"},
    {u"The empty station database is missing", u"Boş istasyon veri tabanı yok"},
    {u"The file could not be copied", u"Dosya kopyalanamadı"},
    {u"The first-run marker could not be deleted", u"İlk çalışma işareti silinemedi"},
    {u"The first-run marker could not be written", u"İlk çalışma işareti yazılamadı"},
    {u"The folder could not be made", u"Klasör oluşturulamadı"},
    {u"The font colour could not be set", u"Yazı rengi verilemedi"},
    {u"The graph could not be printed", u"Grafik yazdırılamadı"},
    {u"The graph could not be saved", u"Grafik kaydedilemedi"},
    {u"The graph data file could not be written", u"Grafik veri dosyası yazılamadı"},
    {u"The graph list cannot be drawn", u"Grafik listesi çizilemez"},
    {u"The graph data file could not be read", u"Grafik veri dosyası okunamadı"},
    {u"The level was not changed", u"Seviye değiştirilmedi"},
    {u"The output could not be written", u"Çıktı yazılamadı"},
    {u"The output folder could not be made", u"Çıktı klasörü oluşturulamadı"},
    {u"The lock could not be taken", u"Kilit alınamadı"},
    {u"The program could not be started", u"Program başlatılamadı"},
    {u"The program folder could not be made", u"Program klasörü oluşturulamadı"},
    {u"The raw file could not be read", u"Ham dosya okunamadı"},
    {u"The raw file is refused", u"Ham dosya kabul edilmedi"},
    {u"The settings file could not be read", u"Ayar dosyası okunamadı"},
    {u"The settings file is written in place", u"Ayar dosyası yerinde yazılıyor"},
    {u"The settings file could not be written", u"Ayar dosyası yazılamadı"},
    {u"The spreadsheet application cannot be reached", u"Tablolama programına ulaşılamıyor"},
    {u"The station register could not be changed", u"Değişiklik istasyon veri tabanına yazılamadı"},
    {u"The station register could not be opened", u"İstasyon veri tabanı açılamadı"},
    {u"The station register could not be read", u"İstasyon veri tabanı okunamadı"},
    {u"The superseded read-out could not be archived", u"Eski okuma dosyası arşivlenemedi"},
    {u"Unsaved changes wait", u"Kaydedilmemiş değişiklikler bekliyor"},
    {u"The workbook could not be deleted", u"Tablo dosyası silinemedi"},
    {u"The workbook could not be opened", u"Tablo dosyası açılamadı"},
    {u"The workbook has no such sheet", u"Tablo dosyasında bu sayfa yok"},
    {u"The archive folder could not be made", u"Arşiv klasörü oluşturulamadı"},
    {u"The archived read-out could not be removed from the data directory",
     u"Arşivlenen okuma dosyası veri dizininden silinemedi"},
    {u"The data directory is being tidied by another program",
     u"Veri dizinini şu anda başka bir program düzenliyor"},
    {u"The new names may not last through a power cut", u"Yeni adlar bir elektrik kesintisinde kaybolabilir"},
    {u"The border could not be drawn", u"Kenarlık çizilemedi"},
    {u"The cell could not be selected", u"Hücre seçilemedi"},
    {u"The cells could not be written", u"Hücreler yazılamadı"},
    {u"The formula could not be set", u"Formül yazılamadı"},
    {u"The formulas could not be entered again", u"Formüller yeniden girilemedi"},
    {u"The level table cannot be written", u"Seviye tablosu yazılamıyor"},
    {u"The level table could not be put in its place", u"Seviye tablosu yerine konamadı"},
    {u"The sheet could not be selected", u"Sayfa seçilemedi"},
    {u"The spreadsheet application could not be started", u"Tablolama programı başlatılamadı"},
    {u"The spreadsheet application does not end", u"Tablolama programı kapanmıyor"},
    {u"The template of the level table could not be copied", u"Seviye tablosunun şablonu kopyalanamadı"},
    {u"The template of the level table is missing", u"Seviye tablosunun şablonu yok"},
    {u"The note's cell could not be laid out", u"Not hücresi biçimlendirilemedi"},
    {u"The record of the level table could not be written", u"Seviye tablosunun yazıldığı kaydedilemedi"},
    {u"The workbook could not be closed", u"Tablo dosyası kapatılamadı"},
    {u"The workbook could not be saved", u"Tablo dosyası kaydedilemedi"},
    {u"The workbook's macro could not be run", u"Tablo dosyasının makrosu çalıştırılamadı"},
    {u"The workbook's sheet cannot be used", u"Tablo dosyasının sayfası kullanılamıyor"},
    {u"The workbook's window could not be shown", u"Tablo dosyasının penceresi gösterilemedi"},
    {u"The workbooks could not be recalculated", u"Tablo dosyaları yeniden hesaplanamadı"},
    // Why.
    {u"No such file or directory", u"Böyle bir dosya veya dizin yok"},
    {u"Permission denied", u"İzin verilmedi"},
    {u"Read-only file system", u"Dosya sistemi salt okunur"},
    {u"No space left on device", u"Diskte yer kalmadı"},
    {u"Is a directory", u"Bu bir dizin"},
    {u"a level cannot be empty", u"seviye boş olamaz"},
    {u"a level must be a number", u"seviye bir sayı olmalıdır"},
    {u"another program is writing it", u"başka bir program onu yazıyor"},
    {u"an older journal is in the way", u"eski bir günlük yolda duruyor"},
    {u"attempt to write a readonly database", u"dosya salt okunur"},
    {u"database disk image is malformed", u"dosya bozuk"},
    {u"database is locked", u"dosya başka bir program tarafından kullanılıyor"},
    {u"database or disk is full", u"disk dolu"},
    {u"disk I/O error", u"disk okuma/yazma hatası"},
    {u"file is not a database", u"dosya bozuk"},
    {u"it is damaged, or of another version of the program", u"bozuk veya programın başka bir sürümüne ait"},
    {u"it exists already", u"zaten var"},
    {u"it is a file", u"bu bir dosya"},
    {u"it is a link; links are left as they are", u"bu bir bağlantı; bağlantılara dokunulmaz"},
    {u"it is no file", u"bu bir dosya değil"},
    {u"it is no workbook, or it cannot be read", u"tablo dosyası değil veya okunamıyor"},
    {u"it is too large", u"çok büyük"},
    {u"it may not be executed", u"çalıştırma izni yok"},
    {u"its folder cannot be entered", u"klasörüne girilemiyor"},
    {u"larger than 1 GB, so no logger wrote it", u"1 GB'den büyük, bir cihazın dosyası olamaz"},
    {u"no answer in time", u"zamanında yanıt yok"},
    {u"no readings", u"kayıt yok"},
    {u"no readings are loaded", u"yüklenmiş kayıt yok"},
    {u"no such folder", u"böyle bir klasör yok"},
    {u"no such table: IstNoAd", u"IstNoAd tablosu yok"},
    {u"not a file", u"bu bir dosya değil"},
    {u"older unsaved work stays in this file", u"kaydedilmemiş eski çalışma bu dosyada duruyor"},
    {u"only the readings of a single file can be re-timed", u"yalnız tek dosyanın kayıtları düzeltilebilir"},
    {u"only a part of it could be written; is the disk full?",
     u"yalnız bir bölümü yazılabildi; disk dolu mu?"},
    {u"the file is a database of the old desktop engine; it is left as it is",
     u"dosya eski masaüstü veri tabanı biçiminde; olduğu gibi bırakıldı"},
    {u"the file is empty", u"dosya boş"},
    {u"the file is no SQLite database; it is left as it is",
     u"dosya bir SQLite veri tabanı değil; olduğu gibi bırakıldı"},
    {u"the folder cannot be written", u"klasöre yazılamıyor"},
    {u"the last reading does not lie after the first one", u"son kayıt ilk kayıttan sonra değil"},
    {u"the old journal could not be kept", u"eski günlük saklanamadı"},
    {u"readings that they belong to are missing from this load; they are offered when it is whole",
     u"ait oldukları kayıtlar bu yüklemede eksik; yükleme tam olunca önerilirler"},
    {u"somebody else has changed the corrections since they were loaded",
     u"düzeltmeler yüklendikten sonra başkası tarafından değiştirildi"},
    {u"somebody else works on these corrections", u"bu düzeltmeler üzerinde başkası çalışıyor"},
    {u"the damaged file could not be kept under another name", u"bozuk dosya başka bir adla saklanamadı"},
    {u"the row holds no reading", u"bu satırda kayıt yok"},
    {u"the true time of the last reading (dd/mm/yyyy hh:mm) must lie after the first reading",
     u"son verinin gerçek zamanı (gg/aa/yyyy ss:dd) ilk veriden sonra olmalıdır"},
    {u"the true time of the last reading is expected as dd/mm/yyyy hh:mm",
     u"son verinin gerçek zamanı gg/aa/yyyy ss:dd biçiminde yazılmalıdır"},
    {u"the name must end in .png, .pdf, .svg or .csv", u"dosya adı .png, .pdf, .svg veya .csv ile bitmeli"},
    {u"the page could not be begun", u"sayfaya başlanamadı"},
    {u"the page could not be finished", u"sayfa bitirilemedi"},
    {u"the workbook has no such macro", u"tablo dosyasında bu makro yok"},
    {u"unable to open database file", u"dosya açılamıyor"},
    {u"is it installed?", u"kurulu mu?"},
    {u"it ended at its start", u"başlarken kapandı"},
    {u"it has other work open", u"başka açık belgeleri var"},
    {u"it is open elsewhere; this is its lock", u"başka yerde açık; kilidi bu dosya"},
    {u"it is read-only", u"salt okunur"},
    {u"no such file", u"böyle bir dosya yok"},
    {u"the spreadsheet application has ended", u"tablolama programı kapandı"},
    {u"the spreadsheet application refused", u"tablolama programı kabul etmedi"},
    {u"the spreadsheet application could not read or write it whole",
     u"tablolama programı dosyayı eksiksiz okuyamadı veya yazamadı"},
    {u"a file of that name is in the way", u"bu adda bir dosya var"},
    {u"another program is using it", u"dosyayı başka bir program kullanıyor"},
    {u"it is no workbook, or a damaged one", u"tablo dosyası değil veya bozuk"},
    {u"it was changed while the new one was made", u"yenisi yapılırken değiştirildi; olduğu gibi bırakıldı"},
    {u"its folder is no longer there", u"klasörü artık yerinde değil"},
    {u"the disk is full", u"disk dolu"},
    {u"the disk is read-only", u"disk salt okunur"},
    {u"the file or its folder is not there", u"dosya veya klasörü yerinde değil"},
    {u"there is no permission to read or write it", u"okuma veya yazma izni yok"},
    {u"there is no permission to write it", u"yazma izni yok"},
    {u"there is no such file", u"böyle bir dosya yok"},
};

/// The Turkish wording, or the text itself when it has none.
QString Turkish(const QString& text) {
  const QStringView wanted(text);
  const auto found = std::ranges::find_if(
      kTranslations, [wanted](const Translation& entry) { return wanted == QStringView(entry.english); });
  if (found != std::end(kTranslations)) return QStringView(found->turkish).toString();
  // What another program said stays behind the words, in its own language.
  const qsizetype own = text.endsWith(QLatin1Char(']')) ? text.indexOf(QLatin1String(" [")) : -1;
  return own < 0 ? text : Turkish(text.left(own)) + text.mid(own);
}

}  // namespace

QString ErrorText(const Error& error, const Language& language) {
  const auto worded = [&language](const Message& part) {
    const QString english = part.English();
    const QString said = language.Say(part);
    return said == english ? ErrorPart(english, language) : said;
  };
  return Error{worded(error.what), error.path, worded(error.reason)}.English();
}

QString ErrorPart(const QString& english, const Language& language) {
  return language.Choice() == LanguageChoice::English ? english : Turkish(english);
}

}  // namespace vesk
