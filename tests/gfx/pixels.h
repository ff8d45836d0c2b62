// pixels.h - probes of the headless display for drawing tests: pixel
// counts, expected pixels, and the recorded segments as text.
#pragma once
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "gfx/headless/headless.h"

inline int CountColour(int x1, int y1, int x2, int y2, int colour) {
    int n = 0;
    for (int y = y1; y <= y2; y++)
        for (int x = x1; x <= x2; x++) n += Headless_Pixel(x, y) == colour;
    return n;
}

// Segments recorded since the last clear as "x1,y1 x2,y2" joined by "; ";
// colour -1 takes every colour.
inline std::string SegText(int colour = -1) {
    std::string out;
    for (const Headless_Segment& s : Headless_Segments()) {
        if (colour >= 0 && s.colour != colour) continue;
        if (!out.empty()) out += "; ";
        out += std::to_string(s.x1) + "," + std::to_string(s.y1) + " " + std::to_string(s.x2) +
               "," + std::to_string(s.y2);
    }
    return out;
}

struct PixelWant {
    int x, y, colour;
};
inline void ExpectPixels(std::initializer_list<PixelWant> want) {
    for (const PixelWant& p : want)
        EXPECT_EQ(Headless_Pixel(p.x, p.y), p.colour) << p.x << "," << p.y;
}

