// undo.h - UNDO and REDO of whole commands, recorded around each command
// by the command loop (undo.cpp explains how).
#pragma once
#include <cstddef>

#include "cmd/undo_state.h"

// Before and after each command the loop runs.
void Undo_Before(int code);
void Undo_After();
// Forgets every step (a new scene; state reset).
void Undo_Clear();
// Steps kept, and the snapshot bytes they hold.
int Undo_Count();
int Redo_Count();
size_t Undo_Bytes();

int Com_Undo();   // CMD_UNDO
int Com_Redo();   // CMD_REDO
