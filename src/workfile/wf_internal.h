// wf_internal.h - pieces of the work-file reader and writer shared between
// their files; nothing outside src/workfile/ uses these.
#pragma once
#include <cstdio>

#include "scene/layers.h"
#include "workfile/wf_io.h"
#include "workfile/wf_settings.h"

// Section tags and keys with a meaning of their own.
enum {
    TAG_SETTINGS = 1,
    TAG_OUTPUT = 2,
    TAG_VIEWPORT = 3,
    TAG_LAYER = 4,
    TAG_OBJECTS = 5,
    TAG_END = 0xFF,
    KEY_END = 0xFF,
    OBJ_KIND = 1,
    OBJ_TEXTURE = 2,
    OBJ_FLAGS = 6,
    OBJ_FIELDS = 100,
    OBJ_FIELDS_END = 101,
    OBJ_SECTION_END = 102,
};

// Writes one value of a table field (at address p) / reads it; 0 on failure.
int Wf_PutField(WfOut* f, WfType type, const void* p, size_t size);
int Wf_GetField(WfIn* f, WfType type, void* p, size_t size);

// Section 5 of `layer` (tag included); only called for a layer with objects.
int Wf_WriteObjects(WfOut* f, const Layer* layer);
// Section 5 body into Current_Layer. 1 at key 102; 0 at end of file or when
// a polyline point could not be stored (message printed).
int Wf_ReadObjects(WfIn* f);
// Adds an object of `kind` from a filled record on the caller's stack, with
// its texture and flags; a polyline takes `points` (count points, kept by the
// caller). Returns 1, or 0 when out of memory (nothing added).
int Wf_AddObject(int kind, void* record, const char* texture, int flags);

// Temporary point list of a polyline being read: exact-size blocks as the
// scene model demands, but grown in doubling steps while reading.
struct WfPointList {
    Point3* points = nullptr;
    int count = 0;
    int capacity = 0;
};
int Wf_PointListAdd(WfPointList* list, const Point3& p);   // 0 when out of memory
void Wf_PointListFree(WfPointList* list);

// Viewports (wf_views.cpp).
int WfView_Layout();
int WfView_Current();
void WfView_ApplyLayout(int n);
void WfView_StoreWorking();           // working record into its slot
int WfView_WriteSlot(WfOut* f, int n); // tag 3 and its body
int WfView_ReadSlot(WfIn* f);          // body after tag 3; 0 at end of file
void WfView_AfterLoad(int slot);      // working record from `slot`, camera settings
void WfView_RedrawAll();
// 2.0A: skips one 668-byte block; 0 at end of file.
int WfView_Skip20A(WfIn* f);

// Readers (the magic already read). Results as WorkFile_Load.
int Wf_Read210(WfIn* f);
int Wf_Read20A(WfIn* f);
// currentFilePath, workFileName, Scene_Name, Image_Name from a path.
void Wf_SetNames(const char* path);
