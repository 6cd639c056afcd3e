#pragma once
// Reading files on several threads at once: each thread has a TagEngine of its own, and
// everything the engines share (TagLib's frame factories and genre tables, our own
// tables) is built once, on the calling thread, before the first reader starts.

// Builds the shared tables of the tag readers. Call it before starting threads that open
// files; calling it again costs nothing.
void PrepareTagReadersForThreads();

// How many threads may read files at the same time on this machine: all its cores, at
// most 8 (beyond that the disk, not the processor, sets the pace).
int MachineReadThreads();
