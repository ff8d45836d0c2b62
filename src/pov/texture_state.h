// texture_state.h - the texture library record, laid out exactly as a
// 960-byte record of "textures.wrk" (little-endian, 4-byte packing), and
// the texture state of the chooser and editor. Types only.
#pragma once

#include <cstddef>
#include <cstdint>

#pragma pack(push, 4)
struct TextureRecord {
    char name[20];               // NUL-terminated unless 20 characters long
    float color1[4];             // r, g, b, filter
    float color2[4];
    float color3[4];
    uint8_t pigment_kind;        // 0 colour, 1 checker 2, 2 checker 3, 3 pattern, 4 image map
    int32_t pattern;             // 1 mandel .. 11 onion
    uint8_t gradient_axis;       // 0 x, 1 y, other z
    int32_t mandel_iterations;
    float agate_turb;
    float map_color[20][4];      // colour-map colours
    float map_position[20];      // colour-map positions
    uint8_t map_used[20];        // colour-map entry in use
    uint8_t pig_modifiers;       // bit 0 frequency, 1 phase, 2 turbulence
    int32_t pig_frequency;
    int32_t pig_octaves;
    float pig_phase;
    float pig_turbulence;
    float pig_omega;
    float pig_lambda;
    char image_file[13];
    uint8_t image_type;          // 0 gif, 1 tga, 2 iff, other dump
    int8_t image_map_type;
    int8_t image_interpolate;
    uint8_t image_write_interpolate;
    uint8_t image_once;
    double pig_translate[3];
    double pig_rotate[3];
    double pig_scale[3];
    uint8_t normal_kind;         // 0 none, 1 ripples, 2 waves, 3 bumps, 4 dents, 5 wrinkles, 6 bump map
    float bumps;
    float dents;
    float ripples;
    float waves;
    float wrinkles;
    uint8_t nor_modifiers;       // bit 0 frequency, 1 phase, 2 turbulence
    float nor_turbulence;
    float nor_omega;
    float nor_lambda;
    float nor_phase;
    int32_t nor_octaves;
    int32_t nor_frequency;
    char bump_file[13];
    int8_t bump_interpolate;
    int8_t bump_map_type;
    uint8_t bump_type;           // as image_type
    uint8_t bump_once;
    uint8_t bump_use_index;      // 0 = use_color
    uint8_t bump_write_interpolate;
    float bump_size;
    double nor_translate[3];
    double nor_rotate[3];
    double nor_scale[3];
    float diffuse;
    float brilliance;
    float crand;
    float ambient;
    float reflection;
    float phong;
    float phong_size;
    float specular;
    float roughness;
    float refraction;
    float ior;
    uint32_t finish_bits;        // bit 0 diffuse .. 8 metallic
    uint8_t texture_kind;        // 0 plain, 1 tiles, 2 layered
    char tile2_name[20];
    char layer2_name[20];
    char layer3_name[20];
    double tex_translate[3];
    double tex_rotate[3];
    double tex_scale[3];
};
#pragma pack(pop)

static_assert(sizeof(TextureRecord) == 960, "a library record is 960 bytes");
static_assert(offsetof(TextureRecord, pigment_kind) == 0x44);
static_assert(offsetof(TextureRecord, pig_translate) == 0x22c);
static_assert(offsetof(TextureRecord, normal_kind) == 0x274);
static_assert(offsetof(TextureRecord, bump_size) == 0x2bc);
static_assert(offsetof(TextureRecord, finish_bits) == 0x334);
static_assert(offsetof(TextureRecord, tile2_name) == 0x339);
static_assert(offsetof(TextureRecord, tex_translate) == 0x378);

struct TextureState {
    char Current_Texture_Name[21] = "";   // texture last chosen or saved
    TextureRecord Texture_Work_Record{};  // the record the editor works on
    int workRecordSet = 0;                // the work record has had its defaults
};
