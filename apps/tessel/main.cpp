#include <iostream>

#include "platform/posix/posix_platform.h"
#include "tessel/cli.h"

int main(int count, char** arguments) {
  return tessel::cli::Run({arguments + 1, arguments + count},
                          {std::cin, std::cout, std::cerr, tessel::StandardErrorIsTerminal()});
}
