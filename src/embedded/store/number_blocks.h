// Numbers that a write transaction draws: taken from the database in blocks, since an export draws one a
// document, and given out one by one. What is left goes back when the transaction is committed.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>

namespace tessel::embedded {

class NumberBlocks {
 public:
  // The next number under a name. `take` takes a number of them from the database and returns what stands
  // behind the last one; its errors go to the caller.
  template <class Take>
  [[nodiscard]] std::int32_t Draw(const std::string& name, const Take& take) {
    Block& block = blocks_[name];
    if (block.next == block.end) {
      const std::int32_t size = std::clamp<std::int32_t>(2 * block.size, 1, kLargest);
      const std::int32_t end = take(size);
      block = {end - size, end, size};
    }
    return block.next++;
  }
  // Before the outermost transaction is committed: calls `giveBack` with a name and how many are left.
  template <class GiveBack>
  void End(const GiveBack& giveBack) {
    for (const auto& entry : blocks_) {
      if (entry.second.next != entry.second.end) giveBack(entry.first, entry.second.end - entry.second.next);
    }
    Forget();
  }
  // What is undone takes its blocks along; the rest of those of outer transactions is lost.
  void Forget() { blocks_.clear(); }

 private:
  static constexpr std::int32_t kLargest = 256;
  struct Block {
    std::int32_t next = 0;
    std::int32_t end = 0;
    std::int32_t size = 0;  // of the newest one; each is twice as large as the one before
  };
  std::map<std::string, Block> blocks_;
};

}  // namespace tessel::embedded
