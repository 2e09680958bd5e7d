// Dumping the window key by key.
#include "tests/scenarios/Dump.h"

#include <QJsonArray>
#include <initializer_list>

#include "platform/toolkit/Twips.h"
#include "tests/scenarios/Controls.h"
#include "tests/support/IsoTime.h"

namespace scenarios {

namespace {

QString Text(std::string_view sText) { return toolkit::FromLatin1(sText); }
QString Iso(runtime::DateTime dt) { return Text(support::IsoText(dt)); }
QJsonArray Place(const ui::Rect& t) { return {t.dLeft, t.dTop, t.dWidth, t.dHeight}; }
QJsonArray Line(const runtime::Stroke& t) { return {t.lX1, t.lY1, t.lX2, t.lY2}; }

template <class Array, class Convert>
QJsonArray Both(const Array& t, Convert tConvert) {
    return {tConvert(t(0)), tConvert(t(1))};
}

QJsonArray DumpStatus(const ScenarioWindow& t) {
    QJsonArray tPanels;
    for (int i = ui::PanelState; i <= ui::PanelClock; ++i) tPanels.append(t.StatusBar.Panel(i).text());
    return tPanels;
}

QJsonObject DumpToolbar(const ScenarioWindow& t) {
    QJsonObject tButtons;
    for (const char* sKey : {ui::KeyStart, ui::KeyStop, ui::KeyRecord, ui::KeyPlayback, ui::KeyPlaybackBurst}) {
        const QString sName = QLatin1String(sKey);
        tButtons[sName] = QJsonObject{{QStringLiteral("enabled"), t.Toolbar.Action(sName).isEnabled()},
                                      {QStringLiteral("pressed"), t.Toolbar.Action(sName).isChecked()}};
    }
    return tButtons;
}

QJsonObject DumpControls(const ScenarioWindow& t) {
    QJsonObject tControls;
    for (const char* sName : CheckBoxes) {
        const auto* p = t.findChild<QCheckBox*>(QLatin1String(sName));
        tControls[QLatin1String(sName)] =
            QJsonObject{{QStringLiteral("value"), p->isChecked() ? 1 : 0}, {QStringLiteral("enabled"), p->isEnabled()}};
    }
    for (const char* sName : TextBoxes) {
        const auto* p = t.findChild<toolkit::TextBox*>(QLatin1String(sName));
        tControls[QLatin1String(sName)] =
            QJsonObject{{QStringLiteral("text"), p->text()}, {QStringLiteral("enabled"), p->isEnabled()}};
    }
    return tControls;
}

QJsonObject DumpMessage(const decoders::VdmMessage& t) {
    QJsonArray tValues;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(t.lLength); ++i) tValues.append(t.lData[i]);
    return {{QStringLiteral("lLength"), t.lLength}, {QStringLiteral("lData"), tValues}};
}

QJsonObject DumpMembers(const ScenarioWindow& t) {
    const auto tText = [](std::string_view s) { return QJsonValue(Text(s)); };
    const auto tIso = [](runtime::DateTime dt) { return QJsonValue(Iso(dt)); };
    const auto tSame = [](auto x) { return QJsonValue(x); };
    return {
        {QStringLiteral("m_dLatitude"), t.m_dLatitude},
        {QStringLiteral("m_dLongitude"), t.m_dLongitude},
        {QStringLiteral("m_sCommBuffer"), Both(t.m_sCommBuffer, tText)},
        {QStringLiteral("m_dtCommLast"), Both(t.m_dtCommLast, tIso)},
        {QStringLiteral("m_bCommReceived"), Both(t.m_bCommReceived, tSame)},
        {QStringLiteral("m_bCommLastVdm"), Both(t.m_bCommLastVdm, tSame)},
        {QStringLiteral("m_lCommSeconds"), Both(t.m_lCommSeconds, tSame)},
        {QStringLiteral("m_bRecording"), t.m_bRecording},
        {QStringLiteral("m_bPlayback"), t.m_bPlayback},
        {QStringLiteral("m_bPlaybackBurst"), t.m_bPlaybackBurst},
        {QStringLiteral("m_iRecordFile"), t.m_iRecordFile},
        {QStringLiteral("m_dtPlaybackStart"), Iso(t.m_dtPlaybackStart)},
        {QStringLiteral("m_dtRecordStart"), Iso(t.m_dtRecordStart)},
        {QStringLiteral("m_tVdmMessage"), Both(t.m_tVdmMessage, DumpMessage)},
        {QStringLiteral("m_sVdmChannel"), Text(t.m_sVdmChannel)},
        {QStringLiteral("m_dtVdm"), Iso(t.m_dtVdm)},
        {QStringLiteral("m_sGllLatitude"), Text(t.m_sGllLatitude)},
        {QStringLiteral("m_sGllLongitude"), Text(t.m_sGllLongitude)},
        {QStringLiteral("m_sGllTime"), Text(t.m_sGllTime)},
        {QStringLiteral("m_lMessageNumber"), static_cast<qint64>(t.m_lMessageNumber)},
        {QStringLiteral("m_lMessageRow"), t.m_lMessageRow},
        {QStringLiteral("m_iSortKeys"), t.m_iSortKeys},
        {QStringLiteral("m_lSortCol"), QJsonArray{t.m_tSortKeys[0].lCol, t.m_tSortKeys[1].lCol}},
        {QStringLiteral("m_lSortType"), QJsonArray{t.m_tSortKeys[0].lType, t.m_tSortKeys[1].lType}},
    };
}

QJsonObject DumpPorts(const Stage& tStage, const ScenarioWindow& t) {
    QJsonObject tPorts;
    for (const toolkit::SerialPort* p : {&t.MSComm(0), &t.MSComm(1), &t.MSCommOutput}) {
        tPorts[p->objectName()] = QJsonObject{{QStringLiteral("open"), p->PortOpen()},
                                              {QStringLiteral("number"), p->CommPort()},
                                              {QStringLiteral("settings"), Text(p->Settings())},
                                              {QStringLiteral("written"), Text(tStage.Written(*p))}};
    }
    return tPorts;
}

QJsonObject DumpFiles(const ScriptFiles& t) {
    QJsonObject tFiles;
    for (const auto& [sName, sContent] : t.Contents()) tFiles[sName] = Text(sContent);
    return tFiles;
}

QJsonArray DumpPrimitives(const std::vector<ui::Primitive>& tPrimitives) {
    QJsonArray tList;
    for (const ui::Primitive& t : tPrimitives) {
        const bool bLine = t.eKind == ui::Primitive::Kind::Line;
        tList.append(QJsonArray{bLine ? QStringLiteral("line") : QStringLiteral("rect"), t.lX1, t.lY1, t.lX2, t.lY2,
                                QJsonArray{t.tColour.iRed, t.tColour.iGreen, t.tColour.iBlue}});
    }
    return tList;
}

QJsonObject DumpTimingRow(const ui::TimingRow& t) {
    return {{QStringLiteral("x0"), t.lLeft},
            {QStringLiteral("x1"), t.lRight},
            {QStringLiteral("top"), t.lTop},
            {QStringLiteral("bottom"), t.lBottom}};
}

QJsonObject DumpTiming(const ScenarioWindow& t) {
    const std::initializer_list<std::pair<const char*, const ui::TimingLabels*>> tRows = {
        {"lblTimingChA", &t.lblTimingChA},
        {"lblTimingChB", &t.lblTimingChB},
        {"lblTimingChAlternate", &t.lblTimingChAlternate}};
    QJsonObject tTiming;
    QJsonObject tGeometry;
    for (const auto& [sName, pLabels] : tRows) {
        tTiming[QLatin1String(sName)] =
            QJsonObject{{QStringLiteral("1"), pLabels->Name.text()}, {QStringLiteral("2"), pLabels->Percentage.text()}};
        tGeometry[QLatin1String(sName)] = DumpTimingRow(t.TimingRowOf(*pLabels));
    }
    QJsonObject tAlternate = tTiming[QStringLiteral("lblTimingChAlternate")].toObject();
    tAlternate[QStringLiteral("3")] = t.lblTimingSummary.text();
    tTiming[QStringLiteral("lblTimingChAlternate")] = tAlternate;
    tTiming[QStringLiteral("inputs")] =
        QJsonArray{t.txtTimingRateTx.text(), t.txtTimingRateRc.text(), t.txtTimingTimeSpan.text()};
    tTiming[QStringLiteral("primitives")] = DumpPrimitives(t.TimingPrimitives());
    tTiming[QStringLiteral("geometry")] = tGeometry;
    tTiming[QStringLiteral("runs")] = t.TimingRuns();
    return tTiming;
}

// Where the layout starts from: the places as designed, the room that it fills, the lines that get arrow heads.
QJsonObject DumpDesign(const ScenarioWindow& t) {
    QJsonObject tDesign;
    for (const auto& [sName, tRect] : t.DesignRects()) tDesign[Text(sName)] = Place(tRect);
    tDesign[QStringLiteral("inside")] =
        QJsonArray{toolkit::ToTwips(t.Client.width()), toolkit::ToTwips(t.Client.height())};
    QJsonArray tLines;
    for (const ui::DiagramLine& tLine : t.LnArrow) {
        tLines.append(
            QJsonObject{{QStringLiteral("line"), Line(tLine.tLine)}, {QStringLiteral("Tag"), Text(tLine.sTag)}});
    }
    tDesign[QStringLiteral("LnArrow")] = tLines;
    return tDesign;
}

QString WindowState(const ScenarioWindow& t) {
    if (t.isMinimized()) return QStringLiteral("minimized");
    return t.isMaximized() ? QStringLiteral("maximized") : QStringLiteral("normal");
}

QJsonObject DumpLayout(const ScenarioWindow& t) {
    QJsonObject tRects;
    for (const auto& [sName, tRect] : t.Rects()) tRects[Text(sName)] = Place(tRect);
    QJsonArray tStrokes;
    for (const runtime::Stroke& tStroke : t.pctDiagram.Drawn()) tStrokes.append(Line(tStroke));
    return {{QStringLiteral("tab"), t.SSTab.Tab()},
            {QStringLiteral("window_state"), WindowState(t)},
            {QStringLiteral("rects"), tRects},
            {QStringLiteral("design"), DumpDesign(t)},
            {QStringLiteral("strokes"), tStrokes}};
}

QJsonArray DumpDialogs(const support::World& t) {
    QJsonArray tDialogs;
    for (const toolkit::FileRequest& tRequest : t.tDialogs) {
        tDialogs.append(QJsonArray{tRequest.bSave ? QStringLiteral("save") : QStringLiteral("open"), tRequest.sTitle});
    }
    return tDialogs;
}

}  // namespace

QJsonObject DumpState(Stage& tStage) {
    ScenarioWindow& t = tStage.Window();
    t.Synchronize();
    t.FlushFiles();
    QJsonArray tPointer;
    for (const bool bBusy : tStage.tWorld.bBusyPointer) tPointer.append(bBusy);

    QJsonObject tState;
    tState[QStringLiteral("caption")] = t.windowTitle();
    tState[QStringLiteral("clock")] = Iso(tStage.tWorld.dtNow);
    tState[QStringLiteral("status")] = DumpStatus(t);
    tState[QStringLiteral("toolbar")] = DumpToolbar(t);
    tState[QStringLiteral("timers")] = QJsonObject{{QStringLiteral("tmrComm"), t.tmrComm.isActive()},
                                                   {QStringLiteral("tmrTime"), t.tmrTime.isActive()}};
    tState[QStringLiteral("controls")] = DumpControls(t);
    DumpViews(tState, t);
    tState[QStringLiteral("members")] = DumpMembers(t);
    tState[QStringLiteral("ports")] = DumpPorts(tStage, t);
    tState[QStringLiteral("files")] = DumpFiles(tStage.tFiles);
    tState[QStringLiteral("timing")] = DumpTiming(t);
    tState[QStringLiteral("about")] = QJsonObject{{QStringLiteral("description"), t.lblAboutDescription.text()}};
    tState[QStringLiteral("layout")] = DumpLayout(t);
    tState[QStringLiteral("message_boxes")] = QJsonArray::fromStringList(tStage.tWorld.sMessages);
    tState[QStringLiteral("dialogs")] = DumpDialogs(tStage.tWorld);
    tState[QStringLiteral("pointer")] = tPointer;
    tState[QStringLiteral("profile")] = QJsonObject{{QStringLiteral("text"), t.m_tProfile.sText}};
    return tState;
}

}  // namespace scenarios
