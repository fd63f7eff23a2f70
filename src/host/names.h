// Names that the client's database has by itself or that an exchange expects in it, each once.
#pragma once

namespace tessel {

// Attributes of objects, and columns of the record lists about them.
namespace attribute {
// every object
inline constexpr const char* kClassId = "CLASS_ID";
inline constexpr const char* kObjectId = "OBJECT_ID";
inline constexpr const char* kSiteId = "SITE_ID";
inline constexpr const char* kDescription = "VRK_DESCRIPTION";
inline constexpr const char* kNamedDescription = "CN_DESCRIPTION";  // of classes that have no other
inline constexpr const char* kState = "STATE";
inline constexpr const char* kRevisionStage = "REVISION_STG";
inline constexpr const char* kUnderOperation = "UNDER_OPERATION";
// links
inline constexpr const char* kClassId1 = "CLASS_ID1";
inline constexpr const char* kObjectId1 = "OBJECT_ID1";
inline constexpr const char* kClassId2 = "CLASS_ID2";
inline constexpr const char* kObjectId2 = "OBJECT_ID2";
inline constexpr const char* kDirection = "VRK_DIRECTION";
// lookup tables
inline constexpr const char* kValueOrder = "VALUE_ORDER";
// documents, and the copy of their files
inline constexpr const char* kFileName = "FILE_NAME";
inline constexpr const char* kCadFileName = "CAD_REF_FILE_NAME";
inline constexpr const char* kOperationId = "OPERATION_ID";
inline constexpr const char* kFileOverwrite = "FILE_OVERWRITE";
inline constexpr const char* kRootObject = "ROOT_OBJ";
// locks
inline constexpr const char* kLockState = "VRKX_DX_LOCK_STATE";
inline constexpr const char* kLockDescription = "VRKX_DX_LOCK_DESCRIPTION";
inline constexpr const char* kLockedBy = "VRKX_DX_LOCKED_BY";
inline constexpr const char* kFirstLockUse = "VRKX_DX_FIRST_LOCK_USE";
inline constexpr const char* kLockedClassId = "OPER_CLASS_ID";
inline constexpr const char* kLockedObjectId = "OPER_OBJECT_ID";
// data exchange objects
inline constexpr const char* kProcessPhase = "VRKX_DX_PROCESS_PHASE";
inline constexpr const char* kStatusInfo = "VRKX_DX_STATUS_INFO";
inline constexpr const char* kExchangeType = "VRKX_DX_EXCHANGE_TYPE";
inline constexpr const char* kProtocol = "VRKX_DX_EXCH_PROTOCOL";
inline constexpr const char* kRootDirectory = "VRKX_DX_EXCHANGE_ROOT_DIR";
inline constexpr const char* kSendToCompany = "VRKX_DX_SEND_TO_COMPANY";
inline constexpr const char* kSendToContact = "VRKX_DX_SEND_TO_CONT_PERS";
inline constexpr const char* kTargetFolder = "VRKX_DX_TARGET_FOLDER";
// partners
inline constexpr const char* kInactive = "VRKX_DX_INACTIVE";
inline constexpr const char* kEMail = "VRKX_DX_SUPPLIER_EMAIL";
}  // namespace attribute

// Class mechanisms: what the objects of a class are to an exchange.
namespace class_mechanism {
inline constexpr const char* kExchangeDocument = "VRKX_DX_SUPPLIER_EXCH_DOC";
inline constexpr const char* kTransmittal = "VRKX_DX_TRANSMITTAL";
inline constexpr const char* kCompany = "VRKX_DX_SUPPLIER_COMPANY";
inline constexpr const char* kContactPerson = "VRKX_DX_SUPPLIER_CONT_PERSON";
inline constexpr const char* kFolderStructure = "VRKX_DX_FOLDER_STRUCTURE";
}  // namespace class_mechanism

// Database mechanism without which nothing is exchanged.
inline constexpr const char* kSupplierExchange = "Supplier Exchange";

// Class of the lock records.
inline constexpr const char* kLockClass = "Object Locking";

// What names the settings of this program in the database.
namespace admin_setting {
inline constexpr const char* kSetName = "Initialization";
inline constexpr const char* kClassName = "Admin Setting";
inline constexpr const char* kIdentifier = "VRKX_ID";
inline constexpr const char* kNameAttribute = "VRKX_VALUE_1";
inline constexpr const char* kTextAttribute = "VRKX_VALUE_LONG";
}  // namespace admin_setting

}  // namespace tessel
