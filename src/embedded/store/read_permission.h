// While it lives, statements that are prepared may read the tables that a check lets pass, and do nothing
// else.
#pragma once

#include <soci/soci.h>

#include <functional>
#include <string_view>

namespace tessel::embedded {

// All prepared statements of the connection are prepared anew afterwards.
class ReadPermission {
 public:
  using Check = std::function<bool(std::string_view table)>;
  // The check outlives the permission.
  ReadPermission(soci::session& session, const Check& readable);
  ~ReadPermission();
  ReadPermission(const ReadPermission&) = delete;
  ReadPermission& operator=(const ReadPermission&) = delete;

 private:
  soci::session& session_;
};

}  // namespace tessel::embedded
