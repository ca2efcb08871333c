// A logout as a desktop's session manager does it: a small one of the tests' own, in a process of its own, since the
// sides of libSM wait for each other.
#include "x11/user.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

#include <X11/SM/SMlib.h>

extern "C" void _IceTransNoListen(const char* protocol); // libICE's; its headers leave it out

namespace framereel {

namespace {

// ---- The manager -------------------------------------------------------------------------------------------------

int line; // to the test: a letter for each order, and for what the program says
SmsConn program;

void Report(char what) {
  if (::write(line, &what, 1) != 1) ::_exit(1);
}

Status Welcome(SmsConn from, SmPointer, unsigned long* mask, SmsCallbacks* callbacks, char**) {
  program = from;
  *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
          SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask;
  callbacks->register_client.callback = [](SmsConn, SmPointer, char*) -> Status {
    SmsRegisterClientReply(program, SmsGenerateClientID(program));
    SmsSaveYourself(program, SmSaveLocal, False, SmInteractStyleNone, False); // as the protocol has it for a new one
    return 1;
  };
  callbacks->interact_request.callback = [](SmsConn, SmPointer, int) { Report('a'), SmsInteract(program); };
  callbacks->interact_done.callback = [](SmsConn, SmPointer, Bool cancels) { Report(cancels ? 'n' : 'y'); };
  callbacks->save_yourself_done.callback = [](SmsConn, SmPointer, Bool saved) { Report(saved ? 's' : 'f'); };
  callbacks->close_connection.callback = [](SmsConn, SmPointer, int, char**) { Report('x'), ::_exit(0); };
  callbacks->set_properties.callback = [](SmsConn, SmPointer, int, SmProp** properties) { ::free(properties); };
  return 1;
}

void Obey(char order) {
  if (order == 'q') SmsSaveYourself(program, SmSaveBoth, True, SmInteractStyleAny, False);
  if (order == 'h') SmsSaveYourself(program, SmSaveBoth, True, SmInteractStyleNone, True); // in a hurry
  if (order == 'c') SmsShutdownCancelled(program);
  if (order == 'd') SmsDie(program);
}

// It reports its address first. It ends with the test, which holds the other end of the line.
[[noreturn]] void RunManager() {
  char reason[256];
  int count = 0;
  IceListenObj* doors = nullptr;
  const auto anybody = [](char*) -> Bool { return True; };
  _IceTransNoListen("tcp");
  SmsInitialize("test", "1", Welcome, nullptr, anybody, sizeof reason, reason);
  if (!IceListenForConnections(&count, &doors, sizeof reason, reason)) ::_exit(1);
  for (int i = 0; i < count; i++) IceSetHostBasedAuthProc(doors[i], anybody);
  for (const char* letter = IceComposeNetworkIdList(count, doors); *letter; letter++) Report(*letter);
  Report('\n');
  // First the door, later the program.
  pollfd heard[] = {{line, POLLIN, 0}, {IceGetListenConnectionNumber(doors[0]), POLLIN, 0}};
  for (IceConn connection = nullptr; ::poll(heard, 2, -1) > 0;) {
    char order = 0;
    if (heard[0].revents && ::read(line, &order, 1) != 1) break;
    Obey(order);
    if (heard[1].revents && connection) {
      IceProcessMessages(connection, nullptr, nullptr);
    } else if (heard[1].revents) {
      IceAcceptStatus status;
      connection = IceAcceptConnection(doors[0], &status);
      heard[1].fd = IceConnectionNumber(connection);
    }
  }
  IceFreeListenObjs(count, doors);
  ::_exit(0);
}

// ---- The program -------------------------------------------------------------------------------------------------

class X11Logout : public X11WindowTest {
protected:
  void SetUp() override {
    int ends[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    line = ends[1];
    if (::fork() == 0) {
      ::close(ends[0]);
      RunManager();
    }
    ::close(line);
    manager = ends[0];
    std::string address;
    for (char letter; ::read(manager, &letter, 1) == 1 && letter != '\n';) address += letter;
    X11WindowTest::SetUp();
    ::setenv("SESSION_MANAGER", address.c_str(), 1);
    Open(Role::kMain, {10, 10, 100, 100});
    ::unsetenv("SESSION_MANAGER");
  }
  void TearDown() override {
    X11WindowTest::TearDown();
    ::close(manager);
  }

  void Hear() {
    for (char letter; ::recv(manager, &letter, 1, MSG_DONTWAIT) == 1;) reported += letter;
    for (const DisplayEvent& event : Drain()) {
      if (event.kind == Kind::kSessionAsks) told += 'A';
      if (event.kind == Kind::kSessionEnds) told += event.flag ? 'E' : 'G';
    }
  }
  // Gives the order, and waits for what the manager hears and our program is told.
  std::string After(const std::string& orders, size_t reports, size_t tells) {
    reported = told = "";
    for (const char each : orders) EXPECT_EQ(::write(manager, &each, 1), 1);
    Until([&] { return Hear(), reported.size() >= reports && told.size() >= tells; });
    return reported + " " + told;
  }

  int manager = -1; // the line to it
  std::string reported, told;
};

TEST_F(X11Logout, WaitsForOurAnswerAndMayBeTakenBackByBothSides) {
  EXPECT_EQ(After("", 1, 0), "s ");
  EXPECT_EQ(After("q", 1, 1), "a A");
  DisplayAnswerSession(false);
  EXPECT_EQ(After("", 2, 0), "nf ");
  EXPECT_EQ(After("c", 0, 1), " G");
  EXPECT_EQ(After("q", 1, 1), "a A");
  EXPECT_EQ(After("c", 1, 1), "f G");
  DisplayAnswerSession(true); // too late
  EXPECT_EQ(After("q", 1, 1), "a A");
  DisplayAnswerSession(true);
  EXPECT_EQ(After("", 2, 0), "ys ");
  EXPECT_EQ(After("h", 1, 0), "s ") << "nobody may be asked";
  EXPECT_EQ(After("d", 0, 1), " E");
  DisplayClose();
  ASSERT_TRUE(DisplayOpen());
  EXPECT_EQ(After("", 1, 0), "x ");
}

TEST_F(X11Logout, AManagerThatIsGoneIsNoEnd) {
  EXPECT_EQ(After("", 1, 0), "s ");
  ::close(std::exchange(manager, -1)); // it ends without a word
  Until([&] { return Drain(), !X11Live()->session.manager; });
}

} // namespace

} // namespace framereel
