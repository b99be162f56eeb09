// Workbooks whose macro leaves a trace as soon as it is let.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/libreoffice/office.h"
#include "platform_office/office_processes.h"
#include "tables/stored_tables.h"

namespace vesk::test {
namespace {

/// A workbook whose macro, run when it is opened, makes the file `trace`. It lies about its format, as a
/// planted one may.
QByteArray PlantedWorkbook(const QString& trace) {
  return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
  xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:ooo="http://openoffice.org/2004/office"
  xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0" xmlns:xlink="http://www.w3.org/1999/xlink"
  xmlns:dom="http://www.w3.org/2001/xml-events" office:version="1.2"
  office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
 <office:scripts>
  <office:script script:language="ooo:Basic">
   <ooo:libraries><ooo:library-embedded ooo:name="Standard"><ooo:module ooo:name="M">
    <ooo:source-code>Sub Trace
  Open "%1" For Output As #1
  Close #1
End Sub</ooo:source-code>
   </ooo:module></ooo:library-embedded></ooo:libraries>
  </office:script>
  <office:event-listeners><script:event-listener script:language="ooo:script" script:event-name="dom:load"
   xlink:href="vnd.sun.star.script:Standard.M.Trace?language=Basic&amp;location=document" xlink:type="simple"/>
  </office:event-listeners>
 </office:scripts>
 <office:body><office:spreadsheet><table:table table:name="Gunluk"/></office:spreadsheet></office:body>
</office:document>)")
      .arg(trace)
      .toUtf8();
}

TEST(OfficeMacros, OfAStoredTableDoNotRunUnasked) {
  const QTemporaryDir folder;
  const auto plant = [&folder](const QString& name) {
    QFile planted(folder.filePath(name + QStringLiteral(".xls")));
    EXPECT_TRUE(planted.open(QIODevice::WriteOnly));
    planted.write(PlantedWorkbook(folder.filePath(name)));
    return planted.fileName();
  };
  const auto office = MakeUnattendedSpreadsheet();
  const Status stored = OpenStoredTable(*office, plant(QStringLiteral("stored")));
  ASSERT_TRUE(stored.Ok()) << stored.Failure().English().toStdString();
  const auto allowed = office->Open(plant(QStringLiteral("own")), Macros::MayRun);
  ASSERT_TRUE(allowed.Ok()) << allowed.Failure().English().toStdString();
  // The office runs it some time after the workbook is open, those of workbooks before it earlier.
  EXPECT_TRUE(WaitUntil([&folder] { return QFile::exists(folder.filePath(QStringLiteral("own"))); }))
      << "else the test proves nothing";
  EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("stored"))));
}

}  // namespace
}  // namespace vesk::test
