// Windows-1254, the code page of every text file of the system, decoded and encoded by an own table.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace vesk {

/// Every byte becomes one character. The seven bytes that the code page leaves open become the control
/// characters of the same number, so that decoding and encoding again gives the same bytes.
QString DecodeWindows1254(QByteArrayView bytes);

/// Characters outside the code page become '?', one per character (also for those beyond the basic plane).
QByteArray EncodeWindows1254(QStringView text);

/// True when no character of the text would become '?' by the lack of a place in the code page.
bool FitsWindows1254(QStringView text);

}  // namespace vesk
