// A debugging aid: an allocator that records every block it hands out with its size. Nothing else
// in the program allocates through it. The tables hold 10000 entries and grow once, to 20000; a
// block past the last entry is handed out unrecorded.
#pragma once

namespace korvane
{

extern void** memtabla; // owned; the recorded blocks, in order of allocation
extern int* memsize;    // owned; the requested size in bytes of each, same index
extern int memszam;     // number of live entries in both

void SetUpTrackedMemory(); // makes both tables, empty; called once at the start

void* malloc2(int size); // allocates and records a block, which the caller owns

// Resizes a recorded block. An unknown one ends the process with status 1.
void* realloc2(void* block, int size);

// Forgets a recorded block, which stays allocated; an unknown one only prints a line. Returns 0.
int free2(void* block);

int PrintOsszMem(); // prints the sum of the recorded sizes; returns 0

} // namespace korvane
