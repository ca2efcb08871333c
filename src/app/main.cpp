// The entry of the process.
#include "app/app.h"

namespace {

char module; // its address tells the program's resources from the system's

} // namespace

int main() {
  return framereel::AppMain(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL);
}
