// texture_lists.h - the two name lists of the support directory:
// "textures.dat", the ray tracer's predefined textures (one name a line),
// and "colors.dat", its colours as name(r, g, b) or name(r, g, b, f).
//
// Readers keep every good line and skip the others, counting them, so that
// the caller can tell the user once which line was wrong and why. A line is
// read whole however long it is; only its first 256 bytes are looked at.
#pragma once

#include <string>
#include <vector>

// What a reading skipped.
struct TextListReport {
    int badLines = 0;              // lines skipped as damaged
    int firstBadLine = 0;          // 1-based number of the first of them
    const char* firstReason = "";  // why it was skipped
};

struct NamedColour {
    char name[41];  // as in the file, cut to 40 characters
    float rgbf[4];  // red, green, blue, filter (0 when not given)
    int hasFilter;  // the line gave a filter value
};

// textures.dat: the names in line order. The line feed (and a carriage
// return before it) is dropped and a name cut to 20 characters; empty lines
// are passed over; a line that holds a blank, a control or a non-ASCII byte,
// or is longer than 254 characters, is skipped and counted. 0 when the file
// cannot be opened.
int TextureNames_Read(const char* path, std::vector<std::string>* names, TextListReport* report);

// colors.dat: the colours in line order. Comment lines ("//") and empty
// lines are passed over; a line that is not name(r, g, b) or
// name(r, g, b, f) with a name of letters, digits and "_" and finite
// numbers, or holds control or non-ASCII bytes, or is longer than 254
// characters, is skipped and counted. 0 when the file cannot be opened.
int Colours_Read(const char* path, std::vector<NamedColour>* colours, TextListReport* report);
