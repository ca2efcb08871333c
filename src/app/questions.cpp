// The alerts' titles and buttons.
#include "app/questions.h"

#include "core/app_strings.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "toolkit/controls/alert.h"

namespace framereel {
namespace {

constexpr uint16_t kNotSaved = 55, kUnderstood = 56, kYes = 64, kNo = 65; // of AppString

} // namespace

bool AskYesNo(uint16_t title, uint16_t picture, const char* question) {
  return AlertAsk(nullptr, AppString(title), picture, question, AppString(kYes), AppString(kNo));
}

void Tell(uint16_t picture, const char* message) {
  AlertAsk(nullptr, AppString(kProgramTitle), picture, message, AppString(kUnderstood), nullptr);
}

void TellOfFailedSave(const char* reason) {
  char* message = FormatNew(AppString(kNotSaved), reason);
  Tell(kAlertStop, message);
  StrFree(message);
}

} // namespace framereel
