// Folders with made-up raw files, each its own by its seed.
#pragma once

#include <QString>

#include <vector>

#include "tools/sample_data.h"
#include "torture/desk.h"
#include "torture/rig.h"

namespace vesk::torture {

/// Which loads a folder is made for.
enum class WorldKind {
  Years,       ///< one or two water years from one to four files that may overlap
  SingleFile,  ///< one file, its dates can be corrected
};

struct World {
  std::vector<sample::RawFilePlan> plans;
  Choice choice;  ///< folder left empty
};

/// withCount: names carry their day counts, so that nothing has to be renamed first.
World MakeWorld(Random& random, WorldKind kind, bool withCount = true);
/// Puts the files into a folder and gives the choice for it.
Choice WriteWorld(const World& world, const QString& folder);
/// The name that the file gets, with its day count.
QString CountedNameOf(const sample::RawFilePlan& plan);

}  // namespace vesk::torture
