// Memory shared with the server (the MIT-SHM extension): the server writes a picture straight into a surface. A server
// on another machine, or without the extension, refuses; everything then goes through the connection.
#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/socket.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// A number that names shared memory here may name a stranger's on another machine, even one that answers through a
// tunnel; so the connection itself must be one that does not leave the machine.
bool IsLocal(Display* display) {
  sockaddr_storage peer{};
  socklen_t size = sizeof peer;
  if (::getpeername(ConnectionNumber(display), reinterpret_cast<sockaddr*>(&peer), &size) != 0) return false;
  return peer.ss_family == AF_UNIX;
}

// Memory of the caller's, not yet the server's. False when the system has no more.
bool TakeMemory(X11Segment* segment) {
  XShmSegmentInfo& shared = segment->shared;
  shared.shmid = ::shmget(IPC_PRIVATE, segment->bytes, IPC_CREAT | 0600);
  if (shared.shmid < 0) return false;
  void* address = ::shmat(shared.shmid, nullptr, 0);
  if (address == reinterpret_cast<void*>(-1)) {
    ::shmctl(shared.shmid, IPC_RMID, nullptr);
    return false;
  }
  shared.shmaddr = static_cast<char*>(address);
  shared.readOnly = False;
  return true;
}

} // namespace

void X11ReadSharing(X11Connection* x) {
  x->sharing = XShmQueryExtension(x->display) && IsLocal(x->display);
}

std::unique_ptr<X11Segment> X11NewSegment(X11Connection* x, size_t bytes) {
  if (!x->sharing) return nullptr;
  auto segment = std::make_unique<X11Segment>();
  segment->bytes = bytes;
  if (!TakeMemory(segment.get())) return nullptr;

  unsigned long request = NextRequest(x->display);
  XShmAttach(x->display, &segment->shared);
  XSync(x->display, False);
  // Marked for removal once both sides hold it: it then goes with the last of them, even after a crash.
  ::shmctl(segment->shared.shmid, IPC_RMID, nullptr);
  if (x->failedRequest == request || !X11Live()) {
    x->sharing = false;
    ::shmdt(segment->shared.shmaddr);
    return nullptr;
  }
  x->segments.push_back(segment.get());
  return segment;
}

void X11FreeSegment(X11Connection* x, std::unique_ptr<X11Segment> segment) {
  // One that is not in the list belongs to an earlier connection, whose server side has gone with it.
  if (x && std::erase(x->segments, segment.get()) > 0) XShmDetach(x->display, &segment->shared);
  ::shmdt(segment->shared.shmaddr);
}

} // namespace framereel
