#include "embedded/session/unit_of_work.h"

#include "embedded/store/commit_marks.h"
#include "embedded/store/transaction.h"

namespace tessel::embedded {
namespace {

class UnitOfWork final : public PcUnitOfWork {
 public:
  UnitOfWork(std::shared_ptr<Database> database, const std::string& mark)
      : database_(std::move(database)), transaction_(*database_) {
    if (!mark.empty()) AddMark(*database_, mark);
  }
  void Commit() override { transaction_.Commit(); }

 private:
  std::shared_ptr<Database> database_;
  WriteTransaction transaction_;
};

class Reading final : public PcReading {
 public:
  explicit Reading(std::shared_ptr<Database> database)
      : database_(std::move(database)), snapshot_(*database_) {}

 private:
  std::shared_ptr<Database> database_;
  ReadSnapshot snapshot_;
};

}  // namespace

PcUnitOfWorkPtr BeginWork(std::shared_ptr<Database> database, const std::string& mark) {
  if (database->Writing()) throw HostError("A unit of work is open already");
  return std::make_unique<UnitOfWork>(std::move(database), mark);
}

PcReadingPtr BeginRead(std::shared_ptr<Database> database) {
  return std::make_unique<Reading>(std::move(database));
}

}  // namespace tessel::embedded
