// pov_triangles.h - writing lists of triangles with averaged vertex normals.
//
// Shared by the spooled surfaces and the stand-alone triangles and faces.
// A smooth vertex normal is the face normal of its triangle plus the face
// normals of every other contributing, non-degenerate triangle that has a
// vertex Point_Same as it (each such triangle once, in list order), divided
// by the number of normals summed. Triangles of the same group never count
// for each other (a face's two halves).
#pragma once
#include <cstdio>
#include <vector>

#include "scene/object.h"

struct PovTri {
    Point3 v[3];
};

struct PovTriangleList {
    long count = 0;
    const PovTri* tris = nullptr;        // all triangles in memory, or nullptr ...
    FILE* file = nullptr;                // ... read one 72-byte record at a time from here
    const long* group = nullptr;         // group of each triangle; nullptr = its own index
    const unsigned char* member = nullptr;   // contributes to normals; nullptr = all do
    const Object* const* owner = nullptr;    // texture and flags per triangle ...
    const Object* object = nullptr;      // ... or one owner for all
    int standalone = 0;                  // write " texture { %s } " of each owner
};

// Writes every non-degenerate triangle of the list, each on its own line(s).
// Triangles with coordinates that are not finite are left out; the result
// is the number of those.
long Pov_WriteTriangleList(const PovTriangleList& list);

// Face normal (b - a) x (c - a), not normalised.
Point3 Pov_FaceNormal(const PovTri& t);
