#include "shell/options_form.h"

namespace vesk {
namespace {

constexpr int kFirstColourSlot = 2;

constexpr std::array<quint32, kPaletteColumns> kColours = {
    0x80000005, 0x00C0E0FF, 0x00C0FFFF, 0x00FFFFC0, 0x00FFC0C0, 0x00FF8080, 0x00FF0000,
    0x000080FF, 0x0080C0FF, 0x0080FFFF, 0x000000C0, 0x00808000, 0x00000000};

bool IsSet(const QString& slotText) {
  return slotText.trimmed().toDouble() != 0;
}

QString FlagText(bool set) {
  return set ? QStringLiteral("1") : QStringLiteral("0");
}

/// Rows of the swatches whose palette begins with black.
bool IsReversedRow(int row) {
  return row == 1 || row == 2 || row == 5;
}

}  // namespace

OptionsForm FormOf(const Options& options) {
  OptionsForm form;
  form.drawExtremes = IsSet(options.Slot(1));
  for (int k = 0; k < kSwatchCount; ++k) {
    form.colours[static_cast<std::size_t>(k)] = ColourNumber(options.Slot(kFirstColourSlot + k));
  }
  form.extremeIndex = options.extremeOptionIndex;
  form.quitOffice = IsSet(options.Slot(9));
  form.mouseAdjustment = options.Slot(22);
  return form;
}

void PutForm(const OptionsForm& form, Options& options) {
  options.Slot(1) = FlagText(form.drawExtremes);
  for (int k = 0; k < kSwatchCount; ++k) {
    options.Slot(kFirstColourSlot + k) = QString::number(form.colours[static_cast<std::size_t>(k)]);
  }
  const auto letter = [&form](int index) { return QLatin1Char(form.extremeIndex == index ? 'T' : 'F'); };
  options.Slot(8) = QString(letter(0)) + letter(1);
  options.Slot(9) = FlagText(form.quitOffice);
  options.Slot(22) = form.mouseAdjustment;
}

qint32 PaletteColour(int cell) {
  const int row = cell / kPaletteColumns;
  const int column = cell % kPaletteColumns;
  const int index = IsReversedRow(row) ? kPaletteColumns - 1 - column : column;
  return static_cast<qint32>(kColours[static_cast<std::size_t>(index)]);
}

}  // namespace vesk
