// What an operator opens the selection window for.
#pragma once

namespace vesk {

enum class WorkMode { DataFile, LevelTable, DischargeTable, MultipleGraph, Other };

}  // namespace vesk
