// What lies below the exchange paths: queue, stopped and sent.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "sender/journal.h"
#include "sender/record.h"
#include "sender/settings.h"

namespace tessel::sender {

struct ListedExchange {
  ExchangeDirectory directory;
  Journal journal;
  ObjectKey exchange;      // 0:0 when the data file does not tell
  std::string identifier;  // "DX-000001"; empty when the record is not there
  std::string alias;
  int mode = 0;         // 0 when the data file does not tell
  int phase = 0;        // 0 when the record is not there
  std::string problem;  // why something of it is not known
};

// Sorted by exchange path and name.
[[nodiscard]] std::vector<ListedExchange> ListAll(const Settings& settings, const FileSystem& files,
                                                  const Databases& databases);
void PrintList(const std::vector<ListedExchange>& exchanges, const FileSystem& files, bool json,
               std::ostream& out);

}  // namespace tessel::sender
