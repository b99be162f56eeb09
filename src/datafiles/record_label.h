// The label of a record: its raw file's number and its kind.
#pragma once

#include <QString>

#include <optional>

#include "datafiles/reading.h"

namespace vesk {

/// "ort", "Max" or "Min": what a label says of a reading's kind.
QString KindText(ReadingKind kind);
/// Nothing for any other text.
std::optional<ReadingKind> ReadKind(const QString& text);

/// "01-ort", "01-Max" or "01-Min".
QString RecordLabel(const Reading& reading);

}  // namespace vesk
