// StringTool: a line reader over a text in memory.
#pragma once

#include <string>
#include <string_view>

namespace tessel {

class StringTool {
 public:
  void OpenString(std::string text);
  void CloseString() { OpenString({}); }
  void ResetPosition() { position_ = 0; }
  [[nodiscard]] bool EndOfString() const { return position_ >= text_.size(); }
  // The next line without its CR LF; empty at the end. A lone LF or CR stays inside the line. The view holds
  // until the string is opened anew or closed.
  std::string_view ReadLine();

 private:
  std::string text_;
  std::size_t position_ = 0;
};

}  // namespace tessel
