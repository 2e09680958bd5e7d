// Takes a picture of every tab of the real window with simulated traffic in it, for a person to look at. Run it
// offscreen, with QT_SCALE_FACTOR for other scales; "dark" gives a dark palette.
#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QStyleFactory>

#include "tests/support/TestWindow.h"
#include "tools/Traffic.h"

namespace {

constexpr int Seconds = 90;  // of traffic

QPalette DarkPalette() {
    QPalette t;
    t.setColor(QPalette::Window, QColor(45, 45, 48));
    t.setColor(QPalette::WindowText, QColor(230, 230, 230));
    t.setColor(QPalette::Base, QColor(30, 30, 32));
    t.setColor(QPalette::AlternateBase, QColor(40, 40, 43));
    t.setColor(QPalette::Text, QColor(230, 230, 230));
    t.setColor(QPalette::Button, QColor(58, 58, 62));
    t.setColor(QPalette::ButtonText, QColor(230, 230, 230));
    t.setColor(QPalette::ToolTipBase, QColor(58, 58, 62));
    t.setColor(QPalette::ToolTipText, QColor(230, 230, 230));
    t.setColor(QPalette::Highlight, QColor(42, 110, 180));
    t.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        t.setColor(QPalette::Disabled, eRole, QColor(130, 130, 130));
    }
    return t;
}

void Run(support::TestWindow& t, support::World& tWorld) {
    simulator::TrafficOptions tOptions;
    tOptions.dMissingPercent = 20;
    tOptions.dDamagedPercent = 2;
    tOptions.dtStart = tWorld.dtNow;
    simulator::Traffic tTraffic(tOptions);
    t.chkOutputRMC.setChecked(true);
    t.chkOutputEnabled.setChecked(true);
    t.txtOutputPort.SetText("3");
    t.cmbTargetDetail.SetText("All");
    t.StartBoth();
    t.TargetGridSetup(false);
    for (std::int64_t lSecond = 0; lSecond < Seconds;) {
        const simulator::TrafficLine& tLine = tTraffic.Next();
        while (lSecond < Seconds && tLine.lMilliseconds / 1000 > lSecond) {
            t.Advance(1);
            ++lSecond;
        }
        t.FeedLine(tLine.bGps ? 1 : 0, tLine.sText);
    }
    t.MSComm(0).RaiseEvent(1004);
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication tApplication(argc, argv);
    if (argc < 2) {
        std::fputs("usage: screens FOLDER [dark]\n", stderr);
        return 2;
    }
    if (argc > 2 && std::string_view(argv[2]) == "dark") QApplication::setPalette(DarkPalette());
    const QDir tFolder(QString::fromLocal8Bit(argv[1]));
    tFolder.mkpath(QStringLiteral("."));
    support::World tWorld;
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    Run(t, tWorld);
    for (int iTab = 0; iTab < t.SSTab.Count(); ++iTab) {
        t.SSTab.SetTab(iTab);
        QApplication::processEvents();
        t.Synchronize();
        QApplication::processEvents();
        const QString sName =
            QStringLiteral("%1-%2.png").arg(iTab, 2, 10, QLatin1Char('0')).arg(t.SSTab.Bar().tabText(iTab));
        t.grab().save(tFolder.filePath(sName.toLower()));
    }
    return 0;
}
