// Addresses of databases on a PostgreSQL server: "postgresql://user@host/database?vault=/srv/vault".
#pragma once

#include <string>
#include <string_view>

namespace tessel::embedded {

struct ServerAddress {
  std::string connection;  // as the server's own programs take it
  std::string vault;       // value of the parameter "vault", which is ours; empty: none
  std::string shown;       // for people: without password
};

// Whether a text is the address of a server's database and no path.
[[nodiscard]] bool IsServerAddress(std::string_view text);

// Error: HostError for an address whose percent signs stand for no characters.
[[nodiscard]] ServerAddress ParseServerAddress(std::string_view text);

}  // namespace tessel::embedded
