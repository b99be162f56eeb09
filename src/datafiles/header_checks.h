// What the header of a raw file is checked for, and the notes that its correction code gives.
#pragma once

#include <QString>

#include "datafiles/raw_header.h"

namespace vesk {

/// Error texts that callers and operators see.
QString VersionErrorText();     ///< "Version Hatasi"
QString UnknownErrorText();     ///< "Data'da Bilinmeyen Bir Hata Var"
QString UnknownErrorMessage();  ///< "Bilinmeyen Bir Hata Var. Bu Datayı Programcıya iletiniz.."

/// True when "V" + version occurs in the accepted versions.
bool IsAcceptedVersion(const QString& version);

/// The note for a correction code (line 1, trimmed): "01", "02" or "03"; empty for anything else.
QString CorrectionNote(const QString& code, HeaderScope scope);

}  // namespace vesk
