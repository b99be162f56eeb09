// The path layer: where folder texts written for drive letters and backslashes lead to on this machine, and
// where the program keeps its own files.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "platform/result.h"

namespace vesk {

/// Left by an installer: the next start is the first one.
inline constexpr QLatin1String kFirstRunMarker("ilk.sil");
/// The empty station database that a new one is copied from.
inline constexpr QLatin1String kRegisterTemplate("IstSbl.mdb");

/// The operator's home folder with one trailing "/". It plays the part of "C:\".
QString HomeFolder();

/// A folder or file text in this machine's form: a drive letter or a leading "\" becomes the home folder, "\"
/// becomes "/", and a text that starts at no root is taken under the home folder. An empty text stays empty.
/// @param home with one trailing "/"
QString TranslateFolderText(const QString& text, const QString& home = HomeFolder());

/// The same for a file or program text: one that starts at no root is taken under the base folder.
/// @param base with one trailing "/"
QString TranslatePathText(const QString& text, const QString& home, const QString& base);

/// The same text ending in exactly one "/"; an empty text stays empty.
QString WithTrailingSlash(const QString& text);

/// True when the text names a folder that can be entered.
bool IsReachableFolder(const QString& path);

/// Path of the entry of a folder whose name matches without regard to case; an exact match goes first.
std::optional<QString> FindEntry(const QString& folder, const QString& name);

/// Copies a file; never overwrites one. The copy appears whole or not at all.
Status CopyNewFile(const QString& from, const QString& to);

/// Folders that the program's files come in, the one to look into first in front: beside the executable, and
/// "../share/vesk4/" from there, where the build and a package put them. Each with one trailing "/".
std::vector<QString> DeliveryFolders(const QString& executableFolder);

/// Path of a file that comes with the program, its name matched without regard to case. The error names every
/// folder that was looked into.
Result<QString> FindDeliveredFile(const QString& executableFolder, const QString& name);

/// An error for each file that comes with the program and is not in the program folder.
/// executableFolder: where a missing one should have come from; empty when it was looked for nowhere else.
std::vector<Error> MissingDeliveredFiles(const QString& programFolder, const QString& executableFolder);

/// Where the files of the program may lie.
struct ProgramPlaces {
  QString executableFolder;  ///< folder of the running executable
  QString userDataFolder;    ///< per-user data folder (XDG), without the program's own name
  QString settingsFileName;  ///< e.g. "vesk4.ini"
};

/// The program folder, with one trailing "/": the executable's folder when it can be written and the
/// program's files are not installed elsewhere, otherwise "vesk4/" in the user's data folder. What it lacks
/// of the delivered files is copied into it. A folder without a settings file gets the first-run marker, as
/// an installer would leave it.
Result<QString> ResolveProgramFolder(const ProgramPlaces& places);

}  // namespace vesk
