#include "embedded/sql/postgresql/server_address.h"

#include <algorithm>
#include <charconv>

#include "host/error.h"

namespace tessel::embedded {
namespace {

constexpr std::string_view kSchemes[] = {"postgresql://", "postgres://"};

std::string Decoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    unsigned char code = 0;
    const std::string_view digits = text.substr(i + 1, 2);
    const auto end = digits.data() + digits.size();
    if (digits.size() != 2 || std::from_chars(digits.data(), end, code, 16).ptr != end || code == 0) {
      throw HostError("\"%" + std::string(digits) + "\" in a database address stands for no character");
    }
    decoded += static_cast<char>(code);
    i += 2;
  }
  return decoded;
}

// "user:password@host/..." without the password.
std::string WithoutPassword(std::string_view text) {
  const std::size_t at = text.substr(0, text.find('/')).rfind('@');
  const std::size_t colon = text.substr(0, at).find(':');
  if (at == std::string_view::npos || colon == std::string_view::npos) return std::string(text);
  return std::string(text.substr(0, colon)).append(text.substr(at));
}

std::string_view SchemeOf(std::string_view text) {
  for (const std::string_view scheme : kSchemes) {
    if (text.starts_with(scheme)) return scheme;
  }
  return {};
}

}  // namespace

bool IsServerAddress(std::string_view text) {
  return !SchemeOf(text).empty();
}

ServerAddress ParseServerAddress(std::string_view text) {
  const std::size_t question = text.find('?');
  const std::string_view base = text.substr(0, question);
  const std::string_view scheme = SchemeOf(base);
  ServerAddress address{std::string(base), "",
                        std::string(scheme) + WithoutPassword(base.substr(scheme.size()))};
  const auto add = [](std::string& to, std::string_view parameter) {
    to.append(1, to.find('?') == std::string::npos ? '?' : '&').append(parameter);
  };
  std::string_view rest = question == std::string_view::npos ? "" : text.substr(question + 1);
  while (!rest.empty()) {
    const std::string_view parameter = rest.substr(0, rest.find('&'));
    rest.remove_prefix(std::min(parameter.size() + 1, rest.size()));
    if (!parameter.starts_with("password=")) add(address.shown, parameter);
    if (parameter.starts_with("vault=")) {
      address.vault = Decoded(parameter.substr(6));
    } else {
      add(address.connection, parameter);
    }
  }
  return address;
}

}  // namespace tessel::embedded
