// What the header of a raw file is checked for, and what it has to say.
#pragma once

#include <QString>

#include <algorithm>
#include <vector>

#include "datafiles/header_checks.h"
#include "datafiles/raw_header.h"

namespace vesk {

/// Versions of the raw format that are read, as one text: a version v is accepted when "V" + v occurs in it.
inline constexpr char kAcceptedVersions[] = "V10V11V21";

enum class HeaderScope { SingleFile, WaterYear };  ///< which correction-note prefix applies

/// "Version Hatasi", or "Data'da Bilinmeyen Bir Hata Var" for every other fault.
QString TextOf(HeaderFault fault);

/// True when "V" + version occurs in the accepted versions.
bool IsAcceptedVersion(const QString& version);

/// The note for a correction code (line 1, trimmed): "01", "02" or "03"; empty for anything else.
QString CorrectionNote(const QString& code, HeaderScope scope);

/// True when the list holds exactly that text.
template <class Text>
bool ListContains(const std::vector<Text>& list, const Text& text) {
  return std::ranges::find(list, text) != list.end();
}

/// What a header that was read has to say, for the message list; none of a file that is not there.
std::vector<Message> HeaderNotes(const HeaderReading& reading, HeaderScope scope);

}  // namespace vesk
