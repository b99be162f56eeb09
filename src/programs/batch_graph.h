// The verb that draws graphs without a display.
#pragma once

#include <QStringList>

namespace vesk {

/// graph DIR --station S [--station S2 ...] --water-year Y [--from d.m] [--to d.m] [--size WxH] [--language
/// L]
/// [--register FILE] --out FILE.png|.pdf|.svg|.csv. Reads DIR only. arguments: the verb itself, then what
/// follows it. Needs a QGuiApplication.
int RunGraphVerb(const QStringList& arguments);

}  // namespace vesk
