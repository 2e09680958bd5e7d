// The menu at a view or a box: on the right mouse button, the Menu key and Shift+F10.
#pragma once

#include <QContextMenuEvent>
#include <QKeySequence>
#include <QMenu>
#include <functional>

namespace toolkit {

// A menu that lives as long as it is open.
QMenu& NewContextMenu(QWidget& tOwner);

// An entry with the keys that do the same, if there are any; they are shown only.
QAction* AddEntry(QMenu& tMenu, const QString& sText, const QKeySequence& tKeys, bool bEnabled,
                  std::function<void()> tAction);

// Opens the menu at the mouse, or at the cursor of tSurface (the owner, or its viewport) when a key asks for it, as
// near as is in sight.
void OpenContextMenu(QMenu& tMenu, const QContextMenuEvent& tEvent, const QWidget& tSurface, const QRect& tCursor);

}  // namespace toolkit
