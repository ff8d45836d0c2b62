// shade_settings.h - options of the shaded view, kept with the scene.
#pragma once

struct ShadeSettings {
    int Shade_Type = 2;      // 0..3: which colours faces and edges get
    int Shade_Edge_Color = 0;   // type 0: edges in Edge_Color (1) or the layer colour (0)
    int Edge_Color = 7;      // palette index for edges
    int Face_Color = 0;      // palette index for faces (type 2)
};
