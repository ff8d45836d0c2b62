// textures.cpp - the texture library file and the texture declaration writer.
//
// Records are read and written whole (960 bytes). A file whose length is not
// a multiple of 960 has a damaged last record: readers ignore it, and the
// next save or delete moves its bytes to "textures.bad" beside the library
// rather than dropping them. A save or a delete writes the whole library
// anew and renames it over the old one, so the library is never left half
// written; records with a damaged name are kept as they are.
#include "pov/textures.h"

#include <strings.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "base/message.h"
#include "base/safe_file.h"
#include "pov/pov.h"
#include "state.h"

namespace {

const long kRecordSize = (long)sizeof(TextureRecord);

void LibraryPath(char* out, size_t size, const char* file) {
    snprintf(out, size, "%s/%s", g.config.WORK_DIR, file);
}

// Opens the library for update; with `create` a missing one is made empty.
FILE* OpenLibrary(int create) {
    char path[160];
    LibraryPath(path, sizeof path, "textures.wrk");
    FILE* f = fopen(path, "r+b");
    if (!f && create) f = fopen(path, "w+b");
    return f;
}

// Copies a name field of up to 20 characters into a terminated buffer.
void FieldName(char out[21], const char* field) {
    size_t n = strnlen(field, 20);
    memcpy(out, field, n);
    out[n] = '\0';
}

// The size of an open file; its position is kept.
long FileSize(FILE* f) {
    long at = ftell(f);
    if (at < 0 || fseek(f, 0, SEEK_END) != 0) return 0;
    long size = ftell(f);
    fseek(f, at, SEEK_SET);
    return size < 0 ? 0 : size;
}

int ReadRecord(FILE* f, TextureRecord* rec) {
    return fread(rec, sizeof *rec, 1, f) == 1;
}

// Scale, rotate and translate lines under the rule "only when not neutral".
void WriteTransform(const char* indent, const double s[3], const double r[3], const double t[3]) {
    if (!(s[0] == 1 && s[1] == 1 && s[2] == 1))
        Pov_Printf("%sscale <%g, %g, %g>", indent, s[0], s[1], s[2]);
    if (!(r[0] == 0 && r[1] == 0 && r[2] == 0))
        Pov_Printf("%srotate <%g, %g, %g>", indent, r[0], r[1], r[2]);
    if (!(t[0] == 0 && t[1] == 0 && t[2] == 0))
        Pov_Printf("%stranslate <%g, %g, %g>", indent, t[0], t[1], t[2]);
}

void WriteImageType(uint8_t type) {
    static const char* const kTypes[] = {"gif", "tga", "iff"};
    Pov_Printf("\n            %s", type < 3 ? kTypes[type] : "dump");
}

void WriteTurbulence(float turbulence, int octaves, float omega, float lambda) {
    Pov_Printf("\n        turbulence %g", turbulence);
    Pov_Printf("\n        octaves %d", octaves);
    Pov_Printf("\n        omega %g", omega);
    Pov_Printf("\n        lambda %g", lambda);
}

void WriteRgbf(const float c[4]) {
    Pov_Printf(" color rgbf<%g, %g, %g, %g>", c[0], c[1], c[2], c[3]);
}

void WritePigment(const TextureRecord& r) {
    Pov_Printf("\n    pigment {");
    switch (r.pigment_kind) {
        case 0: WriteRgbf(r.color1); break;
        case 1:
            Pov_Printf(" checker");
            WriteRgbf(r.color1);
            WriteRgbf(r.color2);
            break;
        case 2:
            Pov_Printf(" checker");
            WriteRgbf(r.color1);
            WriteRgbf(r.color2);
            WriteRgbf(r.color3);
            break;
        case 3: {
            static const char* const kPatterns[] = {
                nullptr, nullptr, nullptr, nullptr, " granite", " leopard", " marble",
                " spotted", " radial", " bozo", " wood", " onion"};
            if (r.pattern == 1) {
                Pov_Printf(" mandel %d", r.mandel_iterations);
            } else if (r.pattern == 2) {
                Pov_Printf(" gradient %s", r.gradient_axis == 0 ? "x" : r.gradient_axis == 1 ? "y" : "z");
            } else if (r.pattern == 3) {
                Pov_Printf(" agate   agate_turb %g", r.agate_turb);
            } else if (r.pattern >= 4 && r.pattern <= 11) {
                Pov_Printf("%s", kPatterns[r.pattern]);
            }
            Pov_Printf("\n        color_map {");
            for (int i = 0; i < 20; i++) {
                if (!r.map_used[i]) continue;
                const float* c = r.map_color[i];
                Pov_Printf("\n            [%g  color rgbf<%g, %g, %g, %g>]", r.map_position[i], c[0], c[1],
                           c[2], c[3]);
            }
            Pov_Printf("\n        }");
            break;
        }
        case 4: {
            char file[14];
            memcpy(file, r.image_file, 13);
            file[13] = '\0';
            Pov_Printf("\n        image_map {");
            WriteImageType(r.image_type);
            Pov_Printf(" \"%s\"", file);
            if (r.image_once) Pov_Printf(" once");
            Pov_Printf("\n            map_type %d", r.image_map_type);
            if (r.image_write_interpolate) Pov_Printf("\n            interpolate %d", r.image_interpolate);
            Pov_Printf("\n        }");
            break;
        }
    }
    if (r.pig_modifiers & 0x04) WriteTurbulence(r.pig_turbulence, r.pig_octaves, r.pig_omega, r.pig_lambda);
    if (r.pigment_kind == 3) {
        if (r.pig_modifiers & 0x01) Pov_Printf("\n        frequency %d", r.pig_frequency);
        if (r.pig_modifiers & 0x02) Pov_Printf("\n        phase %g", r.pig_phase);
    }
    double s[3], ro[3], t[3];
    memcpy(s, r.pig_scale, sizeof s);
    memcpy(ro, r.pig_rotate, sizeof ro);
    memcpy(t, r.pig_translate, sizeof t);
    WriteTransform("\n        ", s, ro, t);
    Pov_Printf("\n    }");
}

void WriteNormal(const TextureRecord& r) {
    if (r.normal_kind == 0) return;
    Pov_Printf("\n    normal {");
    switch (r.normal_kind) {
        case 1: Pov_Printf("\n        ripples %g", r.ripples); break;
        case 2: Pov_Printf("\n        waves %g", r.waves); break;
        case 3: Pov_Printf("\n        bumps %g", r.bumps); break;
        case 4: Pov_Printf("\n        dents %g", r.dents); break;
        case 5: Pov_Printf("\n        wrinkles %g", r.wrinkles); break;
        default: {
            char file[14];
            memcpy(file, r.bump_file, 13);
            file[13] = '\0';
            Pov_Printf("\n        bump_map {");
            WriteImageType(r.bump_type);
            Pov_Printf(" \"%s\"", file);
            if (r.bump_once) Pov_Printf(" once");
            Pov_Printf("%s", r.bump_use_index ? "\n            use_index" : "\n            use_color");
            Pov_Printf("\n            bump_size %g", r.bump_size);
            Pov_Printf("\n            map_type %d", r.bump_map_type);
            if (r.bump_write_interpolate) Pov_Printf("\n            interpolate %d", r.bump_interpolate);
            Pov_Printf("\n        }");
            break;
        }
    }
    if (r.nor_modifiers & 0x04) WriteTurbulence(r.nor_turbulence, r.nor_octaves, r.nor_omega, r.nor_lambda);
    if (r.normal_kind == 1 || r.normal_kind == 2) {
        if (r.nor_modifiers & 0x01) Pov_Printf("\n        frequency %d", r.nor_frequency);
        if (r.nor_modifiers & 0x02) Pov_Printf("\n        phase %g", r.nor_phase);
    }
    double s[3], ro[3], t[3];
    memcpy(s, r.nor_scale, sizeof s);
    memcpy(ro, r.nor_rotate, sizeof ro);
    memcpy(t, r.nor_translate, sizeof t);
    WriteTransform("\n        ", s, ro, t);
    Pov_Printf("\n    }");
}

void WriteFinish(const TextureRecord& r) {
    uint32_t bits = r.finish_bits;
    if ((bits & 0x1ff) == 0) return;
    Pov_Printf("\n    finish {");
    if (bits & 0x001) Pov_Printf("\n        diffuse %g", r.diffuse);
    if (bits & 0x002) Pov_Printf("\n        brilliance %g", r.brilliance);
    if (bits & 0x004) Pov_Printf("\n        crand %g", r.crand);
    if (bits & 0x008) Pov_Printf("\n        ambient %g", r.ambient);
    if (bits & 0x010) Pov_Printf("\n        reflection %g", r.reflection);
    if (bits & 0x020) Pov_Printf("\n        phong %g  phong_size %g", r.phong, r.phong_size);
    if (bits & 0x040) Pov_Printf("\n        specular %g  roughness %g", r.specular, r.roughness);
    if (bits & 0x080) Pov_Printf("\n        refraction %g  ior %g", r.refraction, r.ior);
    if (bits & 0x100) Pov_Printf("\n        metallic");
    Pov_Printf("\n    }");
}

// 1 when a layer that is on, or an object of it, uses the texture `name`.
int TextureInUse(const char* name) {
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        if (!l->on) continue;
        if (Texture_SameName(l->texture, name)) return 1;
        for (Object* o = l->first_object; o; o = o->next)
            if (Texture_SameName(o->texture, name)) return 1;
    }
    return 0;
}

// After the last whole record has been read: bytes left over are a torn
// record, which the rewritten library cannot hold; they are added to
// "textures.bad" so that nothing of the old file is thrown away.
void KeepTornTail(FILE* in) {
    char tail[sizeof(TextureRecord)];
    const long size = FileSize(in);
    const long torn = size % kRecordSize;
    if (torn == 0 || fseek(in, size - torn, SEEK_SET) != 0) return;
    size_t n = fread(tail, 1, (size_t)torn, in);
    if (n == 0) return;
    char path[160];
    LibraryPath(path, sizeof path, "textures.bad");
    FILE* bad = fopen(path, "ab");
    if (bad && fwrite(tail, 1, n, bad) == n && fclose(bad) == 0) {
        Msg_Printf("\ntextures.wrk: %zu bytes of a torn last record moved to textures.bad", n);
    } else {
        if (bad) fclose(bad);
        Msg_Printf("\ntextures.wrk: %zu bytes of a torn last record dropped (textures.bad not writable)", n);
    }
}

// Writes the library anew through "work.tmp": every record except those
// named `name`; with `replacement` the first of those is replaced by it (or
// it is appended when there is none). Only a whole new library, flushed to
// the disk, replaces the old one; a damaged last record is dropped. 1 done.
int RewriteLibrary(const char* name, const TextureRecord* replacement) {
    char lib[160], tmp[160];
    LibraryPath(lib, sizeof lib, "textures.wrk");
    LibraryPath(tmp, sizeof tmp, "work.tmp");
    FILE* in = fopen(lib, "rb");
    if (!in && (errno != ENOENT || !replacement)) {   // nothing to delete from
        Msg_Printf("Can't open/create textures.wrk");
        return 0;
    }
    SafeFile out;
    if (!SafeFile_OpenAs(&out, lib, tmp, "w+b")) {
        if (in) fclose(in);
        Msg_Printf("Can't open/create work.tmp");
        return 0;
    }
    TextureRecord rec;
    int placed = 0;
    while (in && ReadRecord(in, &rec)) {
        if (!Texture_SameName(rec.name, name)) {
            fwrite(&rec, sizeof rec, 1, out.f);
        } else if (replacement && !placed) {
            fwrite(replacement, sizeof *replacement, 1, out.f);
            placed = 1;
        }
    }
    if (in) {
        KeepTornTail(in);
        fclose(in);
    }
    if (replacement && !placed) fwrite(replacement, sizeof *replacement, 1, out.f);
    if (!SafeFile_Commit(&out, 1)) {   // the old library stays as it was
        Msg_Printf("\nError: Writing <%s> failed (disk full?), the library is unchanged", lib);
        return 0;
    }
    return 1;
}

}  // namespace

int Texture_NameUsable(const char* field) {
    size_t n = strnlen(field, 20);
    if (n == 0) return 0;
    for (size_t i = 0; i < n; i++)
        if ((unsigned char)field[i] < 0x21 || (unsigned char)field[i] > 0x7e) return 0;
    return 1;
}

int Texture_ListNames(std::vector<std::string>* names, LibraryReport* report) {
    FILE* f = OpenLibrary(1);
    if (!f) return 0;
    TextureRecord rec;
    while (ReadRecord(f, &rec)) {
        report->records++;
        if (Texture_NameUsable(rec.name)) {
            names->push_back(std::string(rec.name, strnlen(rec.name, 20)));
        } else if (report->badNames++ == 0) {
            report->firstBadName = report->records;
        }
    }
    report->tailBytes = FileSize(f) % kRecordSize;
    fclose(f);
    return 1;
}

int Texture_SameName(const char* a, const char* b) {
    size_t la = strnlen(a, 20), lb = strnlen(b, 20);
    return la == lb && la > 0 && strncasecmp(a, b, la) == 0;
}

TextureRecord Texture_Default() {
    TextureRecord r;
    memset(&r, 0, sizeof r);
    r.pattern = 6;
    r.pig_frequency = 1;
    r.pig_octaves = 6;
    r.pig_omega = 0.5f;
    r.pig_lambda = 2.0f;
    r.image_interpolate = 2;
    for (int i = 0; i < 3; i++) r.pig_scale[i] = 1;
    r.nor_omega = 0.5f;
    r.nor_lambda = 2.0f;
    r.nor_octaves = 6;
    r.nor_frequency = 1;
    r.bump_interpolate = 2;
    r.bump_size = 5.0f;
    for (int i = 0; i < 3; i++) r.nor_scale[i] = 1;
    r.diffuse = 0.6f;
    r.brilliance = 1.0f;
    r.ambient = 0.1f;
    r.phong_size = 40;
    r.roughness = 0.05f;
    r.ior = 1.0f;
    for (int i = 0; i < 3; i++) r.tex_scale[i] = 1;
    return r;
}

int Texture_Load(TextureRecord* out, const char* name) {
    FILE* f = OpenLibrary(1);
    if (!f) return 0;
    TextureRecord rec;
    int found = 0;
    while (ReadRecord(f, &rec)) {
        if (Texture_SameName(rec.name, name)) {
            *out = rec;
            found = 1;
            break;
        }
    }
    fclose(f);
    return found;
}

int Texture_Save(const TextureRecord* record) {
    if (record->name[0] == '\0') return 0;
    if (!RewriteLibrary(record->name, record)) return 0;
    FieldName(g.writer.textures.Current_Texture_Name, record->name);
    return 1;
}

int Texture_Delete(const char* name) {
    if (!name || !*name) return 0;
    if (!RewriteLibrary(name, nullptr)) return 0;
    g.writer.textures.Current_Texture_Name[0] = '\0';
    return 1;
}

void Pov_WriteTextures() {
    FILE* f = OpenLibrary(0);
    if (!f) return;
    TextureRecord rec;
    while (ReadRecord(f, &rec)) {
        char name[21];
        FieldName(name, rec.name);
        if (TextureInUse(name)) Pov_WriteTextureDecl(&rec);
    }
    fclose(f);
}

void Pov_WriteTextureDecl(const TextureRecord* record) {
    const TextureRecord& r = *record;
    char name[21], layer2[21], layer3[21], tile2[21];
    FieldName(name, r.name);
    FieldName(layer2, r.layer2_name);
    FieldName(layer3, r.layer3_name);
    FieldName(tile2, r.tile2_name);
    int tiles = r.texture_kind == 1;
    int layered = r.texture_kind == 2 && layer2[0] != '\0';

    if (tiles) {
        Pov_Printf("\n\n#declare %s = texture {", name);
        Pov_Printf("\n    tiles {");
        Pov_Printf("\n        texture {");
    } else if (layered) {
        Pov_Printf("\n\n#declare %s =", name);
        Pov_Printf("\n    texture {");
    } else {
        Pov_Printf("\n\n#declare %s = texture {", name);
    }
    WritePigment(r);
    WriteNormal(r);
    WriteFinish(r);
    double s[3], ro[3], t[3];
    memcpy(s, r.tex_scale, sizeof s);
    memcpy(ro, r.tex_rotate, sizeof ro);
    memcpy(t, r.tex_translate, sizeof t);
    WriteTransform("\n    ", s, ro, t);
    if (tiles) {
        Pov_Printf("\n        }");
        Pov_Printf("\n    tile2");
        Pov_Printf("\n        texture { %s }", tile2);
        Pov_Printf("\n    }");
        Pov_Printf("\n}");
    } else if (layered) {
        Pov_Printf("\n    }");
        Pov_Printf("\n    texture { %s }", layer2);
        if (layer3[0]) Pov_Printf("\n    texture { %s }", layer3);
    } else {
        Pov_Printf("\n}");
    }
}
