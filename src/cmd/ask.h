// ask.h - the questions commands ask at the input line.
//
// Each helper sets the prompt's context (keywords, numbers, mask), waits
// for the answer and reads it. All return 0 when another command code
// replaced the input (the command must then return 0 at once), else 1 with
// the answer. A rubber band, when wanted, is set with Input_SetRubberBand
// just before the question.
#pragma once

#include "scene/point3.h"

// Input masks (bits of Input_SetMask).
enum AskMask : int {
    ASK_NO_POINT = 1,       // points are refused
    ASK_ENTER_REPEATS = 16, // an empty Enter repeats the last command
};

// Only the keywords of the comma-separated list, or an empty Enter, are
// accepted. *answer: the keyword's 1-based position in the list, 0 for Enter.
int Ask_Keyword(const char* keywords, const char* prompt, int* answer);

// A question answered by the keywords Y and N (in the order `keywords`
// gives them, e.g. "Y,N" or "N,Y"); an empty Enter gives `dflt`.
// *yes: 1 for Y, 0 for N.
int Ask_YesNo(const char* keywords, const char* prompt, int dflt, int* yes);

// A number; points are refused. *got is 1 with *value set when a finite
// number came, 0 for an empty Enter (*value keeps the default shown).
int Ask_Number(const char* prompt, double* value, int* got);

// A point (picked or typed) under `mask`. *got is 1 with *point set when a
// point came, 0 for an empty Enter.
int Ask_Point(const char* prompt, int mask, Point3* point, int* got);

// A distance from `base`: a typed number, or a point whose distance from
// `base` counts. The rubber band is a circle round `base`. *got as above.
int Ask_Distance(const char* prompt, Point3 base, double* value, int* got);

// The general question, for prompts that take several kinds of answer.
struct AskAnswer {
    int kind;       // 0 point, -1 empty Enter, -3 number, n >= 1 keyword n
    Point3 point;   // kind 0
    double number;  // kind -3 (a typed number that is not finite counts as Enter)
};
// `keywords` may be null; `mask` as Input_SetMask. A rubber band, when
// wanted, is set just before.
int Ask_Any(const char* prompt, const char* keywords, int allowNumber, int mask, AskAnswer* answer);
