// What lives for the whole run. One of these is made in main and handed by reference.
#pragma once

#include <QString>

#include "datafiles/work_mode.h"
#include "platform/regional.h"
#include "shell/language.h"
#include "shell/options.h"
#include "shell/settings.h"

namespace vesk {

enum class StationMode { Single, Multiple };  ///< one station from the grid, or several from graph files

struct RunValues {
  QString programFolder;  ///< with one trailing "/"
  Settings settings;      ///< over the settings file
  Options options;
  Language language;
  Regional regional;
  QString dataDirectory;       ///< with one trailing "/"
  QString hydrologyDirectory;  ///< as stored (translated to this machine's folders)
  QString stationDatabasePath;
  WorkMode workMode = WorkMode::Other;  ///< what the selection window was opened for
  StationMode stationMode = StationMode::Single;
};

}  // namespace vesk
