// The FSUIPC address space as a byte image: offsets 0x0000 to 0xFFFF, every
// value little-endian as the module lays it out. Every simulator that is not
// FSUIPC itself is turned into such an image by its adapter, and the in-process
// partner answers the channel's requests from it.
//
// Reads and writes are bounds-checked: a value that does not lie wholly inside
// the image is not touched (a typed read gives 0, a write reports false).
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

namespace orv {

class OffsetImage {
 public:
  static constexpr std::size_t kSize = 0x10000;

  OffsetImage() : bytes_(kSize, 0) {}

  // True when [offset, offset + size) lies inside the image.
  static constexpr bool Fits(std::uint64_t offset, std::uint64_t size) {
    return offset <= kSize && size <= kSize - offset;
  }

  // Copies size bytes out of the image; false (and nothing copied) when the
  // range leaves the image.
  bool ReadBytes(std::uint32_t offset, void* dst, std::size_t size) const {
    if (!Fits(offset, size)) return false;
    if (size) std::memcpy(dst, bytes_.data() + offset, size);
    return true;
  }
  bool WriteBytes(std::uint32_t offset, const void* src, std::size_t size) {
    if (!Fits(offset, size)) return false;
    if (size) std::memcpy(bytes_.data() + offset, src, size);
    return true;
  }
  bool Fill(std::uint32_t offset, std::uint8_t value, std::size_t size) {
    if (!Fits(offset, size)) return false;
    if (size) std::memset(bytes_.data() + offset, value, size);
    return true;
  }

  // Typed little-endian access: T is an integer or a float/double.
  template <class T>
  T Get(std::uint32_t offset) const {
    static_assert(std::is_arithmetic_v<T>);
    if (!Fits(offset, sizeof(T))) return T{};
    return LoadLE<T>(bytes_.data() + offset);
  }
  template <class T>
  bool Put(std::uint32_t offset, T value) {
    static_assert(std::is_arithmetic_v<T>);
    if (!Fits(offset, sizeof(T))) return false;
    StoreLE<T>(bytes_.data() + offset, value);
    return true;
  }

  const std::uint8_t* Data() const { return bytes_.data(); }
  std::uint8_t* Data() { return bytes_.data(); }
  void Clear() { std::memset(bytes_.data(), 0, kSize); }

  // Little-endian load and store of an arithmetic value at p, whatever the
  // host's byte order. Shared with the block codec of the channel.
  template <class T>
  static T LoadLE(const std::uint8_t* p) {
    using U = UnsignedOf<T>;
    U u = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) u |= static_cast<U>(static_cast<U>(p[i]) << (8 * i));
    return std::bit_cast<T>(u);
  }
  template <class T>
  static void StoreLE(std::uint8_t* p, T value) {
    using U = UnsignedOf<T>;
    U u = std::bit_cast<U>(value);
    for (std::size_t i = 0; i < sizeof(T); ++i) p[i] = static_cast<std::uint8_t>(u >> (8 * i));
  }

 private:
  template <class T>
  using UnsignedOf = std::conditional_t<
      sizeof(T) == 1, std::uint8_t,
      std::conditional_t<sizeof(T) == 2, std::uint16_t,
                         std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>>>;

  std::vector<std::uint8_t> bytes_;
};

}  // namespace orv
