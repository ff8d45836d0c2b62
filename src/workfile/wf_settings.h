// wf_settings.h - the settings and output-option sections of the work file as
// tables: key, value type and where the value lives in the global state.
#pragma once
#include <cstddef>

enum WfType { WF_BYTE, WF_INT, WF_DOUBLE, WF_POINT, WF_TEXT };

struct WfField {
    int key;
    WfType type;
    void* (*where)();   // address of the setting in g
    size_t size;        // WF_TEXT: bytes in the file (= the field's size)
};

// Section 1 keys 1..18 (keys 19..21 are handled by the reader and writer).
extern const WfField kSettingsFields[];
extern const size_t kSettingsFieldCount;
// Section 2 keys 1..34.
extern const WfField kOutputFields[];
extern const size_t kOutputFieldCount;

const WfField* Wf_FindField(const WfField* table, size_t n, int key);
// Settings read from a file brought back into their ranges.
void Wf_ClampSettings();
