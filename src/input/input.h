// input.h - the prompt: what a command asks and what the user answered.
#pragma once

struct InputResultRec {
    int code;          // command code chosen; 0 none, 1 cancel
    int lastCode;      // last command started from the Command prompt (repeat)
    int kind;          // 0 point, -1 empty Enter, -2 string, -3 number, n >= 1 keyword n
    char text[128];    // the input line, at most 126 typed characters
    double number;     // value of a number answer
};

struct InputState {
    char promptText[181];    // printed at the start of each wait
    char keywordText[181];   // comma-separated keywords, e.g. "Y,N"
    int keywordsOn;          // a keyword list is set
    int allowNumber;         // a plain number is accepted
    int allowString;         // any word is accepted as a string
    int inputMask;           // bit 1: points refused; bit 16: Enter repeats
    InputResultRec InputResult;
    int currentCommand;      // code of the running command; 0 at "Command:"
};

void Input_SetMask(int flags);
void Input_SetKeywords(const char* keywords, int allowNumber, int allowString);
// Rubber band for the next Input_Get from basePoint (3 doubles): shape
// "LINE", "RECT", "CIRCLE", or an object drag with the transform's name.
void Input_SetRubberBand(const double* basePoint, const char* shapeName, const char* transformName);
// Asks `prompt`; 0 when another command code replaced the input, else 1.
// The answer is in g.input.InputResult.
int Input_Get(const char* prompt, double* pointOut);
// Index (1-based) of `word` in a comma-separated keyword list, 0 when none.
int Input_MatchKeyword(const char* list, const char* word);

// Runs commands until EXIT or NEW ends the loop.
void CommandLoop();
int Command_Lookup(const char* name);
int Command_Run(int code);
