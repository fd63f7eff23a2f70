// StartApplication: the one creatable class through which the client reaches the system.
#pragma once

#include <cstdint>
#include <string>

#include "host/object_key.h"
#include "host/record_list.h"
#include "host/session.h"

namespace tessel {

class Program;

// Registration of the class with its client. The ids never change.
namespace registration {
inline constexpr const char* kProject = "prjTessel";
inline constexpr const char* kClassName = "StartApplication";
inline constexpr const char* kInterfaceName = "_StartApplication";
inline constexpr const char* kClassId = "{8E2B61D4-5C0F-4B7A-9D3E-71A4C6F0B852}";
inline constexpr const char* kInterfaceId = "{3F9A17C6-20DE-4E85-B1C8-0A5D94E7236B}";
}  // namespace registration

// The dual interface; the order of the operations is part of it. No operation lets an exception out.
class StartApplicationInterface {
 public:
  virtual ~StartApplicationInterface() = default;

  // The interactive export: 0 when the wizard closed without a cancel, 1 in every other case. The operation
  // "StructureMode" exports one object into a folder structure.
  virtual std::int16_t StartExport(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                   const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                   PcRecordListPtr& thirdRec) noexcept = 0;
  // Adds the objects of the first list to the selection. Always 0.
  virtual std::int16_t CollectSelObjs(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                      const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                      PcRecordListPtr& thirdRec) noexcept = 0;
  // Called by the client during a copy, with the copied files and the links between them. Always 0.
  virtual std::int16_t LFCStage2(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                 const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                 PcRecordListPtr& thirdRec) noexcept = 0;
  // Lock and unlock the documents of the first list. Always 0; refusals are told in message boxes.
  virtual std::int16_t LockObject(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                  const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                  PcRecordListPtr& thirdRec) noexcept = 0;
  virtual std::int16_t UnlockObject(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                    const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                    PcRecordListPtr& thirdRec) noexcept = 0;
  // Shows the newest data exchange object of the document in row 0. Always 0.
  virtual std::int16_t GetLatestDataExObj(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                          const PcRecordListPtr& FirstRec) noexcept = 0;
  // Continues the stopped exchange in row 0. Always 0.
  virtual std::int16_t ContinueBatchMode(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                         const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                         PcRecordListPtr& thirdRec) noexcept = 0;
  // Starts the server monitor of a directory for a data exchange object.
  virtual bool StartServerMon(const std::string& directory, const PcSessionPtr& PcSession, ObjectId objectId,
                              ClassId classId, const std::string& idValue) noexcept = 0;
};

// Holds no state of its own: every entry object of a loaded program shares the program's.
class StartApplication : public StartApplicationInterface {
 public:
  explicit StartApplication(Program& program) : program_(program) {}

  std::int16_t StartExport(const PcSessionPtr& PcSession, const std::string& activeOperation,
                           const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                           PcRecordListPtr& thirdRec) noexcept override;
  std::int16_t CollectSelObjs(const PcSessionPtr& PcSession, const std::string& activeOperation,
                              const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                              PcRecordListPtr& thirdRec) noexcept override;
  std::int16_t LFCStage2(const PcSessionPtr& PcSession, const std::string& activeOperation,
                         const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                         PcRecordListPtr& thirdRec) noexcept override;
  std::int16_t LockObject(const PcSessionPtr& PcSession, const std::string& activeOperation,
                          const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                          PcRecordListPtr& thirdRec) noexcept override;
  std::int16_t UnlockObject(const PcSessionPtr& PcSession, const std::string& activeOperation,
                            const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                            PcRecordListPtr& thirdRec) noexcept override;
  std::int16_t GetLatestDataExObj(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                  const PcRecordListPtr& FirstRec) noexcept override;
  std::int16_t ContinueBatchMode(const PcSessionPtr& PcSession, const std::string& activeOperation,
                                 const PcRecordListPtr& FirstRec, const PcRecordListPtr& SecondRec,
                                 PcRecordListPtr& thirdRec) noexcept override;
  bool StartServerMon(const std::string& directory, const PcSessionPtr& PcSession, ObjectId objectId,
                      ClassId classId, const std::string& idValue) noexcept override;

 private:
  Program& program_;
};

}  // namespace tessel
