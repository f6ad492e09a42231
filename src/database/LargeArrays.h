// Room for the big loaded arrays. A world database fills some fifty megabytes
// of records at start-up, and on a 4 KB page every page is a fault into the
// kernel when it is first written: thousands of them, which cost more than
// the reading. Arrays of more than a few large pages are therefore reserved
// in one piece and the system is asked to back them with large pages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace orv {

// Asks for large pages over the whole pages of [data, data + bytes); a hint
// the system may ignore.
inline void AdviseLargePages(const void* data, std::size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  constexpr std::size_t kLarge = std::size_t{2} << 20;
  if (bytes < 4 * kLarge) return;
  constexpr std::uintptr_t kPage = 4096;
  const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(data) + kPage - 1) & ~(kPage - 1);
  const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(data) + bytes) & ~(kPage - 1);
  if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
  (void)data;
  (void)bytes;
#endif
}

// Capacity for n records, reserved before anything is written to it.
template <typename T>
void ReserveRecords(std::vector<T>& v, std::size_t n) {
  v.reserve(n);
  AdviseLargePages(v.data(), v.capacity() * sizeof(T));
}

// n records made by their default constructor, in memory reserved as above.
template <typename T>
void SizeRecords(std::vector<T>& v, std::size_t n) {
  v.clear();
  ReserveRecords(v, n);
  v.resize(n);
}

}  // namespace orv
