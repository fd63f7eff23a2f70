// The machine's code pages through iconv. UTF-8 and UTF-16 are done here; the tables of a single-byte page
// are built once; other pages are asked character by character and remembered.
#pragma once

#include <map>

#include "platform/text_encoding.h"

namespace tessel::posix {

class IconvEncodings : public TextEncodings {
 public:
  // "UTF-16" without byte order is little-endian; its byte-order mark is written by whoever writes the file,
  // as the code point U+FEFF, and is skipped in decoding.
  [[nodiscard]] std::shared_ptr<const TextEncoding> Open(const std::string& name) const override;

 private:
  // By name in small letters.
  mutable std::map<std::string, std::shared_ptr<const TextEncoding>> opened_;
};

}  // namespace tessel::posix
