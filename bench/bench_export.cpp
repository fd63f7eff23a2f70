// Whole unattended exports of small documents below one assembly, each measured from outside in turns with
// `cp -a` of the same files and with the steps of a plain script, in memory and on the disk: time, system
// calls and memory a document. With --check the exit status is 1 beyond the targets.
//
//   bench_export [--check] [--memory DIR] [--disk DIR] [--server ADDRESS] [DOCUMENTS...]
//
// ADDRESS (postgresql://...?...) names a database on a server, in which the same exports are measured, too.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "processes.h"
#include "workshop.h"

namespace {

using namespace tessel::bench;

struct Settings {
  bool check = false;
  std::string memory = "/dev/shm";
  std::string disk = std::filesystem::current_path().string();
  std::vector<int> sizes;
  std::string tessel;
  std::string script;
  std::string server;
};

// One line of the table of targets.
struct Target {
  std::string what;
  double measured;
  double most;
};

constexpr int kTargetSize = 10000;
constexpr int kRecipients = 3;

enum class Place { kMemory, kDisk };

// The best of several turns of each work: what stands in the way of one turn is not its own.
class Turns {
 public:
  Turns(const Settings& settings, Place place, const Workshop& workshop)
      : settings_(settings), place_(place), workshop_(workshop) {}

  double Copy(int times) {
    const double seconds = Time([&] {
      double sum = 0;
      for (int i = 0; i < times; ++i)
        sum += Run({"cp", "-a", workshop_.Files(), workshop_.Out("copy" + std::to_string(i))}).seconds;
      if (place_ == Place::kDisk) sum += Run({"sync", "-f", workshop_.Folder()}).seconds;
      return sum;
    });
    return Best("copy" + std::to_string(times), seconds);
  }
  double Script() {
    return Best("script", Time([&] {
                  return std::atof(
                      Run({"/usr/bin/python3", settings_.script, workshop_.Files(), workshop_.Out("script")})
                          .output.c_str());
                }));
  }
  double Export(int recipients) {
    return Best("export" + std::to_string(recipients), Time([&] {
                  const Measured run = Run(workshop_.ExportCommand(recipients));
                  peakKilobytes = std::max(peakKilobytes, run.peakKilobytes);
                  return run.seconds;
                }));
  }
  long peakKilobytes = 0;

 private:
  // What earlier turns left is cleared, and written, before the clock runs.
  template <class Work>
  double Time(const Work& work) {
    workshop_.Clear();
    if (place_ == Place::kDisk) (void)Run({"sync", "-f", workshop_.Folder()});
    return work();
  }
  double Best(const std::string& name, double seconds) {
    double& best = best_.try_emplace(name, seconds).first->second;
    return best = std::min(best, seconds);
  }

  const Settings& settings_;
  Place place_;
  const Workshop& workshop_;
  std::map<std::string, double> best_;
};

struct Row {
  int documents = 0;
  double copy = 0;
  double script = 0;
  double export0 = 0;
  double copy3 = 0;
  double export3 = 0;
  double calls = 0;
  double kilobytes = 0;
};

Row MeasureSize(const Settings& settings, Place place, int documents, long emptyPeak, long emptyCalls) {
  const Workshop workshop(place == Place::kMemory ? settings.memory : settings.disk, settings.tessel,
                          documents);
  Turns turns(settings, place, workshop);
  Row row;
  row.documents = documents;
  const int count = documents > kTargetSize ? 2 : 5;
  for (int turn = 0; turn < count; ++turn) {
    row.copy = turns.Copy(1);
    row.export0 = turns.Export(0);
    row.script = turns.Script();
  }
  row.kilobytes = static_cast<double>(turns.peakKilobytes - emptyPeak) / documents;
  for (int turn = 0; turn < count && documents <= kTargetSize; ++turn) {
    row.copy3 = turns.Copy(kRecipients);
    row.export3 = turns.Export(kRecipients);
  }
  if (documents <= kTargetSize) {
    workshop.Clear();
    const long calls = CountSystemCalls(workshop.ExportCommand(0), workshop.Folder());
    row.calls = static_cast<double>(calls - emptyCalls) / documents;
  }
  return row;
}

// What an export of one document takes, whatever it holds.
Measured MeasureEmpty(const Settings& settings, long& calls) {
  const Workshop workshop(settings.memory, settings.tessel, 1);
  const Measured run = Run(workshop.ExportCommand(0));
  workshop.Clear();
  calls = CountSystemCalls(workshop.ExportCommand(0), workshop.Folder());
  return run;
}

void Print(const Row& row) {
  std::printf("%9d %9.3f %9.3f %9.3f %8.2f %8.2f %9.3f %9.3f %8.2f %8.1f %8.2f\n", row.documents, row.copy,
              row.script, row.export0, row.export0 / row.copy, row.export0 / row.script, row.copy3,
              row.export3, row.copy3 > 0 ? row.export3 / row.copy3 : 0, row.calls, row.kilobytes);
  std::fflush(stdout);
}

// The same export from a file and from a server, in turns.
void CompareWithServer(const Settings& settings, int documents) {
  std::map<std::string, double> best;
  for (const std::string& server : {std::string(), settings.server}) {
    const Workshop workshop(settings.memory, settings.tessel, documents, server);
    Turns turns(settings, Place::kMemory, workshop);
    for (int turn = 0; turn < 5; ++turn)
      best[server] = turns.Export(0);
  }
  std::printf("on a server, %d documents: %.3f s, from a file %.3f s\n", documents, best[settings.server],
              best[""]);
}

void AddTargets(Place place, const std::vector<Row>& rows, std::vector<Target>& targets) {
  const std::string where = place == Place::kMemory ? "in memory, " : "on the disk, ";
  for (const Row& row : rows) {
    if (row.documents == kTargetSize && place == Place::kMemory) {
      targets.push_back({where + "export against cp -a", row.export0 / row.copy, 3.0});
      targets.push_back({where + "export against the script", row.export0 / row.script, 0.7});
      targets.push_back({where + "three recipients against three cp -a", row.export3 / row.copy3, 1.5});
      targets.push_back({where + "system calls a document", row.calls, 16});
    }
    if (row.documents == kTargetSize && place == Place::kDisk) {
      targets.push_back({where + "export against cp -a and sync -f", row.export0 / row.copy, 1.2});
    }
    if (row.documents >= kTargetSize) {
      targets.push_back(
          {where + std::to_string(row.documents) + " documents, KB a document", row.kilobytes, 4});
    }
  }
  const Row& first = rows.front();
  const Row& last = rows.back();
  if (last.documents < 10 * first.documents) return;
  const double growth = (last.export0 / last.documents) / (first.export0 / first.documents);
  targets.push_back({where + "growth of the time a document", growth, 1.3});
  targets.push_back({where + "growth of the memory a document", last.kilobytes / first.kilobytes, 1.3});
}

Settings ParseArguments(int count, char** arguments) {
  Settings settings;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe");
  settings.tessel = (own.parent_path() / "tessel").string();
  settings.script = TESSEL_BENCH_SCRIPT;
  for (int i = 1; i < count; ++i) {
    const std::string argument = arguments[i];
    if (argument == "--check") {
      settings.check = true;
    } else if (argument == "--memory" && i + 1 < count) {
      settings.memory = arguments[++i];
    } else if (argument == "--server" && i + 1 < count) {
      settings.server = arguments[++i];
    } else if (argument == "--disk" && i + 1 < count) {
      settings.disk = arguments[++i];
    } else {
      settings.sizes.push_back(std::max(1, std::atoi(argument.c_str())));
    }
  }
  if (settings.sizes.empty()) settings.sizes = {1000, kTargetSize, 100000};
  return settings;
}

}  // namespace

int main(int count, char** arguments) {
  const Settings settings = ParseArguments(count, arguments);
  long emptyCalls = 0;
  const long emptyPeak = MeasureEmpty(settings, emptyCalls).peakKilobytes;
  std::vector<Target> targets;
  for (const Place place : {Place::kMemory, Place::kDisk}) {
    std::printf("%s\n", place == Place::kMemory ? "in memory" : "on the disk, cp -a with sync -f");
    std::printf("%9s %9s %9s %9s %8s %8s %9s %9s %8s %8s %8s\n", "documents", "cp -a s", "script s",
                "export s", "to cp", "to scr.", "3 cp s", "3 rec. s", "to 3 cp", "calls", "KB");
    std::vector<Row> rows;
    for (const int size : settings.sizes) {
      rows.push_back(MeasureSize(settings, place, size, emptyPeak, emptyCalls));
      Print(rows.back());
    }
    AddTargets(place, rows, targets);
  }
  for (const int size : settings.sizes) {
    if (!settings.server.empty() && size <= kTargetSize) CompareWithServer(settings, size);
  }
  bool good = true;
  for (const Target& target : targets) {
    const bool met = target.measured <= target.most;
    std::printf("%-58s %7.2f, at most %5.2f%s\n", target.what.c_str(), target.measured, target.most,
                met ? "" : "  MISSED");
    good = good && met;
  }
  return settings.check && !good ? 1 : 0;
}
