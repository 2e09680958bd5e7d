// Fuzz target for what arrives on both ports while a user is at the window, through to table, logs and views. An input
// is a script, an action a line; two windows get it, one all bytes of a port at once, the other a line at a time and
// looked at after each, and must show the same. Painted now and then only: that is a thousand times dearer.
//
//     0...  1...   a line on a port             a...  b...   bytes on a port, without a line end
//     +n  seconds go by        s n  order       d n  detail  v n  tab       t n  Track        T...  the selected target
//     p n  dBm                 o n  output (1), with RMC (2)  R  Stop, Start
//     c xy  m xy  click, mouse on the table     e n  a port's event         L... B...  the own position's boxes
#include <string>
#include <string_view>
#include <vector>

#include "tests/fuzz/WindowHarness.h"

namespace {

using fuzz::Promise;
using support::TestWindow;

// The numbers of the table's rows, top to bottom.
std::vector<std::int64_t> Order(const TestWindow& t) {
    std::vector<std::int64_t> lNumbers;
    const runtime::GridCells& tCells = t.grdTargetData.Cells;
    for (int iRow = 1; iRow < tCells.Rows(); ++iRow) lNumbers.push_back(std::atoll(tCells.Text(iRow, 0).c_str()));
    return lNumbers;
}

// The table's order before a line, and what a stable sort by the window's comparison makes of it behind.
class OrderCheck {
public:
    explicit OrderCheck(TestWindow& t) : m_t(t), m_lBefore(Order(t)), m_lNumber(t.m_lMessageNumber) {}

    // Sorted; or, where bMayWait says so, perhaps not: the order by signal waits for a level, a choice for the focus.
    void Check(bool bMayWait) {
        const std::vector<std::int64_t> lNow = Order(m_t);
        std::vector<std::int64_t> lExpected = m_lBefore;
        std::erase_if(lExpected, [&lNow](std::int64_t l) { return std::ranges::find(lNow, l) == lNow.end(); });
        for (std::int64_t l = m_lNumber + 1; l <= m_t.m_lMessageNumber; ++l) lExpected.push_back(l);
        if (lNow == lExpected && (bMayWait || m_t.m_lMessageNumber == m_lNumber)) return;
        std::stable_sort(lExpected.begin(), lExpected.end(), [&](std::int64_t a, std::int64_t b) {
            std::int16_t iCmp = 0;
            m_t.SortCompare(m_t.grdTargetData, Row(lNow, a), Row(lNow, b), iCmp);
            return iCmp < 0;
        });
        Promise(lNow == lExpected);
    }

private:
    static std::int32_t Row(const std::vector<std::int64_t>& lNow, std::int64_t lNumber) {
        return static_cast<std::int32_t>(std::ranges::find(lNow, lNumber) - lNow.begin()) + 1;
    }

    TestWindow& m_t;
    std::vector<std::int64_t> m_lBefore;
    std::int64_t m_lNumber;
};

int Digit(std::string_view s, int iBelow) { return s.empty() ? 0 : static_cast<unsigned char>(s[0]) % iBelow; }

float Coordinate(std::string_view s, std::size_t i, float fMost) {
    return s.size() > i ? static_cast<float>(static_cast<unsigned char>(s[i]) - 32) * fMost / 94 : 0;
}

void Restart(TestWindow& t, int iOutput) {
    t.Press("Stop");
    t.chkOutputEnabled.setChecked(iOutput > 0);
    t.chkOutputRMC.setChecked(iOutput > 1);
    t.Press("Start");
}

void ChooseOrder(TestWindow& t, int iOrder) {
    t.SSTab.SetTab(ui::TabTargets);
    t.cmbTargetSort.setFocus();
    t.cmbTargetSort.SetListIndex(iOrder);
}

void Act(TestWindow& t, char cWhat, std::string_view s) {
    switch (cWhat) {
        case '+':
            return t.Advance(1 + Digit(s, 64));
        case 's':
            return ChooseOrder(t, Digit(s, 3));
        case 'd':
            return t.cmbTargetDetail.SetListIndex(Digit(s, 5));
        case 'v':
            return t.SSTab.SetTab(Digit(s, 11));
        case 't':
            return t.chkTargetTrack.setChecked(Digit(s, 2) == 1);
        case 'T':
            return t.cmbTargetTarget.SetText(s);
        case 'p':
            return t.chkRxNasaPower.setChecked(Digit(s, 2) == 1);
        case 'o':
            return Restart(t, Digit(s, 3));
        case 'R':
            return Restart(t, (t.chkOutputEnabled.isChecked() ? 1 : 0) + (t.chkOutputRMC.isChecked() ? 1 : 0));
        case 'c':
            return t.grdTargetData.Click(Coordinate(s, 0, 1000), Coordinate(s, 1, 600));
        case 'm':
            return t.grdTargetData.MouseMove(Coordinate(s, 0, 1000), Coordinate(s, 1, 600));
        case 'e':
            return t.MSComm(Digit(s, 2) == 0 ? 0 : 1).RaiseEvent(1000 + Digit(s, 12));
        case 'L':
            return t.txtGpsLat.SetText(s);
        case 'B':
            return t.txtGpsLon.SetText(s);
        default:
            return;
    }
}

class Script {
public:
    Script(TestWindow& tKept, TestWindow& tSingle) : m_tKept(tKept), m_tSingle(tSingle) {}

    void Play(std::string_view sScript) {
        while (!sScript.empty()) {
            const std::size_t iEnd = std::min(sScript.find('\n'), sScript.size());
            Line(sScript.substr(0, iEnd));
            sScript.remove_prefix(std::min(iEnd + 1, sScript.size()));
        }
        Flush();
    }

private:
    void Line(std::string_view s) {
        if (s.empty()) return;
        const char c = s[0];
        s.remove_prefix(1);
        if (c == '0' || c == '1') return Bytes(c == '0' ? 0 : 1, std::string(s) + "\r\n");
        if (c == 'a' || c == 'b') return Bytes(c == 'a' ? 0 : 1, s);
        Flush();
        Act(m_tKept, c, s);
        OrderCheck tCheck(m_tSingle);
        Act(m_tSingle, c, s);
        const bool bAnew = c == 'R' || c == 'o';
        if (!bAnew) tCheck.Check(c == 's');
        fuzz::PromiseBounds(m_tSingle);
    }

    void Bytes(app::PortIndex i, std::string_view s) {
        if (i != m_iPort) Flush();
        m_iPort = i;
        m_sWaiting += s;
        while (!s.empty()) {
            const std::size_t iEnd = std::min(s.find('\r'), s.size() - 1) + 1;
            OrderCheck tCheck(m_tSingle);
            m_tSingle.Feed(i, s.substr(0, iEnd));
            tCheck.Check(m_tSingle.cmbTargetSort.ListIndex() == targets::SortBySignal);
            m_tSingle.Synchronize();
            fuzz::PromiseBounds(m_tSingle);
            s.remove_prefix(iEnd);
        }
    }

    // To the other window, all at once.
    void Flush() {
        if (m_sWaiting.empty()) return;
        const fuzz::Cost tCost = fuzz::CostOf([this] { m_tKept.Feed(m_iPort, m_sWaiting); });
        fuzz::PromiseLinear(tCost, m_sWaiting.size(), {50000, 500}, {2000, 4});
        fuzz::PromiseBounds(m_tKept);
        m_sWaiting.clear();
    }

    TestWindow& m_tKept;
    TestWindow& m_tSingle;
    app::PortIndex m_iPort = 0;
    std::string m_sWaiting;  // has come to m_tSingle only
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    static fuzz::Window& tKept = fuzz::Window::Make();
    static fuzz::Window& tSingle = fuzz::Window::Make();
    static int iRuns = 0;
    tKept.Begin();
    tSingle.Begin();
    Script(tKept.t, tSingle.t).Play(fuzz::Text(pData, iSize));
    const QString sDifference = support::Difference(support::Views(tKept.t), support::Views(tSingle.t));
    if (!sDifference.isEmpty()) std::fprintf(stderr, "%s\n", qPrintable(sDifference));
    Promise(sDifference.isEmpty());
    if (++iRuns % 256 != 0) return 0;
    QCoreApplication::processEvents();
    Promise(!tKept.t.grab().isNull());
    return 0;
}
