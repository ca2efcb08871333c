// The animation as the user's document: the file that it was saved in last, the question that guards it, and the
// commands on it. There is no Open, for the program writes GIF files and reads none.
//
// It is unsaved while the stream's size differs from what was last saved.
#pragma once

#include "app/application_record.h"
#include "platform/pump/app_callbacks.h"

namespace framereel {

void DocumentStartUp(Document& document);
void DocumentShutDown(Document& document);

bool IsUnsaved(const Application& app);
// Takes over the FileRef, null for none, and shows its name in the titles.
void SetDocumentFile(Application& app, FileRef* file);

// The commands. New and Quit ask when something would be lost, and a Quit that goes on ends the event loop.
void CommandNew(Application& app);
void CommandSave(Application& app);
void CommandSaveAs(Application& app);
void CommandQuit(Application& app);
// A SessionHandler: a logout asks as Quit does. Where it cannot, it does not happen while something would be lost.
bool HearOfSession(void* application, SessionStep step);

// Writes the animation and makes the file, which it takes over, the document's; null does nothing. Where it fails the
// user is told the reason, what stood there still stands, and the document is as unsaved as before.
void SaveToFile(Application& app, FileRef* file);

} // namespace framereel
