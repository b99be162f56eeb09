// What a graph page has to say beside its lines: on the picture, in the window's status line, on the command
// line.
#pragma once

#include <QString>
#include <QStringList>

#include "graphs/graph_pages.h"
#include "graphs/graph_sheet.h"
#include "review/load_readings.h"

namespace vesk {

struct PageNotes {
  /// The sheet's notes, every series that a negative level ends on the page, every station without a line on
  /// it.
  QStringList lines;
  QString blank;  ///< why the page shows no reading at all; empty when it shows one
};

PageNotes NotesOfPage(const GraphPage& page, const GraphSheet& sheet);

/// Lines and blank reason together.
QStringList AllNotes(const PageNotes& notes);

/// The lines as they fit `width` page units, broken between words where they can be; of more than mostLines
/// the last one ends in "…".
QStringList WrappedNotes(const QStringList& lines, double width, int mostLines);

/// What a graph of this load must say: nothing when the load is whole. what: the station and year that the
/// note names; may be empty.
QStringList NotesOfLoad(const LoadedReadings& loaded, const QString& what, const Language& language);

/// "Seviye-12345(2011)" ("Level-…" in English), with the days of a page that is not the whole period: a file
/// name without ending that is valid on every file system and that no drawing takes for a graph data file.
QString ProposedFileName(const GraphPage& page, const GraphSheet& sheet);

}  // namespace vesk
