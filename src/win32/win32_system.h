// Memory, process, time and resources, as win32_types.h tells.
#pragma once

#include <cstddef>

#include "win32/win32_types.h"

// ---- Memory and process ------------------------------------------------------------------------------------------

// HeapAlloc and HeapReAlloc tell when memory has ended. Anything else of this layer ends the program then, as `new`
// does: in the language's new-handler.
HANDLE GetProcessHeap();
// A block of `bytes` bytes, uninitialised, aligned for any type; null when the heap is exhausted. `flags` is 0.
void* HeapAlloc(HANDLE heap, DWORD flags, size_t bytes);
// Resizes a block, possibly moving it, contents kept; null when the heap is exhausted, and the block then stays.
void* HeapReAlloc(HANDLE heap, DWORD flags, void* block, size_t bytes);
BOOL HeapFree(HANDLE heap, DWORD flags, void* block);

[[noreturn]] void ExitProcess(UINT exitCode);

// ---- Time --------------------------------------------------------------------------------------------------------

// Milliseconds of the display's clock since some start; wraps to 0 after 2^32.
DWORD GetTickCount();
// Sleeps for at least the given time. Nothing that happens meanwhile ends it early.
void Sleep(DWORD milliseconds);

// ---- Resources ---------------------------------------------------------------------------------------------------

// Copies string resource `id`, cut to `bufferSize` - 1 bytes, and a zero byte behind it. Answers the number of bytes
// copied without the zero, or 0 when there is no such string; the buffer then holds the empty string.
int LoadStringA(HINSTANCE instance, UINT id, char* buffer, int bufferSize);
