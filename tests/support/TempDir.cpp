#include "support/TempDir.h"

#include <atomic>
#include <fstream>
#include <random>
#include <stdexcept>
#include <unistd.h>

namespace orv::test {

namespace fs = std::filesystem;

TempDir::TempDir() {
  static std::atomic<int> counter{0};
  std::random_device rd;
  for (int attempt = 0; attempt < 100; ++attempt) {
    fs::path p = fs::temp_directory_path() /
                 ("orvanta-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++) + "-" +
                  std::to_string(rd() % 100000));
    std::error_code ec;
    if (fs::create_directory(p, ec)) {
      path_ = p;
      return;
    }
  }
  throw std::runtime_error("cannot make a temporary folder");
}

TempDir::~TempDir() {
  std::error_code ec;
  fs::remove_all(path_, ec);
}

fs::path TempDir::Write(std::string_view relative, std::string_view content) const {
  fs::path p = path_ / fs::path(std::string(relative));
  fs::create_directories(p.parent_path());
  std::ofstream out(p, std::ios::binary | std::ios::trunc);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  return p;
}

}  // namespace orv::test
