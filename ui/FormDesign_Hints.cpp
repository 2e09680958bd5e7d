// What an empty log or table says in its own middle: what will stand there, and what to do for it.
#include <array>

#include "ui/FormDesign.h"

namespace ui {

namespace {

constexpr char Listening[] = "Press Start to listen, or Playback to play a recording";
constexpr int CountsAlwaysShown = 2;  // rows of the message counts: a blank one and the total

QString Lines(const char* sFirst, const char* sSecond) {
    return QLatin1String(sFirst) + QLatin1Char('\n') + QLatin1String(sSecond);
}

}  // namespace

void FormDesign::SetHints(bool bRunning) {
    struct Hint {
        toolkit::LogList& lst;
        QString sStopped;
        QString sRunning;
    };
    const QString sPort = QStringLiteral("Choose the port above and press Start");
    const QString sNoLine = Lines("No line has come yet", "Is the receiver plugged in and switched on?");
    const std::array<Hint, 6> tHints = {{
        {lstCommData(0), sPort, sNoLine},
        {lstCommData(1), sPort, sNoLine},
        {lstRxData, Lines("Signal levels of each AIS message will stand here", Listening),
         Lines("No signal levels yet", "They come from a NASA AIS Engine")},
        {lstAisData, Lines("Decoded AIS messages will stand here", Listening), QStringLiteral("No AIS message yet")},
        {lstGpsData, Lines("Positions of a GPS will stand here", Listening),
         Lines("No position of a GPS yet", "Without one, type your own position above")},
        {lstOutputData,
         Lines("Lines sent to the output will stand here", "Tick Output, choose its port and press Start"),
         chkOutputEnabled.isChecked() ? QStringLiteral("No line sent yet")
                                      : Lines("The output is off", "Press Stop, then tick Output above")},
    }};
    for (const Hint& t : tHints) t.lst.SetEmptyHint(bRunning ? t.sRunning : t.sStopped);

    grdTargetData.SetEmptyHints(
        bRunning ? Lines("No reports yet", "A ship under way reports every 2 to 30 seconds")
                 : Lines("No reports yet", Listening),
        Lines("No report of the selected target in the table", "Untick Track to see the other ships"));
    const QString sCounts = bRunning ? QStringLiteral("No messages yet") : Lines("No messages yet", Listening);
    grdMessageData.SetEmptyHints(sCounts, sCounts, CountsAlwaysShown);
}

}  // namespace ui
