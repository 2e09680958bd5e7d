// Where the window's tests begin: the real window in a world of its own, shown, and then set to one of its works.
#pragma once

#include <QDir>
#include <QFileInfo>
#include <QMouseEvent>
#include <QTest>
#include <initializer_list>

#include "tests/support/AisEncoder.h"
#include "tests/support/Bytes.h"
#include "tests/support/TestWindow.h"

namespace support {

// A ship's position report, as good as any.
inline constexpr const char* AnyReport = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B";

// The middle of a grid's cell, in its viewport; row 0 is the header, which is another widget's.
inline QPoint PlaceOf(const toolkit::Grid& grd, int iRow, int iCol) {
    return grd.visualRect(grd.model()->index(iRow - 1, iCol)).center();
}
inline void MoveTo(QWidget& t, QPoint tPlace, Qt::MouseButtons eButtons = Qt::NoButton) {
    QMouseEvent tEvent(QEvent::MouseMove, tPlace, t.mapToGlobal(tPlace), Qt::NoButton, eButtons, {});
    QCoreApplication::sendEvent(&t, &tEvent);
}
// An entry, by the arrow keys.
inline void ChooseByKeys(toolkit::ComboBox& cmb, int iEntry) {
    cmb.setFocus();
    while (cmb.ListIndex() < iEntry) QTest::keyClick(&cmb, Qt::Key_Down);
    while (cmb.ListIndex() > iEntry) QTest::keyClick(&cmb, Qt::Key_Up);
}

// Made before the window, which refers to it.
struct OwnWorld {
    World tWorld;
};

// Loaded and shown.
struct ShownWindow : OwnWorld, TestWindow {
    explicit ShownWindow(ui::Tab eTab = ui::TabInput) : TestWindow(tWorld) {
        LoadAndShow();
        SSTab.SetTab(eTab);
    }
    // The output goes to memory device 3 from the next start on.
    void EnableOutput() {
        txtOutputPort.SetText("3");
        chkOutputEnabled.setChecked(true);
    }
    MemoryDevice& Output() { return *Device(MSCommOutput); }
    void PressWithFile(const char* sKey, const QString& sFile) {
        tWorld.tFileAnswers = {sFile};
        Press(sKey);
    }
    // The target that is selected, as its box shows it.
    QByteArray Selected() {
        cmbTargetTarget.Synchronize();
        return cmbTargetTarget.currentText().toLatin1();
    }
};

// It has the keyboard.
struct ActiveWindow : ShownWindow {
    ActiveWindow() {
        activateWindow();
        if (!QTest::qWaitForWindowActive(this)) qFatal("the window does not become the active one");
    }
    void Key(Qt::Key eKey, Qt::KeyboardModifiers eModifiers = Qt::NoModifier) const {
        QTest::keyClick(windowHandle(), eKey, eModifiers);
        QCoreApplication::processEvents();
    }
};

// Both inputs are open, on memory devices 1 and 2, and the output when asked for.
struct Listening : ShownWindow {
    explicit Listening(ui::Tab eTab = ui::TabInput, bool bOutput = false) : ShownWindow(eTab) {
        if (bOutput) EnableOutput();
        StartBoth();
    }
    // A message that only registers its target.
    void Hear(std::uint32_t lMmsi, char cChannel = 'A') { FeedLine(0, AisSentence(AisOther(11, lMmsi), cChannel)); }
    void HearAll(std::initializer_list<std::uint32_t> lMmsis) {
        for (const std::uint32_t lMmsi : lMmsis) Hear(lMmsi);
    }
    // Heard and shown.
    void Show(std::initializer_list<std::uint32_t> lMmsis) {
        HearAll(lMmsis);
        Synchronize();
    }
};

// Three targets are heard and shown.
struct ThreeTargets : Listening {
    explicit ThreeTargets(ui::Tab eTab = ui::TabTargets) : Listening(eTab) { Show({20, 10, 30}); }
    // A place in the target table.
    QPoint At(int iRow, int iCol) const { return PlaceOf(grdTargetData, iRow, iCol); }
    void ClickOn(int iRow, int iCol) {
        QTest::mouseClick(grdTargetData.viewport(), Qt::LeftButton, {}, At(iRow, iCol));
    }
};

struct Forwarding : Listening {
    Forwarding() : Listening(ui::TabInput, true) {}
    QByteArray Forwarded() { return Bytes(Output().Written()); }
};

// A file lies in the world's folder, to be played.
struct Player : ShownWindow {
    explicit Player(std::string_view sContent, const QString& sName = QStringLiteral("played.txt"))
        : sFile(tWorld.Path(sName)) {
        tWorld.WriteFile(sFile, sContent);
    }
    void Play() { PressWithFile("Playback", sFile); }
    void Burst() { PressWithFile("Playback Burst", sFile); }
    std::vector<std::string> Log() { return Lines(lstCommData(0)); }

    QString sFile;
};

// Both inputs are open; what is decoded goes into a file of the world's folder, or into any that begins with "/".
struct Recording {
    explicit Recording(
        const QString& sName = QStringLiteral("record.txt"), runtime::DiskSync::Function tDisk = [](int) { return 0; })
        : tWorld(std::move(tDisk)), sFile(sName.startsWith(QLatin1Char('/')) ? sName : tWorld.Path(sName)), t(tWorld) {
        QDir().mkpath(QFileInfo(sFile).path());
        t.LoadAndShow();
        t.StartBoth();
        tWorld.tFileAnswers = {sFile};
        t.Press("Record");
    }
    QByteArray Content() const { return Bytes(tWorld.ReadFile(sFile)); }

    struct DiskWorld : World {
        explicit DiskWorld(runtime::DiskSync::Function tDisk) { tSynchronize = std::move(tDisk); }
    };
    DiskWorld tWorld;
    QString sFile;
    TestWindow t;
};

}  // namespace support
