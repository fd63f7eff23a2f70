// The queue: every directory below the exchange paths that ends in "_New". Several workers serve it, one of
// them a directory, so that a server that hangs holds up nobody else.
#pragma once

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "sender/system.h"
#include "sender/worker.h"

namespace tessel::sender {

class Queue {
 public:
  Queue(const WorkParts& parts, Watch& watch);
  ~Queue();
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;

  // Works until nothing is left that could be done now or after a pause, or until the process is to end. True
  // when everything was sent, or waits for its acknowledgement.
  bool WorkOff();
  // Works until the process is to end.
  void Serve();

 private:
  using Moment = std::chrono::steady_clock::time_point;
  struct Known {
    bool working = false;
    Moment due;
    int tries = 0;        // answers in a row that were neither progress nor an end
    bool pending = true;  // WorkOff waits for it
    bool rests = false;   // stopped: looked at by scans alone
    std::string said;     // last text that was logged
  };

  void Scan();
  // Empty, and logged, when the path cannot be read.
  [[nodiscard]] std::vector<ExchangeDirectory> Listed(const std::string& path);
  void RunWorker();
  void Take(const ExchangeDirectory& directory, const WorkAnswer& answer);
  void Postpone(Known& known, const WorkAnswer& answer);
  void SayOnce(Known& known, const std::string& directory, const std::string& step, const std::string& text);
  // Time until the next directory is due; nothing pending and nobody working: a negative one.
  [[nodiscard]] std::chrono::milliseconds UntilDue();
  void HurryUp();

  WorkParts parts_;
  Watch& watch_;
  Databases databases_;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool ending_ = false;
  bool clean_ = true;
  std::deque<ExchangeDirectory> waiting_;
  std::map<std::string, Known> known_;             // by path
  std::map<std::string, std::string> unreadable_;  // why, by exchange path, as last logged
  std::string problem_;                            // of the databases, as last logged
  std::vector<std::thread> threads_;
};

}  // namespace tessel::sender
