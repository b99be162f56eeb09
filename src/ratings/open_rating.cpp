#include "ratings/open_rating.h"

#include "ratings/form_anahtar.h"
#include "ratings/form_olcum.h"
#include "shell/main_frame.h"

namespace vesk {

QWidget* MakeGaugingsWindow(MainFrame& frame, const QString& number, const QString& name) {
  return new FormOlcum(
      frame, number, name,
      [&frame](const QString& station, const QString& curve, const std::vector<Gauging>& gaugings) {
        frame.ShowChild(new FormAnahtar(frame, station, curve, gaugings));
      });
}

}  // namespace vesk
