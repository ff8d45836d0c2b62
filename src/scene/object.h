// object.h - scene objects: the common node, the five kind records, object lists.
//
// A layer owns its nodes, a node owns its kind record, a polyline record owns
// its point array. Every record is its own heap block of exactly its size (see
// mem.h); point arrays grow and shrink by exactly one element per edit. A
// layer's list starts at its newest object: `next` leads to older objects,
// `prev` to newer ones.
#pragma once
#include <cstdint>

typedef uint8_t u8;

#include "scene/point3.h"

enum ObjectKind : u8 {
    KIND_POLYLINE = 1,
    KIND_TRIANGLE = 2,
    KIND_3DFACE = 3,
    KIND_PRIMITIVE = 4,
    KIND_LIGHT = 5,
};

enum ObjectFlags : u8 {
    No_shadow = 0x01,
    Smooth_triangle = 0x02,
};

enum PolyForm : int32_t {
    FORM_POLYLINE = 1,
    FORM_EXTRUSION = 2,
    FORM_REVOLUTION = 3,
    FORM_CONE_SWEEP = 4,
    FORM_POLY_MESH = 5,
    FORM_POLY_CUBE = 6,
    FORM_POLY_WEDGE = 7,
    FORM_POLY_PYRAMID = 8,
    FORM_POLY_PIPE = 9,
    FORM_POLY_WALL = 10,
};

enum PolyFlags : u8 {
    POLY_CLOSED = 0x01,
    POLY_BSPLINE = 0x02,
    POLY_FRAME = 0x04,
    POLY_N_CLOSED = 0x40,
    POLY_M_CLOSED = 0x80,
};

enum PrimType : int32_t {
    PRIM_SPHERE = 1,
    PRIM_CONE = 2,
    PRIM_TORUS = 3,
    PRIM_DISC = 4,
    PRIM_PLANE = 5,
    PRIM_BOX = 6,
    PRIM_HEIGHT_FIELD = 7,
};

enum PrimFlags : u8 {
    PRIM_OPEN = 0x02,       // open cone
    PRIM_ROT_XYZ = 0x04,    // one combined X-Y-Z rotation instead of X, Z, Y
};

enum LightFlags : u8 {
    LIGHT_AREA = 0x01,
    LIGHT_JITTER = 0x02,
    LIGHT_SPOT = 0x04,
};

struct Object {
    char texture[21];  // texture name; "" = none of its own
    Object* prev;      // newer neighbour (none for the head)
    Object* next;      // older neighbour (none for the oldest)
    void* data;        // kind record, owned
    u8 selected;       // 1 while in the selection set
    u8 kind;           // ObjectKind
    u8 flags;          // ObjectFlags
};

struct PolylineData {
    Point3* points;   // `count` points, owned
    Point3 param1;    // form parameter 1
    Point3 param2;    // form parameter 2
    double angle;     // sweep angle in degrees
    int32_t form;     // PolyForm
    u8 poly_flags;    // PolyFlags
    int32_t segments; // spline resolution per span, >= 1
    int32_t size_m;   // mesh size M; resolution of splined pipes and walls
    int32_t size_n;   // mesh size N; segments round a pipe
    int32_t count;    // number of points
};

struct TriangleData {
    Point3 corner[3];
};

struct FaceData {
    Point3 corner[4];  // a triangular face repeats a corner
};

struct PrimitiveData {
    char file[13];       // height-field image file
    Point3 translate;
    Point3 size;         // box extent from the origin
    Point3 scale;
    Point3 rotate;       // degrees
    int32_t prim_aux;    // wireframe segments
    int32_t hf_type;     // 0 gif, 1 tga, other pot
    int32_t prim_type;   // PrimType
    double p1, p2, p3;   // shape values, see PrimType
    u8 prim_flags;       // PrimFlags
};

struct LightData {
    u8 light_flags;          // LightFlags; none = point light
    Point3 position;
    Point3 color;            // rgb 0..1
    int32_t light_segments;  // outline segments
    int32_t area_n1, area_n2;
    int32_t adaptive;
    double area_height, area_width;
    Point3 point_at;
    double radius, falloff;  // spotlight cone angles in degrees
    int32_t tightness;
};

struct Layer;

// Fresh records with the defaults a creating command starts from.
PolylineData Poly_Default();
PrimitiveData Primitive_Default();
LightData Light_Default();

// Node for an already allocated record; head of Current_Layer. nullptr when
// out of memory (the caller still owns data).
Object* Object_Add(void* data, int kind);

// Heap copies of a record on the caller's stack, added to Current_Layer.
Object* Poly_AddToScene(const PolylineData* poly);
Object* Add_Triangle(const TriangleData* rec);
Object* Add_Face(const FaceData* rec);
Object* Add_Primitive(const PrimitiveData* rec);
Object* Add_Light(const LightData* rec);

// Removes obj from layer's list and frees the node only.
void Object_Unlink(Object* obj, Layer* layer);
// Frees a node's kind record (and points) and the node; the node must be unlinked.
void Object_Free(Object* obj);
// Independent copy of obj (record and points), not linked anywhere.
Object* Object_Copy(const Object* obj);
// Links an unlinked node in as the newest object of layer.
void Object_LinkHead(Object* obj, Layer* layer);

int Poly_InsertPoint(PolylineData* poly, Point3 p, int index);
int Poly_DeletePoint(PolylineData* poly, int index);
