// The allocator above the platform heap. Blocks that die by themselves stand in temporary_blocks.h.
//
// Everything above src/win32 allocates here. A caller never sees failure: when the heap is exhausted the program
// ends (FatalExit), after it has told the hook. The language's `new` takes the same road. One thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace framereel {

// A block of `bytes` bytes, uninitialised, aligned for any type; the caller frees it with MemFree. Never null, but
// for one case: code that FatalExit itself runs, the hook that is, gets null when the heap has nothing for it, up to
// EndAtNextFailure. So whatever the hook calls ahead of that takes null, and answers it where it makes something.
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

// For the hook, once what must not be lost is safe and it is windows that follow: no block is null any more, and one
// for which there is no memory ends the process, as a `new` that fails does.
void EndAtNextFailure();

// Forgets all timers, gives a reserve back to the heap for the hook, calls it and ends the process with exit code 0.
[[noreturn]] void FatalExit();

// Makes the reserve, and takes `new` onto the road; `forgetTimers` is what FatalExit forgets them by. ToolkitInit calls
// it, once.
void MemoryStartUp(void (*forgetTimers)());

} // namespace framereel
