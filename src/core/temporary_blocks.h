// Memory that nobody frees: temporary blocks die at the end of an event.
#pragma once

#include <cstddef>

namespace framereel {

// A temporary block lives until the innermost scope that was open when it was made ends. The event loop opens one
// around each pass, so a block lives until the event at hand has been dealt with; passes of nested loops nest.
// Outside any scope, at start-up, a temporary block is never freed. All this needs ToolkitInit.
//
// These put a block from MemAlloc under the current scope, or under the outermost one, and answer it. The outermost is
// for records whose own doings may have opened the scopes inside it. Null does nothing.
void* TempAdopt(void* block);
void* TempAdoptOutermost(void* block);
void TempScopeBegin();
// Frees what was made since the innermost TempScopeBegin. With no scope open it does nothing.
void TempScopeEnd();

// Makes the list of the blocks; ToolkitInit calls it, once.
void TemporaryBlocksStartUp();

} // namespace framereel
