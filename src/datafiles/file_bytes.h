// Reads raw files whole, into one buffer that is used again for the next file.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include "platform/result.h"

namespace vesk {

/// No logger writes a file near this size; a larger one is refused by name instead of filling the memory.
inline constexpr qint64 kLargestRawFile = qint64{1} << 30;

class FileBytes {
 public:
  /// The content stays valid until the next call.
  Result<QByteArrayView> Read(const QString& path);

 private:
  QByteArray buffer_;
};

}  // namespace vesk
