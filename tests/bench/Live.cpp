// The program as a receiver keeps it busy: two input ports at the full rate of 38400 baud, the Targets tab with all its
// columns, 1200 x 800. Prints the processor's share, the memory, and the delay from the carriage return that completes
// a message to the end of the painting of its row. Run by hand, below a display or offscreen: live [seconds of each
// measurement].
//
// A process of its own feeds the two lines through pseudo-terminals and notes when it wrote each carriage return. The
// second line calls its channels 1 and 2: so a row of the table tells which line it came by, and the messages of a line
// keep their order.
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "app/frmMain.h"
#include "targets/TargetColumns.h"
#include "tools/PseudoTerminal.h"
#include "tools/Traffic.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t Lines = 2;
constexpr double BytesPerSecond = 3840;  // 38400 baud, ten bits a character
constexpr auto Tick = std::chrono::milliseconds(5);
constexpr double MostAtOnce = 384;  // characters, after the feeding process had to wait
constexpr std::size_t MostMessages = 1 << 16;
constexpr int SettleSeconds = 5;  // the table is full by then

// What both processes see.
struct Shared {
    std::atomic<bool> bRun = false;
    struct Line {
        std::atomic<std::size_t> iSent = 0;  // messages
        std::array<Clock::time_point, MostMessages> tSent;
    };
    std::array<Line, Lines> tLines;
};

// What one line carries.
struct Stream {
    std::string sBytes;
    std::vector<std::size_t> iReturns;  // places of the carriage returns that complete a message
};

bool CompletesMessage(const std::string& s) { return s.starts_with("!AIVDM") && s[7] == s[9]; }

// The channel is the fifth field.
void RenameChannel(std::string& s) {
    if (!s.starts_with("!AIVDM")) return;
    std::size_t iField = 0;
    for (int i = 0; i < 4; ++i) iField = s.find(',', iField) + 1;
    s[iField] = s[iField] == 'A' ? '1' : '2';
    s.erase(s.size() - 3);
    simulator::CloseSentence(s);
}

Stream MakeStream(std::size_t iLine, double dSeconds) {
    simulator::TrafficOptions t;
    t.lSeed = iLine + 1;
    t.dMissingPercent = 0;
    t.iTargets = 400;  // so many that something waits to be sent all the time
    t.bGps = false;
    t.dtStart = runtime::MakeDateTime({2025, 6, 14}, 8, 0, 0);
    simulator::Traffic tTraffic(t);
    Stream tStream;
    while (static_cast<double>(tStream.sBytes.size()) < dSeconds * BytesPerSecond) {
        std::string s = tTraffic.Next().sText;
        if (iLine == 1) RenameChannel(s);
        if (CompletesMessage(s)) tStream.iReturns.push_back(tStream.sBytes.size() + s.size());
        tStream.sBytes += s + "\r\n";
    }
    return tStream;
}

// Gives out one stream at its line's rate.
class Feed {
public:
    Feed(const Stream& tStream, int iHandle, Shared::Line& tLine)
        : m_tStream(tStream), m_iHandle(iHandle), m_tLine(tLine) {}

    void Pass(double dSeconds) {
        m_dCredit = std::min(m_dCredit + dSeconds * BytesPerSecond, MostAtOnce);
        const std::size_t iEnd = std::min(m_iNext + static_cast<std::size_t>(m_dCredit), m_tStream.sBytes.size());
        m_dCredit -= static_cast<double>(iEnd - m_iNext);
        for (std::size_t i = m_tLine.iSent; i < m_tStream.iReturns.size() && m_tStream.iReturns[i] < iEnd; ++i) {
            m_tLine.tSent[i] = Clock::now();
            m_tLine.iSent = i + 1;
        }
        while (m_iNext < iEnd) {
            const ssize_t lWritten = ::write(m_iHandle, m_tStream.sBytes.data() + m_iNext, iEnd - m_iNext);
            if (lWritten > 0) m_iNext += static_cast<std::size_t>(lWritten);
            pollfd tPoll{m_iHandle, POLLOUT, 0};
            if (m_iNext < iEnd) ::poll(&tPoll, 1, 1);
        }
    }

private:
    const Stream& m_tStream;
    int m_iHandle;
    Shared::Line& m_tLine;
    std::size_t m_iNext = 0;
    double m_dCredit = 0;
};

[[noreturn]] void RunFeeds(std::array<Feed, Lines> tFeeds, const Shared& tShared) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    auto tLast = Clock::now();
    for (;;) {
        std::this_thread::sleep_until(tLast + Tick);
        const auto tNow = Clock::now();
        for (Feed& t : tFeeds) {
            if (tShared.bRun) t.Pass(std::chrono::duration<double>(tNow - tLast).count());
        }
        tLast = tNow;
    }
}

// An application that tells when a window has been painted.
class PaintTeller : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* pReceiver, QEvent* pEvent) override {
        const QEvent::Type eType = pEvent->type();
        const bool bDone = QApplication::notify(pReceiver, pEvent);
        if (eType == QEvent::UpdateRequest && tPainted) tPainted();
        return bDone;
    }
    std::function<void()> tPainted;
};

// Finds the rows that are new since the last painting, and how old they are.
class Delays {
public:
    Delays(toolkit::Grid& grd, const Shared& tShared) : m_grd(grd), m_tShared(tShared) {
        for (std::size_t i = 0; i < Lines; ++i) m_iNext[i] = tShared.tLines[i].iSent;
        m_lNewest = NewRows().empty() ? 0 : NewRows().rbegin()->first;
    }

    void Painted() {
        const auto tNow = Clock::now();
        for (const auto& [lNumber, iRow] : NewRows()) {
            if (lNumber != m_lNewest + 1) ++iMissed;
            m_lNewest = lNumber;
            const QString sChannel = m_grd.model()->index(iRow, targets::ColChannel).data().toString();
            const std::size_t iLine = sChannel == QLatin1String("A") || sChannel == QLatin1String("B") ? 0 : 1;
            const auto tSent = m_tShared.tLines[iLine].tSent[m_iNext[iLine]++];
            const int iPlace = m_grd.rowViewportPosition(iRow);
            if (iPlace < 0 || iPlace >= m_grd.viewport()->height()) continue;
            dMilliseconds.push_back(std::chrono::duration<double, std::milli>(tNow - tSent).count());
        }
    }

    std::vector<double> dMilliseconds;  // of the rows in sight
    int iMissed = 0;                    // gaps in the numbers: rows that came and went unseen

private:
    // By message number: the row, as the view knows it.
    std::map<qlonglong, int> NewRows() const {
        std::map<qlonglong, int> iRows;
        for (int iRow = 0; iRow < m_grd.model()->rowCount(); ++iRow) {
            const qlonglong lNumber = m_grd.model()->index(iRow, targets::ColNumber).data().toString().toLongLong();
            if (lNumber > m_lNewest) iRows[lNumber] = iRow;
        }
        return iRows;
    }

    toolkit::Grid& m_grd;
    const Shared& m_tShared;
    std::array<std::size_t, Lines> m_iNext{};
    qlonglong m_lNewest = 0;
};

double ProcessorSeconds() {
    rusage t{};
    getrusage(RUSAGE_SELF, &t);
    return static_cast<double>(t.ru_utime.tv_sec + t.ru_stime.tv_sec) +
           static_cast<double>(t.ru_utime.tv_usec + t.ru_stime.tv_usec) * 1e-6;
}

long ResidentKilobytes() {
    QFile tStatus(QStringLiteral("/proc/self/status"));
    if (!tStatus.open(QIODevice::ReadOnly)) return 0;
    for (QByteArray sLine = tStatus.readLine(); !sLine.isEmpty(); sLine = tStatus.readLine()) {
        if (sLine.startsWith("VmRSS:")) return std::atol(sLine.constData() + 6);
    }
    return 0;
}

void RunLoop(double dSeconds) {
    QEventLoop tLoop;
    QTimer::singleShot(static_cast<int>(dSeconds * 1000), &tLoop, &QEventLoop::quit);
    tLoop.exec();
}

void WriteProfile(const QString& sFolder, const std::array<std::string, Lines>& sPorts) {
    std::string s = "[Nmea Data]\r\n";
    for (std::size_t i = 0; i < Lines; ++i) {
        const std::string sIndex = " #" + std::to_string(i) + "=";
        s += "Enabled" + sIndex + "1\r\nComm Port" + sIndex + sPorts[i] + "\r\nSettings" + sIndex + "38400,n,8,1\r\n";
    }
    s += "[Target Data]\r\nDetail=All\r\n[Window Data]\r\nTop=300\r\nLeft=300\r\nHeight=12000\r\nWidth=18000\r\n";
    QFile tFile(sFolder + QLatin1String("/tidewatch.Ini"));
    if (tFile.open(QIODevice::WriteOnly)) tFile.write(s.data(), static_cast<qint64>(s.size()));
}

void MeasureShare(double dSeconds, int& iPaintings) {
    const auto tStart = Clock::now();
    const double dStart = ProcessorSeconds();
    iPaintings = 0;
    RunLoop(dSeconds);
    const double dTook = std::chrono::duration<double>(Clock::now() - tStart).count();
    std::printf("processor  %.2f %% of a core, %.1f paintings a second\n", 100 * (ProcessorSeconds() - dStart) / dTook,
                iPaintings / dTook);
    std::printf("memory     %ld kB resident\n", ResidentKilobytes());
}

void PrintDelays(Delays& tDelays) {
    std::vector<double>& d = tDelays.dMilliseconds;
    if (d.empty() || tDelays.iMissed > 0) {
        std::printf("delay      not measured: %zu rows, %d gaps\n", d.size(), tDelays.iMissed);
        return;
    }
    std::ranges::sort(d);
    std::printf("delay      median %.1f ms, 99 of 100 below %.1f ms, longest %.1f ms, of %zu rows\n", d[d.size() / 2],
                d[d.size() * 99 / 100], d.back(), d.size());
}

int Measure(int argc, char* argv[], const QString& sFolder, Shared& tShared, double dSeconds) {
    PaintTeller tApplication(argc, argv);
    toolkit::Platform tPlatform = toolkit::Platform::Native();
    tPlatform.sProgramFile = sFolder + QLatin1String("/tidewatch");
    app::frmMain tWindow(tPlatform);
    tWindow.Form_Load();
    tWindow.show();
    tWindow.SSTab.SetTab(ui::TabTargets);
    tWindow.Toolbar.Action(QLatin1String(ui::KeyStart)).trigger();
    int iPaintings = 0;
    tApplication.tPainted = [&] { ++iPaintings; };
    tShared.bRun = true;
    RunLoop(SettleSeconds);
    std::printf("window     %d x %d, %d rows, %s\n", tWindow.width(), tWindow.height(),
                tWindow.grdTargetData.model()->rowCount(), qPrintable(QGuiApplication::platformName()));
    MeasureShare(dSeconds, iPaintings);
    tShared.bRun = false;  // until everything sent has been painted: then rows can be counted
    RunLoop(1);
    Delays tDelays(tWindow.grdTargetData, tShared);
    tApplication.tPainted = [&] { tDelays.Painted(); };
    tShared.bRun = true;
    RunLoop(dSeconds);
    tShared.bRun = false;
    RunLoop(1);
    PrintDelays(tDelays);
    return tDelays.dMilliseconds.empty() || tDelays.iMissed > 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    const double dSeconds = argc > 1 ? std::clamp(std::atof(argv[1]), 1.0, 300.0) : 60;
    const QTemporaryDir tFolder;
    const std::string sLink = tFolder.filePath(QStringLiteral("line")).toStdString();
    std::array tLines{simulator::PseudoTerminal(sLink + "1"), simulator::PseudoTerminal(sLink + "2")};
    WriteProfile(tFolder.path(), {sLink + "1", sLink + "2"});
    const double dAll = 2 * dSeconds + SettleSeconds + 2;
    const std::array tStreams{MakeStream(0, dAll), MakeStream(1, dAll)};
    void* pShared = ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    Shared& tShared = *new (pShared) Shared;
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        RunFeeds({Feed(tStreams[0], tLines[0].Handle(), tShared.tLines[0]),
                  Feed(tStreams[1], tLines[1].Handle(), tShared.tLines[1])},
                 tShared);
    }
    const int iResult = Measure(argc, argv, tFolder.path(), tShared, dSeconds);
    ::kill(iChild, SIGKILL);
    ::waitpid(iChild, nullptr, 0);
    return iResult;
}
