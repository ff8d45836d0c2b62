// screen.cpp - the screen frame over the display layer: text metrics, the
// start-up of the window and palette, and saved screen rectangles.
#include "gfx/screen.h"

#include "state.h"

void Screen_Open(int mode) {
    X11_MouseReset();
    X11_InitGraph(mode);
    X11_ModeInfo info;
    X11_GetModeInfo(&info);
    ScreenState& s = g.screen;
    s.width = info.width;
    s.height = info.height;
    s.colours = Gfx_ModeColours(mode);
    s.sideMenuX = s.width - X11_TextWidth("aaaaaaaaaaaa");
    s.inputLineY = s.height - 3 * SCREEN_LINE;
    s.msgColumn = 0;
    X11_PaletteEntry palette[256];
    Gfx_BuildPalette(palette);
    X11_SetPalette(palette);
    X11_SetMouseSpeed(g.config.Mouse_SpeedX, g.config.Mouse_SpeedY);
    X11_SetMouseRange(0, s.width, 0, s.height - 1);
    s.open = 1;
}

int Screen_MessageLineY(int n) { return g.screen.inputLineY + SCREEN_LINE * (1 + n); }

void Screen_Fill(int colour, int x1, int y1, int x2, int y2) {
    int keep = X11_GetColor(), mode = X11_GetWriteMode();
    X11_SetWriteMode(GFX_COPY);
    X11_SetColor(colour);
    X11_Rectangle(3, x1, y1, x2, y2);
    X11_SetColor(keep);
    X11_SetWriteMode(mode);
}

void Screen_Text(int colour, int x, int y, const char* text) {
    int keep = X11_GetColor(), mode = X11_GetWriteMode();
    X11_SetWriteMode(GFX_COPY);
    X11_SetColor(colour);
    X11_MoveTo(x, y);
    X11_OutText(text);
    X11_SetColor(keep);
    X11_SetWriteMode(mode);
}

void Screen_DrawFrame() {
    const ScreenState& s = g.screen;
    int bk = g.config.colors.background;
    Screen_Fill(bk, 0, 0, s.width - 1, SCREEN_LINE - 1);
    Screen_Fill(bk, s.sideMenuX, SCREEN_LINE, s.width - 1, s.inputLineY - 1);
    Screen_Fill(bk, 0, s.inputLineY, s.width - 1, s.height - 1);
    Screen_Text(g.config.colors.foreground, 0, s.inputLineY + 1, "INPUT:");
}

ScreenSave Screen_Save(int x1, int y1, int x2, int y2) {
    ScreenSave save{X11_AllocImage(), x1 < 0 ? 0 : x1, y1 < 0 ? 0 : y1};
    if (save.image && !X11_GetImage(x1, y1, x2, y2, save.image)) {
        X11_FreeImage(save.image);
        save.image = nullptr;
    }
    return save;
}

void Screen_Restore(ScreenSave* save) {
    if (!save->image) return;
    int mode = X11_GetWriteMode();   // images are written through the write mode
    X11_SetWriteMode(GFX_COPY);
    X11_PutImage(save->x, save->y, save->image, GFX_COPY);
    X11_SetWriteMode(mode);
    X11_FreeImage(save->image);
    save->image = nullptr;
}
