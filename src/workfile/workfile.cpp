// workfile.cpp - opening a work file: the magic, the names a load or save
// gives the scene, load and merge. The readers are in wf_read210.cpp and
// wf_read20a.cpp, the writer in wf_write.cpp.
#include "workfile/workfile.h"

#include <cerrno>
#include <cstring>

#include "base/message.h"
#include "state.h"
#include "base/field.h"
#include "workfile/wf_internal.h"
#include "workfile/wf_io.h"

int WorkFile_CheckMagic(FILE* f) {
    char magic[35];
    if (fread(magic, 1, sizeof magic, f) == sizeof magic) {
        if (memcmp(magic, kMagic210, sizeof magic) == 0) return 1;
        if (memcmp(magic, kMagic20A, sizeof magic) == 0) return 2;
    }
    fclose(f);
    Msg_Printf("\nNot a Quillmoor Sculptor 2.0A or greater work file!");
    return 0;
}

void Wf_SetNames(const char* path) {
    CopyCut(g.run.currentFilePath, sizeof g.run.currentFilePath, path);
    const char* slash = strrchr(path, '/');
    const char* base = slash ? slash + 1 : path;
    const char* dot = strrchr(base, '.');
    size_t len = dot ? static_cast<size_t>(dot - base) : strlen(base);
    char name[sizeof g.run.workFileName];
    if (len > sizeof name - 1) len = sizeof name - 1;
    memcpy(name, base, len);
    name[len] = '\0';
    strcpy(g.run.workFileName, name);
    strcpy(g.run.Scene_Name, name);
    strcpy(g.run.Image_Name, name);
}

int WorkFile_Load(const char* path) {
    g.workfile.Load_Problem = WF_CANT_OPEN;
    FILE* f = fopen(path, "rb");
    if (!f) {
        g.workfile.Load_Errno = errno;
        return 0;
    }
    int version = WorkFile_CheckMagic(f);
    if (!version) {   // the file is closed already
        g.workfile.Load_Problem = WF_FOREIGN;
        return 0;
    }
    Scene_Clear();
    g.workfile.Load_Count++;
    Wf_SetNames(path);
    WfIn in;
    in.f = f;
    int result = version == 1 ? Wf_Read210(&in) : Wf_Read20A(&in);
    if (!g.scene.First_Layer) Layer_NewFirst();
    fclose(f);
    g.workfile.Load_Problem = result ? WF_LOADED : WF_DAMAGED;
    return result;
}

int WorkFile_Merge(const char* path) {
    g.workfile.Load_Problem = WF_CANT_OPEN;
    FILE* f = fopen(path, "rb");
    if (!f) {
        g.workfile.Load_Errno = errno;
        return 0;
    }
    int version = WorkFile_CheckMagic(f);
    if (version != 1) {
        Msg_Printf("\nMerge only works with 2.1 files.");
        if (version) fclose(f);
        g.workfile.Load_Problem = WF_FOREIGN;
        return 0;
    }
    g.scene.Layer_Base = Layer_Count();
    WfIn in;
    in.f = f;
    int result = Wf_Read210(&in);
    g.scene.Layer_Base = 0;
    if (!g.scene.First_Layer) Layer_NewFirst();
    fclose(f);
    g.workfile.Load_Problem = result ? WF_LOADED : WF_DAMAGED;
    return result;
}

int WorkFile_Restore(const WfSnapshot* s, int slot) {
    Scene_Clear();
    WfIn in;
    in.mem = s->data;
    in.mem_size = s->size;
    g.workfile.Restore_Slot = slot >= 1 && slot <= 4 ? slot : 1;
    int result = Wf_Read210(&in);
    g.workfile.Restore_Slot = 0;
    if (!g.scene.First_Layer) Layer_NewFirst();
    return result;
}
