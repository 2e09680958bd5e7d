// Fuzz target for the own position's boxes: any keys, clicks and pastes, as they come from keyboard, mouse and
// clipboard. Exactly one character stays selected, the text keeps its length and can be read, and the own position is
// what it says.
//
//     < > ^ v  arrows     @c  a click before character c     |  the other box     #...  a line that is pasted
//     any other character is typed
#include <QKeyEvent>
#include <cmath>

#include "nav/PositionText.h"
#include "tests/fuzz/WindowHarness.h"

namespace {

using fuzz::Promise;
using support::TestWindow;

void Key(toolkit::MaskedBox& txt, int iKey, const QString& sText = {}) {
    QKeyEvent tPress(QEvent::KeyPress, iKey, Qt::NoModifier, sText);
    QCoreApplication::sendEvent(&txt, &tPress);
}

class Hand {
public:
    explicit Hand(TestWindow& t) : m_t(t) {}

    void Play(std::string_view s) {
        while (!s.empty()) {
            const char c = s[0];
            s.remove_prefix(1);
            s.remove_prefix(Act(c, s));
            Check(m_t.txtGpsLat, m_t.m_dLatitude, 10, nav::ParseLatitude);
            Check(m_t.txtGpsLon, m_t.m_dLongitude, 11, nav::ParseLongitude);
        }
    }

private:
    toolkit::MaskedBox& Box() { return m_bLongitude ? m_t.txtGpsLon : m_t.txtGpsLat; }

    // How much of what follows belongs to it.
    std::size_t Act(char c, std::string_view s) {
        switch (c) {
            case '<':
                return Key(Box(), Qt::Key_Left), 0;
            case '>':
                return Key(Box(), Qt::Key_Right), 0;
            case '^':
                return Key(Box(), Qt::Key_Up), 0;
            case 'v':
                return Key(Box(), Qt::Key_Down), 0;
            case '|':
                m_bLongitude = !m_bLongitude;
                return 0;
            case '@':
                if (s.empty()) return 0;
                Box().ClickAt(static_cast<unsigned char>(s[0]) % 16);
                return 1;
            case '#': {
                const std::size_t iEnd = std::min(s.find('\n'), s.size());
                emit Box().Paste(toolkit::FromLatin1(s.substr(0, iEnd)));
                return iEnd;
            }
            default:
                Key(Box(), 0, toolkit::FromLatin1({&c, 1}));
                return 0;
        }
    }

    void Check(toolkit::MaskedBox& txt, double dOwn, std::size_t iLength,
               std::optional<double> (*pParse)(std::string_view)) {
        Promise(txt.Text().size() == iLength && txt.SelLength() == 1);
        Promise(txt.SelStart() >= 0 && txt.SelStart() < static_cast<int>(iLength));
        const auto dRead = pParse(txt.Text());
        Promise(dRead && *dRead == dOwn && std::fabs(dOwn) < 1000 + 100.0 / 60);
        txt.Synchronize();
        Promise(toolkit::ToLatin1(txt.text()) == txt.Text() && txt.selectedText().size() == 1);
    }

    TestWindow& m_t;
    bool m_bLongitude = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    static fuzz::Window& tWindow = fuzz::Window::Make();
    TestWindow& t = tWindow.t;
    t.SSTab.SetTab(ui::TabGps);
    for (auto* p : {&t.txtGpsLat, &t.txtGpsLon}) {
        p->SetText(p == &t.txtGpsLat ? "00 00.00 N" : "000 00.00 W");
        p->ClickAt(0);
    }
    Hand(t).Play(fuzz::Text(pData, iSize));
    return 0;
}
