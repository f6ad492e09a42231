#include <iostream>

#include "cli/Cli.h"

int main(int argc, char** argv) {
  orv::cli::Args args(argv + 1, argv + argc);
  return orv::cli::Run(args, std::cout, std::cerr);
}
