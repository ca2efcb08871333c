// The last moment of a process that aborts: a library has found that it cannot go on, as Xlib does when it is refused
// memory, and asks nobody.
#pragma once

namespace framereel {

using AbortHook = void (*)(void* argument);

// The hook is called, once, ahead of the end by SIGABRT. It keeps what is worth keeping, in files: the display, and
// whatever else a library does, may be what has broken. Null lets the signal do its usual work again. One for the
// process.
void SetAbortHook(AbortHook hook, void* argument);

} // namespace framereel
