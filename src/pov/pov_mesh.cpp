// pov_mesh.cpp - generated surfaces: the triangle spool and the surface union.
//
// A surface's generator runs with Output_Mode 1 and hands every triangle to
// Pov_SpoolTriangle, which appends a 72-byte record (nine little-endian
// doubles) to "triangle.tmp" in the current directory. Only the normal pass
// loads the spool; when memory is short it reads the file instead.
#include <bit>
#include <cstring>

#include "base/message.h"
#include "pov/pov.h"
#include "pov/pov_triangles.h"
#include "scene/mem.h"
#include "model/geometry.h"
#include "state.h"

static_assert(std::endian::native == std::endian::little, "spool records are little-endian doubles");
static_assert(sizeof(PovTri) == 72, "a spool record is 72 bytes");

namespace {

const char kSpoolName[] = "triangle.tmp";

PovSurfaceGenerator Surface_Generator = nullptr;   // replaces Object_Draw when set

struct FormText {
    const char* opening;   // union line
    const char* name;      // progress message
};

const FormText kForms[11] = {
    {nullptr, nullptr},
    {nullptr, nullptr},
    {"union { // Extrusion", "Extrusion"},
    {"union { // Surface of Revolution", "Revolution"},
    {"union { // Cone Sweep", "Cone_Sweep"},
    {"union { // Poly_Mesh", "Poly_Mesh"},
    {"union { // Poly_Cube", "Poly_Cube"},
    {"union { // Poly_Wedge", "Poly_Wedge"},
    {"union { // Poly_Pyramid", "Poly_Pyramid"},
    {"union { // Poly_Pipe", "Poly_Pipe"},
    {"union { // Poly_Wall", "Poly_Wall"},
};

}  // namespace

void Pov_SetSurfaceGenerator(PovSurfaceGenerator generator) { Surface_Generator = generator; }

void Pov_SpoolTriangle(Point3 a, Point3 b, Point3 c) {
    if (!g.writer.spool) return;
    PovTri t{{a, b, c}};
    fwrite(&t, sizeof t, 1, g.writer.spool);
    g.writer.Spool_Count++;
}

void Pov_WriteSpooled(const Object* object) {
    PovState& p = g.writer;
    PovTriangleList list;
    list.count = p.Spool_Count;
    list.object = object;
    if (list.count <= 0 || !p.spool) return;
    fflush(p.spool);
    PovTri* mem = (PovTri*)Mem_Alloc((size_t)list.count * sizeof(PovTri));
    if (mem) {
        fseek(p.spool, 0, SEEK_SET);
        if (fread(mem, sizeof(PovTri), (size_t)list.count, p.spool) == (size_t)list.count) {
            list.tris = mem;
        } else {
            Mem_Free(mem);
            mem = nullptr;
        }
    }
    if (!list.tris) list.file = p.spool;
    Pov_WriteTriangleList(list);
    Mem_Free(mem);
}

void Pov_WriteMesh(Object* object) {
    const PolylineData* poly = (const PolylineData*)object->data;
    if (!poly || !poly->points || poly->count < 2) return;
    int form = poly->form;
    if (form < FORM_EXTRUSION || form > FORM_POLY_WALL) return;
    int patches = form == FORM_POLY_MESH && (poly->poly_flags & POLY_BSPLINE) && g.config.Bezier_Output;
    int spooled = form <= FORM_POLY_PYRAMID && !patches;
    PovState& p = g.writer;

    if (spooled && p.Write_Error) return;   // the file is not written anyway
    if (spooled) {
        p.spool = fopen(kSpoolName, "w+b");
        if (!p.spool) {
            Msg_Printf("\nError: Creating <triangle.tmp>...can't add poly to POV file!");
            return;
        }
        setvbuf(p.spool, nullptr, _IOFBF, 10000);
    }
    Msg_Printf("\nWriting: %s", kForms[form].name);
    Pov_Printf("%s", patches ? "union {" : kForms[form].opening);

    if (spooled) {
        p.Spool_Count = 0;
        int mode = g.output.Output_Mode;
        g.output.Output_Mode = OUTPUT_POV;
        if (Surface_Generator)
            Surface_Generator(object);
        else
            Object_Draw(object);
        g.output.Output_Mode = mode;
        int failed = fflush(p.spool) != 0 || ferror(p.spool);
        if (!failed) Pov_WriteSpooled(object);
        fclose(p.spool);
        p.spool = nullptr;
        remove(kSpoolName);
        if (failed) {
            Msg_Printf("\nError: Writing <triangle.tmp> failed (disk full?)");
            p.Write_Error = 1;   // a scene file that lacks part of a surface is not written
            return;
        }
        Msg_Printf("_");
    } else if (form == FORM_POLY_PIPE) {
        Pov_WritePipe(object);
    } else if (form == FORM_POLY_WALL) {
        Pov_WriteWall(object);
    } else {
        Pov_WritePatches(object);
    }

    if (object->texture[0]) {
        Pov_Indent();
        Pov_Printf("    texture { %s }", object->texture);
    }
    Pov_Indent();
    Pov_Printf("}");
}
