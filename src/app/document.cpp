// New, Save, Save as and Quit.
#include "app/document.h"

#include "app/questions.h"
#include "area/ants.h"
#include "area/readouts.h"
#include "core/app_strings.h"
#include "core/refusal.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "gif/output_file.h"
#include "platform/dialogs/file_dialogs.h"
#include "platform/display/beep.h"
#include "platform/pump/pump.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "recorder/control/recording_control.h"
#include "recorder/engine/recorder_core.h"
#include "toolkit/controls/alert.h"

namespace framereel {
namespace {

// Of AppString.
constexpr uint16_t kUntitled = 1, kProceed = 61, kNewLoses = 62, kQuitLoses = 63, kTitleOfFile = 74;

// True when the command is to be given up.
bool ConfirmDiscard(const Application& app, uint16_t reason) {
  if (!IsUnsaved(app)) return false;
  char* question = FormatNew(AppString(kProceed), AppString(reason));
  const bool proceed = AskYesNo(kWarningTitle, kAlertCaution, question);
  StrFree(question);
  return !proceed;
}

// What the user agrees to lose is not kept.
bool MayQuit(Application& app) {
  if (ConfirmDiscard(app, kQuitLoses)) return false;
  app.document.abandonedSize = app.stream.streamSize;
  return true;
}

bool WriteTo(Application& app, const FileRef* file, Refusal& refusal) {
  char* path = FileRefPath(file);
  const bool saved = SaveAnimationAs(app.gif, path, refusal);
  StrFree(path);
  return saved;
}

} // namespace

void DocumentStartUp(Document& document) {
  document = {};
  document.type = NewFileType(kFileTypeGif);
}

void DocumentShutDown(Document& document) {
  FreeFileRef(document.file);
  FreeFileType(document.type);
  document = {};
}

bool IsUnsaved(const Application& app) {
  return app.stream.streamSize != app.stream.savedSize;
}

void SetDocumentFile(Application& app, FileRef* file) {
  Document& document = app.document;
  if (file != document.file) FreeFileRef(document.file);
  document.file = file;
  char* name = file ? FileRefName(file) : StrDup(AppString(kUntitled));
  SetChildWindowTitle(app.panel.window, name);
  char* title = FormatNew(AppString(file ? kTitleOfFile : kProgramTitle), name);
  SetMainWindowTitle(nullptr, title);
  StrFree(title);
  StrFree(name);
}

void CommandNew(Application& app) {
  if (ConfirmDiscard(app, kNewLoses)) return;
  app.document.abandonedSize = 0;
  RecorderThaw(app.recorder);
  StreamClear(app.stream);
  RecorderReset(app.recorder);
  SetDocumentFile(app, nullptr);
  ShowAreaReadouts(app.area);
}

void CommandSave(Application& app) {
  RecorderStop(app.recorder);
  if (app.document.file) return SaveToFile(app, app.document.file);
  CommandSaveAs(app);
}

void CommandSaveAs(Application& app) {
  RecorderStop(app.recorder);
  AntsHide(app.area);
  FileRef* file = AskSaveFile(app.document.file, app.document.type);
  AntsShow(app.area);
  SaveToFile(app, file);
}

void CommandQuit(Application& app) {
  if (!MayQuit(app)) return;
  EndEventLoop();
  AntsHide(app.area);
}

bool HearOfSession(void* application, SessionStep step) {
  Application& app = *static_cast<Application*>(application);
  if (step == SessionStep::kMayEnd) return MayQuit(app);
  if (step == SessionStep::kGoesOn) app.document.abandonedSize = 0;
  if (!IsUnsaved(app)) return true;
  if (step == SessionStep::kMayEndUnasked) Beep();
  return false;
}

void SaveToFile(Application& app, FileRef* file) {
  if (!file) return;
  Refusal refusal;
  if (WriteTo(app, file, refusal)) {
    app.stream.savedSize = app.stream.streamSize;
    return SetDocumentFile(app, file);
  }
  if (file != app.document.file) FreeFileRef(file);
  TellOfFailedSave(refusal.text);
}

} // namespace framereel
