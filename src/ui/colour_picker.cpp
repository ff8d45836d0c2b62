// colour_picker.cpp - the colour picker (ccolor.dlg) over "colors.dat",
// and the colour swatches of the texture dialogs.
//
// Element ids: 1 OK, 0 Cancel; 6/7 up eight/one, 8/9 down eight/one; 10..17
// the eight name rows; 20 the chosen name (typed names are looked up
// without regard to case); GRAPH 30 beside the rows shows each colour's
// swatch and values. The display has a fixed 256-entry palette, so a
// swatch is dithered (4 x 4 ordered dither) from the entries nearest to
// its colour: seen from a little way off it shows the colour itself.
#include <strings.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

#include "base/field.h"
#include "base/message.h"
#include "gfx/gfx.h"
#include "pov/texture_lists.h"
#include "state.h"
#include "ui/dialog.h"
#include "ui/dialog_draw.h"
#include "ui/texture_dialogs.h"

namespace {

enum {
    ID_OK = 1,
    ID_CANCEL = 0,
    ID_PAGE_UP = 6,
    ID_LINE_UP = 7,
    ID_PAGE_DOWN = 8,
    ID_LINE_DOWN = 9,
    ID_ROW_FIRST = 10,
    ID_NAME = 20,
    ID_SWATCHES = 30,
};
constexpr int kRows = 8;
constexpr int kSwatchCells = 5;  // the swatch's width in the GRAPH; the values follow

const int kBayer[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};

const X11_PaletteEntry* Palette() {
    static X11_PaletteEntry palette[256];
    static bool built = false;
    if (!built) {
        Gfx_BuildPalette(palette);
        built = true;
    }
    return palette;
}

struct Picker {
    std::vector<NamedColour> colours;
    int first = 0;
    int chosen = -1;
};

int LastFirst(const Picker& p) {
    return p.colours.size() > kRows ? (int)p.colours.size() - kRows : 0;
}

const DlgGraph* Area(const Dialog* d, int id) {
    for (const DlgGraph& a : d->graphs)
        if (a.id == id) return &a;
    return nullptr;
}

void ShowRows(Dialog* d, const Picker& p) {
    const DlgGraph* a = Area(d, ID_SWATCHES);
    if (a) Dialog_GraphText(d, ID_SWATCHES, 0, 0, -1, "");
    const int cw = Dialog_CellWidth();
    for (int i = 0; i < kRows; i++) {
        const int n = p.first + i;
        if (n >= (int)p.colours.size()) {
            Dialog_SetText(d, ID_ROW_FIRST + i, "");
            continue;
        }
        const NamedColour& c = p.colours[n];
        Dialog_SetText(d, ID_ROW_FIRST + i, c.name);
        if (!a || i > a->bottom - a->top) continue;
        const int y = (a->top + i) * SCREEN_LINE;
        DlgDraw_ClipTo(d);
        Colour_DrawSwatch(c.rgbf, a->left * cw, y + 1, (a->left + kSwatchCells) * cw - 2,
                          y + SCREEN_LINE - 2);
        char values[64];
        if (c.hasFilter)
            snprintf(values, sizeof values, "%.3g %.3g %.3g %.3g", c.rgbf[0], c.rgbf[1], c.rgbf[2],
                     c.rgbf[3]);
        else
            snprintf(values, sizeof values, "%.3g %.3g %.3g", c.rgbf[0], c.rgbf[1], c.rgbf[2]);
        Dialog_GraphText(d, ID_SWATCHES, kSwatchCells + 1, i, g.config.colors.view_text, values);
    }
    Dialog_SetText(d, ID_NAME, p.chosen >= 0 ? p.colours[p.chosen].name : "");
}

// `value` is the row of a click on the swatches.
void React(Dialog* d, Picker* p, int id, int value) {
    switch (id) {
        case ID_PAGE_UP:
            p->first = p->first > kRows ? p->first - kRows : 0;
            break;
        case ID_LINE_UP:
            p->first = p->first > 0 ? p->first - 1 : 0;
            break;
        case ID_PAGE_DOWN:
            p->first = p->first + kRows < LastFirst(*p) ? p->first + kRows : LastFirst(*p);
            break;
        case ID_LINE_DOWN:
            p->first = p->first < LastFirst(*p) ? p->first + 1 : LastFirst(*p);
            break;
        case ID_NAME:
            if (Dialog_EditText(d, ID_NAME)) {
                for (size_t i = 0; i < p->colours.size(); i++)
                    if (strcasecmp(p->colours[i].name, d->editBuffer) == 0) {
                        p->chosen = (int)i;
                        // the chosen colour comes into view
                        if (p->chosen < p->first || p->chosen >= p->first + kRows)
                            p->first = p->chosen < LastFirst(*p) ? p->chosen : LastFirst(*p);
                        break;
                    }
            }
            break;
        case ID_SWATCHES:  // a swatch row chooses its colour like the name beside it
            id = ID_ROW_FIRST + (value < 0 ? -value : value);
            [[fallthrough]];
        default:
            if (id < ID_ROW_FIRST || id >= ID_ROW_FIRST + kRows) return;
            if (p->first + id - ID_ROW_FIRST < (int)p->colours.size())
                p->chosen = p->first + id - ID_ROW_FIRST;
    }
    ShowRows(d, *p);
}

}  // namespace

int Colour_SwatchIndex(const float rgb[3], int x, int y) {
    // A plan of sixteen entries whose average is the colour, found greedily
    // (each next entry brings the running average nearest to the colour) and
    // ordered by brightness, so that the 4 x 4 threshold pattern spreads
    // them evenly. The last plan is kept: a swatch asks for one colour.
    static float planned[3] = {-1, -1, -1};
    static int plan[16];
    if (memcmp(planned, rgb, sizeof planned) != 0) {
        const X11_PaletteEntry* pal = Palette();
        double target[3], sum[3] = {0, 0, 0};
        for (int k = 0; k < 3; k++) {
            double c = std::isfinite(rgb[k]) ? rgb[k] : 0;
            target[k] = (c < 0 ? 0 : c > 1 ? 1 : c) * 63;
        }
        for (int n = 0; n < 16; n++) {
            int best = 0;
            double bestDistance = 1e300;
            for (int i = 0; i < 256; i++) {
                const double e[3] = {(sum[0] + pal[i].r) / (n + 1) - target[0],
                                     (sum[1] + pal[i].g) / (n + 1) - target[1],
                                     (sum[2] + pal[i].b) / (n + 1) - target[2]};
                const double distance = e[0] * e[0] + e[1] * e[1] + e[2] * e[2];
                if (distance < bestDistance) {
                    bestDistance = distance;
                    best = i;
                }
            }
            plan[n] = best;
            sum[0] += pal[best].r;
            sum[1] += pal[best].g;
            sum[2] += pal[best].b;
        }
        auto bright = [&](int i) { return 3 * pal[i].r + 6 * pal[i].g + pal[i].b; };
        std::sort(plan, plan + 16, [&](int a, int b) { return bright(a) < bright(b); });
        memcpy(planned, rgb, sizeof planned);
    }
    return plan[kBayer[y & 3][x & 3]];
}

void Colour_DrawSwatch(const float rgb[3], int x1, int y1, int x2, int y2) {
    // Runs of one index become one fill.
    for (int y = y1; y <= y2; y++) {
        int start = x1, index = Colour_SwatchIndex(rgb, x1, y);
        for (int x = x1 + 1; x <= x2 + 1; x++) {
            const int next = x <= x2 ? Colour_SwatchIndex(rgb, x, y) : -1;
            if (next == index) continue;
            DlgDraw_Fill(index, start, y, x - 1, y);
            start = x;
            index = next;
        }
    }
}

int Colour_Pick(float rgbf[4]) {
    Picker p;
    TextListReport report;
    char path[256];
    snprintf(path, sizeof path, "%s/colors.dat", g.config.SUPPORT_DIR);
    if (!Colours_Read(path, &p.colours, &report)) {
        Msg_Printf("Can't open colors.dat");
        return 0;
    }
    if (report.badLines)
        Msg_Printf("\ncolors.dat: %d damaged line%s skipped, the first is line %d: %s", report.badLines,
                   report.badLines == 1 ? "" : "s", report.firstBadLine, report.firstReason);
    Dialog d;
    if (!Dialog_Open(&d, "ccolor.dlg")) return 0;
    ShowRows(&d, p);
    DialogResult r;
    do {
        Dialog_Run(&d, &r);
        React(&d, &p, r.id, r.value);
    } while (r.id != ID_OK && r.id != ID_CANCEL && r.id != -1);
    Dialog_Close(&d);
    if (r.id != ID_OK || p.chosen < 0) return 0;
    const NamedColour& c = p.colours[p.chosen];
    for (int k = 0; k < 3; k++) rgbf[k] = c.rgbf[k];
    if (c.hasFilter) rgbf[3] = c.rgbf[3];
    return 1;
}
