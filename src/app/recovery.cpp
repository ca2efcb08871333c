// Recovery files: their names, and the question about them.
#include "app/recovery.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <sys/stat.h>
#include <unistd.h>

#include "app/document.h"
#include "app/questions.h"
#include "core/app_strings.h"
#include "core/refusal.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "gif/keep_animation.h"
#include "gif/output_file.h"
#include "platform/dialogs/file_dialogs.h"
#include "platform/pump/pump.h"
#include "recorder/engine/status.h"
#include "toolkit/controls/alert.h"

namespace framereel {
namespace {

constexpr const char* kPrefix = "framereel-recovered-"; // nobody else's: what is declined is deleted
constexpr uint16_t kOffer = 58;                         // of AppString

void FormatTime(time_t when, const char* format, char (&text)[40]) {
  tm local = {};
  ::localtime_r(&when, &local);
  if (::strftime(text, sizeof text, format, &local) == 0) *text = 0;
}

// True when the file is to be saved.
bool Offer(const char* path) {
  struct stat status = {};
  ::stat(path, &status);
  char when[40], size[kByteSizeText];
  FormatTime(status.st_mtime, "%Y-%m-%d %H:%M", when);
  FormatByteSize(uint32_t(status.st_size), size);
  char* question = FormatNew(AppString(kOffer), when, size);
  const bool save = AskYesNo(kProgramTitle, kAlertQuestion, question);
  StrFree(question);
  return save;
}

// False with the reason when the file cannot be read or the copy not written.
bool CopyTo(const char* from, const char* to, Refusal& refusal) {
  AnimationStream stream;
  GifWriter writer;
  StreamInit(stream);
  GifWriterInit(writer, &stream);
  bool copied = ReadKept(stream, from);
  if (!copied) Refuse(refusal, "cannot read %s: %s", from, ::strerror(errno));
  copied = copied && SaveAnimationAs(writer, to, refusal);
  GifWriterFree(writer);
  StreamFree(stream);
  return copied;
}

// Until it is saved or the user cancels the choice of a name.
bool SaveKept(Application& app, const char* path) {
  for (;;) {
    FileRef* file = AskSaveFile(app.document.file, app.document.type);
    if (!file) return false;
    char* to = FileRefPath(file);
    FreeFileRef(file);
    Refusal refusal;
    const bool saved = CopyTo(path, to, refusal);
    StrFree(to);
    if (saved) return true;
    TellOfFailedSave(refusal.text);
  }
}

} // namespace

bool KeepUnsaved(Application& app) {
  StreamTruncate(app.stream, app.recorder.frameBytes);
  if (!IsUnsaved(app) || app.recorder.frameCount == 0) return true;
  char now[40], name[80], path[PATH_MAX];
  FormatTime(::time(nullptr), "%Y-%m-%d-%H%M%S", now);
  ::snprintf(name, sizeof name, "%s%s.gif", kPrefix, now);
  const bool kept = KeepAnimation(app.gif, name, path);
  if (kept) {
    ::fprintf(stderr, "framereel: the animation was not saved; it is kept as %s\n", path);
  } else {
    ::fprintf(stderr, "framereel: the animation was not saved and cannot be kept: %s\n", ::strerror(errno));
  }
  return kept;
}

void OfferKept(Application& app) {
  char path[PATH_MAX];
  while (FindKept(kPrefix, path)) {
    const bool save = Offer(path);
    if (!LoopsMayRun()) return; // the question went without an answer
    if (save && !SaveKept(app, path)) return;
    if (::unlink(path) != 0) return;
  }
}

} // namespace framereel
