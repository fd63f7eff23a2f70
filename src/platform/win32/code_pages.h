// The machine's code pages through the tables of Windows. They give what a standard table gives: a byte that
// Windows fills up with a control or a private character stands for nothing, and no look-alike stands in for
// a character that a page lacks.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/text_encoding.h"

namespace tessel::windows {

class CodePages : public TextEncodings {
 public:
  // "UTF-16" as TextEncodings has it; the names are those of IANA with their common other names.
  [[nodiscard]] std::shared_ptr<const TextEncoding> Open(const std::string& name) const override;

 private:
  mutable std::map<std::string, std::shared_ptr<const TextEncoding>> opened_;
};

}  // namespace tessel::windows
