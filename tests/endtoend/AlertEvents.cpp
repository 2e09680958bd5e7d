// The events that a status bar raises for a screen reader, where one listens: run by Alerts.py, with a display and the
// accessibility bus. Elsewhere the toolkit raises none.
#include <QAccessible>
#include <QTest>

#include "platform/toolkit/PanelBar.h"

using toolkit::PanelBar;

class AlertEvents : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void errorIsAnAlertOfItsPanel();
    void summaryIsNone();

private:
    static void Note(QAccessibleEvent* pEvent) {
        if (pEvent->type() == QAccessible::Alert) pAlerts.push_back(pEvent->object());
    }
    static inline std::vector<QObject*> pAlerts;
};

void AlertEvents::initTestCase() {
    QWidget tWindow;
    tWindow.show();
    QTRY_VERIFY(QAccessible::isActive());
    QAccessible::installUpdateHandler(Note);
}

void AlertEvents::errorIsAnAlertOfItsPanel() {
    PanelBar t;
    t.AddPanel(QStringLiteral("Summary"), {}, true);
    t.resize(500, 30);
    t.show();
    pAlerts.clear();
    t.SetPanelText(1, "Input Comm - no such device: /dev/ttyS5");
    t.SetPanelError(1, true);
    t.Synchronize();
    QCOMPARE(pAlerts, std::vector<QObject*>{&t.Panel(1)});
    const QAccessibleInterface* pPanel = QAccessible::queryAccessibleInterface(&t.Panel(1));
    QCOMPARE(pPanel->text(QAccessible::Name), QStringLiteral("Input Comm - no such device: /dev/ttyS5"));
}

void AlertEvents::summaryIsNone() {
    PanelBar t;
    t.AddPanel(QStringLiteral("Summary"), {}, true);
    t.resize(500, 30);
    t.show();
    pAlerts.clear();
    t.SetPanelText(1, "12 Targets, 34 Messages");
    t.Synchronize();
    t.SetPanelText(1, "Checksum Error");
    t.SetPanelError(1, false);
    t.Synchronize();
    QVERIFY(pAlerts.empty());
}

QTEST_MAIN(AlertEvents)
#include "AlertEvents.moc"
