// message.cpp - the message area (standard output until a window exists).
#include "input/message.h"

#include <cstdarg>
#include <cstdio>

void Msg_Printf(const char* format, ...) {
    char buf[256];
    va_list ap;
    va_start(ap, format);
    vsnprintf(buf, sizeof buf, format, ap);
    va_end(ap);
    fputs(buf, stdout);
    fflush(stdout);
}
