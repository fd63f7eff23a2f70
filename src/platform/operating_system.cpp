#include "platform/operating_system.h"

#include <cstdio>

namespace tessel {
namespace {

std::string Formatted(const char* format, int first, int second, int third, const LocalTime& time) {
  char text[64];
  const int length =
      std::snprintf(text, sizeof text, format, first, second, third, time.hour, time.minute, time.second);
  return {text, static_cast<std::size_t>(length)};
}

}  // namespace

std::string FileTimeText(const LocalTime& time) {
  return Formatted("%04d%02d%02d_%02d%02d%02d", time.year, time.month, time.day, time);
}

std::string TraceTimeText(const LocalTime& time) {
  return Formatted("%02d.%02d.%04d %02d:%02d:%02d", time.day, time.month, time.year, time);
}

}  // namespace tessel
