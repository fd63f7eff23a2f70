#include <exception>
#include <iostream>

#include "platform/native/native_platform.h"
#include "sender/command_line.h"

int main(int argc, char** argv) {
  try {
    tessel::NativePlatform system;
    return tessel::sender::Run(tessel::ProgramArguments(argc, argv), system.Services(), std::cout, std::cerr);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 2;
  }
}
