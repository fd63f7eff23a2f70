// How far the copy of an export is, drawn as one line on a terminal: documents, bytes, time left.
#pragma once

#include <chrono>
#include <string>

#include "embedded/session/host_options.h"
#include "tessel/cli.h"

namespace tessel::cli {

class CopyProgress {
 public:
  // Draws on the error stream when it is a terminal and nobody wants quiet.
  explicit CopyProgress(Streams& streams) : streams_(streams) {}

  // So many documents of all are copied. The time runs from the first call.
  void Documents(int done, int all);
  // A copy within the document in hand.
  void Step(const embedded::CopyStep& step);
  // Every document was copied: the line reaches its end, and stays.
  void Complete();
  // Leaves the line as it is, so that other text can follow.
  void End();

 private:
  void Draw();
  [[nodiscard]] std::string TimeText() const;

  Streams& streams_;
  int done_ = 0;
  int all_ = 0;
  double within_ = 0;              // the share of the document in hand
  std::uint64_t bytesBefore_ = 0;  // of the documents before it
  std::uint64_t bytesWithin_ = 0;
  std::size_t width_ = 0;  // of the line as drawn last
  bool drawn_ = false;
  std::chrono::steady_clock::time_point begin_;
  std::chrono::steady_clock::time_point shown_;
};

// "0 B", "999 B", "1.0 kB", "12.3 MB": three digits and a unit of thousands.
[[nodiscard]] std::string SizeText(std::uint64_t bytes);

}  // namespace tessel::cli
