// What the sender needs of the operating system beside the platform's ports: file facts, running a program to
// its end, waiting for a change. Paths are native. posix/ holds the only system calls.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::sender {

// Waits until the content of a file is on the disk. Error 57 or 61 when it cannot be brought there.
void SyncFile(const std::string& path);

// Name of this machine, different from that of every other one.
[[nodiscard]] std::string MachineName();
[[nodiscard]] int ProcessNumber();

// Why somebody else could read the file or change it, as text; empty when only its owner, who runs this
// program, may read it.
[[nodiscard]] std::string WhyNotPrivate(const std::string& path);

// Bytes of a regular file that is no link; -1 for anything else.
[[nodiscard]] long long RegularFileSize(const std::string& path);

// What lies directly in a folder, sorted by name; links are told as such, never followed.
enum class EntryKind { kFile, kFolder, kOther };
struct Entry {
  std::string name;
  EntryKind kind = EntryKind::kOther;
};
// Error 75 when the folder cannot be read.
[[nodiscard]] std::vector<Entry> EntriesOf(const std::string& folder);
[[nodiscard]] bool IsRealFolder(const std::string& path);

// Why this account may not make, rename and delete files in a folder, as text; empty when it may.
[[nodiscard]] std::string WhyNotWritable(const std::string& folder);

// Whether this account may run the file as a program.
[[nodiscard]] bool IsProgram(const std::string& path);

struct ProgramResult {
  enum class End { kExited, kKilled, kTimedOut, kNotStarted };
  End end = End::kNotStarted;
  int status = 0;      // exit status, the signal's number, or the error's number
  std::string output;  // standard output and error, no more than was asked for
};

// Runs a program with an argument vector in a folder, without a shell, and waits for its end. What runs
// longer is killed, with the processes that it started.
[[nodiscard]] ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                                       const std::string& folder, std::chrono::milliseconds limit,
                                       std::size_t mostOutput);

// Waits for changes in folders, and for the wish that the program ends. One object a process.
class Watch {
 public:
  enum class Event { kChange, kWoken, kTimeOut, kEnd };
  virtual ~Watch() = default;
  // A folder that is missing, or cannot be watched, is left to the next scan.
  virtual void Add(const std::string& folder) = 0;
  // False when the system gives this account no watch: then only the scans see what is new.
  [[nodiscard]] virtual bool SeesChanges() const { return true; }
  [[nodiscard]] virtual Event Wait(std::chrono::milliseconds time) = 0;
  // Ends a wait with kWoken; any thread may call it.
  virtual void Wake() = 0;
};

// From here on the signals that end a program (terminate, interrupt) end Wait instead.
[[nodiscard]] std::unique_ptr<Watch> NewWatch();

}  // namespace tessel::sender
