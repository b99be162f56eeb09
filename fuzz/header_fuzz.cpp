// Any bytes may stand where a header should: the reader answers with a record or an error text, never a
// crash.
#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "datafiles/raw_header.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  std::vector<QString> messages;
  vesk::SetupCells cells;
  vesk::HeaderSinks sinks;
  sinks.messages = &messages;
  sinks.cells = &cells;
  const auto reading = vesk::DecodeRawHeader(bytes, QStringLiteral("101-12345-010203.txt"),
                                             vesk::HeaderScope::SingleFile, vesk::HeaderMode::Full, sinks);
  if (reading.header.HeaderEnd > bytes.size() + 1) std::abort();
  if (!reading.Usable() && messages.empty()) std::abort();
  return 0;
}
