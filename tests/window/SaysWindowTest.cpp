// Everything that the window says, letter by letter, against the table in SaysTable.h: what is in one and not in the
// other fails, whichever way. Run once more on a desktop of another language and theme, where the texts must stay.
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QTest>
#include <algorithm>

#include "tests/support/SystemLanguage.h"
#include "tests/support/TestWindow.h"
#include "tests/window/SaysTable.h"

using support::TestWindow;
using support::World;

namespace {

// A line below a control's first one; nothing for what says nothing.
QString Below(const char* sKey, const QString& sText) {
    QString sLine = sText;
    sLine.replace(QLatin1Char('\r'), QLatin1String("\\r")).replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return sText.isEmpty() ? QString() : QStringLiteral("\n  %1: %2").arg(QLatin1String(sKey), sLine);
}

QString ClassOf(const QObject& t) {
    return QString::fromLatin1(t.metaObject()->className()).section(QLatin1String("::"), -1);
}

// A caption, or the text in a field.
QString TextOf(const QWidget& t) {
    if (const auto* p = qobject_cast<const QLabel*>(&t)) return p->text();
    if (const auto* p = qobject_cast<const QAbstractButton*>(&t)) return p->text();
    if (const auto* p = qobject_cast<const QLineEdit*>(&t)) return p->text();
    if (const auto* p = qobject_cast<const QComboBox*>(&t)) return p->currentText();
    if (const auto* p = qobject_cast<const QGroupBox*>(&t)) return p->title();
    return {};
}

bool HasName(const QWidget& t) { return !t.objectName().isEmpty() && !t.objectName().startsWith(QLatin1String("qt_")); }

// Its own name, or that of what it stands in; its kind, text and state.
QString FirstLine(const QWidget& t) {
    const QWidget* pNamed = &t;
    while (!HasName(*pNamed)) pNamed = pNamed->parentWidget();
    QString sLine = pNamed->objectName() + QLatin1String(pNamed == &t ? " " : " > ") + ClassOf(t);
    const QString sText = Below("", TextOf(t)).mid(5);
    if (!sText.isEmpty()) sLine += QStringLiteral(" \"%1\"").arg(sText);
    if (!t.isEnabled()) sLine += QLatin1String(" off");
    if (const auto* p = qobject_cast<const QAbstractButton*>(&t); p != nullptr && p->isChecked()) {
        sLine += QLatin1String(qobject_cast<const QCheckBox*>(p) != nullptr ? " ticked" : " pressed");
    }
    return sLine;
}

// A screen reader says the text of what has one, and the name of a field.
QString Names(QWidget& t) {
    const QString sName = QAccessible::queryAccessibleInterface(&t)->text(QAccessible::Name);
    const bool bField = qobject_cast<QLineEdit*>(&t) != nullptr;
    const QString sUsual = bField ? QString() : TextOf(t).remove(QLatin1Char('&'));
    QString sLines = sName == sUsual ? QString() : Below("name", sName.isEmpty() ? QStringLiteral("none") : sName);
    if (t.accessibleName() != sName) sLines += Below("own name", t.accessibleName());
    return sLines + Below("description", t.accessibleDescription());
}

QString Choices(const QWidget& t) {
    QStringList sChoices;
    if (const auto* p = qobject_cast<const QComboBox*>(&t)) {
        for (int i = 0; i < p->count(); ++i) sChoices << p->itemText(i);
    } else if (const auto* pTabs = qobject_cast<const QTabBar*>(&t)) {
        for (int i = 0; i < pTabs->count(); ++i) sChoices << pTabs->tabText(i);
    }
    return Below("choices", sChoices.join(QLatin1String(" | ")));
}

QString Rows(const toolkit::Grid& grd) {
    const QAbstractItemModel& tModel = *grd.model();
    QStringList sNames;
    for (int i = 0; i < tModel.columnCount(); ++i) sNames << tModel.headerData(i, Qt::Horizontal).toString();
    QString sLines = Below("columns", sNames.join(QLatin1String(" | ")));
    for (int iRow = 0; iRow < tModel.rowCount(); ++iRow) {
        if (grd.isRowHidden(iRow)) continue;
        QStringList sCells;
        for (int i = 0; i < tModel.columnCount(); ++i) sCells << tModel.index(iRow, i).data().toString();
        sLines += Below("row", sCells.join(QLatin1String(" | ")));
    }
    return sLines;
}

QString Hint(const QWidget& t) {
    if (const auto* p = qobject_cast<const toolkit::LogList*>(&t)) return p->EmptyHint();
    if (const auto* p = qobject_cast<const toolkit::Grid*>(&t)) return p->EmptyHint();
    return {};
}

// Opened as the Menu key does.
QString Menu(QWidget& t) {
    const QStringList sWithMenus = {QStringLiteral("Grid"), QStringLiteral("LogList"), QStringLiteral("MaskedBox")};
    if (!sWithMenus.contains(ClassOf(t))) return {};
    QContextMenuEvent tEvent(QContextMenuEvent::Keyboard, QPoint(1, 1), t.mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(&t, &tEvent);
    auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (pMenu == nullptr) return Below("menu", QStringLiteral("none"));
    QStringList sEntries;
    for (const QAction* pEntry : pMenu->actions()) {
        QString sEntry = pEntry->isSeparator() ? QStringLiteral("-") : pEntry->text();
        if (!pEntry->shortcut().isEmpty()) sEntry += QStringLiteral(" (%1)").arg(pEntry->shortcut().toString());
        sEntries << (pEntry->isEnabled() || pEntry->isSeparator() ? sEntry : sEntry + QLatin1String(" off"));
    }
    pMenu->close();
    return Below("menu", sEntries.join(QLatin1String(", ")));
}

// What a control says besides its first line; empty when it says nothing at all.
QString Says(QWidget& t, const QWidget& tRunning) {
    QString sLines = Below("tip", t.toolTip()) + Below("status", t.statusTip()) + Below("what", t.whatsThis());
    sLines += Names(t);
    if (const auto* p = qobject_cast<const QLabel*>(&t); p != nullptr && p->buddy() != nullptr) {
        sLines += Below("leads to", p->buddy()->objectName());
    }
    if (const auto* p = qobject_cast<const QLineEdit*>(&t)) sLines += Below("grey", p->placeholderText());
    sLines += Choices(t);
    if (const auto* p = qobject_cast<const toolkit::Grid*>(&t)) sLines += Rows(*p);
    return sLines + Below("hint", Hint(t)) + Below("running", Hint(tRunning)) + Menu(t);
}

QString PlaceOf(const TestWindow& t, const QWidget& tControl) {
    for (int i = 0; i < t.SSTab.Count(); ++i) {
        const QWidget& tPage = const_cast<TestWindow&>(t).Page(i);
        if (&tPage == &tControl || tPage.isAncestorOf(&tControl)) return t.SSTab.Bar().tabText(i);
    }
    return QStringLiteral("Window");
}

// One at its first start, stopped, its clock not run yet.
struct Shown {
    Shown() {
        t.Load();
        t.tmrTime.stop();
        t.show();
        QCoreApplication::processEvents();
        t.Synchronize();
    }
    World tWorld;
    TestWindow t{tWorld};
};

// The window's own, and of the tabs.
QString KeysOf(const QWidget& t) {
    QStringList sKeys;
    for (const QShortcut* p : t.findChildren<QShortcut*>()) sKeys << p->key().toString();
    sKeys.sort();
    return Below("keys", sKeys.join(QLatin1String(", ")));
}

// A paragraph for each control that says something or has a name, its tab in front.
QStringList WindowSays() {
    Shown tStopped, tRunning;
    tRunning.t.StartBoth();
    tRunning.t.Synchronize();
    TestWindow& t = tStopped.t;
    QApplication::clipboard()->setText(QStringLiteral("something to paste"));
    QStringList sAll = {QStringLiteral("[Window] frmMain \"%1\"%2").arg(t.windowTitle(), KeysOf(t))};
    const QList<QWidget*> pStopped = t.findChildren<QWidget*>();
    const QList<QWidget*> pRunning = tRunning.t.findChildren<QWidget*>();
    if (pStopped.size() != pRunning.size()) return {QStringLiteral("two windows differ")};
    t.setObjectName(QStringLiteral("frmMain"));
    for (qsizetype i = 0; i < pStopped.size(); ++i) {
        QWidget& tControl = *pStopped[i];
        if (tControl.window() != &t) continue;  // a list or menu that has been opened
        if (tControl.parentWidget() == &t.SSTab.Bar()) continue;
        const QString sSays = Says(tControl, *pRunning[i]);
        if (sSays.isEmpty() && TextOf(tControl).isEmpty() && !HasName(tControl)) continue;
        sAll << QStringLiteral("[%1] %2%3").arg(PlaceOf(t, tControl), FirstLine(tControl), sSays);
    }
    sAll.sort();
    return sAll;
}

QStringList TableSays() {
    QStringList sAll;
    QString sPlace;
    for (const QString& sLine : QString::fromUtf8(support::SaysTable).split(QLatin1Char('\n'))) {
        if (sLine.isEmpty()) continue;
        if (sLine.startsWith(QLatin1Char('['))) {
            sPlace = sLine;
        } else if (sLine.startsWith(QLatin1Char(' '))) {
            sAll.last() += QLatin1Char('\n') + sLine;
        } else {
            sAll << sPlace + QLatin1Char(' ') + sLine;
        }
    }
    sAll.sort();
    return sAll;
}

// What is in the first and not in the second, or there more often; told one by one, since Qt Test cuts long messages.
QStringList Beyond(const char* sWhere, const QStringList& sFirst, const QStringList& sSecond) {
    QStringList sMore;
    std::set_difference(sFirst.begin(), sFirst.end(), sSecond.begin(), sSecond.end(), std::back_inserter(sMore));
    for (const QString& s : sMore) qWarning("only in the %s: %s", sWhere, qPrintable(s));
    return sMore;
}

}  // namespace

class SaysWindowTest : public QObject {
    Q_OBJECT
private slots:
    void windowSaysWhatTheTableSays();
};

void SaysWindowTest::windowSaysWhatTheTableSays() {
    const support::SystemLanguage tGerman("de",
                                          {{"No such file or directory", "Datei oder Verzeichnis nicht gefunden"}});
    const QStringList sWindow = WindowSays();
    const QStringList sTable = TableSays();
    const QStringList sUntold = Beyond("window", sWindow, sTable);
    const QStringList sMissing = Beyond("table", sTable, sWindow);
    QCOMPARE(sUntold, QStringList());
    QCOMPARE(sMissing, QStringList());
}

QTEST_MAIN(SaysWindowTest)
#include "SaysWindowTest.moc"
