// The window under test.
#include "tests/support/TestWindow.h"

#include <QAction>
#include <QCoreApplication>

namespace support {

void TestWindow::LoadAndShow() {
    Load();
    show();
    QCoreApplication::processEvents();
}

QWidget& TestWindow::Page(int iTab) {
    const std::vector<QWidget*> pPages = {&PageInput,   &PageReceiver, &PageAis,     &PageGps,
                                          &PageTargets, &PageMessages, &PageDiagram, &PageAbout,
                                          &PageSpec,    &PageTiming,   &PageOutput};
    return *pPages.at(static_cast<std::size_t>(iTab));
}

void TestWindow::Synchronize() {
    for (toolkit::LogList* p :
         {&lstCommData(0), &lstCommData(1), &lstRxData, &lstAisData, &lstGpsData, &lstOutputData}) {
        p->Synchronize();
    }
    for (toolkit::Grid* p : {&grdTargetData, &grdMessageData, &grdSpecData}) p->Synchronize();
    cmbTargetTarget.Synchronize();
    txtGpsLat.Synchronize();
    txtGpsLon.Synchronize();
    StatusBar.Synchronize();
}

void TestWindow::Press(const char* sKey) { Toolbar.Action(QLatin1String(sKey)).trigger(); }

void TestWindow::StartBoth() {
    chkCommEnabled(0).setChecked(true);
    chkCommEnabled(1).setChecked(true);
    txtCommPort(0).SetText("1");
    txtCommPort(1).SetText("2");
    Press("Start");
}

void TestWindow::Feed(app::PortIndex i, std::string_view sData) {
    if (MemoryDevice* pDevice = Device(MSComm(i))) pDevice->Feed(sData);
}

void TestWindow::Advance(int iSeconds) {
    for (int i = 0; i < iSeconds; ++i) {
        ++m_tWorld.dtNow.lSeconds;
        if (tmrComm.isActive()) tmrComm_Timer();
        tmrTime_Timer();
    }
}

std::vector<std::string> TestWindow::Lines(toolkit::LogList& lst) {
    lst.Synchronize();
    std::vector<std::string> sLines;
    for (int i = 0; i < lst.model()->rowCount(); ++i) {
        sLines.push_back(toolkit::ToLatin1(lst.model()->index(i, 0).data().toString()));
    }
    return sLines;
}

std::vector<bool> TestWindow::Marks(toolkit::LogList& lst) {
    lst.Synchronize();
    std::vector<bool> bMarks;
    for (int i = 0; i < lst.model()->rowCount(); ++i) bMarks.push_back(lst.Lines.Mark(i));
    return bMarks;
}

std::string TestWindow::LastLine(toolkit::LogList& lst) {
    const auto sLines = Lines(lst);
    return sLines.empty() ? std::string() : sLines.back();
}

std::string TestWindow::Panel(int iPanel) {
    StatusBar.Synchronize();
    return toolkit::ToLatin1(StatusBar.Panel(iPanel).text());
}

std::string TestWindow::Cell(toolkit::Grid& grd, int iRow, int iCol) {
    grd.Synchronize();
    const QVariant tText =
        iRow == 0 ? grd.model()->headerData(iCol, Qt::Horizontal) : grd.model()->index(iRow - 1, iCol).data();
    return toolkit::ToLatin1(tText.toString());
}

std::vector<std::string> TestWindow::Column(int iCol) {
    std::vector<std::string> sTexts;
    for (int iRow = 1; iRow < grdTargetData.Cells.Rows(); ++iRow) sTexts.push_back(Cell(grdTargetData, iRow, iCol));
    return sTexts;
}

MemoryDevice* TestWindow::Device(toolkit::SerialPort& tPort) { return dynamic_cast<MemoryDevice*>(tPort.OpenDevice()); }

}  // namespace support
