// Making and opening context menus.
#include "platform/toolkit/ContextMenu.h"

#include <QAction>
#include <algorithm>
#include <utility>

namespace toolkit {

QMenu& NewContextMenu(QWidget& tOwner) {
    auto* pMenu = new QMenu(&tOwner);
    pMenu->setAttribute(Qt::WA_DeleteOnClose);
    return *pMenu;
}

QAction* AddEntry(QMenu& tMenu, const QString& sText, const QKeySequence& tKeys, bool bEnabled,
                  std::function<void()> tAction) {
    QAction* pEntry = tMenu.addAction(sText);
    pEntry->setShortcut(tKeys);
    pEntry->setShortcutVisibleInContextMenu(true);
    pEntry->setEnabled(bEnabled);
    QObject::connect(pEntry, &QAction::triggered, tMenu.parentWidget(), [tAction = std::move(tAction)] { tAction(); });
    return pEntry;
}

void OpenContextMenu(QMenu& tMenu, const QContextMenuEvent& tEvent, const QWidget& tSurface, const QRect& tCursor) {
    if (tEvent.reason() != QContextMenuEvent::Keyboard) {
        tMenu.popup(tEvent.globalPos());
        return;
    }
    const QRect tSight = tSurface.rect();
    const QPoint tPlace = tCursor.bottomLeft();
    tMenu.popup(tSurface.mapToGlobal(QPoint(std::clamp(tPlace.x(), tSight.left(), tSight.right()),
                                            std::clamp(tPlace.y(), tSight.top(), tSight.bottom()))));
}

}  // namespace toolkit
