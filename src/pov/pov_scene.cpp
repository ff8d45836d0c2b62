// pov_scene.cpp - the scene file: header, camera, sections, layers, transforms.
//
// Layers nest by depth: Pov_WriteLayer writes a layer's statement with its
// objects, its BLOCK Layer instance and the nested layers that follow it, and
// returns the first layer it did not consume. A layer that is off consumes
// only itself, so its nested layers are met again by the caller's loop.
#include <cmath>
#include <cstdarg>
#include <cstring>

#include "base/message.h"
#include "base/safe_file.h"
#include "pov/pov.h"
#include "pov/textures.h"
#include "state.h"

namespace {

const char* const kBlankComment =
    "/*                                                                             */\n";

const char* const kHeader[] = {
    "/* This is a Persistence of Vision Ray Tracer (POV-Ray) Version 2.2 Scene file */\n",
    kBlankComment,
    "/* This file was generated using \"Quillmoor Sculptor\" Version 2.10             */\n",
    kBlankComment,
    kBlankComment,
    "/********************************* HEADER **************************************/\n",
    "#include \"colors.inc\"\n",
    "#include \"textures.inc\"\n\n",
};

const char* const kCsgWords[] = {"union", "union", "merge", "intersection", "difference"};

const char* CsgWord(int csg) { return csg >= 1 && csg <= 4 ? kCsgWords[csg] : kCsgWords[1]; }

void IndentPush() {
    size_t n = strlen(g.writer.Pov_Indent_String);
    if (n + 4 < sizeof g.writer.Pov_Indent_String) strcat(g.writer.Pov_Indent_String, "    ");
}

void IndentPop() {
    size_t n = strlen(g.writer.Pov_Indent_String);
    if (n >= 5) g.writer.Pov_Indent_String[n - 4] = '\0';   // never cut the line feed
}

void CopyInclude() {
    char path[160];
    snprintf(path, sizeof path, "%s/include.dat", g.config.SUPPORT_DIR);
    FILE* f = fopen(path, "r");
    if (!f) return;
    char line[256];
    while (fgets(line, sizeof line, f)) fputs(line, g.writer.file);
    fclose(f);
}

void WriteCamera() {
    const Viewport& vp = g.view.Active_Viewport;
    double d = 0.5 / tan(vp.FOV / 2 * M_PI / 180);
    Pov_Printf("\n\n/******************* CAMERA ***********************/\n");
    Pov_Printf("\ncamera {");
    Pov_Printf("\n    location <%g, %g, %g>", vp.CAM.x, vp.CAM.y, vp.CAM.z);
    Pov_Printf("\n   direction <0, 0, %g>", d);
    Pov_Printf("\n         sky <%g, %g, %g>", vp.UP.x, vp.UP.y, vp.UP.z);
    Pov_Printf("\n          up <0, 1, 0>");
    Pov_Printf("\n       right <%g, 0, 0>", g.view.camera_aspect);
    Pov_Printf("\n     look_at <%g, %g, %g>", vp.TAR.x, vp.TAR.y, vp.TAR.z);
    Pov_Printf("\n}");
}

// Scale, rotation (in the layer's order) and translation lines.
void WriteTransformLines(Point3 s, Point3 r, Point3 t, int rotation_order) {
    if (!(s.x == 1 && s.y == 1 && s.z == 1)) {
        Pov_Indent();
        Pov_Printf("scale <%g, %g, %g>", s.x, s.y, s.z);
    }
    if (!(r.x == 0 && r.y == 0 && r.z == 0)) {
        if (rotation_order) {
            Pov_Indent();
            Pov_Printf("rotate <%g, %g, %g>", r.x, r.y, r.z);
        } else {
            if (r.x != 0) {
                Pov_Indent();
                Pov_Printf("rotate <%g, .0, .0>", r.x);
            }
            if (r.z != 0) {
                Pov_Indent();
                Pov_Printf("rotate <.0, .0, %g>", r.z);
            }
            if (r.y != 0) {
                Pov_Indent();
                Pov_Printf("rotate <.0, %g, .0>", r.y);
            }
        }
    }
    if (!(t.x == 0 && t.y == 0 && t.z == 0)) {
        Pov_Indent();
        Pov_Printf("translate <%g, %g, %g>", t.x, t.y, t.z);
    }
}

}  // namespace

void Pov_Printf(const char* format, ...) {
    if (!g.writer.file || g.writer.Write_Error) return;   // nothing more after a failure
    va_list ap;
    va_start(ap, format);
    vfprintf(g.writer.file, format, ap);
    va_end(ap);
}

void Pov_Write(const char* text, size_t n) {
    if (g.writer.file) fwrite(text, 1, n, g.writer.file);
}

void Pov_Indent() { Pov_Printf("%s", g.writer.Pov_Indent_String); }

int Layer_IsBlock(const Layer* layer) {
    if (!layer) return 0;
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        if (l->instance == layer) return 1;
    return 0;
}

void Pov_WriteLayerTransform(Layer* layer) {
    WriteTransformLines(layer->scale, layer->rotate, layer->translate, layer->rotation_order);
}

void Pov_WriteTextureTransform(Layer* layer) {
    IndentPush();
    WriteTransformLines(layer->texture_scale, layer->texture_rotate, layer->texture_translate,
                        layer->rotation_order);
    IndentPop();
}

void Pov_WriteObject(Object* object, Layer* layer) {
    switch (object->kind) {
        case KIND_PRIMITIVE:
            Pov_Indent();
            Pov_WritePrimitive(object);
            break;
        case KIND_POLYLINE:
            Pov_Indent();
            Pov_WriteMesh(object);
            break;
        case KIND_TRIANGLE:
            if (g.writer.Triangles_Pending == 1) {
                Pov_Indent();
                Pov_WriteTriangles(layer);
                g.writer.Triangles_Pending = 0;
            }
            break;
        case KIND_3DFACE:
            if (g.writer.Faces_Pending == 1) {
                Pov_Indent();
                Pov_WriteFaces(layer);
                g.writer.Faces_Pending = 0;
            }
            break;
        case KIND_LIGHT:
            Pov_Indent();
            if (!Light_IsFinite((const LightData*)object->data)) {
                Pov_Printf("// light left out: invalid numbers");
                Msg_Printf("\nWarning: a light with invalid numbers was left out");
                break;
            }
            Pov_Printf("light_source { ");
            Pov_WriteLight((const LightData*)object->data);
            Pov_Indent();
            Pov_Printf("}");
            break;
        default:
            break;
    }
}

Layer* Pov_WriteLayer(Layer* layer) {
    if (!layer->on) return layer->next;
    Pov_Indent();
    Pov_Printf("%s {  // Layer name: %s", CsgWord(layer->csg), layer->name);
    IndentPush();
    g.writer.Triangles_Pending = 1;
    g.writer.Faces_Pending = 1;
    for (Object* o = layer->first_object; o; o = o->next) Pov_WriteObject(o, layer);
    if (layer->instance && layer->instance->on) {
        Pov_Indent();
        Pov_Printf("object { BLOCK_Layer_%s }", layer->instance->name);
    }
    Layer* n = layer->next;
    while (n && n->level > layer->level) {
        Pov_Indent();
        n = Pov_WriteLayer(n);
    }
    if (layer->texture[0]) {
        Pov_Indent();
        Pov_Indent();
        Pov_Printf("texture { %s ", layer->texture);
        Pov_WriteTextureTransform(layer);
        Pov_Printf("}");
    }
    Pov_WriteLayerTransform(layer);
    IndentPop();
    Pov_Indent();
    Pov_Printf("}");
    return n;
}

void Pov_ScenePath(char* out, size_t size) {
    const char* dir = g.config.Scenes_Dir[0] ? g.config.Scenes_Dir : g.config.POV_DIR;
    snprintf(out, size, "%s/%s.pov", dir, g.run.Scene_Name);
}

int Pov_WriteScene(const char* path) {
    PovState& p = g.writer;
    SafeFile out;
    if (!SafeFile_Open(&out, path, "w")) {
        Msg_Printf("\nError: Creating file <%s>", path);
        return 2;
    }
    FILE* f = out.f;
    setvbuf(f, nullptr, _IOFBF, 10000);
    Msg_Printf("\nMaking <%s.pov>", g.run.Scene_Name);
    p.file = f;
    p.Write_Error = 0;
    strcpy(p.Pov_Indent_String, "\n");

    for (const char* line : kHeader) Pov_Printf("%s", line);
    CopyInclude();
    Pov_Printf("\n\n#max_trace_level %d\n", g.pov.Max_Trace_Level);
    Pov_Printf("#max_intersections %d\n", g.pov.Max_Intersections);
    if (g.pov.Fog_On) {
        Point3 c = g.pov.Fog_Color;
        Pov_Printf("\nfog {");
        Pov_Printf("\n    color rgb<%g, %g, %g>", c.x, c.y, c.z);
        Pov_Printf("\n    distance %g", g.pov.Fog_Distance);
        Pov_Printf("\n}\n");
    }
    if (g.pov.Background_On) {
        Point3 c = g.pov.Background_Color;
        Pov_Printf("\nbackground { color rgb<%g, %g, %g> }\n", c.x, c.y, c.z);
    }
    WriteCamera();

    Pov_Printf("\n\n\n/******************* TEXTURES *********************/\n");
    Pov_WriteTextures();

    Pov_Printf("\n\n\n/******************* BLOCK LAYERS *****************/\n");
    g.output.Output_Mode = OUTPUT_POV;
    for (Layer* l = g.scene.First_Layer; l;) {
        if (l->level == 0 && l->on && Layer_IsBlock(l)) {
            Pov_Printf("\n#declare BLOCK_Layer_%s =", l->name);
            strcpy(p.Pov_Indent_String, "\n    ");
            l = Pov_WriteLayer(l);
            strcpy(p.Pov_Indent_String, "\n");
            Pov_Indent();
        } else {
            l = l->next;
        }
    }

    Pov_Printf("\n\n\n/******************* ACTION ************************/\n");
    for (Layer* l = g.scene.First_Layer; l;) {
        if (Layer_IsBlock(l)) {
            if (l->on) {
                Pov_Indent();
                Pov_Printf("object { BLOCK_Layer_%s }", l->name);
            }
            l = l->next;
            while (l && l->level != 0) l = l->next;
        } else {
            Pov_Indent();
            l = Pov_WriteLayer(l);
        }
    }
    g.output.Output_Mode = OUTPUT_SCREEN;
    p.file = nullptr;
    if (p.Write_Error) {   // a surface could not be spooled: the file would lack it
        SafeFile_Discard(&out);
        Msg_Printf("\nError: <%s> not written", path);
        return 2;
    }
    if (!SafeFile_Commit(&out, 0)) {
        Msg_Printf("\nError: Writing <%s> failed (disk full?), the file is unchanged", path);
        return 2;
    }
    return 1;
}
