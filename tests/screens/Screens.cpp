// Takes a picture of every tab of the real window with simulated traffic in it, for a person to look at; with "all" on
// small screens, in other scales and styles, light and dark. Run it offscreen.
#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QProcess>
#include <QStyleFactory>

#include "tests/support/TestWindow.h"
#include "tools/Traffic.h"

namespace {

constexpr int Seconds = 90;  // of traffic

// A way to look: Qt's name of the style, our dark palette or the style's own colours, the screen in pixels and its
// scale. No screen: as designed.
struct Look {
    QString sStyle = QStringLiteral("Fusion");
    bool bDark = false;
    QSize tScreen;
    double dScale = 1;
};

// The styles that are not Qt's own come with adwaita-qt6.
QList<Look> Looks() {
    QList<Look> tLooks;
    for (const auto& [tScreen, dScale] :
         {std::pair{QSize(1024, 600), 1.0}, std::pair{QSize(1366, 768), 1.25}, std::pair{QSize(1280, 800), 1.5}}) {
        tLooks << Look{QStringLiteral("Fusion"), false, tScreen, dScale}
               << Look{QStringLiteral("Fusion"), true, tScreen, dScale};
        for (const char* sStyle : {"Adwaita", "Adwaita-Dark", "HighContrast", "HighContrastInverse"}) {
            tLooks << Look{QLatin1String(sStyle), false, tScreen, dScale};
        }
    }
    return tLooks;
}

QString NameOf(const Look& t) {
    return QStringLiteral("%1%2-%3x%4-%5")
        .arg(t.sStyle.toLower(), t.bDark ? QStringLiteral("-dark") : QString())
        .arg(t.tScreen.width())
        .arg(t.tScreen.height())
        .arg(100 * t.dScale);
}

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

void TakePictures(const Look& tLook, const QDir& tFolder) {
    QApplication::setStyle(tLook.sStyle);
    if (tLook.bDark) QApplication::setPalette(DarkPalette());
    tFolder.mkpath(QStringLiteral("."));
    support::World tWorld;
    if (tLook.tScreen.isValid()) tWorld.tScreens = {QRect(QPoint(0, 0), tLook.tScreen / tLook.dScale)};
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    t.activateWindow();
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
}

// Each look is a process of its own: scale and style are taken up at its start.
int TakeAll(const QString& sProgram, const QDir& tFolder) {
    const QStringList sStyles = QStyleFactory::keys();
    int iFailed = 0;
    for (const Look& t : Looks()) {
        if (!sStyles.contains(t.sStyle, Qt::CaseInsensitive)) {
            std::fprintf(stderr, "screens: no style %s here\n", qPrintable(t.sStyle));
            continue;
        }
        QProcess tProcess;
        QProcessEnvironment tEnvironment = QProcessEnvironment::systemEnvironment();
        tEnvironment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(t.dScale));
        tProcess.setProcessEnvironment(tEnvironment);
        tProcess.setProcessChannelMode(QProcess::ForwardedChannels);
        tProcess.start(sProgram,
                       {tFolder.filePath(NameOf(t)), t.bDark ? QStringLiteral("dark") : QStringLiteral("light"),
                        t.sStyle, QString::number(t.tScreen.width()), QString::number(t.tScreen.height())});
        if (!tProcess.waitForFinished(-1) || tProcess.exitCode() != 0) ++iFailed;
    }
    return iFailed;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication tApplication(argc, argv);
    const QStringList sArguments = QApplication::arguments();
    if (sArguments.size() < 2) {
        std::fputs("usage: screens FOLDER [all | dark | light [STYLE [SCREENWIDTH SCREENHEIGHT]]]\n", stderr);
        return 2;
    }
    const QDir tFolder(sArguments[1]);
    if (sArguments.value(2) == QLatin1String("all")) return TakeAll(QApplication::applicationFilePath(), tFolder);
    Look tLook;
    tLook.bDark = sArguments.value(2) == QLatin1String("dark");
    tLook.sStyle = sArguments.value(3, tLook.sStyle);
    if (sArguments.size() > 5) tLook.tScreen = QSize(sArguments[4].toInt(), sArguments[5].toInt());
    tLook.dScale = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
    TakePictures(tLook, tFolder);
    return 0;
}
