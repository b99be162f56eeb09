// Any bytes may stand where a header should: the reader answers with a record or a reason, never a
// crash.
#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "datafiles/header_checks.h"
#include "datafiles/raw_header.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  const auto reading = vesk::ReadRawHeader(bytes, {}, QStringLiteral("101-12345-010203.txt"));
  const vesk::RawHeader& header = reading ? *reading : reading.Failure().header;
  if (header.HeaderEnd > bytes.size() + 1) std::abort();
  if (!reading && (reading.Failure().detail.IsEmpty() || vesk::HeaderNotes(reading, {}).empty()))
    std::abort();
  return 0;
}
