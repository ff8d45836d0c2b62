// ask.cpp - the question helpers over the general prompt.
#include "cmd/ask.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "input/input.h"
#include "state.h"

namespace {

const InputResultRec& Answer() { return g.input.InputResult; }

// The number typed into the input line, when it is a finite number.
int TypedNumber(double* value) {
    const char* text = Answer().text;
    char* end;
    double v = strtod(text, &end);
    if (end == text || !std::isfinite(v)) return 0;
    *value = v;
    return 1;
}

}  // namespace

int Ask_Keyword(const char* keywords, const char* prompt, int* answer) {
    Input_SetKeywords(keywords, 0, 0);
    Input_SetMask(ASK_NO_POINT);
    if (!Input_Get(prompt, nullptr)) return 0;
    *answer = Answer().kind >= 1 ? Answer().kind : 0;
    return 1;
}

int Ask_YesNo(const char* keywords, const char* prompt, int dflt, int* yes) {
    int k;
    if (!Ask_Keyword(keywords, prompt, &k)) return 0;
    *yes = dflt;
    if (k >= 1) {   // the k-th word of the list decides by its first letter
        const char* w = keywords;
        for (int i = 1; i < k && w; i++) {
            w = strchr(w, ',');
            if (w) w++;
        }
        if (w) *yes = (*w == 'Y' || *w == 'y');
    }
    return 1;
}

int Ask_Number(const char* prompt, double* value, int* got) {
    Input_SetMask(ASK_NO_POINT);
    Input_SetKeywords(nullptr, 1, 0);
    *got = 0;
    if (!Input_Get(prompt, nullptr)) return 0;
    if (Answer().kind == -3) *got = TypedNumber(value);
    return 1;
}

int Ask_Point(const char* prompt, int mask, Point3* point, int* got) {
    Input_SetMask(mask);
    Input_SetKeywords(nullptr, 0, 0);
    *got = 0;
    Point3 p;
    if (!Input_Get(prompt, &p)) return 0;
    if (Answer().kind == 0) {
        *point = p;
        *got = 1;
    }
    return 1;
}

int Ask_Distance(const char* prompt, Point3 base, double* value, int* got) {
    Input_SetRubberBand(&base, "CIRCLE", nullptr);
    Input_SetKeywords(nullptr, 1, 0);
    *got = 0;
    Point3 p;
    if (!Input_Get(prompt, &p)) return 0;
    if (Answer().kind == 0) {
        *value = Vec_Length(Vec_Sub(p, base));
        *got = 1;
    } else if (Answer().kind == -3) {
        *got = TypedNumber(value);
    }
    return 1;
}

int Ask_Any(const char* prompt, const char* keywords, int allowNumber, int mask, AskAnswer* a) {
    Input_SetKeywords(keywords, allowNumber, 0);
    Input_SetMask(mask);
    a->kind = -1;
    if (!Input_Get(prompt, &a->point)) return 0;
    const int kind = Answer().kind;
    if (kind == 0 || kind >= 1) a->kind = kind;
    else if (kind == -3 && TypedNumber(&a->number)) a->kind = -3;
    return 1;
}
