// prim_geom_test.cpp - primitive generators: grid sizes, corners, the
// primitive transform, screen edge masks, explode and bad records.
#include <cmath>

#include "recorder.h"

namespace {

const double kR2 = std::sqrt(2.0);

PrimitiveData Prim(int type, int aux) {
    PrimitiveData p = Primitive_Default();
    p.prim_type = type;
    p.prim_aux = aux;
    p.scale = {1, 1, 1};
    return p;
}

class PrimGeom : public GeomTest {};

TEST_F(PrimGeom, DiscRingCornersAndMasks) {
    UseFacets();
    PrimitiveData p = Prim(PRIM_DISC, 4);
    p.p1 = 1;   // hole
    p.p2 = 2;
    EXPECT_EQ(Prim_Draw(&p), 0);
    ASSERT_EQ(Rec().facets.size(), 4u);   // 1 x 4
    EXPECT_CORNERS(Rec().facets[0], {1, 0, 0}, {2, 0, 0}, {0, 0, 2}, {0, 0, 1});
    EXPECT_EQ(Rec().facets[0].mask, 15);   // row 0 and column 0: all four edges
    EXPECT_CORNERS(Rec().facets[1], {0, 0, 1}, {0, 0, 2}, {-2, 0, 0}, {-1, 0, 0});
    EXPECT_EQ(Rec().facets[1].mask, 14);   // the edge c0-c1 belongs to column 0's neighbour
    EXPECT_PT(Rec().facets[3].c[2], 2, 0, 0);   // last column closes at angle 2 pi
}

TEST_F(PrimGeom, SphereCountsAndCorners) {
    UseFacets();
    PrimitiveData p = Prim(PRIM_SPHERE, 4);
    p.p1 = 2;
    Prim_Draw(&p);
    ASSERT_EQ(Rec().facets.size(), 16u);
    // Cell (1, 1): longitude 90..180 degrees, latitude -45..0 degrees.
    EXPECT_CORNERS(Rec().facets[1 * 4 + 1], {0, -kR2, kR2}, {-kR2, -kR2, 0}, {-2, 0, 0}, {0, 0, 2});
    EXPECT_EQ(Rec().facets[5].mask, 6);
    EXPECT_PT(Rec().facets[0].c[0], 0, -2, 0);   // south pole first
}

TEST_F(PrimGeom, ConeClosedHasCapsOpenHasSideOnly) {
    UseFacets();
    PrimitiveData p = Prim(PRIM_CONE, 4);
    p.p1 = 2;
    p.p2 = 1;
    p.p3 = 3;
    Prim_Draw(&p);
    ASSERT_EQ(Rec().facets.size(), 12u);   // 3 x 4
    EXPECT_CORNERS(Rec().facets[0], {0, 0, 0}, {2, 0, 0}, {0, 0, 2});
    // row 1, column 0
    EXPECT_CORNERS(Rec().facets[4], {2, 0, 0}, {1, 3, 0}, {0, 3, 1}, {0, 0, 2});
    EXPECT_EQ(Rec().facets[4].mask, 7);
    const RecFacet& top = Rec().facets[11];   // row 2, column 3
    EXPECT_PT(top.c[0], 0, 3, -1);
    EXPECT_PT(top.c[1], 0, 3, 0);
    EXPECT_PT(top.c[3], 1, 3, 0);

    Rec() = Recording{};
    p.prim_flags |= PRIM_OPEN;
    Prim_Draw(&p);
    ASSERT_EQ(Rec().facets.size(), 4u);
    EXPECT_PT(Rec().facets[0].c[0], 2, 0, 0);
    EXPECT_PT(Rec().facets[0].c[1], 1, 3, 0);
    EXPECT_EQ(Rec().facets[0].mask, 15);
}

TEST_F(PrimGeom, TorusStartsAtTheTubeBottom) {
    UseFacets();
    PrimitiveData p = Prim(PRIM_TORUS, 4);
    p.p1 = 3;
    p.p2 = 1;
    Prim_Draw(&p);
    ASSERT_EQ(Rec().facets.size(), 16u);
    // c1 and c2 in the next sector, 90 degrees about Y
    EXPECT_CORNERS(Rec().facets[0], {3, -1, 0}, {0, -1, 3}, {0, 0, 4}, {4, 0, 0});
}

TEST_F(PrimGeom, PlaneScaledRotatedTranslated) {
    UseFacets();
    PrimitiveData p = Prim(PRIM_PLANE, 1);
    p.scale = {3, 3, 3};
    p.rotate = {90, 0, 0};
    p.translate = {1, 2, 3};
    Prim_Draw(&p);
    ASSERT_EQ(Rec().facets.size(), 1u);
    // (-1,0,-1) * 3 = (-3,0,-3); about X by 90: (-3,3,0); + (1,2,3).
    EXPECT_CORNERS(Rec().facets[0], {-2, 5, 3}, {-2, -1, 3}, {4, -1, 3}, {4, 5, 3});
}

TEST_F(PrimGeom, TransformOrder) {
    PrimitiveData p = Prim(PRIM_SPHERE, 4);
    // Scale before rotation: (1,0,0) -> (2,0,0) -> (0,2,0).
    p.scale = {2, 1, 1};
    p.rotate = {0, 0, 90};
    EXPECT_PT(Prim_Transform(&p, {1, 0, 0}), 0, 2, 0);
    // Y taken as 360 - 90: +x goes to -z; translation last.
    p.scale = {1, 1, 1};
    p.rotate = {0, 90, 0};
    p.translate = {10, 0, 0};
    EXPECT_PT(Prim_Transform(&p, {1, 0, 0}), 10, 0, -1);
    p.translate = {0, 0, 0};
    // X first: (0,1,0) -> (0,0,1), then Y: (1,0,0).
    p.rotate = {90, 90, 0};
    EXPECT_PT(Prim_Transform(&p, {0, 1, 0}), 1, 0, 0);
    // X-Z-Y: Z turns (1,0,0) to (0,1,0), which Y leaves alone.
    p.rotate = {0, 90, 90};
    EXPECT_PT(Prim_Transform(&p, {1, 0, 0}), 0, 1, 0);
    // X-Y-Z: Y turns it to (0,0,-1), which Z leaves alone.
    p.prim_flags |= PRIM_ROT_XYZ;
    EXPECT_PT(Prim_Transform(&p, {1, 0, 0}), 0, 0, -1);
}

TEST_F(PrimGeom, ScreenDrawsEveryGridEdgeOnce) {
    UseScreen();
    PrimitiveData p = Prim(PRIM_DISC, 4);
    p.p1 = 1;
    p.p2 = 2;
    Prim_Draw(&p);
    // 1 x 4 grid: 1*5 edges across, 4*2 along = 13.
    EXPECT_EQ(Rec().segments.size(), 13u);
    const Point3 in[4] = {{1, 0, 0}, {0, 0, 1}, {-1, 0, 0}, {0, 0, -1}};
    const Point3 out[4] = {{2, 0, 0}, {0, 0, 2}, {-2, 0, 0}, {0, 0, -2}};
    for (int k = 0; k < 4; k++) {
        EXPECT_EQ(SegmentCount(Rec().segments, in[k], in[(k + 1) % 4]), 1) << k;
        EXPECT_EQ(SegmentCount(Rec().segments, out[k], out[(k + 1) % 4]), 1) << k;
        // Column 0 and the last column's far side are the same grid seam.
        EXPECT_EQ(SegmentCount(Rec().segments, in[k], out[k]), k == 0 ? 2 : 1) << k;
    }

    // Cone 3 x 4: 3*5 + 4*4 = 31 edges.
    Rec() = Recording{};
    p = Prim(PRIM_CONE, 4);
    p.p1 = 2;
    p.p2 = 1;
    p.p3 = 3;
    Prim_Draw(&p);
    EXPECT_EQ(Rec().segments.size(), 31u);
}

TEST_F(PrimGeom, BoxEndFacesOnlyOffScreen) {
    PrimitiveData p = Prim(PRIM_BOX, 8);
    p.size = {1, 2, 3};
    UseScreen();
    Prim_Draw(&p);
    ASSERT_EQ(Rec().segments.size(), 12u);
    const double X = 1, Y = 2, Z = 3;
    const Point3 rim[4] = {{0, 0, 0}, {X, 0, 0}, {X, Y, 0}, {0, Y, 0}};
    for (int k = 0; k < 4; k++) {
        Point3 a = rim[k], b = rim[(k + 1) % 4];
        Point3 a2{a.x, a.y, Z}, b2{b.x, b.y, Z};
        EXPECT_EQ(SegmentCount(Rec().segments, a, b), 1) << k;
        EXPECT_EQ(SegmentCount(Rec().segments, a2, b2), 1) << k;
        EXPECT_EQ(SegmentCount(Rec().segments, a, a2), 1) << k;
    }

    Rec() = Recording{};
    UseFacets();
    Prim_Draw(&p);
    ASSERT_EQ(Rec().facets.size(), 6u);
    for (int k = 0; k < 4; k++) EXPECT_EQ(Rec().facets[k].mask, 14);
    EXPECT_EQ(Rec().facets[4].mask, 15);
    EXPECT_PT(Rec().facets[4].c[2], 1, 2, 0);   // end face z = 0
    EXPECT_PT(Rec().facets[5].c[2], 1, 2, 3);   // end face z = size.z
}

TEST_F(PrimGeom, HeightFieldAddsFourLinesToTopCentre) {
    PrimitiveData p = Prim(PRIM_HEIGHT_FIELD, 8);
    p.size = {1, 1, 1};
    p.scale = {4, 2, 6};   // the extent of a height field is its scale
    UseScreen();
    Prim_Draw(&p);
    ASSERT_EQ(Rec().segments.size(), 16u);
    const Point3 top{2, 2, 3};
    for (Point3 c : {Point3{0, 0, 0}, Point3{4, 0, 0}, Point3{0, 0, 6}, Point3{4, 0, 6}})
        EXPECT_EQ(SegmentCount(Rec().segments, c, top), 1) << Str(c);
}

TEST_F(PrimGeom, ScreenStopsWhenThePenAsks) {
    UseScreen();
    Rec().stop_after_lines = 5;
    PrimitiveData p = Prim(PRIM_SPHERE, 8);
    p.p1 = 1;
    EXPECT_EQ(Prim_Draw(&p), 1);
    EXPECT_EQ(Rec().segments.size(), 5u);
}

TEST_F(PrimGeom, ExplodeSphereMakesOneMesh) {
    g.output.Output_Mode = OUTPUT_EXPLODE;
    PrimitiveData p = Prim(PRIM_SPHERE, 4);
    p.p1 = 2;
    p.translate = {0, 10, 0};
    EXPECT_EQ(Prim_Draw(&p), 0);
    Object* obj = g.scene.Current_Layer->first_object;
    ASSERT_NE(obj, nullptr);
    EXPECT_EQ(obj->next, nullptr);
    ASSERT_EQ(obj->kind, KIND_POLYLINE);
    const PolylineData* mesh = (const PolylineData*)obj->data;
    EXPECT_EQ(mesh->form, FORM_POLY_MESH);
    EXPECT_EQ(mesh->size_m, 4);
    EXPECT_EQ(mesh->size_n, 4);
    ASSERT_EQ(mesh->count, 25);
    EXPECT_PT(mesh->points[0], 0, 8, 0);        // (0, 0): south pole
    EXPECT_PT(mesh->points[4], 0, 12, 0);       // (0, 4): the extra column, north pole
    EXPECT_PT(mesh->points[1 * 5 + 2], 0, 10, 2);
    EXPECT_PT(mesh->points[4 * 5 + 2], 2, 10, 0);   // the extra row: longitude 2 pi
}

TEST_F(PrimGeom, ExplodeBoxMakesSixFaces) {
    g.output.Output_Mode = OUTPUT_EXPLODE;
    PrimitiveData p = Prim(PRIM_BOX, 8);
    p.size = {1, 1, 1};
    Prim_Draw(&p);
    int faces = 0;
    for (Object* o = g.scene.Current_Layer->first_object; o; o = o->next) faces += o->kind == KIND_3DFACE;
    EXPECT_EQ(faces, 6);
}

TEST_F(PrimGeom, ExplodeOutOfMemory) {
    g.output.Output_Mode = OUTPUT_EXPLODE;
    PrimitiveData p = Prim(PRIM_TORUS, 4);
    p.p1 = 3;
    p.p2 = 1;
    long blocks = g.mem.live_blocks;
    // The grid itself fails; then the grid succeeds and the mesh object does not.
    const struct {
        int fail_after;
        const char* message;
    } cases[] = {{1, "\nCan't create Mesh...Out Of Memory!"}, {2, "\nOut of Memory!"}};
    for (const auto& c : cases) {
        testing::internal::CaptureStdout();
        Mem_FailAfter(c.fail_after);
        Prim_Draw(&p);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), c.message);
        EXPECT_EQ(g.scene.Current_Layer->first_object, nullptr);
        EXPECT_EQ(g.mem.live_blocks, blocks);
    }
}

TEST_F(PrimGeom, BadRecordsYieldNothingOrBoundedOutput) {
    UseFacets();
    for (int aux : {0, -3}) {
        for (int type : {PRIM_SPHERE, PRIM_CONE, PRIM_TORUS, PRIM_DISC}) {
            PrimitiveData p = Prim(type, aux);
            p.p1 = p.p2 = p.p3 = 1;
            EXPECT_EQ(Prim_Draw(&p), 0);
        }
    }
    EXPECT_TRUE(Rec().facets.empty());
    PrimitiveData unknown = Prim(99, 8);
    Prim_Draw(&unknown);
    unknown.prim_type = 0;
    Prim_Draw(&unknown);
    EXPECT_TRUE(Rec().facets.empty());
    EXPECT_EQ(Prim_Draw(nullptr), 0);

    // NaN and overflowing values: facets with such corners never reach a consumer.
    PrimitiveData nan = Prim(PRIM_SPHERE, 4);
    nan.p1 = std::nan("");
    Prim_Draw(&nan);
    PrimitiveData huge = Prim(PRIM_TORUS, 4);
    huge.p1 = 1e308;
    huge.scale = {1e308, 1e308, 1e308};
    Prim_Draw(&huge);
    EXPECT_TRUE(Rec().facets.empty());
    UseScreen();
    Prim_Draw(&nan);
    Prim_Draw(&huge);
    EXPECT_TRUE(Rec().segments.empty());

    // A huge segment count is capped: a disc of one ring.
    UseFacets();
    PrimitiveData big = Prim(PRIM_DISC, 1 << 30);
    big.p2 = 1;
    Prim_Draw(&big);
    EXPECT_EQ(Rec().facets.size(), (size_t)GEOM_MAX_PRIM_AUX);
}

}  // namespace
