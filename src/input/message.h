// message.h - output into the message area.
#pragma once

// printf-like; at most 255 characters per call. Before the window exists
// the text goes to standard output.
void Msg_Printf(const char* format, ...) __attribute__((format(printf, 1, 2)));
