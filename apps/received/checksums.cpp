#include "received/checksums.h"

#include <openssl/evp.h>

#include <algorithm>
#include <map>
#include <memory>
#include <sstream>

namespace tessel::received {
namespace {

struct FreeDigest {
  void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

void Require(bool done) {
  if (!done) throw ReadError("The cryptographic library computes no SHA-256 sum");
}

std::string Hexadecimal(const unsigned char* bytes, std::size_t count) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += kDigits[bytes[i] >> 4U];
    text += kDigits[bytes[i] & 0xFU];
  }
  return text;
}

FileSum SumOf(const FileSource& source, const std::string& name) {
  const std::unique_ptr<EVP_MD_CTX, FreeDigest> context(EVP_MD_CTX_new());
  Require(context && EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1);
  FileSum sum{name, 0, {}};
  source.Read(name, [&](std::string_view piece) {
    Require(EVP_DigestUpdate(context.get(), piece.data(), piece.size()) == 1);
    sum.size += piece.size();
    return true;
  });
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  Require(EVP_DigestFinal_ex(context.get(), digest, &length) == 1);
  sum.sha256 = Hexadecimal(digest, length);
  return sum;
}

}  // namespace

std::vector<FileSum> SumsOf(const FileSource& source) {
  std::vector<FileSum> sums;
  for (const Entry& entry : source.Entries()) {
    if (entry.kind == Entry::Kind::kFile) sums.push_back(SumOf(source, entry.name));
  }
  return sums;
}

std::string SumsText(const std::vector<FileSum>& sums) {
  std::string text;
  for (const FileSum& sum : sums)
    text += sum.sha256 + " " + std::to_string(sum.size) + " " + sum.name + "\n";
  return text;
}

std::vector<FileSum> ParseSums(const std::string& text) {
  std::vector<FileSum> sums;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    FileSum sum;
    std::istringstream parts(line);
    if (!(parts >> sum.sha256 >> sum.size) || parts.get() != ' ' || !std::getline(parts, sum.name)) {
      throw ReadError("The recorded check sums cannot be read: \"" + line + "\"");
    }
    sums.push_back(std::move(sum));
  }
  return sums;
}

void CompareSums(const FileSource& source, const std::vector<FileSum>& recorded,
                 std::vector<Problem>& problems) {
  std::map<std::string, const FileSum*> expected;
  for (const FileSum& sum : recorded)
    expected[sum.name] = &sum;
  for (const Entry& entry : source.Entries()) {
    if (entry.kind != Entry::Kind::kFile) continue;
    const auto found = expected.find(entry.name);
    if (found == expected.end()) {
      problems.push_back({entry.name, "was not sent"});
      continue;
    }
    const FileSum& wanted = *found->second;
    expected.erase(found);
    if (entry.size != wanted.size) {
      problems.push_back({entry.name, "has " + std::to_string(entry.size) + " bytes; " +
                                          std::to_string(wanted.size) + " were sent"});
    } else if (SumOf(source, entry.name).sha256 != wanted.sha256) {
      problems.push_back({entry.name, "is not what was sent: its SHA-256 sum differs"});
    }
  }
  for (const auto& [name, sum] : expected)
    problems.push_back({name, "was sent and is missing"});
}

}  // namespace tessel::received
