#include "messages/library_trace.h"

#include "messages/guard.h"

namespace tessel {
namespace {

std::string Line(const std::string& label, const Value& value) {
  return label + ": >>" + value.AsText() + "<<\r\n";
}

// "Ids(01)": at least two digits.
std::string IndexedLabel(const std::string& text, int index) {
  std::string digits = std::to_string(index < 0 ? -index : index);
  if (digits.size() < 2) digits.insert(0, "0");
  return text + "(" + (index < 0 ? "-" : "") + digits + ")";
}

// Appends the lines of one value.
struct ValueLines {
  const std::string& text;
  std::string& lines;

  void operator()(std::monostate) const {}
  void operator()(const Value& value) const { lines += Line(text, value); }
  void operator()(const TraceArray& array) const {
    int index = array.lowerBound;
    for (const Value& element : array.elements) {
      lines += Line(IndexedLabel(text, index++), element);
    }
  }
  void operator()(const std::shared_ptr<const TraceCollection>& collection) const {
    const int count = collection ? collection->Count() : 0;
    for (int i = 1; i <= count; ++i) {
      IgnoringErrors([&] { lines += Line(IndexedLabel(text, i), collection->Item(i)); });
    }
  }
};

}  // namespace

bool LibraryTrace::IsOn() const noexcept {
  bool exists = false;
  IgnoringErrors([&] { exists = !traceFile_.empty() && files_.FileExists(traceFile_); });
  return exists;
}

void LibraryTrace::WritePairs(std::span<const TracePair> pairs) const {
  IgnoringErrors([&] {
    if (!IsOn()) return;
    std::string lines;
    for (const TracePair& pair : pairs) {
      IgnoringErrors([&] { std::visit(ValueLines{pair.text, lines}, pair.value); });
    }
    if (!lines.empty()) files_.AppendBytes(traceFile_, ansi_.Encode(lines));
  });
}

void LibraryTrace::PutTraceObject(const PcObjectPtr& object, const std::string& title) const {
  if (object && IsOn()) object->WriteToFile(title, traceFile_);
}

void LibraryTrace::PutTraceRecList(const PcRecordListPtr& records, const std::string& title) const {
  if (records && IsOn()) records->WriteToFile(title, traceFile_);
}

}  // namespace tessel
