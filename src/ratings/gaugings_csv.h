// Gaugings in CSV files, and as spreadsheets hand them over.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

#include "datafiles/gauging.h"
#include "platform/result.h"

namespace vesk {

struct GaugingsRead {
  std::vector<Gauging> gaugings;
  std::vector<int> lines;        ///< of each gauging, from 1
  std::vector<Message> refused;  ///< one a line that was left out: "file, line 5: …; expected …"
  std::vector<Message> notes;    ///< what else there is to know; nothing of a gauging was left out
};

/// The text may be parted by commas, semicolons or tabs, its decimals by points or commas. Columns come by
/// the header's names (level_cm, discharge_m3s, uncertainty_percent, time, method, party, remark, used, or
/// the titles of the window in either language); others are left out with a note. discharge_m3s must be
/// there, and level_cm or time. Without a header: level, discharge, uncertainty, time, method, party, remark,
/// used; or the same with the time in front when the first column holds times. An empty cell: not known;
/// of `used`: used. Fails for a file that is missing, empty, no text, or whose header does not say what is
/// what.
Result<GaugingsRead> ReadGaugingsCsv(const QString& path);
/// The same for bytes. name: of the file, for messages.
Result<GaugingsRead> ReadGaugingsBytes(QByteArrayView bytes, const QString& name);
/// The same for a text, from the clipboard for example.
Result<GaugingsRead> ReadGaugingsText(const QString& text, const Message& name);

/// With a header, in UTF-8 with LF and points. Reads back as the same gaugings.
QByteArray GaugingsCsv(const std::vector<Gauging>& gaugings);

/// For the clipboard: tab-separated, with a header of the window's titles. Reads back as the same gaugings.
QString GaugingsTabbed(const std::vector<Gauging>& gaugings, LanguageChoice language);

}  // namespace vesk
