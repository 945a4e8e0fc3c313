// Sequential little-endian reads over a block of bytes. A read past the end
// yields zeros and marks the reader failed, so a short block fails the checks
// that follow instead of crashing the test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

class ByteReader {
  public:
    explicit ByteReader(const std::vector<uint8_t>& bytes) : bytes_(bytes) {}

    uint8_t U8() { return Take(1) ? bytes_[offset_ - 1] : 0; }
    uint16_t U16() { return static_cast<uint16_t>(Little(2)); }
    uint32_t U32() { return static_cast<uint32_t>(Little(4)); }
    int32_t I32() { return static_cast<int32_t>(U32()); }
    double F64() {
        uint64_t bits = Little(8);
        double value;
        memcpy(&value, &bits, sizeof value);
        return value;
    }

    // A four-character code stored as a little-endian word, as text "abcd".
    std::string Code() {
        std::string stored = Text(4);
        return std::string(stored.rbegin(), stored.rend());
    }
    std::string Text(size_t count) {
        const size_t start = offset_;
        return Take(count) ? std::string(bytes_.begin() + start, bytes_.begin() + offset_)
                           : std::string();
    }
    std::string Pascal() { return Text(U8()); }
    std::vector<uint8_t> Bytes(size_t count) {
        const size_t start = offset_;
        return Take(count) ? std::vector<uint8_t>(bytes_.begin() + start, bytes_.begin() + offset_)
                           : std::vector<uint8_t>();
    }

    size_t Offset() const { return offset_; }
    size_t Remaining() const { return bytes_.size() - offset_; }
    bool Ok() const { return ok_; }

  private:
    bool Take(size_t count) {
        if (!ok_ || count > Remaining()) {
            ok_ = false;
            return false;
        }
        offset_ += count;
        return true;
    }
    uint64_t Little(size_t count) {
        if (!Take(count)) return 0;
        uint64_t value = 0;
        for (size_t i = 0; i < count; ++i) value |= uint64_t{bytes_[offset_ - count + i]} << 8 * i;
        return value;
    }

    const std::vector<uint8_t>& bytes_;
    size_t offset_ = 0;
    bool ok_ = true;
};
