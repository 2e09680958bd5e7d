// The steps, each a short function under its name.
#include "tests/scenarios/Steps.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QKeyEvent>
#include <map>
#include <utility>

#include "app/CaptureLine.h"
#include "tests/scenarios/Controls.h"

namespace scenarios {

namespace {

QString Text(const QJsonObject& t, const char* sKey) { return t.value(QLatin1String(sKey)).toString(); }
std::string Bytes(const QJsonObject& t, const char* sKey) { return toolkit::ToLatin1(Text(t, sKey)); }
int Whole(const QJsonObject& t, const char* sKey, int iElse = 0) { return t.value(QLatin1String(sKey)).toInt(iElse); }
bool Flag(const QJsonObject& t, const char* sKey, bool bElse = false) {
    return t.value(QLatin1String(sKey)).toBool(bElse);
}
// Neither null nor missing.
bool Given(const QJsonObject& t, const char* sKey) {
    const QJsonValue tValue = t.value(QLatin1String(sKey));
    return !tValue.isUndefined() && !tValue.isNull();
}

template <class T>
T& Control(Stage& tStage, const QString& sName) {
    auto* p = tStage.Window().findChild<T*>(sName);
    if (!p) qFatal("the window has no control %s", qPrintable(sName));
    return *p;
}

// World

void Load(Stage& tStage, const QJsonObject& t) {
    tStage.Load(Given(t, "profile") ? std::optional(Bytes(t, "profile")) : std::nullopt);
}

void Unload(Stage& tStage, const QJsonObject&) { tStage.Unload(); }

void Clock(Stage& tStage, const QJsonObject& t) { tStage.tWorld.SetClock(Bytes(t, "set")); }

void TickTimer(Stage& tStage, const QString& sTimer) {
    ScenarioWindow& tWindow = tStage.Window();
    if (sTimer == QLatin1String("time")) {
        tWindow.tmrTime_Timer();
    } else {
        tWindow.tmrComm_Timer();
    }
}

void Advance(Stage& tStage, const QJsonObject& t) {
    QJsonArray tOrder{QStringLiteral("comm"), QStringLiteral("time")};
    if (Given(t, "order")) tOrder = t.value(QLatin1String("order")).toArray();
    for (int i = Whole(t, "seconds"); i > 0; --i) {
        ++tStage.tWorld.dtNow.lSeconds;
        for (const QJsonValue& tTimer : qAsConst(tOrder)) {
            const QString sTimer = tTimer.toString();
            if (sTimer == QLatin1String("comm") && !tStage.Window().tmrComm.isActive()) continue;
            TickTimer(tStage, sTimer);
        }
    }
}

void Tick(Stage& tStage, const QJsonObject& t) { TickTimer(tStage, Text(t, "timer")); }

void BadPort(Stage& tStage, const QJsonObject& t) {
    tStage.tWorld.sBadPorts[Whole(t, "number")] = Text(t, "text").toStdString();
}

void File(Stage& tStage, const QJsonObject& t) {
    const QString sName = Text(t, "name");
    const bool bUnwritable = Flag(t, "unwritable");
    const bool bUnreadable = Flag(t, "unreadable");
    // A name that is only marked need not be there.
    if (Given(t, "content") || !(bUnwritable || bUnreadable)) tStage.tFiles.Put(sName, Bytes(t, "content"));
    tStage.tFiles.Mark(sName, bUnwritable, bUnreadable);
}

// Controls

void Focus(Stage& tStage, const QJsonObject& t) {
    tStage.Window();
    tStage.SetFocus(Text(t, "control"));
}

void SetCombo(Stage& tStage, const QJsonObject& t, const QString& sControl) {
    if (sControl == QLatin1String("cmbTargetTarget")) {
        toolkit::NumberCombo& tCombo = tStage.Window().cmbTargetTarget;
        const int iIndex = Whole(t, "index", -1);
        if (Given(t, "text")) {
            tCombo.SetText(Bytes(t, "text"));
        } else if (iIndex >= 0 && iIndex < tCombo.Items.Count()) {
            tCombo.SetText(std::to_string(tCombo.Items.At(iIndex).lNumber));
        }
        return;
    }
    auto& tCombo = Control<toolkit::ComboBox>(tStage, sControl);
    tCombo.SetListIndex(Given(t, "text") ? tCombo.findText(Text(t, "text"), Qt::MatchExactly | Qt::MatchCaseSensitive)
                                         : Whole(t, "index"));
}

void Set(Stage& tStage, const QJsonObject& t) {
    const QString sControl = Text(t, "control");
    if (!Control<QWidget>(tStage, sControl).isEnabled()) return;
    if (Given(t, "focus")) tStage.SetFocus(Flag(t, "focus") ? sControl : QString());
    switch (KindOfControl(sControl)) {
        case ControlKind::Check:
            Control<QCheckBox>(tStage, sControl).setChecked(Whole(t, "value") == 1);
            break;
        case ControlKind::Text:
            Control<toolkit::TextBox>(tStage, sControl).SetText(Bytes(t, "text"));
            break;
        case ControlKind::Masked:
            Control<toolkit::MaskedBox>(tStage, sControl).SetText(Bytes(t, "text"));
            break;
        case ControlKind::Combo:
            SetCombo(tStage, t, sControl);
            break;
        case ControlKind::Other:
            break;
    }
}

// Presses a toolbar button; sFile is what the dialog answers, should one be shown.
void Press(Stage& tStage, const QString& sKey, const std::optional<QString>& sFile) {
    auto& tAnswers = tStage.tWorld.tFileAnswers;
    const bool bSave = sKey == QLatin1String(ui::KeyRecord);
    tAnswers.clear();
    tAnswers.push_back(sFile ? std::optional(tStage.tFiles.DialogAnswer(*sFile, bSave)) : std::nullopt);
    tStage.Window().Toolbar.Action(sKey).trigger();
    tAnswers.clear();
}

void Click(Stage& tStage, const QJsonObject& t) {
    Press(tStage, Text(t, "key"), Given(t, "file") ? std::optional(Text(t, "file")) : std::nullopt);
}

void Playback(Stage& tStage, const QJsonObject& t) {
    if (Given(t, "file") && Given(t, "content")) tStage.tFiles.Put(Text(t, "file"), Bytes(t, "content"));
    const char* sKey = Flag(t, "burst") ? ui::KeyPlaybackBurst : ui::KeyPlayback;
    Press(tStage, QLatin1String(sKey), Given(t, "file") ? std::optional(Text(t, "file")) : std::nullopt);
}

void Button(Stage& tStage, const QJsonObject& t) { Control<QPushButton>(tStage, Text(t, "name")).click(); }

// Ports

app::PortIndex Port(const QJsonObject& t) { return static_cast<app::PortIndex>(Whole(t, "port")); }

void Feed(Stage& tStage, const QJsonObject& t) { tStage.Feed(Port(t), Bytes(t, "data")); }

void PassSecond(Stage& tStage) {
    ++tStage.tWorld.dtNow.lSeconds;
    if (tStage.Window().tmrComm.isActive()) tStage.Window().tmrComm_Timer();
    tStage.Window().tmrTime_Timer();
}

void Raise(toolkit::SerialPort& tPort, int iEvent) {
    if (tPort.PortOpen()) tPort.RaiseEvent(iEvent);
}

void Event(Stage& tStage, const QJsonObject& t) { Raise(tStage.Window().MSComm(Port(t)), Whole(t, "code")); }

// The clock goes the way of the stamps, with its ticks; set back, and at the beginning, it does so without. What the
// program sent then it may send again, on the script's word.
void PlayCapture(Stage& tStage, const QJsonObject& t) {
    QStringList sLines = Text(t, "content").split(QLatin1Char('\n'));
    sLines.removeLast();  // empty, or cut
    bool bBegun = false;
    for (const QString& sLine : qAsConst(sLines)) {
        const std::string sText = toolkit::ToLatin1(sLine.endsWith(QLatin1Char('\r')) ? sLine.chopped(1) : sLine);
        const auto tLine = app::ReadCaptureLine(sText);
        if (!tLine) continue;
        if (!std::exchange(bBegun, true)) tStage.tWorld.dtNow = tLine->tMoment.dt;
        while (tStage.tWorld.dtNow < tLine->tMoment.dt) PassSecond(tStage);
        tStage.tWorld.dtNow = tLine->tMoment.dt;
        if (tLine->cKind == app::CaptureReceived) tStage.Feed(tLine->Index, tLine->sBytes);
        if (tLine->cKind == app::CaptureEvent) {
            Raise(tStage.Window().MSComm(tLine->Index), QString::fromLatin1(tLine->sBytes.c_str()).toInt());
        }
        tStage.Settle();
    }
}

void OutputEvent(Stage& tStage, const QJsonObject& t) { Raise(tStage.Window().MSCommOutput, Whole(t, "code")); }

// Own-position boxes

toolkit::MaskedBox& Box(Stage& tStage, const QJsonObject& t) {
    return Control<toolkit::MaskedBox>(tStage, Text(t, "box"));
}

void SendKey(toolkit::MaskedBox& tBox, int iKey, const QString& sText) {
    QKeyEvent tPress(QEvent::KeyPress, iKey, Qt::NoModifier, sText);
    QCoreApplication::sendEvent(&tBox, &tPress);
    QKeyEvent tRelease(QEvent::KeyRelease, iKey, Qt::NoModifier, sText);
    QCoreApplication::sendEvent(&tBox, &tRelease);
}

void Caret(Stage& tStage, const QJsonObject& t) { Box(tStage, t).ClickAt(Whole(t, "pos")); }

void Key(Stage& tStage, const QJsonObject& t) {
    static const std::map<int, int> iKeys = {
        {37, Qt::Key_Left}, {38, Qt::Key_Up}, {39, Qt::Key_Right}, {40, Qt::Key_Down}};
    const auto it = iKeys.find(Whole(t, "code"));
    toolkit::MaskedBox& tBox = Box(tStage, t);
    if (it == iKeys.end()) return;  // the others mean nothing on their way down
    for (int i = Whole(t, "times", 1); i > 0; --i) SendKey(tBox, it->second, {});
}

void Type(Stage& tStage, const QJsonObject& t) {
    toolkit::MaskedBox& tBox = Box(tStage, t);
    const QString sText = Text(t, "text");
    for (const QChar c : sText) SendKey(tBox, Qt::Key_unknown, QString(c));
}

// Target table

constexpr float Outside = -1000000;  // over no cell, however far the grid is scrolled

// The middle of a cell in the grid's coordinates; Outside for -1.
float MiddleOfRow(const toolkit::Grid& grd, int iRow) {
    if (iRow < 0) return Outside;
    return static_cast<float>(grd.RowPos(iRow)) + static_cast<float>(grd.RowHeight(iRow)) / 2;
}
float MiddleOfCol(const toolkit::Grid& grd, int iCol) {
    if (iCol < 0) return Outside;
    return static_cast<float>(grd.ColPos(iCol)) + static_cast<float>(grd.ColWidth(iCol)) / 2;
}

bool Exists(const toolkit::Grid& grd, int iRow, int iCol) {
    return iRow >= -1 && iRow < grd.Cells.Rows() && iCol >= -1 && iCol < grd.Cells.Cols();
}
bool RowInSight(const toolkit::Grid& grd, int iRow) { return iRow < 0 || grd.RowHeight(iRow) > 0; }
bool ColInSight(const toolkit::Grid& grd, int iCol) { return iCol < 0 || grd.ColWidth(iCol) > 0; }

// Runs tAct(x, y) over the cell of the step; not where there is none, nor in a row or a column that is hidden.
template <class Act>
void OverCell(Stage& tStage, const QJsonObject& t, Act tAct) {
    tStage.Window().Synchronize();
    toolkit::Grid& grd = tStage.Window().grdTargetData;
    const int iRow = Whole(t, "row");
    const int iCol = Whole(t, "col");
    if (!Exists(grd, iRow, iCol) || !RowInSight(grd, iRow) || !ColInSight(grd, iCol)) return;
    tAct(grd, MiddleOfCol(grd, iCol), MiddleOfRow(grd, iRow));
}

void GridClick(Stage& tStage, const QJsonObject& t) {
    OverCell(tStage, t, [](toolkit::Grid& grd, float fX, float fY) { grd.Click(fX, fY); });
}

void GridDblClick(Stage& tStage, const QJsonObject& t) {
    const bool bClick = Flag(t, "click", true);
    OverCell(tStage, t, [bClick](toolkit::Grid& grd, float fX, float fY) {
        if (bClick) grd.Click(fX, fY);
        grd.DblClick();
    });
}

void Mouse(Stage& tStage, const QJsonObject& t) {
    OverCell(tStage, t, [](toolkit::Grid& grd, float fX, float fY) { grd.MouseMove(fX, fY); });
}

// Timing, tabs, window

void Timing(Stage& tStage, const QJsonObject& t) {
    ScenarioWindow& tWindow = tStage.Window();
    if (Given(t, "tx")) tWindow.txtTimingRateTx.SetText(Bytes(t, "tx"));
    if (Given(t, "rc")) tWindow.txtTimingRateRc.SetText(Bytes(t, "rc"));
    if (Given(t, "ts")) tWindow.txtTimingTimeSpan.SetText(Bytes(t, "ts"));
    tWindow.cmdTimingApply.click();
}

void ChooseTab(Stage& tStage, const QJsonObject& t) {
    toolkit::TabControl& tTabs = tStage.Window().SSTab;
    const int iTab = Whole(t, "index");
    if (iTab >= 0 && iTab < tTabs.Count()) tTabs.SetTab(iTab);
}

Qt::WindowStates StateNamed(const QString& sState) {
    if (sState == QLatin1String("minimized")) return Qt::WindowMinimized;
    return sState == QLatin1String("maximized") ? Qt::WindowMaximized : Qt::WindowNoState;
}

// As a window manager tells it: the size stays what the script asks for, whatever the screen is like.
void TakeState(ScenarioWindow& tWindow, Qt::WindowStates eState) {
    constexpr Qt::WindowStates Told = Qt::WindowMinimized | Qt::WindowMaximized;
    if ((tWindow.windowState() & Told) != eState) tWindow.overrideWindowState(eState);
}

// A new size ends the maximised state, so there the state comes last. Minimised it comes first: the new size waits for
// the window to be restored.
void Resize(Stage& tStage, const QJsonObject& t) {
    ScenarioWindow& tWindow = tStage.Window();
    const Qt::WindowStates eState = Given(t, "window_state")
                                        ? StateNamed(Text(t, "window_state"))
                                        : tWindow.windowState() & (Qt::WindowMinimized | Qt::WindowMaximized);
    if (eState != Qt::WindowMaximized) TakeState(tWindow, eState);
    tWindow.resize(Whole(t, "width", tWindow.width()), Whole(t, "height", tWindow.height()));
    TakeState(tWindow, eState);
}

void Dump(Stage& tStage, const QJsonObject&) { tStage.Window(); }  // dumped by whoever runs the script

using Action = void (*)(Stage&, const QJsonObject&);

const std::map<QString, Action>& Actions() {
    static const std::map<QString, Action> tActions = {
        {QStringLiteral("load"), Load},
        {QStringLiteral("unload"), Unload},
        {QStringLiteral("clock"), Clock},
        {QStringLiteral("advance"), Advance},
        {QStringLiteral("tick"), Tick},
        {QStringLiteral("bad_port"), BadPort},
        {QStringLiteral("file"), File},
        {QStringLiteral("focus"), Focus},
        {QStringLiteral("set"), Set},
        {QStringLiteral("click"), Click},
        {QStringLiteral("playback"), Playback},
        {QStringLiteral("button"), Button},
        {QStringLiteral("feed"), Feed},
        {QStringLiteral("event"), Event},
        {QStringLiteral("capture"), PlayCapture},
        {QStringLiteral("output_event"), OutputEvent},
        {QStringLiteral("caret"), Caret},
        {QStringLiteral("key"), Key},
        {QStringLiteral("type"), Type},
        {QStringLiteral("grid_click"), GridClick},
        {QStringLiteral("grid_dblclick"), GridDblClick},
        {QStringLiteral("mouse"), Mouse},
        {QStringLiteral("timing"), Timing},
        {QStringLiteral("tab"), ChooseTab},
        {QStringLiteral("resize"), Resize},
        {QStringLiteral("dump"), Dump},
    };
    return tActions;
}

}  // namespace

void RunStep(Stage& tStage, const QJsonObject& tStep) {
    Actions().at(Text(tStep, "do"))(tStage, tStep);
    tStage.Settle();
}

}  // namespace scenarios
