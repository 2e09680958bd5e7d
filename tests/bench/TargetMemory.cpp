// The memory of hours with the Targets tab shown, by acceleration: a harbour's sentences on the test's clock, at full
// speed, ten beats and paintings to their second. Prints what is allocated and resident; ends with 1 when it grows
// after a quarter of the time. target-memory [minutes].
#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "tests/support/TestWindow.h"
#include "tools/Traffic.h"

namespace {

constexpr int BeatsPerSecond = 10;
constexpr std::size_t MostGrowth = 256 * 1024;  // bytes: what the texts of one minute and another differ by

std::size_t Allocated() {
    const auto t = ::mallinfo2();
    return t.uordblks + t.hblkhd;
}

std::size_t ResidentKilobytes() {
    std::size_t lWhole = 0, lResident = 0;
    std::ifstream("/proc/self/statm") >> lWhole >> lResident;
    return lResident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) / 1024;
}

// A window that hears a harbour; time is the harbour's.
class Harbour {
public:
    Harbour() {
        m_tWindow.LoadAndShow();
        m_tWindow.resize(1200, 800);
        m_tWindow.cmbTargetDetail.SetText("All");
        m_tWindow.StartBoth();
        m_tWindow.SSTab.SetTab(ui::TabTargets);
    }
    void Second() {
        for (int i = 1; i <= BeatsPerSecond; ++i) {
            const std::int64_t lUntil = 1000 * m_lSecond + 1000 * i / BeatsPerSecond;
            for (; m_pLine->lMilliseconds < lUntil; m_pLine = &m_tTraffic.Next(), ++m_lLines) {
                m_tWindow.FeedLine(m_pLine->bGps ? 1 : 0, m_pLine->sText);
            }
            m_tWindow.Synchronize();
            QCoreApplication::processEvents();  // paints
        }
        m_tWindow.Advance(1);
        ++m_lSecond;
    }
    std::int64_t Lines() const { return m_lLines; }

private:
    support::World m_tWorld;
    support::TestWindow m_tWindow{m_tWorld};
    simulator::Traffic m_tTraffic{simulator::TrafficOptions{}};
    const simulator::TrafficLine* m_pLine = &m_tTraffic.Next();
    std::int64_t m_lSecond = 0;
    std::int64_t m_lLines = 0;
};

}  // namespace

int main(int iCount, char* pArguments[]) {
    QApplication tApplication(iCount, pArguments);
    const int iMinutes = iCount > 1 ? std::atoi(pArguments[1]) : 180;
    Harbour tHarbour;
    std::size_t lSettled = 0, lMost = 0;
    std::printf("minute      lines   allocated    resident\n");
    for (int iMinute = 1; iMinute <= iMinutes; ++iMinute) {
        for (int i = 0; i < 60; ++i) tHarbour.Second();
        const std::size_t lNow = Allocated();
        if (4 * iMinute <= iMinutes) lSettled = std::max(lSettled, lNow);
        lMost = std::max(lMost, lNow);
        if (iMinute % std::max(1, iMinutes / 18) != 0) continue;
        std::printf("%6d %10lld %8zu kB %8zu kB\n", iMinute, static_cast<long long>(tHarbour.Lines()), lNow / 1024,
                    ResidentKilobytes());
    }
    std::printf("most after the first quarter: %+ld kB\n",
                (static_cast<long>(lMost) - static_cast<long>(lSettled)) / 1024);
    return lMost > lSettled + MostGrowth ? 1 : 0;
}
