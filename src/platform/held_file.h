// A small file that a process holds: who finds it free knows that nobody works on what it tells of any more.
#pragma once

#include <string>
#include <string_view>

namespace tessel {

class HeldFile {
 public:
  // Lets go; the file stays. The end of the process lets go as well, however it comes.
  virtual ~HeldFile() = default;
  [[nodiscard]] virtual std::string Read() const = 0;
  // Readable by others at once; on the disk by the next FileSystem::MakeDurable of a folder beside the file.
  virtual void Append(std::string_view bytes) = 0;
  // Deletes the file and lets go. Nothing happens when it was deleted already.
  virtual void Delete() = 0;
};

}  // namespace tessel
