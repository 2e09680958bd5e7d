// The system's functions that can fail, each in front of the system's own: calls for the program's own files and ports
// are counted, and one of them, or all from one on, fails as the plan says. Linked into a program or loaded before it.
#pragma once

#include <atomic>
#include <string_view>

namespace failing {

enum class Call {
    Open,
    Read,
    Write,
    Sync,
    Rename,
    Truncate,
    Lock,
    Control,
    Ioctl,
    GetTerminal,
    SetTerminal,
    FlushTerminal,
    Close,
    MakeFolder,
    Unlink,
    Link,
    Seek,
    Status,
    ReadLink,
    Access,
    OpenFolder,
    ReadFolder,
    Room,
    ChangeMode,
    Thread,
    Socket,
    Bind,
    Pipe,
    Spawn,
    Temporary,
    Put,
};
constexpr int CallCount = static_cast<int>(Call::Put) + 1;

enum class Mode { Count, Once, Stays, Interrupted, Short };

// What is told of a function. An error of 0: this does not happen to it.
struct CallKind {
    const char* sName;
    int iOnce;   // the error of a single failure
    int iStays;  // of one that goes on
    bool bInterruptible;
    bool bShort;  // it can do a part of what it is asked for
};
const CallKind& KindOf(Call e);
bool Happens(Call e, Mode eMode);

// Where a helper thread's calls are counted apart: their order among the window's is left to chance.
constexpr int Threads = 2;

struct Plan {
    Mode eMode = Mode::Count;
    Call eCall = Call::Open;
    int iThread = 0;  // 0: the first thread, 1: any other
    int iNumber = 0;  // of its calls, from 1
};

// Plain memory that two processes may share.
struct State {
    Plan tPlan;
    std::atomic<bool> bArmed = false;  // calls are counted
    std::atomic<int> iCounts[CallCount][Threads] = {};
    std::atomic<int> iFired = 0;  // how many failed
    char sWhere[512] = "";        // the name of what the first one was about
};

void UseState(State* p);  // before anything is armed
// Names that begin like this are the program's own; so is every descriptor that is opened by such a name.
void Watch(std::string_view sBeginning);
void WatchDescriptor(int iDescriptor);
int Fired();
// Until what was written below the first of the names has been brought to the disk, well or badly, or a call has
// failed.
void AwaitSync();

// While it lives nothing of this thread is counted: the test's own work.
class Pause {
public:
    Pause();
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
};

}  // namespace failing
