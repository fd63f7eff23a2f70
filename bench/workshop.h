// A database with one assembly and small documents below it, their files, and a place for what comes out.
#pragma once

#include <string>
#include <vector>

namespace tessel::bench {

class Workshop {
 public:
  // In a new folder below `place`, which goes at the end. `tessel` is the program to be measured. The
  // database is a file there, or has a schema of its own on the PostgreSQL server of an address.
  Workshop(const std::string& place, std::string tessel, int documents, const std::string& server = {});
  ~Workshop();
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;

  [[nodiscard]] const std::string& Folder() const { return folder_; }
  [[nodiscard]] std::string Files() const { return folder_ + "/files"; }
  // Where each measured run puts its files; Clear empties it.
  [[nodiscard]] std::string Out(const std::string& name) const { return folder_ + "/out/" + name; }
  void Clear() const;

  // The unattended export of the assembly, to some recipients, or to nobody for 0.
  [[nodiscard]] std::vector<std::string> ExportCommand(int recipients) const;

 private:
  [[nodiscard]] std::string Model(int documents) const;

  std::string folder_;
  std::string tessel_;
  std::string server_;
  std::string schema_;
  std::string database_;
};

}  // namespace tessel::bench
