#include <iostream>
#include <string>
#include <vector>

#include "dbm/DbmCommand.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  return orv::dbm::RunDbm(args, std::cout, std::cerr);
}
