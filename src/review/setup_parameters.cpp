#include "review/setup_parameters.h"

#include "datafiles/dates.h"
#include "datafiles/numbers.h"

namespace vesk {
namespace {

QString DateTimeCell(DateTime time) {
  return time == DateTime{} ? QString() : DateTimeText(time);
}

}  // namespace

const std::array<QString, kSetupRows>& SetupLabels() {
  static const std::array<QString, kSetupRows> labels = {
      QStringLiteral("Sürüm"),
      QStringLiteral("limnigraf Tipi"),
      QStringLiteral("Seri No."),
      QStringLiteral("Bölge No."),
      QStringLiteral("Havza No."),
      QStringLiteral("İstasyon No."),
      QStringLiteral("İstasyon Adı"),
      QStringLiteral("Setup Tarihi ve Zamanı"),
      QStringLiteral("İlk Kaydın Tarih ve Zamanı"),
      QStringLiteral("Son Kaydın Tarih ve Zamanı"),
      QStringLiteral("Çalıştığı Gün Sayısı"),
      QStringLiteral("Örnek Sayısı"),
      QStringLiteral("Örnek Zaman Aralığı (Dak.)"),
      QStringLiteral("Kayıt Aralığı (Dak.)"),
      QStringLiteral("Kapsadığı Su Yılları"),
  };
  return labels;
}

SetupCells SetupCellsOf(const RawHeader& header, const QString& stationName) {
  return {header.Version,
          header.LoggerType,
          QString(),
          header.RegionNo,
          header.BasinNo,
          header.StationNo,
          stationName,
          DateTimeCell(header.SetupTime),
          DateTimeCell(header.FirstRecordTime),
          DateTimeCell(header.LastRecordTime),
          (header.DaysCovered >= 0 ? QStringLiteral(" ") : QString()) + QString::number(header.DaysCovered) +
              QStringLiteral(" Gün"),
          NumberText(header.SampleCount) + QStringLiteral(" Adet"),
          NumberText(header.SampleInterval) + QStringLiteral(" Dak."),
          NumberText(header.RecordInterval) + QStringLiteral(" Dak."),
          header.WaterYearsText};
}

std::optional<SetupCells> SetupCellsOf(const HeaderReading& reading, const QString& stationName) {
  if (reading) return SetupCellsOf(*reading, stationName);
  if (reading.Failure().fault != HeaderFault::Damaged) return std::nullopt;
  return SetupCellsOf(reading.Failure().header, stationName);
}

void MergeSetupCells(const SetupCells& reference, const SetupCells& further, SetupCells& cells) {
  const QString differs = QStringLiteral("--");
  cells[0] = further[0];
  for (std::size_t row = 1; row < kSetupWaterYearsRow; ++row) {
    if (further[row] != reference[row]) cells[row] = differs;
  }
  cells[kSetupWaterYearsRow] = differs;
}

}  // namespace vesk
