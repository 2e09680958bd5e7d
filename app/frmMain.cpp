// Making the window, and its wiring: every signal and its handler on one page.
#include "app/frmMain.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QShortcut>
#include <QStatusTipEvent>

#include "nmea/CommNotice.h"

namespace app {

frmMain::frmMain(toolkit::Platform tPlatform) : FormDesign(std::move(tPlatform)) { ConnectEvents(); }

// Connected before the profile is loaded: restoring a control's value runs its change handler.
void frmMain::ConnectEvents() {
    connect(&Toolbar, &toolkit::ButtonBar::ButtonClick, this, &frmMain::Toolbar_ButtonClick);
    connect(&SSTab, &toolkit::TabControl::Click, this, &frmMain::FormLayout);
    connect(&tmrComm, &QTimer::timeout, this, &frmMain::tmrComm_Timer);
    connect(&tmrTime, &QTimer::timeout, this, &frmMain::tmrTime_Timer);
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        connect(&MSComm(i), &toolkit::SerialPort::OnComm, this, [this, i] { MSComm_OnComm(i); });
        connect(&MSComm(i), &toolkit::SerialPort::NotReopened, this,
                [this, i](const QString& sReason) { CommNotReopened(i, sReason); });
        connect(&chkCommEnabled(i), &QCheckBox::toggled, this, [this, i] { chkCommEnabled_Click(i); });
    }
    connect(&MSCommOutput, &toolkit::SerialPort::OnComm, this, &frmMain::MSCommOutput_OnComm);
    connect(&MSCommOutput, &toolkit::SerialPort::Dropped, this, &frmMain::OutputDropped);
    connect(&MSCommOutput, &toolkit::SerialPort::NotReopened, this,
            [this](const QString& s) { OutputData(nmea::NotOpenedNotice(toolkit::ToLatin1(s)), false); });
    connect(&cmdRxNasaChannel, &QPushButton::clicked, this, &frmMain::cmdRxNasaChannel_Click);
    connect(&cmdRxNasaInterval, &QPushButton::clicked, this, &frmMain::cmdRxNasaInterval_Click);
    for (toolkit::MaskedBox* pBox : {&txtGpsLat, &txtGpsLon}) {
        connect(pBox, &toolkit::MaskedBox::Change, this, [this, pBox] { PositionFieldChange(*pBox); });
        connect(pBox, &toolkit::MaskedBox::Click, this, [this, pBox] { PositionFieldClick(*pBox); });
        connect(pBox, &toolkit::MaskedBox::KeyDown, this, [this, pBox](int i) { PositionFieldKeyDown(*pBox, i); });
        connect(pBox, &toolkit::MaskedBox::KeyPress, this, [this, pBox](char c) { PositionFieldKeyPress(*pBox, c); });
        connect(pBox, &toolkit::MaskedBox::Paste, this,
                [this, pBox](const QString& s) { PositionFieldPaste(*pBox, s); });
    }
    connect(&cmbTargetDetail, &toolkit::ComboBox::Click, this, &frmMain::cmbTargetDetail_Click);
    connect(&cmbTargetSort, &toolkit::ComboBox::Click, this, &frmMain::cmbTargetSort_Click);
    connect(&chkTargetTrack, &QCheckBox::toggled, this, &frmMain::chkTargetTrack_Click);
    connect(&grdTargetData, &toolkit::Grid::Clicked, this, &frmMain::grdTargetData_Click);
    connect(&grdTargetData, &toolkit::Grid::DblClicked, this, &frmMain::grdTargetData_DblClick);
    connect(&grdTargetData, &toolkit::Grid::MouseMoved, this, &frmMain::grdTargetData_MouseMove);
    connect(&grdTargetData, &toolkit::Grid::RowActivated, this, &frmMain::grdTargetData_RowActivated);
    connect(&grdTargetData, &toolkit::Grid::MenuAsked, this, &frmMain::TargetMenu);
    const auto SavedAs = [this](const toolkit::Grid& grd, const char* sFileName) {
        connect(&grd, &toolkit::Grid::SaveAsked, this,
                [this, &grd, sFileName] { TableSave(grd, QLatin1String(sFileName)); });
    };
    SavedAs(grdTargetData, "Tidewatch Targets.csv");
    SavedAs(grdMessageData, "Tidewatch Messages.csv");
    SavedAs(grdSpecData, "Tidewatch Spec.csv");
    // The Menu key comes from the system, this one does not.
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F10, this), &QShortcut::activated, this, &frmMain::OpenMenuOfFocus);
    connect(&cmdTimingApply, &QPushButton::clicked, this, &frmMain::TimingPlan);
    for (toolkit::TextBox* pBox : {&txtTimingRateTx, &txtTimingRateRc, &txtTimingTimeSpan}) {
        connect(pBox, &QLineEdit::returnPressed, this, &frmMain::TimingPlan);
    }
    auto* pQuit = new QShortcut(Qt::CTRL | Qt::Key_Q, this);
    connect(pQuit, &QShortcut::activated, this, &frmMain::close);
    auto* pHelp = new QShortcut(Qt::Key_F1, this);
    pHelp->setAutoRepeat(false);
    connect(pHelp, &QShortcut::activated, this, &frmMain::ShowManual);
    Client.installEventFilter(this);
    setAcceptDrops(true);
    for (QLineEdit* pField : findChildren<QLineEdit*>()) pField->installEventFilter(this);
}

void frmMain::OpenMenuOfFocus() {
    QWidget* pHolder = focusWidget();
    if (pHolder == nullptr) return;
    const QPoint tPlace = pHolder->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent tEvent(QContextMenuEvent::Keyboard, tPlace, pHolder->mapToGlobal(tPlace));
    QCoreApplication::sendEvent(pHolder, &tEvent);
}

// The stock answer to a status tip lays it over the panels.
bool frmMain::event(QEvent* pEvent) {
    if (pEvent->type() != QEvent::StatusTip) return FormDesign::event(pEvent);
    StatusBar.ShowTip(static_cast<QStatusTipEvent*>(pEvent)->tip());
    return true;
}

void frmMain::closeEvent(QCloseEvent* pEvent) {
    Form_Unload();
    pEvent->accept();
}

void frmMain::changeEvent(QEvent* pEvent) {
    FormDesign::changeEvent(pEvent);
    if (!m_bLayoutReady) return;
    if (pEvent->type() == QEvent::WindowStateChange) FormLayout();
    if (pEvent->type() != QEvent::FontChange && pEvent->type() != QEvent::StyleChange) return;
    if (m_bDesignDue) return;
    // Later: by then every control has heard of it, too.
    m_bDesignDue = true;
    const auto Anew = [this] {
        m_bDesignDue = false;
        DesignAnew();
    };
    QMetaObject::invokeMethod(this, Anew, Qt::QueuedConnection);
}

// Qt also moves the focus on when its holder is disabled or hidden. That may lead to a toolbar button, where the next
// Space would start or stop the run; the tabs are a place where no key does harm.
bool frmMain::focusNextPrevChild(bool bNext) {
    const QWidget* pHolder = focusWidget();
    const bool bAskedFor = pHolder == nullptr || (pHolder->isEnabled() && pHolder->isVisible());
    if (bAskedFor) return FormDesign::focusNextPrevChild(bNext);
    SSTab.Bar().setFocus();
    return true;
}

// The window's inside has a new size; or a file is dragged over a field, which is the window's to take: the field would
// take its name for a text.
bool frmMain::eventFilter(QObject* pObject, QEvent* pEvent) {
    if (pEvent->type() == QEvent::DragEnter && static_cast<QDragEnterEvent*>(pEvent)->mimeData()->hasUrls()) {
        pEvent->ignore();
        return true;
    }
    if (pObject == &Client && pEvent->type() == QEvent::Resize && m_bLayoutReady) FormLayout();
    return FormDesign::eventFilter(pObject, pEvent);
}

}  // namespace app
