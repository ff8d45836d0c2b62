// settings_test.cpp - the named-settings table: names, types, conversions,
// clamping, and the viewport settings that act on several records.
#include <gtest/gtest.h>

#include <cmath>

#include "input/settings.h"
#include "test_support.h"

namespace {

class Settings : public QmrTest {};

TEST_F(Settings, NamesMatchWithoutCaseButWithLength) {
    int v = 0;
    g.aids.orthoOn = 1;
    EXPECT_EQ(Var_GetInt("ortho", &v), 1);
    EXPECT_EQ(v, 1);
    EXPECT_EQ(Var_GetInt("ORTH", &v), 0);
    EXPECT_EQ(Var_GetInt("ORTHOX", &v), 0);
    EXPECT_EQ(Var_GetInt("NO_SUCH", &v), 0);
    EXPECT_EQ(Var_Access("Auto-Seg", 1), 1);
}

TEST_F(Settings, TypedGettersConvertOrRefuse) {
    View_SetArea(&g.view.Active_Viewport, 12.75);
    int i = -1;
    EXPECT_EQ(Var_GetInt("AREA", &i), 1);   // double, truncated
    EXPECT_EQ(i, 12);
    double d = 0;
    g.aids.Seg_Value = 9;
    EXPECT_EQ(Var_GetDouble("SEG_VALUE", &d), 1);
    EXPECT_EQ(d, 9.0);
    Point3 p{};
    EXPECT_EQ(Var_GetPoint("AREA", &p), 0);   // only points
    EXPECT_EQ(Var_GetInt("CAM", &i), 0);
    EXPECT_EQ(Var_GetDouble("WORK_DIR", &d), 0);
    char text[64];
    EXPECT_EQ(Var_GetText("AREA", text, sizeof text), 1);
    EXPECT_STREQ(text, "12.75");
    EXPECT_EQ(Var_GetText("SEG_VALUE", text, sizeof text), 1);
    EXPECT_STREQ(text, "9");
    g.view.Active_Viewport.CAM = {1.5, -2, 1e20};
    EXPECT_EQ(Var_GetText("CAM", text, sizeof text), 1);
    EXPECT_STREQ(text, "1.5,-2,1e+20");
    strcpy(g.run.workFileName, "house");
    EXPECT_EQ(Var_GetText("WORK_FILENAME", text, sizeof text), 1);
    EXPECT_STREQ(text, "house");
}

// Each setter hands back the value as stored: clamped, normalised, flags as
// 0/1, an int setting written from a double truncated; text settings ignore writes.
TEST_F(Settings, SettersClampAndReadTheStoredValueBack) {
    const struct {
        const char* name;
        double in, out;
        bool as_int;
    } cases[] = {
        {"SEG_VALUE", 1, 2, true},   {"COORDS_MODE", 7, 3, true}, {"COORDS_MODE", -4, 1, true},
        {"GRID", 5, 1, true},        {"GRIDX", 3, 3, true},       {"PITCH", 370, 10, false},
        {"AREA", 1e-20, 1e-14, false}, {"SNAP", 2.9, 1, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        if (c.as_int) {
            int v = (int)c.in;
            EXPECT_EQ(Var_SetInt(c.name, &v), 1);
            EXPECT_EQ(v, (int)c.out);
        } else {
            double d = c.in;
            EXPECT_EQ(Var_SetDouble(c.name, &d), 1);
            EXPECT_NEAR(d, c.out, 1e-12 * c.out);
        }
    }
    EXPECT_EQ(g.aids.Seg_Value, 2);
    EXPECT_EQ(g.view.Active_Viewport.GRID, 1);
    EXPECT_EQ(g.view.Active_Viewport.GRIDX, 3.0);
    strcpy(g.config.WORK_DIR, "/w");
    EXPECT_EQ(Var_Access("WORK_DIR", 0), 1);
    int v = 3;
    EXPECT_EQ(Var_SetInt("WORK_DIR", &v), 1);
    EXPECT_STREQ(g.config.WORK_DIR, "/w");
}

TEST_F(Settings, CameraSettingsActOnAllFiveRecords) {
    Point3 tar{0, 0, 0}, cam{0, 0, -10};
    Var_SetPoint("TAR", &tar);
    Var_SetPoint("CAM", &cam);
    double fov = 90;
    Var_SetDouble("FOV", &fov);
    for (int n = 1; n <= 4; n++) {
        EXPECT_EQ(g.view.Viewports[n].CAM.z, -10) << n;
        EXPECT_EQ(g.view.Viewports[n].FOV, 90) << n;
        EXPECT_NEAR(g.view.Viewports[n].focal, 1.0, 1e-9) << n;   // 1/tan(45 degrees)
    }
    EXPECT_EQ(g.view.Active_Viewport.TAR.x, 0);
    // The camera looks along +z, so the matrix row_z is (0, 0, 1).
    EXPECT_NEAR(g.view.row_z.z, 1.0, 1e-12);
    Point3 e{1, 2, 3};
    g.view.Current_Viewport = 3;
    Var_SetPoint("ELEVATION", &e);
    EXPECT_EQ(g.view.Viewports[3].ELEVATION.y, 2);
    EXPECT_EQ(g.view.Viewports[1].ELEVATION.y, 0);
    Point3 back{};
    EXPECT_EQ(Var_GetPoint("ELEVATION", &back), 1);
    EXPECT_EQ(back.z, 3);
}

TEST_F(Settings, ViewKindSetsTheAxes) {
    int v = 5;   // FRONT
    Var_SetInt("VIEW", &v);
    EXPECT_EQ(g.view.Active_Viewport.axis_d.z, -1);
    EXPECT_EQ(g.view.Active_Viewport.axis_v.y, 1);
}

}  // namespace
