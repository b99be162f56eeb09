#include "shell/system_colours.h"

#include "platform/colour_numbers.h"

namespace vesk {
namespace {

QPalette::ColorRole RoleOf(quint32 systemColour) {
  switch (systemColour) {
    case 4:   // menu
    case 15:  // button face
      return QPalette::Button;
    case 5:  // window background
      return QPalette::Base;
    case 7:  // menu text
    case 8:  // window text
      return QPalette::Text;
    case 18:  // button text
      return QPalette::ButtonText;
    case 13:
      return QPalette::Highlight;
    case 14:
      return QPalette::HighlightedText;
    case 16:  // button shadow
    case 17:  // grey text
      return QPalette::Dark;
    case 20:
      return QPalette::Light;
    case 23:
      return QPalette::ToolTipText;
    case 24:
      return QPalette::ToolTipBase;
    default:  // scroll bars, captions and borders have no place of their own in the palette
      return QPalette::Window;
  }
}

}  // namespace

QColor DesktopColour(qint32 number, const QPalette& palette) {
  const auto system = SystemColourOf(number);
  return system ? palette.color(QPalette::Active, RoleOf(*system)) : QColor(RgbOf(number));
}

}  // namespace vesk
