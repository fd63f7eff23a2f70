#include <iostream>

#include "platform/native/native_platform.h"
#include "tessel/cli.h"

int main(int count, char** arguments) {
  tessel::KeepStandardStreams();
  return tessel::cli::Run(
      tessel::ProgramArguments(count, arguments),
      {std::cin, std::cout, std::cerr, tessel::StandardErrorIsTerminal(), &tessel::AskUnseen});
}
