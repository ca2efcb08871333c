// The allocator above the platform heap, and the temporary blocks that die at the end of an event.
//
// Everything above src/win32 allocates here. A caller never sees failure: when the heap is exhausted the program
// ends (FatalExit), after it has told the hook. The language's `new` takes the same road. One thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace framereel {

// A block of `bytes` bytes, uninitialised, aligned for any type; the caller frees it with MemFree. Never null, but
// for one case: code that FatalExit itself runs, the hook that is, gets null when the heap has nothing for it. So
// whatever the hook calls takes null, and answers it where it makes something.
void* MemAlloc(size_t bytes);
// Resizes a block, possibly moving it; contents are kept up to the smaller size. Null gives a new block. A null
// answer, possible as with MemAlloc, leaves the block as it was.
void* MemRealloc(void* block, size_t bytes);
// Null does nothing.
void MemFree(void* block);

// Is told that memory is exhausted, ahead of the end of the process: `count` is 1, or more if the hook itself comes
// to FatalExit again, or to a `new` that fails: that one answers nobody. No timer fires any more while it runs.
using MemFailureHook = void (*)(void* argument, uint32_t count);
// One hook for the process; null takes it away.
void SetMemFailureHook(MemFailureHook hook, void* argument);

// Forgets all timers, gives a reserve back to the heap for the hook, calls it and ends the process with exit code 0.
[[noreturn]] void FatalExit();

// A temporary block lives until the innermost scope that was open when it was made ends. The event loop opens one
// around each pass, so a block lives until the event at hand has been dealt with; passes of nested loops nest.
// Outside any scope, at start-up, a temporary block is never freed. All this needs ToolkitInit.
void* TempAlloc(size_t bytes);
// Puts a block from MemAlloc under the current scope, or under the outermost one, and answers it. The outermost is for
// records whose own doings may have opened the scopes inside it. Null does nothing.
void* TempAdopt(void* block);
void* TempAdoptOutermost(void* block);
void TempScopeBegin();
// Frees what was made since the innermost TempScopeBegin. With no scope open it does nothing.
void TempScopeEnd();

// Makes the temporary list and the reserve, and takes `new` onto the road; ToolkitInit calls it, once.
void MemoryStartUp();

} // namespace framereel
