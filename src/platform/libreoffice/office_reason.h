// The office tells a failed save or load by a bare error code; this says in words what the code means.
#pragma once

#include <QString>

#include "platform/wording.h"

namespace vesk {

/// A reason an operator can act on, with the office's own text behind it in brackets: "the disk is full
/// [SfxBaseModel::storeSelf: 0x909 ...]". told: what the office said; path: the file concerned, may be empty,
/// looked at where the code alone does not tell. A text without a code comes back as it is.
Message WordOfficeReason(const QString& told, const QString& path);

}  // namespace vesk
