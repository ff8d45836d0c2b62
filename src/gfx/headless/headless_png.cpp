// headless_png.cpp - the headless framebuffer as a PNG file for a person to
// look at: RGB, one "stored" (uncompressed) deflate stream, no library.
#include <cstdint>
#include <cstdio>
#include <vector>

#include "gfx/headless/headless.h"

namespace {

uint32_t Crc(const unsigned char* p, size_t n, uint32_t c = 0xffffffffu) {
    for (size_t i = 0; i < n; i++) {
        c ^= p[i];
        for (int k = 0; k < 8; k++) c = (c >> 1) ^ (0xedb88320u & (0u - (c & 1)));
    }
    return c;
}

void Be32(std::vector<unsigned char>& out, uint32_t v) {
    for (int s = 24; s >= 0; s -= 8) out.push_back((unsigned char)(v >> s));
}

void Chunk(FILE* f, const char* type, const std::vector<unsigned char>& data) {
    std::vector<unsigned char> c;
    Be32(c, (uint32_t)data.size());
    c.insert(c.end(), type, type + 4);
    c.insert(c.end(), data.begin(), data.end());
    uint32_t crc = Crc(c.data() + 4, c.size() - 4) ^ 0xffffffffu;
    Be32(c, crc);
    fwrite(c.data(), 1, c.size(), f);
}

}  // namespace

int Headless_DumpPNG(const char* path) {
    int w = Headless_Width(), h = Headless_Height();
    const unsigned char* fb = Headless_Frame();
    if (!fb) return 0;
    std::vector<unsigned char> raw;   // filter byte 0, then RGB per row
    for (int y = 0; y < h; y++) {
        raw.push_back(0);
        for (int x = 0; x < w; x++) {
            unsigned char rgb[3];
            Headless_Rgb(fb[(size_t)y * w + x], rgb);
            raw.insert(raw.end(), rgb, rgb + 3);
        }
    }
    std::vector<unsigned char> z = {0x78, 0x01};
    uint32_t a = 1, b = 0;
    for (unsigned char v : raw) {
        a = (a + v) % 65521;
        b = (b + a) % 65521;
    }
    for (size_t pos = 0; pos < raw.size() || pos == 0; pos += 65535) {
        size_t n = raw.size() - pos < 65535 ? raw.size() - pos : 65535;
        z.push_back(pos + n >= raw.size() ? 1 : 0);
        z.push_back((unsigned char)n);
        z.push_back((unsigned char)(n >> 8));
        z.push_back((unsigned char)~n);
        z.push_back((unsigned char)(~n >> 8));
        z.insert(z.end(), raw.begin() + pos, raw.begin() + pos + n);
        if (raw.empty()) break;
    }
    Be32(z, (b << 16) | a);
    FILE* f = fopen(path, "wb");
    if (!f) return 0;
    static const unsigned char sig[8] = {137, 80, 78, 71, 13, 10, 26, 10};
    fwrite(sig, 1, 8, f);
    std::vector<unsigned char> ihdr;
    Be32(ihdr, (uint32_t)w);
    Be32(ihdr, (uint32_t)h);
    ihdr.insert(ihdr.end(), {8, 2, 0, 0, 0});
    Chunk(f, "IHDR", ihdr);
    Chunk(f, "IDAT", z);
    Chunk(f, "IEND", {});
    return fclose(f) == 0;
}
