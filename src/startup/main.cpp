// main.cpp - entry point. Start reading at Startup_Run() in startup.cpp.
#include "startup/startup.h"

int main(int argc, char** argv) { Startup_Run(argc, argv); }
