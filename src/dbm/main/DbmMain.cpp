#include <iostream>

int main() {
  std::cerr << "orvanta-dbm: not built yet\n";
  return 1;
}
