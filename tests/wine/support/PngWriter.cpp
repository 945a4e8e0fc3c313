#include "PngWriter.h"

#include <cstdio>

namespace {

uint32_t Crc32(const uint8_t* bytes, size_t count, uint32_t crc = 0) {
    crc = ~crc;
    for (size_t i = 0; i < count; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
        }
    }
    return ~crc;
}

void PutBigEndian(std::vector<uint8_t>& out, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out.push_back(static_cast<uint8_t>(value >> shift));
    }
}

void PutChunk(std::vector<uint8_t>& out, const char type[5], const std::vector<uint8_t>& data) {
    PutBigEndian(out, static_cast<uint32_t>(data.size()));
    std::vector<uint8_t> typed(type, type + 4);
    typed.insert(typed.end(), data.begin(), data.end());
    out.insert(out.end(), typed.begin(), typed.end());
    PutBigEndian(out, Crc32(typed.data(), typed.size()));
}

// A zlib stream of stored (uncompressed) deflate blocks.
std::vector<uint8_t> StoredZlib(const std::vector<uint8_t>& raw) {
    std::vector<uint8_t> out = {0x78, 0x01};
    size_t offset = 0;
    do {
        const size_t length = raw.size() - offset < 65535 ? raw.size() - offset : 65535;
        const bool last = offset + length == raw.size();
        out.push_back(last ? 1 : 0);
        out.push_back(static_cast<uint8_t>(length));
        out.push_back(static_cast<uint8_t>(length >> 8));
        out.push_back(static_cast<uint8_t>(~length));
        out.push_back(static_cast<uint8_t>(~length >> 8));
        out.insert(out.end(), raw.begin() + offset, raw.begin() + offset + length);
        offset += length;
    } while (offset < raw.size());
    uint32_t a = 1;
    uint32_t b = 0;
    for (uint8_t byte : raw) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    PutBigEndian(out, (b << 16) | a);
    return out;
}

}  // namespace

bool WritePng(const std::string& path, int width, int height, const std::vector<uint32_t>& pixels) {
    std::vector<uint8_t> header;
    PutBigEndian(header, static_cast<uint32_t>(width));
    PutBigEndian(header, static_cast<uint32_t>(height));
    header.insert(header.end(), {8, 2, 0, 0, 0});  // 8-bit RGB, no interlace

    std::vector<uint8_t> raw;
    raw.reserve(static_cast<size_t>(height) * (width * 3 + 1));
    for (int row = 0; row < height; ++row) {
        raw.push_back(0);  // no filter
        for (int column = 0; column < width; ++column) {
            const uint32_t pixel = pixels[static_cast<size_t>(row) * width + column];
            raw.push_back(static_cast<uint8_t>(pixel >> 16));
            raw.push_back(static_cast<uint8_t>(pixel >> 8));
            raw.push_back(static_cast<uint8_t>(pixel));
        }
    }

    std::vector<uint8_t> file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    PutChunk(file, "IHDR", header);
    PutChunk(file, "IDAT", StoredZlib(raw));
    PutChunk(file, "IEND", {});
    FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr) {
        return false;
    }
    const bool written = std::fwrite(file.data(), 1, file.size(), out) == file.size();
    return std::fclose(out) == 0 && written;
}
