// ppm.h - reading the binary PPM pictures that POV-Ray writes and that
// ImageMagick makes of screenshots.
#pragma once
#include <cctype>
#include <cstdlib>
#include <string>
#include <vector>

struct Rgb {
    int r, g, b;
};

// A binary PPM (P6, maxval 255; "#" comment lines allowed in the header):
// width, height and pixels; false if it is not one.
inline bool ReadPpm(const std::string& text, int* w, int* h, std::vector<Rgb>* px) {
    if (text.rfind("P6", 0) != 0) return false;
    size_t at = 2;
    int values[3];
    for (int& v : values) {
        for (;;) {   // blanks and comments before each number
            while (at < text.size() && isspace((unsigned char)text[at])) at++;
            if (at < text.size() && text[at] == '#') at = text.find('\n', at);
            else break;
            if (at == std::string::npos) return false;
        }
        if (at >= text.size() || !isdigit((unsigned char)text[at])) return false;
        v = atoi(text.c_str() + at);
        while (at < text.size() && isdigit((unsigned char)text[at])) at++;
    }
    *w = values[0], *h = values[1];
    at++;   // the single blank after maxval
    if (values[2] != 255 || text.size() < at + (size_t)(*w) * (*h) * 3) return false;
    px->resize((size_t)(*w) * (*h));
    for (size_t i = 0; i < px->size(); i++) {
        const unsigned char* p = (const unsigned char*)text.data() + at + 3 * i;
        (*px)[i] = {p[0], p[1], p[2]};
    }
    return true;
}
