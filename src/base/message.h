// message.h - output into the message area.
#pragma once

// printf-like; at most 255 characters per call (longer results are cut).
// Before the window exists the text goes to standard output; afterwards
// into the message area, the bottom two text lines: "\n" scrolls the bottom
// line up and starts a new one, and text wider than the window wraps.
// Everything also goes to the display's transcript.
void Msg_Printf(const char* format, ...) __attribute__((format(printf, 1, 2)));

// The wrapping step alone: inserts "\n" before every character that would
// not fit when drawn from `column` (a "\n" resets the column), while the
// text stays under 254 characters. `buf` holds 256 bytes.
void Msg_Wrap(char* buf, int column, int width);

// Keeps text followed by "\n" as the fatal message that Exit(1) prints, and
// returns it. Callers then leave through Exit(1).
const char* SetFatalMessage(const char* text);
