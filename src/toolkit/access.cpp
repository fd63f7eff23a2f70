#include "toolkit/access.h"

#include <limits>
#include <set>
#include <vector>

#include "host/ascii.h"
#include "toolkit/window.h"

namespace tessel {
namespace {

constexpr auto kNowhere = std::string::npos;

bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9');
}

bool BeginsWord(const std::string& text, std::size_t at) {
  return at == 0 || text[at - 1] == ' ';
}

// "R&D" and "Gears & Sons" carry no mark.
std::size_t OwnMark(const std::string& caption) {
  for (std::size_t at = 0; at + 1 < caption.size(); ++at) {
    if (caption[at] == '&' && BeginsWord(caption, at) && IsLetter(caption[at + 1])) return at;
  }
  return kNowhere;
}

// First the beginnings of words, then any letter.
std::size_t FreeLetter(const std::string& caption, const std::set<char>& taken) {
  for (const bool anywhere : {false, true}) {
    for (std::size_t at = 0; at < caption.size(); ++at) {
      const bool suits = IsLetter(caption[at]) && (anywhere || BeginsWord(caption, at));
      if (suits && !taken.contains(UpperCase(caption[at]))) return at;
    }
  }
  return kNowhere;
}

std::string WithMark(const std::string& caption, std::size_t mark) {
  std::string marked;
  for (std::size_t at = 0; at < caption.size(); ++at) {
    if (at == mark && caption[at] != '&') marked += '&';
    if (at != mark && caption[at] == '&') marked += '&';
    marked += caption[at];
  }
  return marked;
}

bool Overlap(double start, double length, double otherStart, double otherLength) {
  return start < otherStart + otherLength && otherStart < start + length;
}

// How far a label stands before or above a place; infinite where it belongs to something else.
double DistanceOf(const Rect& label, const Rect& place) {
  const bool before = label.left < place.left && Overlap(label.top, label.height, place.top, place.height);
  if (before) return place.left - label.left - label.width;
  const bool above = label.top < place.top && Overlap(label.left, label.width, place.left, place.width);
  return above ? place.top - label.top - label.height : std::numeric_limits<double>::infinity();
}

std::string NearestLabel(const Control& control) {
  double nearest = std::numeric_limits<double>::infinity();
  std::string caption;
  for (const auto& other : control.Owner().Controls()) {
    if (other->Kind() != ControlKind::kLabel || other->Parent() != control.Parent() || !other->Visible())
      continue;
    const double distance = DistanceOf(other->Bounds(), control.Bounds());
    if (distance >= nearest || other->Caption().empty()) continue;
    nearest = distance;
    caption = other->Caption();
  }
  return caption;
}

}  // namespace

std::unordered_map<const Control*, std::string> CaptionsWithAltLetters(const Window& window) {
  std::vector<const Control*> controls;
  std::set<char> taken;
  for (const auto& control : window.Controls()) {
    const bool pressed = control->Kind() == ControlKind::kButton || control->Kind() == ControlKind::kCheckBox;
    if (!pressed || !control->ShownOnWindow()) continue;
    controls.push_back(control.get());
    const std::size_t own = OwnMark(control->Caption());
    if (own != kNowhere) taken.insert(UpperCase(control->Caption()[own + 1]));
  }
  std::unordered_map<const Control*, std::string> captions;
  for (const Control* control : controls) {
    std::size_t mark = OwnMark(control->Caption());
    if (mark == kNowhere) {
      mark = FreeLetter(control->Caption(), taken);
      if (mark != kNowhere) taken.insert(UpperCase(control->Caption()[mark]));
    }
    captions[control] = WithMark(control->Caption(), mark);
  }
  return captions;
}

std::string SpokenName(const Control& control) {
  if (!control.Caption().empty()) return control.Caption();
  const std::string label = NearestLabel(control);
  if (!label.empty()) return label;
  for (const Frame* frame = control.Parent(); frame != nullptr; frame = frame->Parent()) {
    if (!frame->Caption().empty()) return frame->Caption();
  }
  return control.Id();
}

}  // namespace tessel
