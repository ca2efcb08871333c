// The one main window.
#include "platform/records/window_records.h"

namespace framereel {
namespace {

MainWindow theMainWindow;

} // namespace

MainWindow* TheMainWindow() {
  return &theMainWindow;
}

MainWindow* MainOr(MainWindow* main) {
  return main ? main : &theMainWindow;
}

const MainWindow* MainOr(const MainWindow* main) {
  return main ? main : &theMainWindow;
}

} // namespace framereel
