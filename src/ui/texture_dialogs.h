// texture_dialogs.h - choosing and making textures: the chooser
// (texture.dlg), the editor (maketext.dlg) with its sub-editors for the
// pigment (pigment.dlg), colour map (colormap.dlg), normal (normal.dlg),
// finish (finish.dlg) and the transforms (trans.dlg), and the colour picker
// (ccolor.dlg over "colors.dat").
//
// A texture name is used as its list spells it: a library texture as its
// record spells it, a predefined one as "textures.dat" does. The name last
// chosen or saved is g.writer.textures.Current_Texture_Name; the editor
// works on g.writer.textures.Texture_Work_Record.
#pragma once

#include "pov/texture_state.h"

// The chooser over the library's names, then those of "textures.dat", ten
// at a time, rebuilt into "texture.tmp" each time it opens. 1 when the user
// pressed OK: the name in its field (which may be empty, meaning no
// texture) is left in Current_Texture_Name. 0 on Cancel or Escape, or when
// the list could not be built (its message printed). With allow_edit 0 the
// Edit button does nothing.
int Texture_Choose(int allow_edit);

// The chooser with editing allowed, as the commands that give objects a
// texture use it: the name chosen ("" for none), or nullptr on Cancel.
const char* Texture_ChooseName();

// The editor. An existing texture (is_new 0) is copied into the work record
// and its name becomes Current_Texture_Name. For a new one only the name is
// taken from `record` (may be null: no name); the work record keeps every
// other field but its colour map, which starts with entries 0 and 1 in use.
// 1 when the texture was saved (OK, or Save at any time), else 0.
int Texture_Edit(const TextureRecord* record, int is_new);

// The sub-editors on a record: 1 when OK wrote the edited values back, 0
// when cancelled or their dialog file is missing (its message printed).
int Texture_EditPigment(TextureRecord* record);
int Texture_EditColourMap(TextureRecord* record);
int Texture_EditNormal(TextureRecord* record);
int Texture_EditFinish(TextureRecord* record);

enum TextureTransform {
    TEXTURE_PIGMENT_TRANSFORM,
    TEXTURE_NORMAL_TRANSFORM,
    TEXTURE_TEXTURE_TRANSFORM
};
// trans.dlg on one of the record's three transforms.
int Texture_EditTransform(TextureRecord* record, int which);

// The colour picker: the colours of "colors.dat" eight at a time with their
// swatches. 1 when one was chosen: r, g, b are written, and the filter when
// the colour gives one. 0 on Cancel or Escape, or when the dialog or
// "colors.dat" is missing (message printed).
int Colour_Pick(float rgbf[4]);

// Palette index of pixel (x, y) of a swatch of colour rgb (0..1 each): the
// display has a fixed palette, so the colour is ordered-dithered from its
// nearest entries.
int Colour_SwatchIndex(const float rgb[3], int x, int y);
// Fills the swatch of colour rgb over the pixel rectangle x1..x2, y1..y2 of
// the dialog being drawn.
void Colour_DrawSwatch(const float rgb[3], int x1, int y1, int x2, int y2);
