// What the fuzz targets of the window share: the application, windows that begin anew for each input, and what holds
// of a window after whatever came.
#pragma once

#include <QApplication>
#include <QByteArray>
#include <algorithm>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <string>
#include <system_error>

#include "tests/fuzz/Harness.h"
#include "tests/support/TestWindow.h"
#include "tests/window/Views.h"

namespace fuzz {

// Before the first window; offscreen, whatever the environment says.
inline void StartApplication() {
    static int iArguments = 1;
    static char sName[] = "fuzz";
    static char* sArguments[] = {sName, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    [[maybe_unused]] static const auto* const pApplication = new QApplication(iArguments, sArguments);
}

// A window in a world of its own, both made once: Begin() brings back what an input may have left.
class Window {
public:
    // Never destroyed, as the application is not: at the end of the process Qt's own statics go first. Its folder goes.
    static Window& Make() {
        struct Folder {
            explicit Folder(const QString& s) : sPath(s.toStdString()) {}
            ~Folder() {
                std::error_code tError;
                std::filesystem::remove_all(sPath, tError);
            }
            std::string sPath;
        };
        StartApplication();
        auto* const p = new Window;
        static std::deque<Folder> tFolders;
        tFolders.emplace_back(p->m_tWorld.Folder());
        return *p;
    }

    void Begin();

private:
    Window() : t(m_tWorld) {
        t.LoadAndShow();
        t.txtOutputPort.SetText("3");
    }

    support::World m_tWorld;

public:
    support::TestWindow t;
};

inline void Window::Begin() {
    t.Press("Stop");
    m_tWorld.dtNow = runtime::MakeDateTime({2011, 5, 15}, 12, 0, 0);
    m_tWorld.tFileAnswers.clear();
    m_tWorld.tDialogs.clear();
    m_tWorld.sMessages.clear();
    m_tWorld.eMessageIcons.clear();
    m_tWorld.bBusyPointer.clear();
    for (auto* p : {&t.chkTargetTrack, &t.chkRxNasaPower, &t.chkOutputEnabled, &t.chkOutputRMC}) p->setChecked(false);
    t.cmbTargetSort.SetListIndex(0);
    t.cmbTargetDetail.SetText("All");
    t.cmbTargetTarget.SetText("");
    t.txtGpsLat.SetText("00 00.00 N");
    t.txtGpsLon.SetText("000 00.00 W");
    t.lstAisData.Lines.Clear();
    t.lstGpsData.Lines.Clear();
    for (app::PortIndex i = 0; i < runtime::PortCount; ++i) t.m_tVdmMessage(i) = {};
    t.m_sVdmChannel.clear();
    t.m_dtVdm = {};
    for (std::string* p : {&t.m_sGllLatitude, &t.m_sGllLongitude, &t.m_sGllTime}) p->clear();
    t.m_lMessageRow = 0;
    t.m_bCommLastVdm(0) = t.m_bCommLastVdm(1) = false;
    t.StartBoth();
}

// Rows, lines, numbers, targets and totals.
inline void PromiseBounds(support::TestWindow& t) {
    constexpr std::int64_t MostRows = 256;
    const runtime::GridCells& tCells = t.grdTargetData.Cells;
    Promise(t.grdTargetData.Redraw() && t.grdMessageData.Redraw());
    Promise(tCells.Rows() - 1 == std::min(t.m_lMessageNumber, MostRows));
    std::vector<std::int64_t> lNumbers;
    for (int iRow = 1; iRow < tCells.Rows(); ++iRow) lNumbers.push_back(std::atoll(tCells.Text(iRow, 0).c_str()));
    std::ranges::sort(lNumbers);
    // Unique, and the newest.
    for (std::size_t i = 0; i < lNumbers.size(); ++i) {
        Promise(lNumbers[i] == t.m_lMessageNumber - static_cast<std::int64_t>(lNumbers.size() - i) + 1);
    }
    for (const toolkit::LogList* p :
         {&t.lstCommData(0), &t.lstCommData(1), &t.lstRxData, &t.lstAisData, &t.lstGpsData, &t.lstOutputData}) {
        Promise(p->Lines.Count() <= 101);
    }
    t.cmbTargetTarget.Synchronize();
    Promise(t.cmbTargetTarget.count() <= t.m_lMessageNumber &&
            (t.m_lMessageNumber == 0 || t.cmbTargetTarget.count() > 0));
    for (int i = 1; i < t.cmbTargetTarget.count(); ++i) {
        Promise(t.cmbTargetTarget.itemText(i - 1).toLongLong() < t.cmbTargetTarget.itemText(i).toLongLong());
    }
    double dSum = 0;
    constexpr int LastId = 32, Total = 34;
    for (int iRow = 1; iRow <= LastId; ++iRow) {
        const double dCount = t.grdMessageData.Cells.Number(iRow, 1);
        Promise(t.grdMessageData.Cells.Hidden(iRow) == (dCount == 0));
        dSum += dCount;
    }
    Promise(t.grdMessageData.Cells.Number(Total, 1) == dSum && dSum <= static_cast<double>(t.m_lMessageNumber));
}

}  // namespace fuzz
