// Bounds-checked little-endian cursor over a file held in memory, and its
// writer twin. A read past the end never touches memory outside the buffer: it
// returns zero and marks the reader failed, so that a loader checks Ok() once
// per record instead of at every field.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"

namespace orv {

class ByteReader {
public:
  ByteReader(const uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  explicit ByteReader(const std::vector<uint8_t>& bytes) : ByteReader(bytes.data(), bytes.size()) {}

  std::size_t Pos() const { return pos_; }
  std::size_t Size() const { return size_; }
  std::size_t Remaining() const { return pos_ <= size_ ? size_ - pos_ : 0; }
  bool AtEnd() const { return pos_ >= size_; }
  bool Has(std::size_t n) const { return n <= Remaining(); }
  bool Ok() const { return !failed_; }
  void Seek(std::size_t pos) {
    if (pos > size_) failed_ = true; else pos_ = pos;
  }
  bool Skip(std::size_t n) {
    if (!Has(n)) return Fail();
    pos_ += n;
    return true;
  }

  uint8_t U8() { return Scalar<uint8_t>(); }
  int16_t I16() { return Scalar<int16_t>(); }
  uint16_t U16() { return Scalar<uint16_t>(); }
  int32_t I32() { return Scalar<int32_t>(); }
  uint32_t U32() { return Scalar<uint32_t>(); }
  float F32() { return Scalar<float>(); }
  double F64() { return Scalar<double>(); }

  // A fixed text field of the given width into a fixed text of any width.
  template <std::size_t N>
  void Text(FixedStr<N>& out, std::size_t width) {
    if (!Has(width)) {
      Fail();
      out = FixedStr<N>();
      return;
    }
    out.AssignRaw(reinterpret_cast<const char*>(data_ + pos_), width);
    pos_ += width;
  }
  // A fixed text field as a view of the raw bytes (padding included).
  std::string_view Raw(std::size_t width) {
    if (!Has(width)) {
      Fail();
      return {};
    }
    std::string_view v(reinterpret_cast<const char*>(data_ + pos_), width);
    pos_ += width;
    return v;
  }
  // The first byte at the cursor without moving, 0 at the end.
  uint8_t Peek() const { return pos_ < size_ ? data_[pos_] : 0; }

private:
  bool Fail() {
    failed_ = true;
    pos_ = size_;
    return false;
  }
  template <typename T>
  T Scalar() {
    T value{};
    if (!Has(sizeof(T))) {
      Fail();
      return value;
    }
    std::memcpy(&value, data_ + pos_, sizeof(T));  // the host is little-endian, as the files are
    pos_ += sizeof(T);
    return value;
  }

  const uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
  bool failed_ = false;
};

class ByteWriter {
public:
  void U8(uint8_t v) { Scalar(v); }
  void I16(int16_t v) { Scalar(v); }
  void U16(uint16_t v) { Scalar(v); }
  void I32(int32_t v) { Scalar(v); }
  void U32(uint32_t v) { Scalar(v); }
  void F32(float v) { Scalar(v); }
  void F64(double v) { Scalar(v); }
  // A fixed text field: cut or blank-padded to width.
  void Text(std::string_view text, std::size_t width) {
    std::size_t n = text.size() < width ? text.size() : width;
    bytes.insert(bytes.end(), text.begin(), text.begin() + static_cast<std::ptrdiff_t>(n));
    bytes.insert(bytes.end(), width - n, ' ');
  }
  // Width bytes of NUL: an empty slot's text.
  void Zeros(std::size_t width) { bytes.insert(bytes.end(), width, 0); }
  void Raw(std::string_view raw) { bytes.insert(bytes.end(), raw.begin(), raw.end()); }

  std::vector<uint8_t> bytes;

private:
  template <typename T>
  void Scalar(T value) {
    uint8_t buf[sizeof(T)];
    std::memcpy(buf, &value, sizeof(T));
    bytes.insert(bytes.end(), buf, buf + sizeof(T));
  }
};

}  // namespace orv
