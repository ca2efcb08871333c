// The desktop's session manager, by the X Session Management Protocol (version 1.0), which stands on connections of its
// own (ICE) beside that to the server. libSM speaks it.
//
// At a logout the manager has every program save, one that wants to ask its user included: programs ask in turn, and an
// answer may take the logout back. Whoever does not speak the protocol loses the display without a word.
#include <X11/SM/SMlib.h>

#include <climits>
#include <cstdlib>
#include <poll.h>
#include <string>
#include <unistd.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

using Kind = DisplayEventKind;

DisplayWindow* MainWindow(const X11Connection* x) {
  for (DisplayWindow* window : x->desktop.windows) {
    if (window->role == WindowRole::kMain) return window;
  }
  return nullptr;
}

void Tell(X11Connection* x, Kind kind, bool flag = false) {
  if (DisplayWindow* window = MainWindow(x)) X11QueueEvent(x, kind, window, flag);
}

// What each program has to say of itself. The manager is not to start this one again: it would come back without its
// animation.
void Describe(SmcConn manager) {
  char program[PATH_MAX] = "framereel";
  const ssize_t length = ::readlink("/proc/self/exe", program, sizeof program - 1);
  if (length > 0) program[length] = 0;
  const std::string user = std::to_string(::getuid());
  char never = SmRestartNever;
  SmPropValue path = {int(std::char_traits<char>::length(program)), program};
  SmPropValue owner = {int(user.size()), const_cast<char*>(user.c_str())};
  SmPropValue style = {1, &never};
  struct {
    const char *name, *type;
    SmPropValue* value;
  } const facts[] = {{SmProgram, SmARRAY8, &path},
                     {SmCloneCommand, SmLISTofARRAY8, &path},
                     {SmRestartCommand, SmLISTofARRAY8, &path},
                     {SmUserID, SmARRAY8, &owner},
                     {SmRestartStyleHint, SmCARD8, &style}};
  for (const auto& fact : facts) {
    SmProp property = {const_cast<char*>(fact.name), const_cast<char*>(fact.type), 1, fact.value};
    SmProp* properties[] = {&property};
    SmcSetProperties(manager, 1, properties);
  }
}

// ---- What the manager says ---------------------------------------------------------------------------------------

void OnMayAsk(SmcConn, SmPointer connection) {
  auto* x = static_cast<X11Connection*>(connection);
  x->session.saving = X11Session::kAsks;
  Tell(x, Kind::kSessionAsks);
}

// Asking is all that there is to save: what nobody was asked about is kept when the end comes.
void OnSave(SmcConn manager, SmPointer connection, int, Bool ends, int mayAsk, Bool) {
  auto* x = static_cast<X11Connection*>(connection);
  const bool asks = ends && mayAsk == SmInteractStyleAny && MainWindow(x);
  if (asks && SmcInteractRequest(manager, SmDialogNormal, OnMayAsk, connection)) {
    x->session.saving = X11Session::kWaits;
  } else {
    SmcSaveYourselfDone(manager, True);
  }
}

void OnEnd(SmcConn, SmPointer connection) {
  Tell(static_cast<X11Connection*>(connection), Kind::kSessionEnds, true);
}

// The user has said so, to this program or another.
void OnGoesOn(SmcConn manager, SmPointer connection) {
  auto* x = static_cast<X11Connection*>(connection);
  if (x->session.saving != X11Session::kNothing) SmcSaveYourselfDone(manager, False);
  x->session.saving = X11Session::kNothing;
  Tell(x, Kind::kSessionEnds, false);
}

void OnAllSaved(SmcConn, SmPointer) {}

// libICE and libSM would end the process behind these. A connection that is broken says so when it is next read.
void OnBreak(IceConn) {}
void OnIceError(IceConn, Bool, int, unsigned long, int, int, IcePointer) {}
void OnManagerError(SmcConn, Bool, int, unsigned long, int, int, SmPointer) {}

} // namespace

void X11JoinSession(X11Connection* x) {
  if (x->session.manager) return;
  IceSetIOErrorHandler(OnBreak);
  IceSetErrorHandler(OnIceError);
  SmcSetErrorHandler(OnManagerError);
  SmcCallbacks callbacks = {{OnSave, x}, {OnEnd, x}, {OnAllSaved, x}, {OnGoesOn, x}};
  constexpr unsigned long all =
      SmcSaveYourselfProcMask | SmcDieProcMask | SmcSaveCompleteProcMask | SmcShutdownCancelledProcMask;
  char* name = nullptr;
  char reason[256];
  x->session.manager =
      SmcOpenConnection(nullptr, nullptr, 1, 0, all, &callbacks, nullptr, &name, sizeof reason, reason);
  ::free(name);
  if (x->session.manager) Describe(x->session.manager);
}

void X11LeaveSession(X11Connection* x) {
  if (x->session.manager) SmcCloseConnection(x->session.manager, 0, nullptr);
  x->session = {};
}

void X11TakeSessionMessages(X11Connection* x) {
  while (x->session.manager) {
    const IceConn connection = SmcGetIceConnection(x->session.manager);
    pollfd waits = {IceConnectionNumber(connection), POLLIN, 0};
    if (::poll(&waits, 1, 0) <= 0) return;
    const IceProcessMessagesStatus status = IceProcessMessages(connection, nullptr, nullptr);
    if (status == IceProcessMessagesIOError) X11LeaveSession(x);
    if (status == IceProcessMessagesConnectionClosed) x->session = {}; // nothing is left to be given back
  }
}

void DisplayAnswerSession(bool mayEnd) {
  X11Connection* x = X11Live();
  if (!x || x->session.saving != X11Session::kAsks) return;
  SmcInteractDone(x->session.manager, !mayEnd);
  SmcSaveYourselfDone(x->session.manager, mayEnd);
  x->session.saving = X11Session::kNothing;
}

} // namespace framereel
