// What starting any dynamically linked C++ program costs here: the yardstick for the start of ours.
#include <iostream>

int main() {
  std::cout << "baseline 1.0.0\n";
  return 0;
}
