// textures.h - the texture library "textures.wrk" and its declaration writer.
//
// The library is a headerless sequence of 960-byte records in the work
// directory, names unique without regard to case. TextureRecord is laid out
// exactly as a record on disk (little-endian, 4-byte packing), so a record is
// read and written as one block. Names fill their char[20] fields and may
// lack a terminating NUL when they are 20 characters long.
#pragma once

#include <string>
#include <vector>

#include "pov/texture_state.h"

// A record with every field at its default (padding zero).
TextureRecord Texture_Default();

// 1 when the library has a record named `name` (case ignored), copied out.
int Texture_Load(TextureRecord* out, const char* name);
// Overwrites the record of the same name or appends it. 1 saved, 0 not
// (empty name, or the library could not be opened or created).
int Texture_Save(const TextureRecord* record);
// Removes every record of that name. 1 done, 0 not.
int Texture_Delete(const char* name);

// What a reading of the whole library found besides its records.
struct LibraryReport {
    long records = 0;        // whole records
    long tailBytes = 0;      // bytes after the last whole record: a torn record
    long badNames = 0;       // records whose name is empty or not printable text
    long firstBadName = 0;   // 1-based number of the first of them
};
// The names of the library's records in file order, as each record spells
// them; records without a usable name are counted and left out. The
// library is created when missing. 0 when it cannot be opened or created.
int Texture_ListNames(std::vector<std::string>* names, LibraryReport* report);
// 1 when a name field (20 bytes, NUL-terminated unless full) holds a usable
// name: 1 to 20 printable characters without blanks.
int Texture_NameUsable(const char* field);

// The TEXTURES section: every library texture that a visible layer or one of
// its objects uses, in library order.
void Pov_WriteTextures();
void Pov_WriteTextureDecl(const TextureRecord* record);

// Case-insensitive comparison of two texture names of at most 20 characters.
int Texture_SameName(const char* a, const char* b);
