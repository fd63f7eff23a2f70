// The setting of our own programs that has the SHA-256 sums of an export's files recorded.
#pragma once

namespace tessel::checksum_setting {

inline constexpr const char* kSection = "Verification";
inline constexpr const char* kKey = "RecordChecksums";
inline constexpr const char* kDefault = "False";
inline constexpr const char* kMeaning =
    "Whether the SHA-256 sums of an export's files are recorded in the database, for tessel verify.";

}  // namespace tessel::checksum_setting
