#include "tessel/copy_progress.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <utility>

namespace tessel::cli {
namespace {

constexpr int kBarWidth = 30;
constexpr std::chrono::milliseconds kBetweenDraws{50};
// Before that, what is left cannot be told.
constexpr double kLeastShare = 0.01;

std::string ClockText(double seconds) {
  const auto whole = static_cast<long long>(std::ceil(seconds));
  std::ostringstream text;
  if (whole >= 3600) text << whole / 3600 << ":" << std::setw(2) << std::setfill('0');
  text << whole / 60 % 60 << ":" << std::setw(2) << std::setfill('0') << whole % 60;
  return text.str();
}

}  // namespace

std::string SizeText(std::uint64_t bytes) {
  if (bytes < 1000) return std::to_string(bytes) + " B";
  double size = static_cast<double>(bytes);
  const char* const units[] = {"kB", "MB", "GB", "TB"};
  std::size_t unit = 0;
  for (size /= 1000; size >= 999.95 && unit + 1 < std::size(units); ++unit)
    size /= 1000;
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << size << " " << units[unit];
  return text.str();
}

void CopyProgress::Documents(int done, int all) {
  if (begin_ == std::chrono::steady_clock::time_point{}) begin_ = std::chrono::steady_clock::now();
  done_ = std::min(done, all);
  all_ = all;
  within_ = 0;
  Draw();
}

void CopyProgress::Step(const embedded::CopyStep& step) {
  if (step.filesDone == 0 && step.bytesDone == 0) bytesBefore_ += std::exchange(bytesWithin_, 0);
  bytesWithin_ = step.bytesCopied;
  if (step.files > 0) {
    const bool within = step.bytes > 0 && step.bytesDone < step.bytes;
    const double share = within ? static_cast<double>(step.bytesDone) / static_cast<double>(step.bytes) : 0.0;
    within_ = (static_cast<double>(step.filesDone) + share) / static_cast<double>(step.files);
  }
  Draw();
}

void CopyProgress::Complete() {
  if (!drawn_) return;
  Documents(all_, all_);
  End();
}

void CopyProgress::End() {
  if (drawn_) streams_.err << "\n";
  drawn_ = false;
  width_ = 0;
}

std::string CopyProgress::TimeText() const {
  const std::chrono::duration<double> gone = std::chrono::steady_clock::now() - begin_;
  if (done_ == all_) return "in " + ClockText(gone.count());
  const double share = (done_ + std::min(within_, 1.0)) / all_;
  return share < kLeastShare ? "" : ClockText(gone.count() * (1 - share) / share) + " left";
}

void CopyProgress::Draw() {
  if (!streams_.errIsTerminal || streams_.quiet || all_ < 1) return;
  const auto now = std::chrono::steady_clock::now();
  if (drawn_ && done_ != all_ && now - shown_ < kBetweenDraws) return;
  shown_ = now;
  const auto filled = static_cast<std::size_t>(kBarWidth * done_ / all_);
  const std::string line = "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] " +
                           std::to_string(done_) + " / " + std::to_string(all_) + " documents  " +
                           SizeText(bytesBefore_ + bytesWithin_) + "  " + TimeText();
  // Blanks cover the rest of a longer line.
  streams_.err << "\r" << line << std::string(width_ > line.size() ? width_ - line.size() : 0, ' ')
               << std::flush;
  width_ = line.size();
  drawn_ = true;
}

}  // namespace tessel::cli
