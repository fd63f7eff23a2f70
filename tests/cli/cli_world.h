// The sample company's database in a folder of its own, and the command line run in process.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/native_adapters.h"
#include "support/temporary_folder.h"
#include "support/valid_files.h"
#include "tessel/cli.h"

namespace tessel::test {

class CliWorld : public testing::Test {
 protected:
  CliWorld() {
    SetVariable("TESSEL_DRIVES", folder.Path("drives"));
    Run({"host", "create", Database(), std::string(TESSEL_EXAMPLES) + "/company.json"});
    EXPECT_EQ(err, "");
  }
  ~CliWorld() override { ExpectValidExchangeFiles(folder); }

  [[nodiscard]] std::string Database() const { return folder.Path("company.db"); }

  int Run(const std::vector<std::string>& arguments, const std::string& input = {}) {
    std::istringstream in(input);
    std::ostringstream outStream;
    std::ostringstream errStream;
    const int status = cli::Run(arguments, {in, outStream, errStream, false});
    out = outStream.str();
    err = errStream.str();
    return status;
  }
  // A command on the database as a user.
  int RunAs(const std::string& user, const std::string& command, std::vector<std::string> arguments) {
    std::vector<std::string> all{command, Database(), "--user", user};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return Run(all);
  }
  // Directories below the exchange path.
  [[nodiscard]] std::size_t Exchanges() const {
    std::size_t count = 0;
    if (!folder.Exists("drives/C/temp/Exchange")) return count;
    for (const std::string& entry : folder.Tree("drives/C/temp/Exchange")) {
      count += entry.find('/') == entry.size() - 1 ? 1 : 0;
    }
    return count;
  }
  // The last line written to standard output.
  [[nodiscard]] std::string LastLine() const {
    const std::string text = out.empty() ? out : out.substr(0, out.size() - 1);
    return text.substr(text.rfind('\n') + 1);
  }

  TemporaryFolder folder;
  std::string out;
  std::string err;
};

}  // namespace tessel::test
