#include "review/setup_parameters.h"

namespace vesk {

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

void MergeSetupCells(const SetupCells& reference, const SetupCells& further, SetupCells& cells) {
  const QString differs = QStringLiteral("--");
  cells[0] = further[0];
  for (std::size_t row = 1; row < kSetupWaterYearsRow; ++row) {
    if (further[row] != reference[row]) cells[row] = differs;
  }
  cells[kSetupWaterYearsRow] = differs;
}

}  // namespace vesk
