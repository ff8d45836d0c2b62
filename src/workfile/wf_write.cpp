// wf_write.cpp - the work-file writer (always version 2.10).
//
// The scene is written to a temporary file next to the target ("$cene.qmr"
// for "scene.qmr"), flushed to the disk and renamed over the target only
// when every write succeeded, so neither a full disk nor a crash costs the
// user the old file. All writes go through wf_io.cpp, which buffers them and
// keeps a sticky error flag checked once at the end.
#include <cstdio>
#include <cstdlib>

#include "base/safe_file.h"
#include "scene/layers.h"
#include "state.h"
#include "workfile/wf_internal.h"
#include "workfile/wf_io.h"
#include "workfile/workfile.h"


namespace {

int PositionOf(const Layer* target) {
    int pos = 1;
    for (const Layer* l = g.scene.First_Layer; l; l = l->next, pos++)
        if (l == target) return pos;
    return -1;
}

void WriteTable(WfOut* f, const WfField* table, size_t n) {
    for (size_t i = 0; i < n; i++) {
        Wf_PutByte(f, table[i].key);
        Wf_PutField(f, table[i].type, table[i].where(), table[i].size);
    }
}

void WriteSettings(WfOut* f) {
    Wf_PutByte(f, TAG_SETTINGS);
    WriteTable(f, kSettingsFields, kSettingsFieldCount);
    Wf_PutByte(f, 19);
    Wf_PutInt32(f, WfView_Layout());
    Wf_PutByte(f, 20);
    Wf_PutInt32(f, g.workfile.Snapshot_Mode ? 0 : WfView_Current());
    Wf_PutByte(f, 21);
    Wf_PutInt32(f, g.scene.Current_Layer ? PositionOf(g.scene.Current_Layer) : 0);
    Wf_PutByte(f, KEY_END);
}

void WriteOutput(WfOut* f) {
    Wf_PutByte(f, TAG_OUTPUT);
    WriteTable(f, kOutputFields, kOutputFieldCount);
    Wf_PutByte(f, KEY_END);
}

void WriteLayer(WfOut* f, const Layer* l, int pos) {
    Wf_PutByte(f, TAG_LAYER);
    Wf_PutByte(f, 1);
    Wf_PutInt32(f, pos);
    Wf_PutByte(f, 2);
    Wf_PutRaw(f, l->name, 12);
    Wf_PutByte(f, 3);
    Wf_PutRaw(f, l->texture, sizeof l->texture);
    const int32_t ints[] = {l->csg, l->color, l->on, l->level,
                            l->instance ? PositionOf(l->instance) : -1, l->rotation_order};
    for (int k = 0; k < 6; k++) {
        Wf_PutByte(f, 4 + k);
        Wf_PutInt32(f, ints[k]);
    }
    const Point3* points[] = {&l->translate,         &l->scale,         &l->rotate,
                              &l->texture_translate, &l->texture_scale, &l->texture_rotate};
    for (int k = 0; k < 6; k++) {
        Wf_PutByte(f, 10 + k);
        Wf_PutPoint(f, *points[k]);
    }
    Wf_PutByte(f, KEY_END);
    if (l->first_object) Wf_WriteObjects(f, l);
}

}  // namespace

int WorkFile_Save(const char* path) {
    g.workfile.Write_Error = 0;
    SafeFile out;
    if (!SafeFile_Open(&out, path, "wb")) return 0;   // no name, or no temporary file
    WfOut buffer;
    WfOut* f = &buffer;
    f->f = out.f;
    Wf_SetNames(path);

    Wf_PutRaw(f, kMagic210, sizeof kMagic210);
    WriteSettings(f);
    WriteOutput(f);
    WfView_StoreWorking();   // the file holds the view as it is seen
    for (int n = 1; n <= 4; n++) WfView_WriteSlot(f, n);
    int pos = 1;
    for (const Layer* l = g.scene.First_Layer; l; l = l->next) WriteLayer(f, l, pos++);
    Wf_PutByte(f, TAG_END);
    Wf_Flush(f);

    if (!g.workfile.Write_Error && SafeFile_Commit(&out, 1)) return 1;
    SafeFile_Discard(&out);
    g.workfile.Write_Error = 1;   // the command tells the user (out of disk space)
    return 0;
}

// Snapshots: the same sections as a save, without the magic, the views last.
namespace {

void WriteScene(WfOut* f, WfMemory* m, size_t* scene_size) {
    WriteSettings(f);
    WriteOutput(f);
    int pos = 1;
    for (const Layer* l = g.scene.First_Layer; l; l = l->next) WriteLayer(f, l, pos++);
    Wf_Flush(f);
    *scene_size = m->against ? m->compared : m->size;
}

}  // namespace

int WorkFile_Snapshot(WfSnapshot* s) {
    WorkFile_FreeSnapshot(s);
    const int keep_error = g.workfile.Write_Error;
    g.workfile.Write_Error = 0;
    g.workfile.Snapshot_Mode = 1;
    WfMemory m;
    WfOut buffer;
    buffer.mem = &m;
    size_t scene_size = 0;
    WriteScene(&buffer, &m, &scene_size);
    WfView_StoreWorking();
    for (int n = 1; n <= 4; n++) WfView_WriteSlot(&buffer, n);
    Wf_PutByte(&buffer, TAG_END);
    Wf_Flush(&buffer);
    const int ok = !g.workfile.Write_Error;
    g.workfile.Snapshot_Mode = 0;
    g.workfile.Write_Error = keep_error;
    if (!ok) {
        free(m.data);
        return 0;
    }
    s->data = m.data;
    s->size = m.size;
    s->scene_size = scene_size;
    return 1;
}

int WorkFile_SameScene(const WfSnapshot* s) {
    if (!s->data) return 0;
    const int keep_error = g.workfile.Write_Error;
    g.workfile.Write_Error = 0;
    g.workfile.Snapshot_Mode = 1;
    WfMemory m;
    m.against = s->data;
    m.against_size = s->scene_size;
    WfOut buffer;
    buffer.mem = &m;
    size_t scene_size = 0;
    WriteScene(&buffer, &m, &scene_size);
    g.workfile.Snapshot_Mode = 0;
    g.workfile.Write_Error = keep_error;
    return !m.differs && scene_size == s->scene_size;
}

void WorkFile_FreeSnapshot(WfSnapshot* s) {
    free(s->data);
    *s = WfSnapshot{};
}
